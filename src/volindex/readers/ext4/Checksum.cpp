#include "volindex/readers/ext4/Checksum.h"

#include <array>

namespace volindex::ext4 {
namespace {

template <class T>
constexpr std::array<T, 256> MakeTable(T polynomial) {
  std::array<T, 256> table{};
  for (unsigned i = 0; i < table.size(); ++i) {
    T value = static_cast<T>(i);
    for (int bit = 0; bit < 8; ++bit)
      value = static_cast<T>((value & 1) != 0 ? (value >> 1) ^ polynomial : value >> 1);
    table[i] = value;
  }
  return table;
}

constexpr auto kCrc32cTable = MakeTable<std::uint32_t>(0x82F63B78u);
constexpr auto kCrc16Table = MakeTable<std::uint16_t>(0xA001u);

template <class T>
T Run(const std::array<T, 256>& table, T value, TBytes bytes) {
  for (const std::byte byte : bytes)
    value = static_cast<T>((value >> 8) ^ table[(value ^ static_cast<T>(byte)) & 0xFF]);
  return value;
}

}  // namespace

std::uint32_t Crc32c(std::uint32_t seed, TBytes bytes) {
  return Run(kCrc32cTable, seed, bytes);
}

std::uint16_t Crc16(std::uint16_t seed, TBytes bytes) {
  return Run(kCrc16Table, seed, bytes);
}

}  // namespace volindex::ext4
