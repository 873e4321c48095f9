// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QGuiApplication>

/// The application of the benchmarks. It knows for how long the event loop has been kept from its next event.
class LoopGaps : public QGuiApplication
{
public:
    LoopGaps(int &argc, char **argv)
        : QGuiApplication(argc, argv)
    {
        setQuitOnLastWindowClosed(false);
    }

    /// The longest since the last call, in milliseconds of the main thread's processor time: neither waiting nor other
    /// programs count.
    static double takeLongest();

    bool notify(QObject *receiver, QEvent *event) override;
};
