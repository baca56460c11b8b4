// What folders hold and what stands at a path.
#include "platform/FileEnumeration.h"

#include "fixtures/SystemTest.h"

namespace {

std::map<QByteArray, TFoundFile> EntriesIn(const QString& folder) {
  std::map<QByteArray, TFoundFile> entries;
  TFileEnumeration files;
  TFoundFile found;
  for (bool more = files.First(folder, found); more; more = files.Next(found))
    entries[NameToBytes(found.Name)] = found;
  return entries;
}

// A file is marked as one to be archived on Windows.
unsigned OfFile(unsigned attributes) {
  return HasDrives() ? attributes | 0x20 : attributes;
}

// A status is that of the entry itself, whatever delimiters follow its name.
TEST(FileEnumeration, GivesEachKindOfEntryItsAttributesAndLengthAsItsStatusDoes) {
  TTempTree tree;
  tree.MakeFile("plain", 7);
  tree.MakeFile("dotless", 5);
  const QByteArray hidden = tree.Hide("dotless");
  tree.MakeFile("locked", 3);
  tree.MakeReadOnly("locked");
  tree.MakeAll({"folder/", "locked folder/"});
  const QByteArray locked = tree.Hide("locked folder");
  tree.MakeReadOnly(locked);
  tree.MakeHardLink("second name", "plain");
  tree.MakeHole("hole", qint64{5} << 30);
  tree.MakeSystemEntry("of the system");
  tree.MakeLink("link to folder", "folder");

  auto entries = EntriesIn(tree.Path());
  // Not every file system has holes; Wine marks no folder as read-only.
  const unsigned sparse = entries["hole"].Attributes & 0x200;
  const unsigned lockedBit =
      HasDrives() ? entries[locked].Attributes & kAttributeReadOnly : kAttributeReadOnly;
  const unsigned linkBits = HasDrives() ? kAttributeReparse | kAttributeDirectory : kAttributeReparse;
  const std::tuple<QByteArray, unsigned, quint64> rows[] = {
      {"plain", OfFile(0), 7},
      {hidden, OfFile(kAttributeHidden), 5},
      {"locked", OfFile(kAttributeReadOnly), 3},
      {"folder", kAttributeDirectory, 0},
      {locked, kAttributeDirectory | kAttributeHidden | lockedBit, 0},
      {"second name", OfFile(0), 7},
      {"hole", OfFile(sparse), quint64{5} << 30},
      {"of the system", OfFile(kAttributeSystem), 0},
      {"link to folder", linkBits, HasDrives() ? 0 : 6}};
  for (const auto& [name, attributes, size] : rows) {
    EXPECT_EQ(entries[name].Attributes, attributes) << name.data();
    EXPECT_EQ(entries[name].Size, size) << name.data();
    const bool isFolder = name.contains("folder");
    for (const QByteArray& path :
         isFolder ? QByteArrayList{name, name + "/", name + "//"} : QByteArrayList{name}) {
      const auto status = GetFileStatus(tree.Path(path));
      ASSERT_TRUE(status) << path.data();
      EXPECT_EQ(status->Attributes, attributes) << path.data();
      EXPECT_EQ(status->Size, size) << path.data();
    }
  }
  EXPECT_EQ(entries.size(), std::size(rows));
  EXPECT_FALSE(GetFileStatus(tree.Path("missing")) || GetFileStatus(QString()));
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

// Linux: names that are no text. Windows: names that its calls would change or take for devices.
TEST(FileEnumeration, OddNamesComeBackAndCanBeEntered) {
  TTempTree tree;
  const std::vector<QByteArray> names =
      HasDrives() ? std::vector<QByteArray>{"caf\xc3\xa9", "nul",      "con.txt", "\xf0\x9f\x93\x81",
                                            "a blank ",    "a point.", " "}
                  : std::vector<QByteArray>{"caf\xc3\xa9",      "caf\xe9", "\xed\xa0\x80 surrogate",
                                            "\xf0\x9f\x93\x81", "a\nb",    "\xff\xfe"};
  for (const QByteArray& name : names)
    tree.MakeFile(name + '/' + name, 1);
  EXPECT_THAT(NamesIn(tree.Path()), UnorderedElementsAreArray(names));
  for (const auto& [bytes, found] : EntriesIn(tree.Path()))
    EXPECT_THAT(NamesIn(tree.Path() + PathDelim + found.Name), UnorderedElementsAre(bytes));
}

TEST(FileEnumeration, PathsBeyondTheSystemsLimitAreListed) {
  TTempTree tree;
  const int depth = HasDrives() ? 12 : 19;  // 260 characters are too many for one, 4096 for the other
  const QByteArray chain = tree.MakeChain(QByteArray(255, 'c'), depth) + "/short/er/names";
  tree.MakeFile(chain + "/bottom", 9);
  EXPECT_EQ(EntriesIn(tree.Path(chain)).at("bottom").Size, 9U);
  EXPECT_THAT(NamesIn(tree.Path(chain) + PathDelim + PathDelim), UnorderedElementsAre("bottom"));
}

TEST(FileEnumeration, WhatCantBeOpenedHoldsNothing) {
  TTempTree tree;
  tree.MakeAll({"file", "closed/inside"});
  tree.MakeUnreadable("closed");
  const TOrdinaryUser user;
  TFileEnumeration files;
  for (const QByteArray& name :
       {QByteArray("file"), QByteArray("closed"), QByteArray("missing"), QByteArray(5000, 'x')})
    EXPECT_THAT(NamesIn(files, tree.Path(name)), IsEmpty()) << name.data();
  EXPECT_THAT(NamesIn(files, QString()), IsEmpty());
  EXPECT_THAT(NamesIn(files, tree.Path()), UnorderedElementsAre("file", "closed"));
  EXPECT_TRUE(DirectoryExists(tree.Path("closed")));
  EXPECT_FALSE(DirectoryReadable(tree.Path("closed")));
  EXPECT_TRUE(FileExists(tree.Path("closed/inside"))) << "its entries can still be looked at";
}

TEST(FileEnumeration, ASecondFirstDropsTheRestOfTheFolderBefore) {
  TTempTree tree;
  tree.MakeAll({"one/1", "one/2", "one/3", "two/1", "two/2", "two/3"});
  TFileEnumeration files;
  TFoundFile found;
  ASSERT_TRUE(files.First(tree.Path("one"), found));
  EXPECT_THAT(NamesIn(files, tree.Path("two")), UnorderedElementsAre("1", "2", "3"));
  ASSERT_TRUE(files.First(tree.Path("one"), found));
  files.Close();
  EXPECT_FALSE(files.Next(found));
}

TEST(FileTests, WhatStandsAtAPath) {
  TTempTree tree;
  const QByteArray odd = HasDrives() ? "file." : "file\xff";
  tree.MakeAll({odd, "folder/"});
  tree.MakeLink("to file", odd);
  tree.MakeLink("to folder", "folder");
  tree.MakeLink("broken", "nowhere");
  tree.MakeSystemEntry("of the system");
  const QByteArray deep = tree.MakeChain(QByteArray(100, 'd'), HasDrives() ? 30 : 50);
  tree.MakeFile(deep + "/file", 1);
  const std::tuple<QByteArray, bool, bool> rows[] = {{odd, true, false},
                                                     {"folder", false, true},
                                                     {"folder/", false, true},
                                                     {"to file", true, false},
                                                     {"to folder", false, true},
                                                     {"broken", false, false},
                                                     {"of the system", true, false},
                                                     {"missing", false, false},
                                                     {odd + '/', false, false},
                                                     {deep, false, true},
                                                     {deep + "/file", true, false},
                                                     {deep + "/none", false, false}};
  for (const auto& [name, isFile, isFolder] : rows) {
    EXPECT_EQ(FileExists(tree.Path(name)), isFile) << name.data();
    EXPECT_EQ(DirectoryExists(tree.Path(name)), isFolder) << name.data();
    EXPECT_EQ(DirectoryReadable(tree.Path(name)), isFolder) << name.data();
  }
  EXPECT_FALSE(FileExists(QString()) || DirectoryExists(QString()) || DirectoryReadable(QString()));
}

TEST(FileTests, WholeFilesUpToTheBound) {
  TTempTree tree;
  const QByteArray content = QByteArray("line\0\xff\n", 7).repeated(10000);
  tree.WriteFile("file", content);
  tree.MakeFile("empty", 0);
  EXPECT_EQ(ReadWholeFile(tree.Path("file")), content);
  EXPECT_EQ(ReadWholeFile(tree.Path("file"), content.size()), content);
  EXPECT_FALSE(ReadWholeFile(tree.Path("file"), content.size() - 1));
  EXPECT_EQ(ReadWholeFile(tree.Path("empty")), QByteArray());
  EXPECT_FALSE(ReadWholeFile(tree.Path("missing")) || ReadWholeFile(tree.Path(".")));
}

}  // namespace
