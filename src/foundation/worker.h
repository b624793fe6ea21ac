#pragma once

#include <QCoro/QCoroFuture>
#include <QCoro/QCoroTask>

#include <QtConcurrent/QtConcurrentRun>

#include <exception>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

namespace stowlark {

/// Runs `work` on a worker thread while the awaiting coroutine is suspended; resumes it on the thread that
/// awaits, with the result or the exception of `work`.
template <typename Work>
QCoro::Task<std::invoke_result_t<Work>> onWorker(Work work) {
    using Result = std::invoke_result_t<Work>;
    std::optional<std::conditional_t<std::is_void_v<Result>, std::monostate, Result>> result;
    std::exception_ptr failure;
    const QFuture<void> finished = QtConcurrent::run([&] {
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
    co_await finished;
    if (failure) {
        std::rethrow_exception(failure);
    }
    if constexpr (!std::is_void_v<Result>) {
        co_return std::move(*result);
    }
}

} // namespace stowlark
