#include "volindex/posix/XfsVolume.h"

#include "volindex/posix/OpenFolder.h"

#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>

#include <array>
#include <bit>
#include <cstring>

namespace volindex::xfs {

namespace {

// The requests of the kernel's XFS driver and what they carry, as far as these are used here.
// As the man pages ioctl_xfs_bulkstat(2), ioctl_xfs_inumbers(2) and ioctl_xfs_fsgeometry(2) lay them out.
// They are written down here since the kernel's headers for programs do not have them.
struct TRequest {
  std::uint64_t Number;  // the first that is asked for
  std::uint32_t Flags;
  std::uint32_t Room;    // records
  std::uint32_t Filled;  // by the answer
  std::uint32_t Group;
  std::array<std::uint64_t, 5> Reserved;
};
static_assert(sizeof(TRequest) == kHeaderSize);
constexpr unsigned long kListInodes = _IOR('X', 127, TRequest);
constexpr unsigned long kListChunks = _IOR('X', 128, TRequest);

struct TGeometry {
  std::uint32_t BlockSize;
  std::uint32_t RealtimeExtent;
  std::uint32_t GroupBlocks;
  std::uint32_t Groups;
  std::uint32_t LogBlocks;
  std::uint32_t SectorSize;
  std::uint32_t InodeSize;
  std::uint32_t MostPercent;
  std::uint64_t Blocks;
  std::array<std::byte, 216> Rest;
};
static_assert(sizeof(TGeometry) == 256);
constexpr unsigned long kTellGeometry = _IOR('X', 126, TGeometry);

constexpr std::uint32_t kLargestBlock = 64u << 10;

// Geometry is the volume's word too: what is divided by, shifted by or multiplied later is bounded here.
[[nodiscard]] bool HoldsTogether(const TGeometry& geometry) {
  return std::has_single_bit(geometry.BlockSize) && geometry.BlockSize <= kLargestBlock &&
         std::has_single_bit(geometry.InodeSize) && geometry.InodeSize <= geometry.BlockSize &&
         geometry.GroupBlocks != 0 && geometry.Blocks <= ~std::uint64_t{0} / geometry.BlockSize;
}

class TMountedInodes : public TInodeSource {
 public:
  explicit TMountedInodes(TOpenFolder root) : FRoot(std::move(root)) {}

  // Whether it is a volume that answers. The right to ask is checked with each question.
  [[nodiscard]] bool Open() {
    std::array<std::byte, kHeaderSize + kChunkSize> answer;
    return ::ioctl(FRoot.Number(), kTellGeometry, &FGeometry) == 0 && HoldsTogether(FGeometry) &&
           Ask(TQuestion::Chunks, 0, 1, answer);
  }

  [[nodiscard]] bool Ask(TQuestion question, std::uint64_t from, std::uint32_t most,
                         std::span<std::byte> answer) const override {
    TRequest request{};
    request.Number = from;
    request.Room = most;
    std::memcpy(answer.data(), &request, sizeof request);
    return ::ioctl(FRoot.Number(), question == TQuestion::Chunks ? kListChunks : kListInodes,
                   answer.data()) == 0;
  }

  [[nodiscard]] std::uint64_t MostInodes() const override {
    return FGeometry.Blocks * FGeometry.BlockSize / FGeometry.InodeSize;
  }

  [[nodiscard]] std::uint32_t BlockSize() const override { return FGeometry.BlockSize; }

  // A number is made of the group, the block within it and the inode within the block.
  [[nodiscard]] unsigned GroupBits() const override {
    return static_cast<unsigned>(std::bit_width(FGeometry.GroupBlocks - 1)) +
           static_cast<unsigned>(std::countr_zero(FGeometry.BlockSize / FGeometry.InodeSize));
  }

 private:
  TOpenFolder FRoot;
  TGeometry FGeometry{};
};

[[nodiscard]] bool LiesOn(const TOpenFolder& folder, const TScanRoot& root) {
  struct stat status {};
  struct statfs volume {};
  return ::fstat(folder.Number(), &status) == 0 &&
         status.st_dev == makedev(root.DeviceMajor, root.DeviceMinor) &&
         ::fstatfs(folder.Number(), &volume) == 0 && volume.f_type == XFS_SUPER_MAGIC;
}

}  // namespace

std::unique_ptr<TInodeSource> OpenXfs(const TScanRoot& root) {
  if (!root.IsVolumeRoot || root.FileSystem != "xfs") return nullptr;
  TOpenFolder folder(root.Path);
  if (folder.Number() < 0 || !LiesOn(folder, root)) return nullptr;
  auto source = std::make_unique<TMountedInodes>(std::move(folder));
  return source->Open() ? std::move(source) : nullptr;
}

}  // namespace volindex::xfs
