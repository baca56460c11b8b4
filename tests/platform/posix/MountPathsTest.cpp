#include "platform/Paths.h"

#include "fixtures/MountNamespace.h"
#include "fixtures/TempTree.h"

#include <gtest/gtest.h>

namespace {

QString Text(const char16_t* text) {
  return QString::fromUtf16(text);
}

TEST(MountPaths, OnlyTopsOfFixedVolumesAreVolumeRoots) {
  TTempTree tree;
  tree.MakeLink("link to root", "/");
  EXPECT_TRUE(IsVolumeRoot(Text(u"/")));
  EXPECT_TRUE(IsVolumeRoot(Text(u"//")));
  for (const QString& path : {QString(), Text(u"C:\\"), Text(u"home"), Text(u"/usr"), Text(u"/proc"),
                              Text(u"/proc/"), tree.Path(), tree.Path("missing"), tree.Path("link to root")})
    EXPECT_FALSE(IsVolumeRoot(path)) << path.toStdString();
}

TEST(MountPaths, SameVolumeGoesByMountPoints) {
  TTempTree tree;
  tree.MakeFolder("folder");
  tree.MakeLink("away", "/proc/self");
  EXPECT_TRUE(SameVolume(tree.Path(), tree.Path("folder/")));
  EXPECT_TRUE(SameVolume(tree.Path("folder"), tree.Path("not/there/yet"))) << "the nearest folder counts";
  EXPECT_TRUE(SameVolume(Text(u"/proc/1"), Text(u"/proc/")));
  EXPECT_FALSE(SameVolume(Text(u"/proc"), tree.Path()));
  EXPECT_FALSE(SameVolume(tree.Path("away"), tree.Path())) << "a link to a folder is where it leads";
  EXPECT_FALSE(SameVolume(QString(), QString()));
  EXPECT_FALSE(SameVolume(QString(), Text(u"/")));
}

TEST(MountPaths, ABindMountIsAVolumeOfItsOwn) {
  TTempTree tree;
  tree.MakeFolder("a");
  tree.MakeFolder("b");
  const auto result = RunWithOwnMounts([&] {
    if (!SameVolume(tree.Path("a"), tree.Path("b"))) return false;
    if (!BindMount(NameToBytes(tree.Path("a")), NameToBytes(tree.Path("b")))) return false;
    return !SameVolume(tree.Path("a"), tree.Path("b")) && SameVolume(tree.Path("b"), tree.Path("b/new")) &&
           !IsVolumeRoot(tree.Path("b"));
  });
  if (!result) GTEST_SKIP() << "this user may not mount";
  EXPECT_TRUE(*result);
}

}  // namespace
