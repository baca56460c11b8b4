// A line of the mount table (man page proc(5), mountinfo):
//
//   36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 - ext3 /dev/root rw,errors=continue
//   id parent device root point options optional… "-" file system, source, its options
//
// The optional fields are any number, so what follows them is found by the "-". The table is read anew for
// each scan.
#include "volindex/system/ScanRoot.h"

#include "volindex/index/RunThreads.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

namespace volindex {

namespace {

// A disk that rotates loses more by moving between the places of several threads than it gains by ordering
// them.
constexpr unsigned kRotatingThreads = 2;

struct TMount {
  uint64_t Id = 0;
  std::string DeviceNumber;  // "8:1"
  std::string Root;          // which part of the volume is mounted, "/" for all of it
  std::string Point;
  std::string FileSystem;
  std::string Source;
};

// The mount table writes blank, tab, newline and backslash as a backslash and three octal digits.
std::string Unescape(const std::string& text) {
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == '\\' && text.size() - i > 3;
    plain += escaped ? static_cast<char>(std::strtol(text.substr(i + 1, 3).c_str(), nullptr, 8)) : text[i];
    if (escaped) i += 3;
  }
  return plain;
}

bool ParseMount(const std::string& line, TMount& mount) {
  std::istringstream fields(line);
  std::string parent;
  std::string field;
  fields >> mount.Id >> parent >> mount.DeviceNumber >> mount.Root >> mount.Point;
  while (fields >> field && field != "-") {
  }
  fields >> mount.FileSystem >> mount.Source;
  mount.Root = Unescape(mount.Root);
  mount.Point = Unescape(mount.Point);
  mount.Source = Unescape(mount.Source);
  return !fields.fail();
}

std::vector<TMount> ReadMounts() {
  std::vector<TMount> mounts;
  std::ifstream table("/proc/self/mountinfo");
  TMount mount;
  for (std::string line; std::getline(table, line);) {
    if (ParseMount(line, mount)) mounts.push_back(mount);
  }
  return mounts;
}

bool IsPseudoFileSystem(unsigned long type) {
  static constexpr std::array<unsigned long, 28> kTypes{
      0x9fa0,      // proc
      0x62656572,  // sysfs
      0x27e0eb,    // cgroup
      0x63677270,  // cgroup2
      0x64626720,  // debugfs
      0x74726163,  // tracefs
      0x73636673,  // securityfs
      0x6165676c,  // pstore
      0xcafe4a11,  // bpf
      0x62656570,  // configfs
      0x65735543,  // fusectl
      0x1cd1,      // devpts
      0x19800202,  // mqueue
      0x958458f6,  // hugetlbfs
      0x42494e4d,  // binfmt_misc
      0xde5e81e4,  // efivarfs
      0x0187,      // autofs
      0x67596969,  // rpc_pipefs
      0x6e736673,  // nsfs
      0x6e667364,  // nfsd
      0xf97cff8c,  // selinuxfs
      0x43415d53,  // smackfs
      0x5a3c69f0,  // apparmorfs
      0x07655821,  // resctrl
      0x6c6f6f70,  // binder
      0xabba1974,  // xenfs
      0x50495045,  // pipefs
      0x534f434b,  // sockfs
  };
  return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

bool IsReadableFolder(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return false;
  struct statfs facts {};
  const bool known = ::fstatfs(descriptor, &facts) == 0;
  ::close(descriptor);
  return known && !IsPseudoFileSystem(static_cast<unsigned long>(facts.f_type));
}

std::string Resolved(const std::string& path) {
  char* resolved = ::realpath(path.c_str(), nullptr);
  if (resolved == nullptr) return {};
  std::string text = resolved;
  std::free(resolved);
  return text;
}

// The mount that is seen at the path: of several at one point the one with the folder's mount id.
const TMount* MountAt(const std::vector<TMount>& mounts, const std::string& path) {
  struct statx facts {};
  const bool hasId = ::statx(AT_FDCWD, path.c_str(), AT_NO_AUTOMOUNT, STATX_MNT_ID, &facts) == 0 &&
                     (facts.stx_mask & STATX_MNT_ID) != 0;
  // From behind: of mounts over one another the last one is seen.
  const auto found = std::find_if(mounts.rbegin(), mounts.rend(), [&](const TMount& mount) {
    return mount.Point == path && (!hasId || mount.Id == facts.stx_mnt_id);
  });
  return found == mounts.rend() ? nullptr : &*found;
}

std::string SystemDevicePath(const std::string& number) {
  return "/sys/dev/block/" + number;
}

bool IsBlockDevice(const std::string& path, const std::string& number) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISBLK(facts.st_mode) &&
         std::to_string(major(facts.st_rdev)) + ":" + std::to_string(minor(facts.st_rdev)) == number;
}

// The mount's own word for its device, or where that is none ("/dev/root"), the system's.
std::string DeviceOf(const TMount& mount) {
  if (IsBlockDevice(mount.Source, mount.DeviceNumber)) return mount.Source;
  std::ifstream facts(SystemDevicePath(mount.DeviceNumber) + "/uevent");
  static constexpr std::string_view kKey = "DEVNAME=";
  for (std::string line; std::getline(facts, line);) {
    const std::string path = line.starts_with(kKey) ? "/dev/" + line.substr(kKey.size()) : std::string();
    if (IsBlockDevice(path, mount.DeviceNumber)) return path;
  }
  return {};
}

// A subvolume is a volume of its own, wherever it lies in the one that is mounted.
bool ShowsAll(const TMount& mount, const struct stat& facts) {
  constexpr ino_t kSubvolumeRoot = 256;
  return mount.Root == "/" || (mount.FileSystem == "btrfs" && facts.st_ino == kSubvolumeRoot);
}

std::vector<std::string> PointsBelow(const std::vector<TMount>& mounts, const std::string& path) {
  const std::string prefix = path == "/" ? path : path + '/';
  std::vector<std::string> points;
  for (const TMount& mount : mounts) {
    if (mount.Point.size() > prefix.size() && mount.Point.starts_with(prefix))
      points.push_back(mount.Point.substr(prefix.size()));
  }
  return points;
}

}  // namespace

std::optional<TScanRoot> DescribeScanRoot(const std::string& path) {
  TScanRoot root;
  root.Path = Resolved(path);
  struct stat facts {};
  if (root.Path.empty() || !IsReadableFolder(root.Path) || ::stat(root.Path.c_str(), &facts) != 0)
    return std::nullopt;
  root.DeviceMajor = major(facts.st_dev);
  root.DeviceMinor = minor(facts.st_dev);
  const std::vector<TMount> mounts = ReadMounts();
  root.MountsBelow = PointsBelow(mounts, root.Path);
  const TMount* mount = MountAt(mounts, root.Path);
  if (mount == nullptr || !ShowsAll(*mount, facts)) return root;
  root.IsVolumeRoot = true;
  root.FileSystem = mount->FileSystem;
  root.Device = DeviceOf(*mount);
  return root;
}

bool FlushVolume(const std::string& path, const std::atomic<bool>& stop) {
  return RunAbandonable(stop, [path] {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool flushed = ::syncfs(descriptor) == 0;
    ::close(descriptor);
    return flushed;
  });
}

std::optional<uint64_t> UsedOnVolume(const TScanRoot& root) {
  static constexpr std::string_view kLayered[] = {"overlay", "aufs", "ecryptfs"};
  struct statvfs facts {};
  if (std::find(std::begin(kLayered), std::end(kLayered), root.FileSystem) != std::end(kLayered) ||
      ::statvfs(root.Path.c_str(), &facts) != 0 || facts.f_blocks == 0 || facts.f_bfree > facts.f_blocks)
    return std::nullopt;
  return uint64_t{facts.f_blocks - facts.f_bfree} * facts.f_frsize;
}

unsigned ThreadsFor(const TScanRoot& root) {
  const unsigned processors = std::max(std::thread::hardware_concurrency(), 1U);
  const std::string device =
      SystemDevicePath(std::to_string(root.DeviceMajor) + ":" + std::to_string(root.DeviceMinor));
  // A partition's queue is that of the disk above it.
  for (const char* queue : {"/queue/rotational", "/../queue/rotational"}) {
    std::ifstream file(device + queue);
    if (int rotates = 0; file >> rotates)
      return rotates != 0 ? std::min(processors, kRotatingThreads) : processors;
  }
  return processors;
}

}  // namespace volindex
