#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <optional>

namespace stowlark {

/// An enumeration whose cases, in declaration order and numbered from 0, have the labels that the user sees.
/// Each header that declares one specializes this with a `static const std::array<QString, N> labels`.
template <typename Enumeration>
struct RawValues;

/// All cases in declaration order.
template <typename Enumeration>
auto allCases() {
    std::array<Enumeration, RawValues<Enumeration>::labels.size()> cases{};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        cases[i] = static_cast<Enumeration>(i);
    }
    return cases;
}

template <typename Enumeration>
QString rawValue(Enumeration value) {
    return RawValues<Enumeration>::labels.at(static_cast<std::size_t>(value));
}

/// The case with exactly this label, if there is one.
template <typename Enumeration>
std::optional<Enumeration> fromRawValue(QStringView label) {
    for (const Enumeration value : allCases<Enumeration>()) {
        if (rawValue(value) == label) {
            return value;
        }
    }
    return std::nullopt;
}

} // namespace stowlark
