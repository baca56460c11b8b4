#include "platform/Volumes.h"

#include "fixtures/Listing.h"
#include "fixtures/MountNamespace.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"
#include "platform/posix/MountTable.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <sys/mount.h>
#include <algorithm>
#include <optional>

namespace {

TEST(MountedVolumes, RootOfAPathIsItsMountPoint) {
  EXPECT_EQ(VolumeRootOf(QStringLiteral("/proc/self/status")), QStringLiteral("/proc/"));
}

TEST(MountedVolumes, AFurtherMountOfADeviceOrOfMemoryIsNoFurtherVolume) {
  TTempTree tree;
  tree.MakeFolder("again");
  tree.MakeFolder("memory \\ \xff");
  const auto result = RunWithOwnMounts([&] {
    const QStringList before = Roots();
    const QByteArray memory = NameToBytes(tree.Path("memory \\ \xff"));
    if (!TmpfsMount(memory)) return false;
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
