#pragma once

#include "foundation/errors.h"

namespace stowlark {

/// Something that keeps the measurements from being made.
class Failure final : public LocalizedError {
public:
    explicit Failure(QString description)
        : description_(std::move(description)) {}

    QString errorDescription() const override { return description_; }

private:
    QString description_;
};

} // namespace stowlark
