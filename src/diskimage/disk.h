#pragma once

#include "diskimage/udif_writer.h"

namespace stowlark {

/// Writes a disk with a GUID partition table whose one partition is `volume`. `uuids`: of the disk, of the
/// partition.
void writeDisk(UdifWriter &image, const Volume &volume,
               const std::array<std::array<std::uint8_t, 16>, 2> &uuids);

} // namespace stowlark
