#include "platform/FileEnumeration.h"

#include "fixtures/Listing.h"
#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"

#include <gmock/gmock.h>

#include <QDateTime>
#include <QFile>

#include <map>

namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

std::map<QByteArray, TFoundFile> EntriesIn(const QString& folder) {
  std::map<QByteArray, TFoundFile> entries;
  TFileEnumeration files;
  TFoundFile found;
  for (bool more = files.First(folder, found); more; more = files.Next(found))
    entries[NameToBytes(found.Name)] = found;
  return entries;
}

struct TExpected {
  QByteArray Name;
  unsigned Attributes;
  quint64 Size;
};

// A file is marked as one to be archived on Windows.
constexpr unsigned kAttributeArchive = 0x20;

unsigned OfFile(unsigned attributes) {
  return HasDrives() ? attributes | kAttributeArchive : attributes;
}

void ExpectEntries(const QString& folder, const std::vector<TExpected>& expected) {
  const auto entries = EntriesIn(folder);
  EXPECT_EQ(entries.size(), expected.size());
  for (const auto& row : expected) {
    ASSERT_TRUE(entries.contains(row.Name)) << row.Name.data();
    EXPECT_EQ(entries.at(row.Name).Attributes, row.Attributes) << row.Name.data();
    EXPECT_EQ(entries.at(row.Name).Size, row.Size) << row.Name.data();
  }
}

TEST(FileEnumeration, GivesEachKindOfEntryItsAttributesAndLength) {
  TTempTree tree;
  tree.MakeFile("plain", 7);
  tree.MakeFile("dotless", 5);
  const QByteArray hidden = tree.Hide("dotless");
  tree.MakeFile("locked", 3);
  tree.MakeReadOnly("locked");
  tree.MakeFolder("folder");
  tree.MakeFolder("locked folder");
  const QByteArray locked = tree.Hide("locked folder");
  tree.MakeReadOnly(locked);
  tree.MakeFile("doubled", 7);
  tree.MakeHardLink("second name", "doubled");
  tree.MakeHole("hole", qint64{5} << 30);
  tree.MakeSystemEntry("of the system");
  tree.MakeLink("link to folder", "folder");

  const auto entries = EntriesIn(tree.Path());
  const unsigned sparse = 0x200;  // where the file system has holes
  // Wine marks no folder as read-only.
  const unsigned lockedBit =
      HasDrives() ? entries.at(locked).Attributes & kAttributeReadOnly : kAttributeReadOnly;
  ExpectEntries(tree.Path(),
                {{"plain", OfFile(0), 7},
                 {hidden, OfFile(kAttributeHidden), 5},
                 {"locked", OfFile(kAttributeReadOnly), 3},
                 {"folder", kAttributeDirectory, 0},
                 {locked, kAttributeDirectory | kAttributeHidden | lockedBit, 0},
                 {"doubled", OfFile(0), 7},
                 {"second name", OfFile(0), 7},
                 {"hole", OfFile(entries.at("hole").Attributes & sparse), quint64{5} << 30},
                 {"of the system", OfFile(kAttributeSystem), 0},
                 HasDrives() ? TExpected{"link to folder", kAttributeReparse | kAttributeDirectory, 0}
                             : TExpected{"link to folder", kAttributeReparse, 6}});
}

TEST(FileEnumeration, TellsTheTimeOfTheLastChange) {
  TTempTree tree;
  const std::map<QByteArray, QDateTime> times = {
      {"new", QDateTime::currentDateTimeUtc()},
      {"old", QDateTime(QDate(1999, 12, 31), QTime(23, 59, 58, 765), Qt::UTC)},
      {"to come", QDateTime(QDate(2040, 7, 20), QTime(20, 17, 40, 250), Qt::UTC)}};
  for (const auto& [name, time] : times) {
    tree.MakeFile(name, 1);
    QFile file(tree.Path(name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime));
  }
  for (const auto& [name, found] : EntriesIn(tree.Path()))
    EXPECT_NEAR(static_cast<double>(found.Modified - times.at(name).toMSecsSinceEpoch()), 0, 1)
        << name.data();
}

std::vector<QByteArray> OddNames() {
  if (!HasDrives())
    return {"caf\xc3\xa9", "caf\xe9", "\xed\xa0\x80 surrogate", "\xf0\x9f\x93\x81", "a\nb", "\xff\xfe"};
  return {"caf\xc3\xa9", "nul", "con.txt", "\xf0\x9f\x93\x81", "a blank ", "a point.", " "};
}

// Linux: names that are no text. Windows: names that its calls would change or take for devices.
TEST(FileEnumeration, OddNamesComeBackAndCanBeEntered) {
  TTempTree tree;
  const std::vector<QByteArray> names = OddNames();
  for (const QByteArray& name : names)
    tree.MakeFile(name + '/' + name, 1);
  EXPECT_THAT(NamesIn(tree.Path()), ::testing::UnorderedElementsAreArray(names));
  for (const auto& [bytes, found] : EntriesIn(tree.Path()))
    EXPECT_THAT(NamesIn(tree.Path() + PathDelim + found.Name), UnorderedElementsAre(bytes));
}

TEST(FileEnumeration, PathsBeyondTheSystemsLimitAreListed) {
  TTempTree tree;
  const int depth = HasDrives() ? 12 : 19;  // 260 characters are too many for one, 4096 for the other
  const QByteArray chain = tree.MakeChain(QByteArray(255, 'c'), depth) + "/short/er/names";
  tree.MakeFile(chain + "/bottom", 9);
  EXPECT_THAT(NamesIn(tree.Path(chain)), UnorderedElementsAre("bottom"));
  EXPECT_EQ(EntriesIn(tree.Path(chain)).at("bottom").Size, 9U);
  EXPECT_THAT(NamesIn(tree.Path(chain) + PathDelim + PathDelim), UnorderedElementsAre("bottom"));
}

TEST(FileEnumeration, WhatCantBeOpenedHoldsNothing) {
  TTempTree tree;
  tree.MakeFile("file", 1);
  tree.MakeFile("closed/inside", 1);
  tree.MakeUnreadable("closed");
  const TOrdinaryUser user;
  TFileEnumeration files;
  for (const QByteArray& name :
       {QByteArray("file"), QByteArray("closed"), QByteArray("missing"), QByteArray(5000, 'x')})
    EXPECT_THAT(NamesIn(files, tree.Path(name)), IsEmpty()) << name.data();
  EXPECT_THAT(NamesIn(files, QString()), IsEmpty());
  EXPECT_THAT(NamesIn(files, tree.Path()), UnorderedElementsAre("file", "closed"));
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

}  // namespace
