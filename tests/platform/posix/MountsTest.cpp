// What is mounted: the system's table of it, what of it is a volume, and what a walk over folders makes of
// it.
#include "platform/posix/MountTable.h"

#include "fixtures/MountNamespace.h"
#include "fixtures/SystemTest.h"
#include "platform/XmlDocument.h"

#include <sys/mount.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <climits>
#include <filesystem>

namespace {

// Expects true of the body, which runs in a child with mounts of its own, where this user may have them.
void ExpectWithOwnMounts(const std::function<std::optional<bool>()>& body) {
  const auto result = RunWithOwnMounts(body);
  if (!result) GTEST_SKIP() << "this user may not mount";
  EXPECT_TRUE(*result);
}

TEST(MountTable, LinesAreTakenApart) {
  QByteArray told;
  for (const TMount& mount :
       ParseMountInfo("36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 - ext3 /dev/root rw,errors=continue\n"
                      "37 35 8:17 / /media/my\\040disk\\134x\\011y rw - vfat /dev/sd\\043b1 rw\n"
                      "38 35 0:50 /@home /home rw shared:7 master:2 propagate_from:1 - btrfs /dev/sda2 rw\n"
                      "1 2 3:4 / /a\\04 rw - ext4 /dev/a rw\n1 2 3:4 / /b\\999 rw - ext4 \\ rw"))
    told += QByteArray::number(mount.Id) + ' ' + QByteArray::number(major(mount.Device)) + ':' +
            QByteArray::number(minor(mount.Device)) + ' ' + mount.Root + ' ' + mount.Point + ' ' +
            mount.Type + ' ' + mount.Source + '\n';
  EXPECT_EQ(told,
            "36 98:0 /mnt1 /mnt2 ext3 /dev/root\n37 8:17 / /media/my disk\\x\ty vfat /dev/sd#b1\n"
            "38 0:50 /@home /home btrfs /dev/sda2\n1 3:4 / /a\\04 ext4 /dev/a\n1 3:4 / /b\\999 ext4 \\\n");
  for (const char* const line : {"", "36 35 98:0 / /mnt rw ext3 /dev/root rw", "36 35 98:0 / /mnt rw - ext3",
                                 "x 35 98:0 / /mnt rw - ext3 /dev/a rw",
                                 "36 35 98 / /mnt rw - ext3 /dev/a rw", "36 35 -", "\\", "- - - - - - - - -"})
    EXPECT_TRUE(ParseMountInfo(line).isEmpty()) << line;
}

// The devices of a computer that these tests make up: a removable one has none.
std::optional<dev_t> MadeUpDevice(const TMount& mount) {
  if (!mount.Source.startsWith("/dev/disk")) return std::nullopt;
  return mount.Source.mid(9).toUInt();
}

QByteArray PointsOf(const QVector<TMount>& mounts) {
  QByteArray points;
  for (const TMount& mount : mounts)
    points += mount.Point + ' ';
  return points;
}

QByteArray ChosenPoints(const QByteArray& text) {
  return PointsOf(ChooseFixedMounts(ParseMountInfo(text), MadeUpDevice));
}

TEST(MountTable, OneRowPerFixedDeviceUnderItsShortestMountPoint) {
  EXPECT_EQ(ChosenPoints("20 1 0:21 / /proc rw - proc proc rw\n"
                         "21 1 8:3 / /var/lib/data rw - xfs /dev/disk3 rw\n"
                         "22 1 8:2 / /home rw - ext4 /dev/disk2 rw\n"
                         "1 0 8:1 / / rw - ext4 /dev/disk1 rw\n"
                         "23 1 8:1 /srv /a rw - ext4 /dev/disk1 rw\n"
                         "24 1 8:3 / /data rw - xfs /dev/disk3 rw\n"
                         "25 1 8:17 / /media/stick rw - vfat /dev/stick1 rw\n"
                         "26 1 7:1 / /snap/core/1 ro - squashfs /dev/disk7 ro\n"
                         "27 1 0:44 / /net rw - nfs4 host:/export rw\n"
                         "28 1 8:4 / /boot/efi rw - vfat /dev/disk4 rw\n"),
            "/ /boot/efi /data /home ");
  EXPECT_EQ(ChosenPoints("1 0 0:30 / / rw - overlay overlay rw\n2 1 8:1 / /data rw - ext4 /dev/disk1 rw\n"),
            "/ /data ")
      << "the top is there whatever its source";
  EXPECT_EQ(ChosenPoints("1 0 7:0 / / ro - squashfs /dev/disk1 ro\n"), "/ ");
  EXPECT_EQ(ChosenPoints("2 1 0:30 /@ / rw - btrfs /dev/disk1 rw\n"), "/ ");
  EXPECT_EQ(ChosenPoints("1 0 0:2 / / rw - rootfs rootfs rw\n2 1 8:1 / / rw - ext4 /dev/disk1 rw\n"
                         "3 2 8:2 / /mnt rw - ext4 /dev/disk2 rw\n4 3 0:9 / /mnt rw - tmpfs tmpfs rw\n"
                         "5 2 8:1 / /again rw - ext4 /dev/disk1 rw\n"),
            "/ ")
      << "a mount covers an earlier one at its point";
}

TEST(MountTable, OtherVolumesAreTheRemovableAndTheNetworksOnes) {
  const QVector<TMount> mounts = ParseMountInfo(
      "1 0 8:1 / / rw - 9p host rw\n20 1 8:17 / /media/stick/again rw - vfat /dev/stick1 rw\n"
      "21 1 8:17 / /media/stick rw - vfat /dev/stick1 rw\n22 1 8:2 / /home rw - ext4 /dev/disk2 rw\n"
      "23 1 0:44 / /net rw - nfs4 host:/export rw\n24 1 0:45 / /far rw - fuse.sshfs me@host: rw\n"
      "25 1 0:46 / /covered rw - cifs //host/share rw\n26 1 0:47 / /covered rw - tmpfs tmpfs rw\n");
  const auto chosen =
      ChooseOtherMounts(mounts, [](const TMount& mount) { return mount.Source.startsWith("/dev/stick"); });
  EXPECT_EQ(PointsOf(chosen), "/far /media/stick /net ");
  for (const TMount& mount : chosen)
    EXPECT_EQ(IsNetworkMount(mount), mount.Point != "/media/stick") << mount.Point.data();
}

// As in a chroot, in a folder that was covered meanwhile, and with a kernel that does not tell a mount's
// number.
TEST(MountTable, TheMountOfTheTopIsAddedWhereTheTableLacksIt) {
  const auto withTop = [](const QByteArray& text, int id) {
    return WithTop(ParseMountInfo(text), TMount{id, makedev(8, 1), {}, "/", {}, "/dev/disk1"});
  };
  const auto idsOfTop = [&](const QByteArray& text, int id) {
    std::vector<int> ids;
    for (const TMount& mount : withTop(text, id))
      if (mount.Point == "/") ids.push_back(mount.Id);
    return ids;
  };
  EXPECT_THAT(idsOfTop("2 1 0:4 / /proc rw - proc proc rw\n", 7), ElementsAre(7));
  EXPECT_THAT(idsOfTop("5 1 8:1 / / rw - ext4 /dev/disk1 rw\n", 7), ElementsAre(5, 7));
  EXPECT_THAT(idsOfTop("7 1 8:1 / / rw - ext4 /dev/disk1 rw\n", 7), ElementsAre(7));
  EXPECT_THAT(idsOfTop("7 1 8:1 / / rw - ext4 /dev/disk1 rw\n", 0), ElementsAre(7));
  const auto mounts = withTop("2 1 8:1 /work /work rw - ext4 /dev/disk1 rw\n", 7);
  EXPECT_EQ(ChooseFixedMounts(mounts, MadeUpDevice).size(), 1) << "one row per device";
  EXPECT_TRUE(FurtherParts(mounts, 7).isEmpty()) << "it may show what the top shows";
}

TEST(MountTable, FurtherPartsOfAFileSystemShowNothingTwice) {
  const QVector<TMount> mounts = ParseMountInfo(
      "1 0 0:30 /@ / rw - btrfs /dev/disk1 rw\n2 1 0:30 /@home /home rw - btrfs /dev/disk1 rw\n"
      "3 1 0:30 /@/var/x /bound rw - btrfs /dev/disk1 rw\n4 1 0:30 / /mnt/whole rw - btrfs /dev/disk1 rw\n"
      "5 2 0:30 /@home/u /mnt/u rw - btrfs /dev/disk1 rw\n6 1 0:31 /@data /data rw - btrfs /dev/disk2 rw\n"
      "7 1 0:30 /@home2 /home2 rw - btrfs /dev/disk1 rw\n");
  EXPECT_EQ(PointsOf(FurtherParts(mounts, 1)), "/home /home2 ");
  for (const quint64 top : {2, 4, 99})  // nothing else lies below the mount point of 2
    EXPECT_EQ(PointsOf(FurtherParts(mounts, top)), "") << top;
}

TEST(VolumeLabels, TheLinkThatLeadsToTheDeviceNamesIt) {
  TTempTree tree;
  tree.MakeLink("zero", "/dev/zero");
  tree.MakeLink("My\\x20Disk\\x2f\\xc3\\xa9 \\x2", "/dev/null");
  tree.MakeLink("gone", "/dev/no such device");
  const QByteArray folder = NameToBytes(tree.Path());
  EXPECT_EQ(VolumeLabel(makedev(1, 3), folder), u"My Disk/é \\x2"_qs);
  EXPECT_EQ(VolumeLabel(makedev(1, 5), folder), u"zero"_qs);
  EXPECT_EQ(VolumeLabel(makedev(1, 7), folder) + VolumeLabel(makedev(1, 3), folder + "/missing"), QString());
}

// Paths around the limit, and one whose first group of components ends just at a doubled delimiter.
TEST(MountEnumeration, PathsOfJustTheSystemsLimitAreListed) {
  TTempTree tree;
  const QByteArray chain = tree.MakeChain(QByteArray(199, 'c'), 20);
  const qsizetype length = NameToBytes(tree.Path(chain)).size() + 1;
  for (qsizetype total = PATH_MAX - 2; total <= PATH_MAX + 2; ++total) {
    const QByteArray folder = chain + '/' + QByteArray(total - length, 'x');
    tree.MakeFile(folder + "/bottom", 9);
    for (const int delimiters : {0, 3})
      EXPECT_THAT(NamesIn(tree.Path(folder) + QString(delimiters, PathDelim)), UnorderedElementsAre("bottom"))
          << total;
  }
}

TEST(MountEnumeration, PseudoFileSystemsHoldNothingNorWhatIsMountedBelowAConfinedWalk) {
  TFileEnumeration files;
  for (const QString& folder : {u"/proc"_qs, u"/proc/self"_qs, u"/sys"_qs, u"/sys/class"_qs, u"/dev/pts"_qs})
    EXPECT_THAT(NamesIn(files, folder), IsEmpty()) << folder.toStdString();
  EXPECT_THAT(NamesIn(files, u"/dev"_qs), testing::Contains("null")) << "devices on a real one";
  files.ConfineTo(u"/proc"_qs);
  EXPECT_THAT(NamesIn(files, u"/proc"_qs), IsEmpty()) << "nor for a walk confined to one";
  files.ConfineTo(u"/"_qs);
  EXPECT_THAT(NamesIn(files, u"/"_qs), testing::Contains("proc"));
  for (const QString& folder : {u"/proc"_qs, u"/sys"_qs})
    EXPECT_THAT(NamesIn(files, folder), IsEmpty()) << folder.toStdString();
}

// The same file system shown twice, and another one, both inside the walked folder.
TEST(MountEnumeration, ConfinementEndsAtBindMountsAndOtherFileSystems) {
  TTempTree tree;
  tree.MakeAll({"outside/o", "top/bound/b", "top/mounted/m", "top/plain/p"});
  ExpectWithOwnMounts([&]() -> std::optional<bool> {
    if (!BindMount(NameToBytes(tree.Path("outside")), NameToBytes(tree.Path("top/bound")))) return false;
    if (!TmpfsMount(NameToBytes(tree.Path("top/mounted")))) return false;
    tree.MakeFile("top/mounted/t", 1);
    TFileEnumeration files;
    const auto lists = [&](const QByteArray& folder, const std::vector<QByteArray>& names) {
      return NamesIn(files, tree.Path(folder)) == names;
    };
    const bool freeWalk = lists("top/bound", {"o"}) && lists("top/mounted", {"t"});
    files.ConfineTo(tree.Path("top"));
    const bool confined = lists("top/bound", {}) && lists("top/mounted", {}) && lists("top/plain", {"p"});
    files.ConfineTo(tree.Path("top/mounted"));
    const bool elsewhere = lists("top/mounted", {"t"}) && lists("top/plain", {});
    files.ConfineTo(QString());
    const bool lifted = lists("top/mounted", {"t"}) && lists("top/plain", {"p"});
    files.ConfineTo(tree.Path("missing"));
    return freeWalk && confined && elsewhere && lifted && lists("top/bound", {"o"});
  });
}

// Subvolumes look like this: parts of one file system, mounted inside each other.
TEST(MountEnumeration, ConfinementHoldsPartsOfTheSameFileSystemOnce) {
  TTempTree tree;
  tree.MakeAll({"a/home/x", "a/again/x", "a/sub/s", "b/file", "b/deep/d", "top/x"});
  ExpectWithOwnMounts([&]() -> std::optional<bool> {
    const auto bind = [&](const char* from, const char* to) {
      return BindMount(NameToBytes(tree.Path(from)), NameToBytes(tree.Path(to)));
    };
    if (!bind("a", "top") || !bind("b", "top/home") || !bind("a/sub", "top/again")) return false;
    TFileEnumeration files;
    files.ConfineTo(tree.Path("top"));
    const auto count = [&](const QByteArray& folder) { return NamesIn(files, tree.Path(folder)).size(); };
    return count("top") == 3 && count("top/home") == 2 && count("top/home/deep") == 1 &&
           count("top/again") == 0 && count("a/sub") == 0;
  });
}

TEST(MountPaths, OnlyTopsOfFixedVolumesAreVolumeRoots) {
  TTempTree tree;
  tree.MakeLink("link to root", "/");
  EXPECT_TRUE(IsVolumeRoot(u"/"_qs) && IsVolumeRoot(u"//"_qs));
  for (const QString& path : {QString(), u"C:\\"_qs, u"home"_qs, u"/usr"_qs, u"/proc"_qs, u"/proc/"_qs,
                              tree.Path(), tree.Path("missing"), tree.Path("link to root")})
    EXPECT_FALSE(IsVolumeRoot(path)) << path.toStdString();
}

TEST(MountPaths, SameVolumeGoesByMountPoints) {
  TTempTree tree;
  tree.MakeAll({"a/", "b/"});
  tree.MakeLink("away", "/proc/self");
  EXPECT_TRUE(SameVolume(tree.Path(), tree.Path("a/")));
  EXPECT_TRUE(SameVolume(tree.Path("a"), tree.Path("not/there/yet"))) << "the nearest folder counts";
  EXPECT_TRUE(SameVolume(u"/proc/1"_qs, u"/proc/"_qs));
  EXPECT_FALSE(SameVolume(u"/proc"_qs, tree.Path()));
  EXPECT_FALSE(SameVolume(tree.Path("away"), tree.Path())) << "a link to a folder is where it leads";
  EXPECT_FALSE(SameVolume(QString(), QString()) || SameVolume(QString(), u"/"_qs));
  EXPECT_EQ(VolumeRootOf(u"/proc/self/status"_qs), u"/proc/"_qs);
  ExpectWithOwnMounts([&]() -> std::optional<bool> {
    if (!SameVolume(tree.Path("a"), tree.Path("b"))) return false;
    if (!BindMount(NameToBytes(tree.Path("a")), NameToBytes(tree.Path("b")))) return false;
    return !SameVolume(tree.Path("a"), tree.Path("b")) && SameVolume(tree.Path("b"), tree.Path("b/new")) &&
           !IsVolumeRoot(tree.Path("b"));
  });
}

TEST(MountedVolumes, AFurtherMountOfADeviceOrOfMemoryIsNoFurtherVolume) {
  TTempTree tree;
  tree.MakeAll({"again/", "memory \\ \xff/", "hosts", "inside/hosts"});
  ExpectWithOwnMounts([&]() -> std::optional<bool> {
    const QStringList before = Roots();
    const QByteArray memory = NameToBytes(tree.Path("memory \\ \xff"));
    const QByteArray hosts = NameToBytes(tree.Path("inside/hosts"));
    if (!TmpfsMount(memory) || !BindMount(NameToBytes(tree.Path("hosts")), hosts)) return false;
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
    return volumes.size() == 1 && volumes[0].Root == u"/" && volumes[0].Size == size &&
           IsVolumeRoot(u"/"_qs) && VolumeRootOf(u"/proc"_qs) != QString() && VolumeRootOf(u"/x"_qs) == u"/";
  };
  const auto withoutTable = RunInChild(inChroot);
  if (!withoutTable) GTEST_SKIP() << "this user may not change the root folder";
  EXPECT_TRUE(*withoutTable);
  ExpectWithOwnMounts([&] { return BindMount("/proc", root + "/proc") ? inChroot() : std::nullopt; });
}

// A real file system on a block device of its own, with all that the list asks of it.
TEST(MountedVolumes, AMountedDiskImageIsAFixedVolume) {
  TTempTree tree;
  tree.MakeHole("image", 8 << 20);
  tree.MakeFolder("a disk/inside");
  const QString disk = tree.Path("a disk");
  if (QProcess::execute(u"mkfs.ext4"_qs, {u"-q"_qs, tree.Path("image")}) != 0) GTEST_SKIP() << "no mkfs.ext4";
  ExpectWithOwnMounts([&]() -> std::optional<bool> {
    if (QProcess::execute(u"mount"_qs, {u"-o"_qs, u"loop"_qs, tree.Path("image"), disk}) != 0)
      return std::nullopt;
    const QVector<TVolume> volumes = ListFixedVolumes();
    const auto volume = std::find_if(volumes.begin(), volumes.end(),
                                     [&](const TVolume& row) { return row.Root == disk + PathDelim; });
    return volume != volumes.end() && volume->Size > 4 << 20 && volume->Free < volume->Size &&
           IsVolumeRoot(disk) && IsVolumeRoot(disk + PathDelim) &&
           !IsVolumeRoot(tree.Path("a disk/lost+found")) &&
           ExcludeTrailingPathDelimiter(disk + PathDelim) == disk + PathDelim &&
           ExtractFileDir(disk + u"/file"_qs) == disk + PathDelim && !SameVolume(disk, tree.Path()) &&
           VolumeRootOf(disk + u"/x"_qs) == disk + PathDelim;
  });
}

TEST(SpecialFiles, APipeIsNeverReadAndAFileOfTheKernelTellsNoLength) {
  TTempTree tree;
  tree.MakeSystemEntry("pipe");
  tree.MakeLink(".broken link", "nowhere at all");
  EXPECT_FALSE(ReadWholeFile(tree.Path("pipe")));
  EXPECT_THROW((void)LoadXml(tree.Path("pipe")), TXmlError);
  EXPECT_EQ(GetFileStatus(tree.Path(".broken link"))->Attributes, kAttributeReparse | kAttributeHidden);
  const QString lengthToldAs0 = u"/proc/self/status"_qs;
  EXPECT_TRUE(ReadWholeFile(lengthToldAs0)->contains("VmRSS"));
  EXPECT_FALSE(ReadWholeFile(lengthToldAs0, 100));
}

TEST(SpecialFiles, EntriesThatVanishMeanwhileAreLeftOut) {
  TTempTree tree;
  const std::vector<QByteArray> names{"a", "b", "c", "d"};
  for (const QByteArray& name : names)
    tree.MakeFile(name, 1);
  TFileEnumeration files;
  TFoundFile found;
  ASSERT_TRUE(files.First(tree.Path(), found));
  for (const QByteArray& name : names)
    if (name != NameToBytes(found.Name)) tree.Remove(name);
  EXPECT_FALSE(files.Next(found));
  EXPECT_FALSE(files.Next(found)) << "stays at the end";
}

}  // namespace
