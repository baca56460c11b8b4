// The mounted file systems, as the kernel lists them. The parsing and choosing work on values, so that
// tables of any computer can be tested.
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <sys/types.h>
#include <functional>
#include <optional>

struct TMount {
  int Id = 0;         // the kernel's number of the mount
  dev_t Device = 0;   // of the file system
  QByteArray Root;    // the part of the file system that is mounted, "/" for all of it; empty: not known
  QByteArray Point;   // where it is mounted, without a delimiter at its end unless it is "/"
  QByteArray Type;    // "ext4"
  QByteArray Source;  // "/dev/sda1", or any text for a file system without a device
};

// The lines of a mountinfo file, in their order; a line that is none is left out.
[[nodiscard]] QVector<TMount> ParseMountInfo(const QByteArray& text);

// The mount that holds "/". The kernel's table has no line for it where the process lives in a folder of that
// mount (chroot), or where the table itself is out of reach.
[[nodiscard]] std::optional<TMount> MountOfTop();

// The mounts, and behind them the top unless they have it.
[[nodiscard]] QVector<TMount> WithTop(QVector<TMount> mounts, const TMount& top);

// What is mounted now, as this process sees it; the mount of "/" is always among it.
[[nodiscard]] QVector<TMount> ReadMountTable();

// The number of the device below a mount, if that is a block device that stays in the computer and the mount
// is a folder that can be reached at its mount point.
using TFixedDeviceOf = std::function<std::optional<dev_t>(const TMount&)>;

// One mount per fixed device, the one with the shortest mount point; the one of "/" always, and first;
// the others by mount point. Images that are read-only by their nature are no volumes.
[[nodiscard]] QVector<TMount> ChooseFixedMounts(const QVector<TMount>& mounts,
                                                const TFixedDeviceOf& fixedDeviceOf);

// The answer for this computer.
[[nodiscard]] std::optional<dev_t> FixedDeviceOf(const TMount& mount);

// The fixed mounts of this computer.
[[nodiscard]] QVector<TMount> FixedMounts();

// True for a file system that another computer serves.
[[nodiscard]] bool IsNetworkMount(const TMount& mount);

// True for a mounted block device that can be taken out of the computer.
[[nodiscard]] bool IsOnRemovableDevice(const TMount& mount);

// The network mounts and those on removable devices, of several with one source the one with the shortest
// mount point; by mount point.
[[nodiscard]] QVector<TMount> ChooseOtherMounts(const QVector<TMount>& mounts,
                                                const std::function<bool(const TMount&)>& isRemovable);

// Where something lies: two places are equal if they are on the same mount and file system.
struct TMountPlace {
  quint64 MountId = 0;  // 0 where the kernel does not tell
  dev_t Device = 0;

  bool operator==(const TMountPlace&) const = default;
};

// The place of an open file; nothing if it can't be told.
[[nodiscard]] std::optional<TMountPlace> MountPlaceOf(int descriptor);

// The mount that holds the folder at the path, or the nearest folder above it that exists. A link to a folder
// counts as that folder; a file, be it a mount point of its own, belongs to the folder that holds it.
[[nodiscard]] std::optional<TMountPlace> NearestPlace(QByteArray path);

// The other mounts below the point of the top one that show parts of its file system which neither the top
// nor another of them shows, as the subvolumes of one file system are mounted side by side.
[[nodiscard]] QVector<TMount> FurtherParts(const QVector<TMount>& mounts, quint64 topId);

// True for the f_type of a file system that shows the kernel's own data as files.
[[nodiscard]] bool IsPseudoFileSystem(unsigned long type);

// The names that users give to volumes.

// The label of a device from a folder of links, each named after a label and leading to its device; empty if
// no link leads there. A label's special bytes are written "\x20" in the link's name.
[[nodiscard]] QString VolumeLabel(dev_t device, const QByteArray& labelFolder);
