#pragma once

#include <QStringView>

namespace stowlark {

/// Whether version `candidate` is strictly newer than `reference`: number by number between the dots, the
/// shorter one filled up with zeros. A piece that is no 64-bit number counts as not written: 1.3-beta is 1,
/// v2.0 is 0. Any two texts have an answer.
bool isNewer(QStringView candidate, QStringView reference);

} // namespace stowlark
