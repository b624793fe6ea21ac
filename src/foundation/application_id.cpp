#include "foundation/application_id.h"

namespace stowlark {

QString applicationId() {
    return QStringLiteral(STOWLARK_ID);
}

QString applicationObjectPath() {
    return QStringLiteral(STOWLARK_OBJECT_PATH);
}

} // namespace stowlark
