#include "foundation/bundle_version.h"

namespace stowlark {

QString bundleVersion() {
    return QStringLiteral(STOWLARK_VERSION);
}

} // namespace stowlark
