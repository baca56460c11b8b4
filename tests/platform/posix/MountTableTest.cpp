#include "platform/posix/MountTable.h"

#include "fixtures/TempTree.h"
#include "platform/Paths.h"
#include "platform/posix/VolumeLabels.h"

#include <gmock/gmock.h>

#include <sys/sysmacros.h>

namespace {

using ::testing::ElementsAre;

TEST(MountTable, LinesAreTakenApart) {
  const QVector<TMount> mounts = ParseMountInfo(
      "36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 - ext3 /dev/root rw,errors=continue\n"
      "37 35 8:17 / /media/my\\040disk\\134x\\011y rw - vfat /dev/sd\\043b1 rw\n"
      "38 35 0:50 /@home /home rw shared:7 master:2 propagate_from:1 - btrfs /dev/sda2 rw\n");
  ASSERT_EQ(mounts.size(), 3);
  EXPECT_EQ(mounts[0].Id, 36);
  EXPECT_EQ(mounts[0].Device, makedev(98, 0));
  EXPECT_EQ(mounts[0].Root, "/mnt1");
  EXPECT_EQ(mounts[0].Point, "/mnt2");
  EXPECT_EQ(mounts[0].Type, "ext3");
  EXPECT_EQ(mounts[0].Source, "/dev/root");
  EXPECT_EQ(mounts[1].Point, "/media/my disk\\x\ty");
  EXPECT_EQ(mounts[1].Source, "/dev/sd#b1");
  EXPECT_EQ(mounts[2].Root, "/@home");
  EXPECT_EQ(mounts[2].Source, "/dev/sda2");
}

TEST(MountTable, LinesThatAreNoneAreLeftOut) {
  EXPECT_TRUE(ParseMountInfo("").isEmpty());
  for (const char* const line : {"36 35 98:0 / /mnt rw ext3 /dev/root rw", "36 35 98:0 / /mnt rw - ext3",
                                 "x 35 98:0 / /mnt rw - ext3 /dev/a rw",
                                 "36 35 98 / /mnt rw - ext3 /dev/a rw", "36 35 -", "\\", "- - - - - - - - -"})
    EXPECT_TRUE(ParseMountInfo(line).isEmpty()) << line;
  const QVector<TMount> odd =
      ParseMountInfo("1 2 3:4 / /a\\04 rw - ext4 /dev/a rw\n1 2 3:4 / /b\\999 rw - ext4 \\ rw");
  ASSERT_EQ(odd.size(), 2);
  EXPECT_EQ(odd[0].Point, "/a\\04") << "no whole escape";
  EXPECT_EQ(odd[1].Point, "/b\\999");
}

// The devices of a computer that these tests make up: a removable one has none.
std::optional<dev_t> MadeUpDevice(const TMount& mount) {
  if (!mount.Source.startsWith("/dev/disk")) return std::nullopt;
  return mount.Source.mid(9).toUInt();
}

std::vector<std::string> ChosenPoints(const QByteArray& text) {
  std::vector<std::string> points;
  for (const TMount& mount : ChooseFixedMounts(ParseMountInfo(text), MadeUpDevice))
    points.push_back(mount.Point.toStdString());
  return points;
}

TEST(MountTable, OneRowPerFixedDeviceUnderItsShortestMountPoint) {
  EXPECT_THAT(ChosenPoints("20 1 0:21 / /proc rw - proc proc rw\n"
                           "21 1 8:3 / /var/lib/data rw - xfs /dev/disk3 rw\n"
                           "22 1 8:2 / /home rw - ext4 /dev/disk2 rw\n"
                           "1 0 8:1 / / rw - ext4 /dev/disk1 rw\n"
                           "23 1 8:1 /srv /a rw - ext4 /dev/disk1 rw\n"
                           "24 1 8:3 / /data rw - xfs /dev/disk3 rw\n"
                           "25 1 8:17 / /media/stick rw - vfat /dev/stick1 rw\n"
                           "26 1 7:1 / /snap/core/1 ro - squashfs /dev/disk7 ro\n"
                           "27 1 0:44 / /net rw - nfs4 host:/export rw\n"
                           "28 1 8:4 / /boot/efi rw - vfat /dev/disk4 rw\n"),
              ElementsAre("/", "/boot/efi", "/data", "/home"));
}

TEST(MountTable, OtherVolumesAreTheRemovableAndTheNetworksOnes) {
  const QByteArray table =
      "1 0 8:1 / / rw - 9p host rw\n"
      "20 1 8:17 / /media/stick/again rw - vfat /dev/stick1 rw\n"
      "21 1 8:17 / /media/stick rw - vfat /dev/stick1 rw\n"
      "22 1 8:2 / /home rw - ext4 /dev/disk2 rw\n"
      "23 1 0:44 / /net rw - nfs4 host:/export rw\n"
      "24 1 0:45 / /far rw - fuse.sshfs me@host: rw\n"
      "25 1 0:46 / /covered rw - cifs //host/share rw\n"
      "26 1 0:47 / /covered rw - tmpfs tmpfs rw\n";
  QStringList chosen;
  for (const TMount& mount : ChooseOtherMounts(
           ParseMountInfo(table), [](const TMount& mount) { return mount.Source.startsWith("/dev/stick"); }))
    chosen << QString::fromLatin1(mount.Point) + (IsNetworkMount(mount) ? u" net"_qs : QString());
  EXPECT_EQ(chosen.join(u','), u"/far net,/media/stick,/net net");
}

TEST(MountTable, TheVolumeOfTheTopIsThereWhateverItsSource) {
  EXPECT_THAT(ChosenPoints("1 0 0:30 / / rw - overlay overlay rw\n2 1 8:1 / /data rw - ext4 /dev/disk1 rw\n"),
              ElementsAre("/", "/data"));
  EXPECT_THAT(ChosenPoints("1 0 7:0 / / ro - squashfs /dev/disk1 ro\n"), ElementsAre("/"));
  EXPECT_THAT(ChosenPoints("2 1 0:30 /@ / rw - btrfs /dev/disk1 rw\n"), ElementsAre("/"));
}

// As in a chroot, in a folder that was covered meanwhile, and with a kernel that does not tell a mount's
// number.
TEST(MountTable, TheMountOfTheTopIsAddedWhereTheTableLacksIt) {
  const auto idsOfTop = [](const char* text, int id) {
    std::vector<int> ids;
    for (const TMount& mount :
         WithTop(ParseMountInfo(text), TMount{id, makedev(8, 1), {}, "/", {}, "/dev/disk1"}))
      if (mount.Point == "/") ids.push_back(mount.Id);
    return ids;
  };
  EXPECT_THAT(idsOfTop("", 7), ElementsAre(7));
  EXPECT_THAT(idsOfTop("2 1 0:4 / /proc rw - proc proc rw\n", 7), ElementsAre(7));
  EXPECT_THAT(idsOfTop("5 1 8:1 / / rw - ext4 /dev/disk1 rw\n", 7), ElementsAre(5, 7));
  EXPECT_THAT(idsOfTop("7 1 8:1 / / rw - ext4 /dev/disk1 rw\n", 7), ElementsAre(7));
  EXPECT_THAT(idsOfTop("7 1 8:1 / / rw - ext4 /dev/disk1 rw\n", 0), ElementsAre(7));
  const auto mounts = WithTop(ParseMountInfo("2 1 8:1 /work /work rw - ext4 /dev/disk1 rw\n"),
                              TMount{7, makedev(8, 1), {}, "/", {}, "/dev/disk1"});
  EXPECT_EQ(ChooseFixedMounts(mounts, MadeUpDevice).size(), 1) << "one row per device";
  EXPECT_TRUE(FurtherParts(mounts, 7).isEmpty()) << "it may show what the top shows";
}

TEST(MountTable, AMountCoversAnEarlierOneAtItsPoint) {
  EXPECT_THAT(ChosenPoints("1 0 0:2 / / rw - rootfs rootfs rw\n"
                           "2 1 8:1 / / rw - ext4 /dev/disk1 rw\n"
                           "3 2 8:2 / /mnt rw - ext4 /dev/disk2 rw\n"
                           "4 3 0:9 / /mnt rw - tmpfs tmpfs rw\n"
                           "5 2 8:1 / /again rw - ext4 /dev/disk1 rw\n"),
              ElementsAre("/"));
}

TEST(MountTable, FurtherPartsOfAFileSystemShowNothingTwice) {
  const QVector<TMount> mounts = ParseMountInfo(
      "1 0 0:30 /@ / rw - btrfs /dev/disk1 rw\n"
      "2 1 0:30 /@home /home rw - btrfs /dev/disk1 rw\n"
      "3 1 0:30 /@/var/x /bound rw - btrfs /dev/disk1 rw\n"
      "4 1 0:30 / /mnt/whole rw - btrfs /dev/disk1 rw\n"
      "5 2 0:30 /@home/u /mnt/u rw - btrfs /dev/disk1 rw\n"
      "6 1 0:31 /@data /data rw - btrfs /dev/disk2 rw\n"
      "7 1 0:30 /@home2 /home2 rw - btrfs /dev/disk1 rw\n");
  const auto parts = [&](quint64 top) {
    std::vector<std::string> points;
    for (const TMount& mount : FurtherParts(mounts, top))
      points.push_back(mount.Point.toStdString());
    return points;
  };
  EXPECT_THAT(parts(1), ElementsAre("/home", "/home2"));
  EXPECT_TRUE(parts(2).empty()) << "nothing else lies below its mount point";
  EXPECT_TRUE(parts(4).empty());
  EXPECT_TRUE(parts(99).empty());
}

TEST(VolumeLabels, TheLinkThatLeadsToTheDeviceNamesIt) {
  TTempTree tree;
  tree.MakeLink("zero", "/dev/zero");
  tree.MakeLink("My\\x20Disk\\x2f\\xc3\\xa9 \\x2", "/dev/null");
  tree.MakeLink("gone", "/dev/no such device");
  const QByteArray folder = NameToBytes(tree.Path());
  EXPECT_EQ(VolumeLabel(makedev(1, 3), folder), QStringLiteral(u"My Disk/\u00e9 \\x2"));
  EXPECT_EQ(VolumeLabel(makedev(1, 5), folder), QStringLiteral("zero"));
  EXPECT_EQ(VolumeLabel(makedev(1, 7), folder), QString());
  EXPECT_EQ(VolumeLabel(makedev(1, 3), folder + "/missing"), QString());
}

}  // namespace
