#pragma once

#include "foundation/errors.h"

namespace stowlark {

/// Why a disk image cannot be made, attached or detached, as a sentence.
class ImageError final : public LocalizedError {
public:
    explicit ImageError(QString description)
        : description_(std::move(description)) {}
    QString errorDescription() const override { return description_; }

    /// For contents of an image that no program writes so.
    static ImageError damaged() { return ImageError(QStringLiteral("The disk image is damaged.")); }

private:
    QString description_;
};

/// An image may be good, but this program cannot read it by itself.
class UnsupportedImage final : public std::exception {
public:
    const char *what() const noexcept override { return "stowlark::UnsupportedImage"; }
};

} // namespace stowlark
