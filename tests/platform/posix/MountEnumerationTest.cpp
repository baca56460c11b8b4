#include "fixtures/Listing.h"
#include "fixtures/MountNamespace.h"
#include "fixtures/TempTree.h"
#include "platform/FileEnumeration.h"
#include "platform/Paths.h"

#include <gmock/gmock.h>

#include <climits>

namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// Paths around the limit, and one whose first group of components ends just at a doubled delimiter.
TEST(MountEnumeration, PathsOfJustTheSystemsLimitAreListed) {
  TTempTree tree;
  const QByteArray chain = tree.MakeChain(QByteArray(199, 'c'), 20);
  const qsizetype length = NameToBytes(tree.Path(chain)).size() + 1;
  for (qsizetype total = PATH_MAX - 2; total <= PATH_MAX + 2; ++total) {
    const QByteArray folder = chain + '/' + QByteArray(total - length, 'x');
    tree.MakeFile(folder + "/bottom", 9);
    EXPECT_THAT(NamesIn(tree.Path(folder)), UnorderedElementsAre("bottom")) << total;
    EXPECT_THAT(NamesIn(tree.Path(folder) + QString(3, PathDelim)), UnorderedElementsAre("bottom")) << total;
  }
}

TEST(MountEnumeration, PseudoFileSystemsHoldNothing) {
  TFileEnumeration files;
  for (const char* const folder : {"/proc", "/proc/self", "/sys", "/sys/class", "/dev/pts"})
    EXPECT_THAT(NamesIn(files, QString::fromLatin1(folder)), IsEmpty()) << folder;
  EXPECT_THAT(NamesIn(files, QStringLiteral("/dev")), ::testing::Contains("null")) << "devices on a real one";

  files.ConfineTo(QStringLiteral("/proc"));
  EXPECT_THAT(NamesIn(files, QStringLiteral("/proc")), IsEmpty()) << "nor for a walk confined to one";
}

TEST(MountEnumeration, AConfinedWalkLeavesOutWhatIsMountedBelow) {
  TFileEnumeration files;
  files.ConfineTo(QStringLiteral("/"));
  EXPECT_THAT(NamesIn(files, QStringLiteral("/")), ::testing::Contains("proc"));
  for (const char* const folder : {"/proc", "/sys"})
    EXPECT_THAT(NamesIn(files, QString::fromLatin1(folder)), IsEmpty()) << folder;
}

// The same file system shown twice, and another one, both inside the walked folder.
TEST(MountEnumeration, ConfinementEndsAtBindMountsAndOtherFileSystems) {
  TTempTree tree;
  for (const char* const name : {"outside/o", "top/bound/b", "top/mounted/m", "top/plain/p"})
    tree.MakeFile(name, 1);
  const auto result = RunWithOwnMounts([&] {
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
  if (!result) GTEST_SKIP() << "this user may not mount";
  EXPECT_TRUE(*result);
}

// Subvolumes look like this: parts of one file system, mounted inside each other.
TEST(MountEnumeration, ConfinementHoldsPartsOfTheSameFileSystemOnce) {
  TTempTree tree;
  for (const char* const name : {"a/home/x", "a/again/x", "a/sub/s", "b/file", "b/deep/d", "top/x"})
    tree.MakeFile(name, 1);
  const auto result = RunWithOwnMounts([&] {
    const auto bind = [&](const char* from, const char* to) {
      return BindMount(NameToBytes(tree.Path(from)), NameToBytes(tree.Path(to)));
    };
    if (!bind("a", "top") || !bind("b", "top/home") || !bind("a/sub", "top/again")) return false;
    TFileEnumeration files;
    files.ConfineTo(tree.Path("top"));
    return NamesIn(files, tree.Path("top")).size() == 3 &&
           NamesIn(files, tree.Path("top/home")).size() == 2 &&
           NamesIn(files, tree.Path("top/home/deep")).size() == 1 &&
           NamesIn(files, tree.Path("top/again")).empty() && NamesIn(files, tree.Path("a/sub")).empty();
  });
  if (!result) GTEST_SKIP() << "this user may not mount";
  EXPECT_TRUE(*result);
}

}  // namespace
