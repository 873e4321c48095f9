// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

/// Plays every scene in both colour schemes, in three sizes and at twice the scale, and writes a picture of each as
/// SCENE-VARIANT.png into a folder. Anything that Qt warns of is a failure.
class Tour
{
public:
    /// Into `folder`, made when missing. With `only`, just the pictures whose names begin with it.
    Tour(const QString &folder, const QString &only);

    /// The program's exit status: 0 when every picture was taken. Each failure is a line on standard error, and the
    /// tour goes on behind it. The part at twice the scale runs in a child process, because the scale is fixed at
    /// start.
    int run();

private:
    struct Variant;
    void take(const Variant &variant);
    int runAtTwiceTheScale() const;

    QString m_folder;
    QString m_only;
    int m_failures = 0;
};
