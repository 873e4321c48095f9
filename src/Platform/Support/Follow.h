// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>
#include <QPointer>

/// Puts `next`, or null, in the place of the object that `listener` has listened to so far, and lets it hear `signal`
/// of that one. Of the old object it hears nothing more. False when it is the same one: then nothing changes.
template<class Sender, class Listener, class Signal, class Slot>
bool follow(QPointer<Sender> &followed, Sender *next, Listener *listener, Signal signal, Slot slot)
{
    if (followed == next)
        return false;
    if (followed)
        followed->disconnect(listener);
    followed = next;
    if (next)
        QObject::connect(next, signal, listener, slot);
    return true;
}
