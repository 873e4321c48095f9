// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QInputDevice>
#include <QObject>
#include <QtQmlIntegration>

#include <algorithm>

/// What the user points with.
class Pointers : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Something at the machine scrolls by touch, so that nobody needs a scroll bar to take hold of. Asked anew each
    /// time: nothing tells when a device comes.
    Q_INVOKABLE bool hasTouch() const
    {
        const QList<const QInputDevice *> devices = QInputDevice::devices();
        return std::any_of(devices.begin(), devices.end(), [](const QInputDevice *device) {
            return device->type() == QInputDevice::DeviceType::TouchScreen
                || device->type() == QInputDevice::DeviceType::TouchPad;
        });
    }
};
