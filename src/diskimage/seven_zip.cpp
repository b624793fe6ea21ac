#include "diskimage/seven_zip.h"
#include "diskimage/image_error.h"
namespace stowlark {
AttachedItems unpackWithSevenZip(const Path &, const Path &) {
    throw ImageError(QStringLiteral("This kind of disk image can’t be unpacked here yet."));
}
} // namespace stowlark
