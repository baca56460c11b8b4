#include "volindex/readers/btrfs/TreeItems.h"

#include <limits>

namespace volindex::btrfs {

TKey TKey::Next() const {
  constexpr std::uint32_t kLastType = 255;
  if (Offset != std::numeric_limits<std::uint64_t>::max()) return {Number, Type, Offset + 1};
  return Type < kLastType ? TKey{Number, Type + 1, 0} : TKey{Number + 1, 0, 0};
}

// Layout: u64 generation, u64 generation of the last change, u64 size, … u32 links at 40, … u32 mode at 52,
// 160 bytes in all.
std::optional<TInode> ParseInode(TBytes content) {
  constexpr std::size_t kSize = 160;
  constexpr unsigned kKindMask = 0170000, kFolder = 0040000, kFile = 0100000, kLink = 0120000;
  if (content.size() < kSize) return std::nullopt;
  const unsigned kind = Load<std::uint32_t>(content, 52) & kKindMask;
  const auto size = Load<std::uint64_t>(content, 16);
  if (kind == 0 || (kind != kFolder && size > std::numeric_limits<std::int64_t>::max())) return std::nullopt;
  return TInode{kind == kFolder ? TKind::Folder : TKind::File, Load<std::uint64_t>(content, 8),
                kind == kFile || kind == kLink ? size : 0, Load<std::uint32_t>(content, 40)};
}

bool IsName(std::string_view name) {
  constexpr std::size_t kLongest = 255;
  return !name.empty() && name.size() <= kLongest && name.find('/') == name.npos &&
         name.find('\0') == name.npos && name != "." && name != "..";
}

// Layout: the key of what is meant (u64 number, u8 type, u64 offset), u64 generation, u16 length of data,
// u16 length of the name, u8 kind, the name.
std::optional<TEntry> ParseEntry(TBytes content) {
  constexpr std::size_t kHead = 30;
  constexpr std::uint8_t kTreeRoot = 132;
  if (content.size() < kHead) return std::nullopt;
  const std::size_t length = Load<std::uint16_t>(content, 27);
  const std::uint8_t type = Load<std::uint8_t>(content, 8);
  const bool whole = kHead + length + Load<std::uint16_t>(content, 25) == content.size();
  if (!whole || (type != kInode && type != kTreeRoot)) return std::nullopt;
  const std::string_view name(reinterpret_cast<const char*>(content.data() + kHead), length);
  return TEntry{Load<std::uint64_t>(content, 0), type == kTreeRoot, name};
}

// Layout: u64 generation, u64 length of what the extent holds, u8 compression, u8 encryption, u16 other
// encoding, u8 kind, and if that is not 0, which are the data themselves: u64 place on the volume (0 for a
// hole), u64 length there, u64 where within the extent the piece begins, u64 length of the piece.
std::optional<std::uint64_t> ParseExtent(TBytes content) {
  constexpr std::size_t kHead = 21, kSize = 53;
  if (content.size() < kHead) return std::nullopt;
  if (Load<std::uint8_t>(content, 20) == 0) return 0;
  if (content.size() < kSize) return std::nullopt;
  const auto piece = Load<std::uint64_t>(content, 45);
  if (Load<std::uint64_t>(content, 21) == 0) return 0;
  // Of a compressed extent the file has only a part of what is stored: that part in proportion, divided first
  // so that the products of a sound tree stay in 64 bits. Room that was set aside and not written is occupied
  // all the same.
  const auto held = Load<std::uint64_t>(content, 8);
  if (Load<std::uint8_t>(content, 16) == 0 || held == 0) return piece;
  const auto stored = Load<std::uint64_t>(content, 29);
  return stored / held * piece + stored % held * piece / held;
}

}  // namespace volindex::btrfs
