#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace Quorlin::Background {

/// Runs blocking file work on another thread and hands its result to the receiver's thread.
/// Nothing is handed over when the receiver is gone by then, so the work must not use it.
template <typename Work, typename Then>
void run(QObject *receiver, Work work, Then then)
{
    QPointer<QObject> guard(receiver);
    QThreadPool::globalInstance()->start([guard, work = std::move(work), then = std::move(then)] {
        auto result = work();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [guard, then, result = std::move(result)] {
                if (guard)
                    then(result);
            },
            Qt::QueuedConnection);
    });
}

} // namespace Quorlin::Background
