// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QFuture>
#include <QObject>
#include <QPromise>

#include <map>
#include <vector>

/// The program's own questions to the user, for a desktop that grants everything without asking. Each is put once in
/// the life of the installation; the answers lie in a file of their own and can be changed in the permissions window.
class Permissions : public QObject
{
    Q_OBJECT

public:
    enum class Subject { notifications, location };
    Q_ENUM(Subject)
    enum class Answer { notDetermined, denied, authorized };
    Q_ENUM(Answer)

    using QObject::QObject;

    virtual Answer answer(Subject subject) const = 0;
    /// A question has been put and not yet been answered.
    bool isPending(Subject subject) const;

    /// Remembers an answer, as the question or the permissions window gives it, and tells everyone.
    void setAnswer(Subject subject, Answer answer);
    /// Puts the question where it was never answered; otherwise gives the remembered answer without asking. Whoever
    /// asks while the question is open waits for the same answer. One that the program's end leaves open is put again
    /// the next time.
    QFuture<Answer> request(Subject subject);

Q_SIGNALS:
    /// An answer was given or changed.
    void answerChanged(Permissions::Subject subject);
    /// A question wants to be shown; whoever shows it calls setAnswer().
    void questionPending(Permissions::Subject subject);

protected:
    /// Makes answer() give this one from now on.
    virtual void remember(Subject subject, Answer answer) = 0;

private:
    /// Who waits for the answer to an open question.
    std::map<Subject, std::vector<QPromise<Answer>>> m_waiting;
};
