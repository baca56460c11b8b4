#include "volindex/readers/ntfs/LinkLength.h"

#include <string_view>

#include "volindex/index/Wtf8.h"

namespace volindex::ntfs {

namespace {

// Tags ([MS-FSCC], Reparse Tags). Those between the subsystem's socket and its block device are its pipe and
// its character device.
constexpr std::uint32_t kJunction = 0xA0000003;
constexpr std::uint32_t kSymbolicLink = 0xA000000C;
constexpr std::uint32_t kSubsystemLink = 0xA000001D;
constexpr std::uint32_t kSubsystemSocket = 0x80000023;
constexpr std::uint32_t kSubsystemBlockDevice = 0x80000026;
constexpr std::size_t kReparseHeader = 8;

// The stored target of a junction or symbolic link, whose names follow a header of that many bytes.
std::optional<std::uint64_t> SubstituteLength(TBytes value, std::size_t header) {
  if (value.size() < kReparseHeader + header) return std::nullopt;
  const TBytes names = value.subspan(kReparseHeader + header);
  const auto offset = Load<std::uint16_t>(value, kReparseHeader);
  const auto length = Load<std::uint16_t>(value, kReparseHeader + 2);
  if (!Fits(offset, length, names.size())) return std::nullopt;
  const TBytes target = names.subspan(offset, length);
  static constexpr char16_t kPrefix[] = {u'\\', u'?', u'?', u'\\'};
  const bool absolute =
      target.size() >= sizeof kPrefix && std::memcmp(target.data(), kPrefix, sizeof kPrefix) == 0;
  return Wtf8Length(absolute ? target.subspan(sizeof kPrefix) : target);
}

bool BeginsWith(TBytes data, std::string_view mark) {
  return data.size() >= mark.size() && std::memcmp(data.data(), mark.data(), mark.size()) == 0;
}

}  // namespace

// The length that the value itself tells (at 4) is not used: who has written it may have told more than there
// is.
std::optional<std::uint64_t> ReparseTargetLength(TBytes value) {
  if (value.size() < kReparseHeader) return std::nullopt;
  const auto tag = Load<std::uint32_t>(value, 0);
  if (tag == kJunction) return SubstituteLength(value, 8);
  if (tag == kSymbolicLink) return SubstituteLength(value, 12);
  if (tag == kSubsystemLink && value.size() > kReparseHeader + 4) return value.size() - kReparseHeader - 4;
  if (tag >= kSubsystemSocket && tag <= kSubsystemBlockDevice) return 0;
  return std::nullopt;
}

std::optional<std::uint64_t> SpecialDataSize(TBytes data) {
  if (data.size() <= 1) return 0;  // a pipe is empty, a socket holds one byte
  if (BeginsWith(data, "IntxLNK\1")) return Wtf8Length(data.subspan(8));
  if (BeginsWith(data, std::string_view("IntxCHR", 8)) || BeginsWith(data, std::string_view("IntxBLK", 8)))
    return 0;
  return std::nullopt;
}

bool ReparseHoldsFiles(TBytes value) {
  return value.size() >= kReparseHeader && TagHoldsFiles(Load<std::uint32_t>(value, 0));
}

}  // namespace volindex::ntfs
