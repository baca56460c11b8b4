#include "volindex/posix/BtrfsVolume.h"

#include "volindex/posix/OpenFolder.h"
#include "volindex/system/ScanRoot.h"

#include <linux/btrfs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>

#include <array>
#include <cstring>

namespace volindex::btrfs {

namespace {

using TArguments = btrfs_ioctl_search_args_v2;

class TMountedTree : public TTreeSource {
 public:
  TMountedTree(TOpenFolder folder, std::string path) : FFolder(std::move(folder)), FPath(std::move(path)) {}

  // A tree of 0 is the one of the open folder. The kernel wants the arguments right in front of the room.
  [[nodiscard]] std::optional<TFound> Search(const TKey& from, std::uint64_t last, std::uint32_t most,
                                             std::span<std::byte> room) const override {
    TArguments arguments{};
    if (room.size() < sizeof arguments) return std::nullopt;
    // The bounds are two whole keys, not bounds of each number: all types of all numbers in between are
    // found.
    arguments.key.min_objectid = from.Number;
    arguments.key.min_type = from.Type;
    arguments.key.min_offset = from.Offset;
    arguments.key.max_objectid = last;
    arguments.key.max_type = 255;
    arguments.key.max_offset = ~__u64{0};
    arguments.key.max_transid = ~__u64{0};
    arguments.key.nr_items = most;
    arguments.buf_size = room.size() - sizeof arguments;
    std::memcpy(room.data(), &arguments, sizeof arguments);
    if (::ioctl(FFolder.Number(), BTRFS_IOC_TREE_SEARCH_V2, room.data()) != 0) return std::nullopt;
    std::memcpy(&arguments, room.data(), sizeof arguments);
    return TFound{arguments.key.nr_items, room.subspan(sizeof arguments)};
  }

  [[nodiscard]] std::optional<std::uint64_t> Generation() const override {
    btrfs_ioctl_get_subvol_info_args facts{};
    // Some kernels answer with 1 for a subvolume in another one.
    if (::ioctl(FFolder.Number(), BTRFS_IOC_GET_SUBVOL_INFO, &facts) < 0) return std::nullopt;
    return facts.generation != 0 ? std::optional(facts.generation) : std::nullopt;
  }

  [[nodiscard]] bool Flush(const std::atomic<bool>& stop) const override { return FlushVolume(FPath, stop); }

 private:
  TOpenFolder FFolder;
  std::string FPath;
};

[[nodiscard]] bool IsSubvolume(const TOpenFolder& folder, const TScanRoot& root) {
  // What is open may have been replaced since the root was described; its device and file system are asked
  // for again.
  struct stat status {};
  struct statfs volume {};
  return ::fstat(folder.Number(), &status) == 0 && status.st_ino == kRootNumber &&
         status.st_dev == makedev(root.DeviceMajor, root.DeviceMinor) &&
         ::fstatfs(folder.Number(), &volume) == 0 && volume.f_type == BTRFS_SUPER_MAGIC;
}

}  // namespace

std::unique_ptr<TTreeSource> OpenBtrfs(const TScanRoot& root) {
  TOpenFolder folder(root.Path);
  if (folder.Number() < 0 || !IsSubvolume(folder, root)) return nullptr;
  auto source = std::make_unique<TMountedTree>(std::move(folder), root.Path);
  std::array<std::byte, 1024> room;
  return source->Search({kRootNumber, kInode, 0}, kRootNumber, 1, room) ? std::move(source) : nullptr;
}

}  // namespace volindex::btrfs
