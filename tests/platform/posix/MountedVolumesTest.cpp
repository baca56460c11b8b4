#include "platform/Volumes.h"

#include "fixtures/Listing.h"
#include "fixtures/MountNamespace.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"
#include "platform/posix/MountTable.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <sys/mount.h>
#include <unistd.h>
#include <algorithm>
#include <filesystem>
#include <optional>

namespace {

TEST(MountedVolumes, RootOfAPathIsItsMountPoint) {
  EXPECT_EQ(VolumeRootOf(QStringLiteral("/proc/self/status")), QStringLiteral("/proc/"));
}

TEST(MountedVolumes, AFurtherMountOfADeviceOrOfMemoryIsNoFurtherVolume) {
  TTempTree tree;
  tree.MakeFolder("again");
  tree.MakeFolder("memory \\ \xff");
  tree.MakeFile("hosts", 1);
  tree.MakeFile("inside/hosts", 1);
  const auto result = RunWithOwnMounts([&] {
    const QStringList before = Roots();
    const QByteArray memory = NameToBytes(tree.Path("memory \\ \xff"));
    if (!TmpfsMount(memory)) return false;
    const QByteArray hosts = NameToBytes(tree.Path("inside/hosts"));
    if (!BindMount(NameToBytes(tree.Path("hosts")), hosts)) return false;
    for (const TMount& mount : ReadMountTable())
      if (mount.Point == hosts && FixedDeviceOf(mount)) return false;
    if (VolumeRootOf(tree.Path("inside/hosts")) != VolumeRootOf(tree.Path())) return false;
    const TMount top = FixedMounts().front();
    const QByteArray again = NameToBytes(tree.Path("again"));
    if (top.Source.startsWith("/dev/") && mount(top.Source, again, top.Type, 0, nullptr) == 0 &&
        VolumeRootOf(tree.Path("again/x")) != tree.Path("again/"))
      return false;
    return Roots() == before && VolumeRootOf(NameFromBytes(memory + "/new")) == NameFromBytes(memory + '/') &&
           !IsVolumeRoot(NameFromBytes(memory));
  });
  if (!result) GTEST_SKIP() << "this user may not mount";
  EXPECT_TRUE(*result);
}

// A process whose "/" is a folder of a mount: no line of the table, should there be one, names it.
TEST(MountedVolumes, InABareChrootTheTopIsAVolume) {
  TTempTree tree;
  tree.MakeFolder("proc");
  const QByteArray root = NameToBytes(tree.Path());
  const auto size = static_cast<qint64>(std::filesystem::space(root.toStdString()).capacity);
  const auto inChroot = [&]() -> std::optional<bool> {
    if (chroot(root) != 0 || chdir("/") != 0) return std::nullopt;
    const QVector<TVolume> volumes = ListFixedVolumes();
    const QString top = QStringLiteral("/");
    return volumes.size() == 1 && volumes[0].Root == top && volumes[0].Size == size && IsVolumeRoot(top) &&
           VolumeRootOf(QStringLiteral("/proc")) != QString() && VolumeRootOf(QStringLiteral("/x")) == top;
  };
  const auto withoutTable = RunInChild(inChroot);
  if (!withoutTable) GTEST_SKIP() << "this user may not change the root folder";
  EXPECT_TRUE(*withoutTable);
  const auto withTable =
      RunWithOwnMounts([&] { return BindMount("/proc", root + "/proc") ? inChroot() : std::nullopt; });
  EXPECT_TRUE(withTable.value_or(true)) << "with a table of mounts";
}

// A real file system on a block device of its own, with all that the list asks of it.
TEST(MountedVolumes, AMountedDiskImageIsAFixedVolume) {
  TTempTree tree;
  tree.MakeHole("image", 8 << 20);
  tree.MakeFolder("a disk/inside");
  const QString disk = tree.Path("a disk");
  const QStringList make{QStringLiteral("-q"), tree.Path("image")};
  const QStringList attach{QStringLiteral("-o"), QStringLiteral("loop"), tree.Path("image"), disk};
  if (QProcess::execute(QStringLiteral("mkfs.ext4"), make) != 0) GTEST_SKIP() << "no mkfs.ext4";
  const auto result = RunWithOwnMounts([&]() -> std::optional<bool> {
    if (QProcess::execute(QStringLiteral("mount"), attach) != 0) return std::nullopt;
    const QVector<TVolume> volumes = ListFixedVolumes();
    const auto volume = std::find_if(volumes.begin(), volumes.end(),
                                     [&](const TVolume& row) { return row.Root == disk + PathDelim; });
    return volume != volumes.end() && volume->Size > 4 << 20 && volume->Free < volume->Size &&
           IsVolumeRoot(disk) && IsVolumeRoot(disk + PathDelim) &&
           !IsVolumeRoot(tree.Path("a disk/lost+found")) &&
           ExcludeTrailingPathDelimiter(disk + PathDelim) == disk + PathDelim &&
           ExtractFileDir(disk + QLatin1String("/file")) == disk + PathDelim &&
           !SameVolume(disk, tree.Path()) && VolumeRootOf(disk + QLatin1String("/x")) == disk + PathDelim;
  });
  if (!result) GTEST_SKIP() << "this user may not mount images";
  EXPECT_TRUE(*result);
}

}  // namespace
