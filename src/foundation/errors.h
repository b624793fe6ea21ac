#pragma once

#include "foundation/path_name.h"

#include <QString>

#include <exception>

namespace stowlark {

/// An error that can describe itself to a person. Thrown by value, caught by reference.
class LocalizedError : public std::exception {
public:
    virtual QString errorDescription() const = 0;
    const char *what() const noexcept override { return "stowlark::LocalizedError"; }
};

/// An error of the operating system about one item, as a sentence that names the item and the reason:
/// The file “notes.txt” couldn’t be opened because there is no such file.
class PlatformError final : public LocalizedError {
public:
    enum class Action { open, openFolder, read, write, copy, createFolder, remove, launch };

    /// `error` is an errno value.
    PlatformError(Action action, const Path &item, int error);
    /// `reason` ends the sentence, without the full stop.
    PlatformError(Action action, const Path &item, const QString &reason);

    QString errorDescription() const override { return description_; }

private:
    QString description_;
};

/// The sentence to show for any error: a LocalizedError's own, else a general one.
QString localizedDescription(const std::exception &error);

} // namespace stowlark
