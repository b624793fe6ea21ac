#pragma once

#include <QString>

namespace stowlark {

/// The version of this build, as "1.4.0".
QString bundleVersion();

} // namespace stowlark
