#pragma once

#include "foundation/errors.h"

#include <QCoro/QCoroTask>

#include <functional>

namespace stowlark {

/// The description of the error that `work` ends in; empty if it succeeds.
inline QString failure(const std::function<void()> &work) {
    try {
        work();
        return {};
    } catch (const LocalizedError &error) {
        return error.errorDescription();
    }
}

/// The same for what is awaited. An error must not reach waitFor, which would wait for ever.
inline QString failure(QCoro::Task<> task) {
    const auto describe = [](QCoro::Task<> running) -> QCoro::Task<QString> {
        try {
            co_await running;
        } catch (const LocalizedError &error) {
            co_return error.errorDescription();
        }
        co_return QString();
    };
    return QCoro::waitFor(describe(std::move(task)));
}

} // namespace stowlark
