#include "platform/posix/MountTable.h"

#include "platform/FileEnumeration.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <algorithm>
#include <array>
#include <iterator>
#include <set>

namespace {

bool IsOctal(char c) {
  return c >= '0' && c <= '7';
}

// "\040" is a blank: a backslash and three octal digits stand for one byte.
QByteArray Unescape(const QByteArray& field) {
  QByteArray plain;
  for (qsizetype i = 0; i < field.size(); ++i) {
    if (field[i] == '\\' && i + 3 < field.size() && IsOctal(field[i + 1]) && IsOctal(field[i + 2]) &&
        IsOctal(field[i + 3])) {
      plain += static_cast<char>(field.mid(i + 1, 3).toInt(nullptr, 8));
      i += 3;
    } else {
      plain += field[i];
    }
  }
  return plain;
}

// "8:1"
std::optional<dev_t> ParseDevice(const QByteArray& field) {
  const qsizetype colon = field.indexOf(':');
  bool majorOk = false;
  bool minorOk = false;
  const unsigned major = field.left(std::max<qsizetype>(colon, 0)).toUInt(&majorOk);
  const unsigned minor = field.mid(colon + 1).toUInt(&minorOk);
  if (!majorOk || !minorOk) return std::nullopt;
  return makedev(major, minor);
}

// id parent major:minor root point options [tags...] - type source superoptions
// The man page proc(5) tells it under mountinfo. The tags are any number of fields, hence the search for the
// dash, which comes behind the sixth field at the earliest.
std::optional<TMount> ParseLine(const QByteArray& line) {
  const QList<QByteArray> fields = line.split(' ');
  const qsizetype dash = fields.indexOf("-", 6);
  if (dash < 0 || dash + 2 >= fields.size()) return std::nullopt;
  bool idOk = false;
  const int id = fields[0].toInt(&idOk);
  const std::optional<dev_t> device = ParseDevice(fields[2]);
  if (!idOk || !device) return std::nullopt;
  return TMount{id,
                *device,
                Unescape(fields[3]),
                Unescape(fields[4]),
                Unescape(fields[dash + 1]),
                Unescape(fields[dash + 2])};
}

bool IsReadOnlyImage(const TMount& mount) {
  static const QList<QByteArray> types{"squashfs", "iso9660", "erofs", "cramfs", "romfs"};
  return types.contains(mount.Type);
}

QByteArray DeviceFolder(dev_t device) {
  return "/sys/dev/block/" + QByteArray::number(major(device)) + ':' + QByteArray::number(minor(device));
}

// A partition has no mark of its own: its disk has it.
bool IsRemovable(dev_t device) {
  for (const char* const name : {"/removable", "/../removable"}) {
    if (const auto mark = ReadWholeFile(NameFromBytes(DeviceFolder(device) + name)))
      return mark->trimmed() == "1";
  }
  return false;
}

// Later lines cover earlier ones of the same mount point.
QVector<TMount> WithoutCovered(const QVector<TMount>& mounts) {
  QVector<TMount> visible;
  std::set<QByteArray> seen;
  std::copy_if(mounts.rbegin(), mounts.rend(), std::back_inserter(visible),
               [&](const TMount& mount) { return seen.insert(mount.Point).second; });
  return visible;
}

// Where the system has the device's file; nothing for a file system without a device.
QByteArray DeviceFile(dev_t device) {
  const QByteArray facts =
      ReadWholeFile(NameFromBytes(DeviceFolder(device) + "/uevent")).value_or(QByteArray());
  for (const QByteArray& line : facts.split('\n'))
    if (line.startsWith("DEVNAME=")) return "/dev/" + line.mid(8);
  return {};
}

bool IsWithin(const QByteArray& path, const QByteArray& folder) {
  return path == folder || path.startsWith(folder == "/" ? folder : folder + '/');
}

bool ShorterPoint(const TMount& a, const TMount& b) {
  return a.Point.size() != b.Point.size() ? a.Point.size() < b.Point.size() : a.Point < b.Point;
}

QByteArray UnescapeLabel(const QByteArray& name) {
  QByteArray label;
  for (qsizetype i = 0; i < name.size(); ++i) {
    bool isHex = false;
    const bool escaped = name.mid(i, 2) == "\\x" && i + 4 <= name.size();
    const int value = escaped ? name.mid(i + 2, 2).toInt(&isHex, 16) : 0;
    label += isHex ? static_cast<char>(value) : name[i];
    if (isHex) i += 3;
  }
  return label;
}

}  // namespace

QVector<TMount> ParseMountInfo(const QByteArray& text) {
  QVector<TMount> mounts;
  for (const QByteArray& line : text.split('\n')) {
    if (const auto mount = ParseLine(line)) mounts.append(*mount);
  }
  return mounts;
}

std::optional<TMount> MountOfTop() {
  const auto place = MountPlaceOf(OpenPath("/", O_PATH | O_DIRECTORY).Get());
  if (!place) return std::nullopt;
  return TMount{static_cast<int>(place->MountId), place->Device, {}, "/", {}, DeviceFile(place->Device)};
}

QVector<TMount> WithTop(QVector<TMount> mounts, const TMount& top) {
  const bool isNamed = std::any_of(mounts.begin(), mounts.end(), [&](const TMount& mount) {
    return mount.Point == "/" && (top.Id == 0 || mount.Id == top.Id);
  });
  if (!isNamed) mounts.append(top);
  return mounts;
}

QVector<TMount> ReadMountTable() {
  const QVector<TMount> mounts =
      ParseMountInfo(ReadWholeFile(QStringLiteral("/proc/self/mountinfo")).value_or(QByteArray()));
  const auto top = MountOfTop();
  return top ? WithTop(mounts, *top) : mounts;
}

QVector<TMount> ChooseFixedMounts(const QVector<TMount>& mounts, const TFixedDeviceOf& fixedDeviceOf) {
  QVector<TMount> candidates = WithoutCovered(mounts);
  std::sort(candidates.begin(), candidates.end(), ShorterPoint);
  QVector<TMount> chosen;
  std::set<dev_t> devices;
  for (const TMount& mount : std::as_const(candidates)) {
    const bool isTop = mount.Point == "/";
    const std::optional<dev_t> device = IsReadOnlyImage(mount) ? std::nullopt : fixedDeviceOf(mount);
    if (isTop || (device && !devices.contains(*device))) chosen.append(mount);
    // Of the top as well, so that its device is not listed under another mount point again.
    if (device) devices.insert(*device);
  }
  std::sort(chosen.begin(), chosen.end(), [](const TMount& a, const TMount& b) { return a.Point < b.Point; });
  return chosen;
}

// The device is that of the mount's source: where several subvolumes of a file system are mounted, their own
// numbers are none of a block device.
std::optional<dev_t> FixedDeviceOf(const TMount& mount) {
  struct stat source;
  if (!mount.Source.startsWith('/') || stat(mount.Source, &source) != 0 || !S_ISBLK(source.st_mode))
    return std::nullopt;
  const auto place = MountPlaceOf(OpenPath(mount.Point, O_PATH | O_DIRECTORY).Get());
  const bool reachable = place && (place->MountId == 0 || place->MountId == static_cast<quint64>(mount.Id));
  if (!reachable || IsRemovable(source.st_rdev)) return std::nullopt;
  return source.st_rdev;
}

bool IsNetworkMount(const TMount& mount) {
  static const QList<QByteArray> types{
      "nfs",        "nfs4",        "cifs",        "smb3",      "smbfs",          "9p",
      "afs",        "ceph",        "coda",        "davfs",     "glusterfs",      "ncpfs",
      "fuse.sshfs", "fuse.rclone", "fuse.davfs2", "fuse.s3fs", "fuse.curlftpfs", "fuse.glusterfs"};
  return types.contains(mount.Type);
}

bool IsOnRemovableDevice(const TMount& mount) {
  struct stat source;
  return mount.Source.startsWith('/') && stat(mount.Source, &source) == 0 && S_ISBLK(source.st_mode) &&
         IsRemovable(source.st_rdev);
}

QVector<TMount> ChooseOtherMounts(const QVector<TMount>& mounts,
                                  const std::function<bool(const TMount&)>& isRemovable) {
  QVector<TMount> candidates = WithoutCovered(mounts);
  std::sort(candidates.begin(), candidates.end(), ShorterPoint);
  QVector<TMount> chosen;
  std::set<QByteArray> sources;
  for (const TMount& mount : std::as_const(candidates)) {
    const bool isOther = mount.Point != "/" && (IsNetworkMount(mount) || isRemovable(mount));
    if (isOther && sources.insert(mount.Source).second) chosen.append(mount);
  }
  std::sort(chosen.begin(), chosen.end(), [](const TMount& a, const TMount& b) { return a.Point < b.Point; });
  return chosen;
}

QVector<TMount> FixedMounts() {
  return ChooseFixedMounts(ReadMountTable(), FixedDeviceOf);
}

std::optional<TMountPlace> MountPlaceOf(int descriptor) {
  struct statx status;
  if (statx(descriptor, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0) return std::nullopt;
  TMountPlace place;
  if ((status.stx_mask & STATX_MNT_ID) != 0) place.MountId = status.stx_mnt_id;
  place.Device = makedev(status.stx_dev_major, status.stx_dev_minor);
  return place;
}

std::optional<TMountPlace> NearestPlace(QByteArray path) {
  while (!path.isEmpty()) {
    const TFileDescriptor folder = OpenPath(path, O_PATH | O_DIRECTORY);
    if (folder.IsOpen()) return MountPlaceOf(folder.Get());
    const qsizetype slash = path.lastIndexOf('/');
    path.truncate(slash == 0 && path.size() > 1 ? 1 : std::max<qsizetype>(slash, 0));
  }
  return std::nullopt;
}

QVector<TMount> FurtherParts(const QVector<TMount>& mounts, quint64 topId) {
  const auto top = std::find_if(mounts.begin(), mounts.end(),
                                [&](const TMount& mount) { return static_cast<quint64>(mount.Id) == topId; });
  if (top == mounts.end()) return {};
  QVector<TMount> parts;
  for (const TMount& mount : mounts) {
    const auto overlaps = [&](const TMount& part) {
      return IsWithin(mount.Root, part.Root) || IsWithin(part.Root, mount.Root);
    };
    if (mount.Device == top->Device && IsWithin(mount.Point, top->Point) && !overlaps(*top) &&
        std::none_of(parts.begin(), parts.end(), overlaps))
      parts.append(mount);
  }
  return parts;
}

bool IsPseudoFileSystem(unsigned long type) {
  static constexpr std::array<unsigned long, 28> types{
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
  return std::find(types.begin(), types.end(), type) != types.end();
}

QString VolumeLabel(dev_t device, const QByteArray& labelFolder) {
  TFileEnumeration links;
  TFoundFile link;
  for (bool more = links.First(NameFromBytes(labelFolder), link); more; more = links.Next(link)) {
    const QByteArray name = NameToBytes(link.Name);
    struct stat status;
    if (stat(labelFolder + '/' + name, &status) == 0 && status.st_rdev == device)
      return NameFromBytes(UnescapeLabel(name));
  }
  return {};
}
