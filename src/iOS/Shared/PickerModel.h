// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QAbstractListModel>
#include <QColor>
#include <QtQmlIntegration>

/// One choice of a picker or of a segmented control.
struct PickerChoice
{
    QString text;
    /// Colour of the dot in front; without a valid colour there is none.
    QColor dot{};

    bool operator==(const PickerChoice &) const = default;
};

/// The choices of a Picker or a SegmentedControl, in their order. Roles: `text` and `dot` (transparent for none).
class PickerModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the screen that knows the choices")
    Q_PROPERTY(int count READ rowCount NOTIFY choicesChanged)
    /// The texts in the same order, for the control that shows the current one.
    Q_PROPERTY(QStringList texts READ texts NOTIFY choicesChanged)
    Q_PROPERTY(QList<QColor> dots READ dots NOTIFY choicesChanged)

public:
    enum Role { TextRole = Qt::UserRole, DotRole };

    explicit PickerModel(QObject *parent = nullptr);
    PickerModel(const QList<PickerChoice> &choices, QObject *parent);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    QStringList texts() const;
    QList<QColor> dots() const;

    /// Takes the place of the choices before; nothing happens when they are the same.
    void setChoices(const QList<PickerChoice> &choices);

Q_SIGNALS:
    void choicesChanged();

private:
    QList<PickerChoice> m_choices;
};
