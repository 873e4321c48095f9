// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QObject>

#include <utility>

/// An observable value: every assignment, equal to the last or not, stores the value and then emits its owner's
/// signal. Qt's MEMBER and bindable properties drop equal assignments, which would lose the repeated writes that
/// some observers live on. Dropping repetitions is the observer's business.
///
/// An observer may delete the owner: nothing is touched after the signal.
template<class T>
class Published
{
public:
    /// `changed` is emitted on `owner` at each assignment, not for `initial`.
    template<class Owner>
    Published(Owner *owner, void (Owner::*changed)(), T initial = T())
        : m_owner(owner)
        , m_changed(static_cast<void (QObject::*)()>(changed))
        , m_value(std::move(initial))
    {
    }
    Q_DISABLE_COPY_MOVE(Published)

    const T &value() const { return m_value; }
    operator const T &() const { return m_value; }
    const T *operator->() const { return &m_value; }

    void operator=(T value)
    {
        m_value = std::move(value);
        (m_owner->*m_changed)();
    }

private:
    QObject *m_owner;
    void (QObject::*m_changed)();
    T m_value;
};
