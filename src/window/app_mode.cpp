#include "window/app_mode.h"

namespace stowlark {

const std::array<QString, 2> RawValues<AppMode>::labels{QStringLiteral("Compress"),
                                                        QStringLiteral("Extract")};

} // namespace stowlark
