#include "fuzz/fuzz_input.h"
#include "update/is_newer.h"

#include <QString>

using namespace stowlark;

/// Three versions: the rule is a strict order, and what it ignores changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const QString a = QString::fromUtf8(input.text());
    const QString b = QString::fromUtf8(input.text());
    const QString c = QString::fromUtf8(input.text());
    REQUIRE(!isNewer(a, a));
    REQUIRE(!(isNewer(a, b) && isNewer(b, a)));
    REQUIRE(!(isNewer(a, b) && isNewer(b, c)) || isNewer(a, c));
    REQUIRE(isNewer(a, b) || isNewer(b, a) || isNewer(a, c) == isNewer(b, c)); // a and b are equal
    const QString padded = a + QStringLiteral(".0..x.0");
    REQUIRE(!isNewer(a, padded) && !isNewer(padded, a));
    REQUIRE(isNewer(a + QStringLiteral(".1"), a + QStringLiteral(".0.9")));
    return 0;
}
