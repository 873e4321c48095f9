// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QFuture>
#include <QPointer>

#include <exception>
#include <memory>
#include <utility>

/// What a consumer gets when the producer went away without an answer.
struct OperationAbandoned : std::exception
{
    const char *what() const noexcept override { return "operation abandoned"; }
};

/// Calls `done(QFuture<T>)` once `future` has ended: with its value, its exception, or OperationAbandoned.
/// `result()` of the future then returns or throws and never blocks. Runs inside the producer's finish(), or at once
/// when the future has already ended; never when `owner` is gone. Main thread only. `done` must not throw.
///
/// The one way in which an object consumes a future: then(context, ...) of Qt 6.4 aborts on a context that has died.
template<class T, class Done>
void whenFinished(QFuture<T> future, QObject *owner, Done done)
{
    auto call = [alive = QPointer<QObject>(owner), done = std::move(done)](QFuture<T> ended) mutable {
        if (alive)
            done(std::move(ended));
    };
    auto shared = std::make_shared<decltype(call)>(std::move(call));
    future.then([shared](QFuture<T> ended) { (*shared)(std::move(ended)); }).onCanceled([shared] {
        (*shared)(QtFuture::makeExceptionalFuture<T>(std::make_exception_ptr(OperationAbandoned{})));
    });
}
