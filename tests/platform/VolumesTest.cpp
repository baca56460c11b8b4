#include "platform/Volumes.h"

#include "fixtures/Listing.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(Volumes, TheSystemsVolumeComesFirstWithItsSizes) {
  const QVector<TVolume> volumes = ListFixedVolumes();
  ASSERT_FALSE(volumes.isEmpty());
  EXPECT_EQ(volumes.front().Root, NativePath(u"/"_qs));
  const auto top = std::filesystem::space(HasDrives() ? "C:\\" : "/");
  EXPECT_EQ(static_cast<std::uintmax_t>(volumes.front().Size), top.capacity);
  EXPECT_NEAR(static_cast<double>(volumes.front().Free), static_cast<double>(top.available), 4e9);
}

TEST(Volumes, EachRootIsAVolumeRootAndHoldsItself) {
  QStringList sorted = Roots();
  sorted.sort();
  EXPECT_EQ(Roots(), sorted);
  for (const QString& root : Roots()) {
    EXPECT_TRUE(root.endsWith(PathDelim));
    EXPECT_TRUE(IsVolumeRoot(root)) << root.toStdString();
    EXPECT_TRUE(IsVolumeRoot(VolumeName(root))) << root.toStdString();
    EXPECT_EQ(VolumeRootOf(root), root);
  }
}

TEST(Volumes, RootOfAPath) {
  TTempTree tree;
  tree.MakeFile("file", 1);
  EXPECT_EQ(VolumeRootOf(NativePath(u"/"_qs)), NativePath(u"/"_qs));
  EXPECT_EQ(VolumeRootOf(tree.Path("not/there")), VolumeRootOf(tree.Path("file")));
  EXPECT_TRUE(Roots().contains(VolumeRootOf(tree.Path())) || !HasDrives());
  EXPECT_EQ(VolumeRootOf(u"relative"_qs), QString());
  EXPECT_EQ(VolumeRootOf(QString()), QString());
}

}  // namespace
