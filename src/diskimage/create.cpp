#include "diskimage/create.h"

#include "diskimage/disk.h"
#include "diskimage/hfs_values.h"
#include "diskimage/image_error.h"

#include <QUuid>

#include <algorithm>

namespace stowlark {
namespace {

std::array<std::uint8_t, 16> freshUuid() {
    const QByteArray bytes = QUuid::createUuid().toRfc4122();
    std::array<std::uint8_t, 16> result{};
    std::ranges::copy(bytes, result.begin());
    return result;
}

} // namespace

void createImage(const CreateCommand &command) {
    const SourceTree tree(command.sourceFolder); // before the image is there, should that be in it
    NewFile file(command.image);
    const std::array<std::uint8_t, 16> volumeID = freshUuid();
    std::array<std::uint8_t, 8> shortID{};
    std::copy_n(volumeID.begin(), shortID.size(), shortID.begin());
    const Volume volume(tree, hfsName(command.volumeName), shortID);
    UdifWriter image(file, command.compression, freshUuid());
    writeDisk(image, volume, {freshUuid(), freshUuid()});
    image.finish();
    file.commit(command.overwrite ? NewFile::Existing::replace : NewFile::Existing::keep);
}

} // namespace stowlark
