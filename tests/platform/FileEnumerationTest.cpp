#include "platform/FileEnumeration.h"

#include "fixtures/MountNamespace.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"

#include <gmock/gmock.h>

#include <climits>
#include <map>

namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

std::vector<QByteArray> NamesIn(TFileEnumeration& files, const QString& folder) {
  std::vector<QByteArray> names;
  TFoundFile found;
  for (bool more = files.First(folder, found); more; more = files.Next(found))
    names.push_back(NameToBytes(found.Name));
  return names;
}

std::vector<QByteArray> NamesIn(const QString& folder) {
  TFileEnumeration files;
  return NamesIn(files, folder);
}

std::map<QByteArray, TFoundFile> EntriesIn(const QString& folder) {
  std::map<QByteArray, TFoundFile> entries;
  TFileEnumeration files;
  TFoundFile found;
  for (bool more = files.First(folder, found); more; more = files.Next(found))
    entries[NameToBytes(found.Name)] = found;
  return entries;
}

TEST(FileEnumeration, GivesEachKindOfEntryItsAttributesAndLength) {
  TTempTree tree;
  tree.MakeFile("plain", 7);
  tree.MakeFile(".dot", 5);
  tree.MakeFile("locked", 3);
  tree.SetMode("locked", 0466);
  tree.MakeFolder("folder");
  tree.MakeFolder(".locked folder");
  tree.SetMode(".locked folder", 0555);
  tree.MakeLink("link to folder", "folder");
  tree.MakeLink(".broken link", "nowhere at all");
  tree.MakeHardLink("second name", "plain");
  tree.MakeHole("hole", qint64{5} << 30);
  tree.MakeFifo("pipe");
  tree.MakeSocket("socket");

  const struct {
    QByteArray Name;
    unsigned Attributes;
    quint64 Size;
  } expected[] = {
      {"plain", 0, 7},
      {".dot", kAttributeHidden, 5},
      {"locked", kAttributeReadOnly, 3},
      {"folder", kAttributeDirectory, 0},
      {".locked folder", kAttributeDirectory | kAttributeHidden | kAttributeReadOnly, 0},
      {"link to folder", kAttributeReparse, 6},
      {".broken link", kAttributeReparse | kAttributeHidden, 14},
      {"second name", 0, 7},
      {"hole", 0, quint64{5} << 30},
      {"pipe", kAttributeSystem, 0},
      {"socket", kAttributeSystem, 0},
  };
  const auto entries = EntriesIn(tree.Path());
  EXPECT_EQ(entries.size(), std::size(expected));
  for (const auto& row : expected) {
    ASSERT_TRUE(entries.contains(row.Name)) << row.Name.data();
    EXPECT_EQ(entries.at(row.Name).Attributes, row.Attributes) << row.Name.data();
    EXPECT_EQ(entries.at(row.Name).Size, row.Size) << row.Name.data();
  }
}

TEST(FileEnumeration, BrokenNamesComeBackAndCanBeEntered) {
  TTempTree tree;
  const QByteArray names[] = {"caf\xc3\xa9",      "caf\xe9", "\xed\xa0\x80 surrogate",
                              "\xf0\x9f\x93\x81", "a\nb",    "\xff\xfe"};
  for (const QByteArray& name : names)
    tree.MakeFile(name + "/in \xfe side", 1);
  EXPECT_THAT(NamesIn(tree.Path()), ::testing::UnorderedElementsAreArray(names));
  for (const auto& [bytes, found] : EntriesIn(tree.Path()))
    EXPECT_THAT(NamesIn(tree.Path() + PathDelim + found.Name), UnorderedElementsAre("in \xfe side"));
}

TEST(FileEnumeration, AFolderOfManyEntriesIsListedOnceEach) {
  TTempTree tree;
  const QByteArray longName(200, 'n');
  std::vector<QByteArray> expected;
  for (int i = 0; i < 3000; ++i) {
    expected.push_back(longName + QByteArray::number(i));
    tree.MakeFile("many/" + expected.back(), 0);
  }
  EXPECT_THAT(NamesIn(tree.Path("many")), ::testing::UnorderedElementsAreArray(expected));
}

TEST(FileEnumeration, PathsBeyondTheSystemsLimitAreListed) {
  TTempTree tree;
  const QByteArray chain = tree.MakeChain(QByteArray(255, 'c'), 19) + "/short/er/names";
  tree.MakeFile(chain + "/bottom", 9);
  EXPECT_THAT(NamesIn(tree.Path(chain)), UnorderedElementsAre("bottom"));
  EXPECT_THAT(NamesIn(tree.Path(chain) + PathDelim + PathDelim), UnorderedElementsAre("bottom"));
}

// Paths around the limit, and one whose first group of components ends just at a doubled delimiter.
TEST(FileEnumeration, PathsOfJustTheSystemsLimitAreListed) {
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

TEST(FileEnumeration, WhatCantBeOpenedHoldsNothing) {
  TTempTree tree;
  tree.MakeFile("file", 1);
  tree.MakeFile("closed/inside", 1);
  tree.SetMode("closed", 0000);
  tree.SetMode(".", 0755);
  const TOrdinaryUser user;
  TFileEnumeration files;
  for (const QByteArray& name :
       {QByteArray("file"), QByteArray("closed"), QByteArray("missing"), QByteArray(5000, 'x')})
    EXPECT_THAT(NamesIn(files, tree.Path(name)), IsEmpty()) << name.data();
  EXPECT_THAT(NamesIn(files, QString()), IsEmpty());
  EXPECT_THAT(NamesIn(files, tree.Path()), UnorderedElementsAre("file", "closed"));
}

TEST(FileEnumeration, ALinkGivenAsTheFolderIsFollowed) {
  TTempTree tree;
  tree.MakeFile("real/inside", 1);
  tree.MakeLink("link", "real");
  EXPECT_THAT(NamesIn(tree.Path("link")), UnorderedElementsAre("inside"));
}

TEST(FileEnumeration, EntriesThatVanishMeanwhileAreLeftOut) {
  TTempTree tree;
  const std::vector<QByteArray> names{"a", "b", "c", "d"};
  for (const QByteArray& name : names)
    tree.MakeFile(name, 1);
  TFileEnumeration files;
  TFoundFile found;
  ASSERT_TRUE(files.First(tree.Path(), found));
  for (const QByteArray& name : names) {
    if (name != NameToBytes(found.Name)) tree.Remove(name);
  }
  EXPECT_FALSE(files.Next(found));
  EXPECT_FALSE(files.Next(found)) << "stays at the end";
}

TEST(FileEnumeration, ASecondFirstDropsTheRestOfTheFolderBefore) {
  TTempTree tree;
  for (const char* const name : {"one/1", "one/2", "one/3", "two/1", "two/2", "two/3"})
    tree.MakeFile(name, 1);
  TFileEnumeration files;
  TFoundFile found;
  ASSERT_TRUE(files.First(tree.Path("one"), found));
  EXPECT_THAT(NamesIn(files, tree.Path("two")), UnorderedElementsAre("1", "2", "3"));
  ASSERT_TRUE(files.First(tree.Path("one"), found));
  files.Close();
  EXPECT_FALSE(files.Next(found));
}

TEST(FileEnumeration, PseudoFileSystemsHoldNothing) {
  TFileEnumeration files;
  for (const char* const folder : {"/proc", "/proc/self", "/sys", "/sys/class", "/dev/pts"})
    EXPECT_THAT(NamesIn(files, QString::fromLatin1(folder)), IsEmpty()) << folder;
  EXPECT_THAT(NamesIn(files, QStringLiteral("/dev")), ::testing::Contains("null")) << "devices on a real one";

  files.ConfineTo(QStringLiteral("/proc"));
  EXPECT_THAT(NamesIn(files, QStringLiteral("/proc")), IsEmpty()) << "nor for a walk confined to one";
}

TEST(FileEnumeration, AConfinedWalkLeavesOutWhatIsMountedBelow) {
  TFileEnumeration files;
  files.ConfineTo(QStringLiteral("/"));
  EXPECT_THAT(NamesIn(files, QStringLiteral("/")), ::testing::Contains("proc"));
  for (const char* const folder : {"/proc", "/sys", "/dev"})
    EXPECT_THAT(NamesIn(files, QString::fromLatin1(folder)), IsEmpty()) << folder;
}

// The same file system shown twice, and another one, both inside the walked folder.
TEST(FileEnumeration, ConfinementEndsAtBindMountsAndOtherFileSystems) {
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
TEST(FileEnumeration, ConfinementHoldsPartsOfTheSameFileSystemOnce) {
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
