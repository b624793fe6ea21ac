#pragma once

#include <QCoro/QCoroSignal>
#include <QCoro/QCoroTask>

#include <QFutureWatcher>
#include <QThread>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <exception>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

namespace stowlark {

/// The threads that work is done on: some more than the machine has cores, as one of them may do nothing but
/// wait for a tool for minutes.
inline QThreadPool &workers() {
    struct Pool : QThreadPool {
        Pool() { setMaxThreadCount(std::max(8, QThread::idealThreadCount())); }
    };
    static Pool pool;
    return pool;
}

/// Runs `work` on a worker thread while the awaiting coroutine is suspended; resumes it in a later turn of
/// the event loop of the thread that awaits, with the result or the exception of `work`.
template <typename Work>
QCoro::Task<std::invoke_result_t<Work>> onWorker(Work work) {
    using Result = std::invoke_result_t<Work>;
    std::optional<std::conditional_t<std::is_void_v<Result>, std::monostate, Result>> result;
    std::exception_ptr failure;
    const QFuture<void> finished = QtConcurrent::run(&workers(), [&] {
        try {
            if constexpr (std::is_void_v<Result>) {
                work();
            } else {
                result.emplace(work());
            }
        } catch (...) {
            failure = std::current_exception();
        }
    });
    QFutureWatcher<void> watcher; // which tells in a later turn of the event loop, however soon it is over
    watcher.setFuture(finished);
    co_await qCoro(&watcher, &QFutureWatcher<void>::finished);
    if (failure) {
        std::rethrow_exception(failure);
    }
    if constexpr (!std::is_void_v<Result>) {
        co_return std::move(*result);
    }
}

} // namespace stowlark
