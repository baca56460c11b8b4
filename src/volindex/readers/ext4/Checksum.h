// The two checksums that guard ext4's superblock and group descriptors.
//
// Both are computed by table, a byte at a time. That is slow beside what processors offer, but it covers the
// superblock and the group descriptors alone, no inode and no folder.
#pragma once

#include "volindex/readers/DiskBytes.h"

namespace volindex::ext4 {

// CRC-32C (Castagnoli, reflected), without inversion at either end, so that pieces can be chained.
[[nodiscard]] std::uint32_t Crc32c(std::uint32_t seed, TBytes bytes);

// CRC-16 of the polynomial 0x8005, reflected, chained in the same way.
[[nodiscard]] std::uint16_t Crc16(std::uint16_t seed, TBytes bytes);

}  // namespace volindex::ext4
