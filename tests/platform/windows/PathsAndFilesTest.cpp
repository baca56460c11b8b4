// Paths in the forms of Windows, its links to folders, and the prolog of an XML file.
#include "fixtures/SystemTest.h"
#include "platform/windows/FileEntry.h"
#include "platform/windows/XmlProlog.h"

namespace {

TEST(DrivePaths, UpToThreeCharactersAreAVolume) {
  for (const QString& path : {u"C:\\"_qs, u"c:"_qs, u"\\"_qs})
    EXPECT_TRUE(IsVolumeRoot(path)) << path.toStdString();
  for (const QString& path : {QString(), u"C:\\a"_qs, u"home"_qs})
    EXPECT_FALSE(IsVolumeRoot(path)) << path.toStdString();
}

TEST(DrivePaths, VolumesCompareByTheirLetters) {
  EXPECT_TRUE(SameVolume(u"C:\\a"_qs, u"c:\\b"_qs));
  EXPECT_FALSE(SameVolume(u"C:\\a"_qs, u"D:\\a"_qs));
  EXPECT_FALSE(SameVolume(QString(), QString()));
  EXPECT_FALSE(SameVolume(QString(), u"C:\\"_qs));
  EXPECT_EQ(VolumeName(u"C:\\"_qs), u"C:"_qs);
}

TEST(DrivePaths, TheFormForTheSystemTakesAnyNameAndLength) {
  const std::pair<QString, QString> rows[] = {
      {QString(), QString()},
      {u"C:\\"_qs, u"\\\\?\\C:\\"_qs},
      {u"C:\\a\\b"_qs, u"\\\\?\\C:\\a\\b"_qs},
      {u"C:/a//b/./c/../d/"_qs, u"\\\\?\\C:\\a\\b\\d\\"_qs},
      {u"C:\\..\\a. "_qs, u"\\\\?\\C:\\a. "_qs},
      {u"\\\\server\\share\\a"_qs, u"\\\\?\\UNC\\server\\share\\a"_qs},
      {u"\\\\?\\C:\\a\\."_qs, u"\\\\?\\C:\\a\\."_qs},
      {u"\\\\.\\C:"_qs, u"\\\\.\\C:"_qs},
      {u"a\\b"_qs, u"a\\b"_qs},
      {u"C:"_qs, u"C:"_qs}};
  for (const auto& [path, longPath] : rows)
    EXPECT_EQ(QString::fromStdWString(LongPath(path)), longPath);
}

// The files of a confined walk by their paths from the root on.
std::vector<QByteArray> Walk(const QString& root) {
  TFileEnumeration files;
  files.ConfineTo(root);
  QStringList folders{IncludeTrailingPathDelimiter(root)};
  std::vector<QByteArray> paths;
  for (qsizetype i = 0; i < folders.size() && i < 1000; ++i) {
    TFoundFile found;
    for (bool more = files.First(folders[i], found); more; more = files.Next(found)) {
      const QString path = folders[i] + found.Name;
      if (found.IsDirectory()) {
        folders << path + PathDelim;
      } else {
        paths.push_back(NameToBytes(path.mid(root.size() + 1)).replace('\\', '/'));
      }
    }
  }
  return paths;
}

TEST(LinkEnumeration, AWalkNeverComesBackToWhatItReachesAnyhow) {
  TTempTree tree;
  tree.MakeAll({"top/sub/file", "top/other/file"});
  tree.MakeLink("top/self", ".");
  tree.MakeLink("top/sub/up", "..");
  tree.MakeLink("top/sub/above", "../..");
  tree.MakeLink("top/sub/beside", "../other");
  tree.MakeLink("link", "top");
  for (const char* const root : {"top", "link"})
    EXPECT_THAT(Walk(tree.Path(root)), UnorderedElementsAre("sub/file", "other/file")) << root;
}

TEST(LinkEnumeration, ALinkToOtherFoldersOfTheVolumeIsEnteredOnce) {
  TTempTree tree;
  tree.MakeAll({"top/file", "outside/deep/file", "outside too/file"});
  tree.MakeLink("outside/back", "../top");
  tree.MakeLink("outside/deep/up", "..");
  tree.MakeLink("outside/too", "../outside too");
  tree.MakeLink("top/1", "../outside");
  tree.MakeLink("top/2", "../outside");
  tree.MakeLink("top/3", "../outside/deep");
  EXPECT_THAT(Walk(tree.Path("top")), UnorderedElementsAre("file", "1/deep/file", "1/too/file"));
}

// A folder for temporary files on another volume than this path; null if there is none.
std::unique_ptr<QTemporaryDir> MakeFolderOffTheVolumeOf(const QString& path) {
  for (const TVolume& volume : ListFixedVolumes()) {
    if (SameVolume(volume.Root, path)) continue;
    auto folder = std::make_unique<QTemporaryDir>(volume.Root + u"tmp/tallyscope-XXXXXX"_qs);
    if (folder->isValid()) return folder;
  }
  return nullptr;
}

TEST(LinkEnumeration, ALinkOffTheVolumeIsAnEmptyFolder) {
  TTempTree tree;
  const auto away = MakeFolderOffTheVolumeOf(tree.Path());
  if (!away) GTEST_SKIP() << "no second volume here";
  ASSERT_TRUE(QDir(away->path()).mkdir(u"folder there"_qs));
  tree.MakeFile("file", 1);
  tree.MakeLink("away", QDir::toNativeSeparators(away->path()).toUtf8());
  EXPECT_THAT(Walk(tree.Path()), UnorderedElementsAre("file"));
  TFileEnumeration files;
  TFoundFile found;
  ASSERT_TRUE(files.First(tree.Path("away"), found)) << "entered where nothing confines";
  EXPECT_EQ(found.Name, u"folder there"_qs);
  files.ConfineTo(tree.Path());
  ASSERT_TRUE(files.First(tree.Path(), found));
  EXPECT_TRUE(files.Next(found));
  EXPECT_FALSE(files.First(tree.Path("away"), found));
}

TEST(LinkEnumeration, AnotherConfinementForgetsTheOneBefore) {
  TTempTree tree;
  tree.MakeFile("outside/file", 1);
  tree.MakeLink("top/link", "../outside");
  TFileEnumeration files;
  TFoundFile found;
  for (int i = 0; i < 2; ++i) {
    files.ConfineTo(tree.Path("top"));
    ASSERT_TRUE(files.First(tree.Path("top"), found));
    EXPECT_TRUE(files.First(tree.Path("top/link"), found)) << i;
    EXPECT_FALSE(files.First(tree.Path("top/link"), found)) << "entered already";
  }
}

QByteArray Utf16(const QByteArray& text, bool bigEndian) {
  QByteArray units;
  for (const char c : text)
    units += bigEndian ? QByteArray(1, '\0') + c : QByteArray(1, c) + '\0';
  return units;
}

// In the rows "_" stands for a blank that was put there.
TEST(XmlProlog, TheDocumentTypeBecomesBlanks) {
  const std::array<QByteArray, 3> rows[] = {
      // what stands before the type, the type, what stands behind it
      {"", "", "<a/>"},
      {"", "<!DOCTYPE a>", "<a/>"},
      {"\xef\xbb\xbf<?xml version='1.0'?>\r\n<!-- <!DOCTYPE x> --> <?x '>' ?>\t", "<!DOCTYPE a>", "<a/>"},
      {"", "<!DOCTYPE a SYSTEM 'x>y'>", "<a>></a>"},
      {"", "<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA ']>'><!-- '[> --> <?x ]> ?> ] >", "<a/>"},
      {"<a>", "", "<![CDATA[<!DOCTYPE a>]]></a>"},
      {"x", "", "<!DOCTYPE a><a/>"},
      {"", "", ""}};
  for (const auto& [before, type, after] : rows) {
    const QByteArray document = before + type + after;
    const QByteArray expected = before + QByteArray(type.size(), ' ') + after;
    EXPECT_EQ(WithoutDocumentType(document), expected);
    if (document.startsWith('\xef')) continue;
    EXPECT_EQ(WithoutDocumentType(Utf16(document, false)), Utf16(expected, false));
    EXPECT_EQ(WithoutDocumentType("\xfe\xff" + Utf16(document, true)), "\xfe\xff" + Utf16(expected, true));
  }
}

TEST(XmlProlog, EntitiesOfItsOwnRefuseTheDocument) {
  for (const QByteArray type :
       {"<!DOCTYPE a [<!ENTITY e 'x'>]>", "<!DOCTYPE a [ <!ELEMENT a ANY> <!ENTITY % p ''> ]>",
        "<!-- x --><!DOCTYPE a [<!ENTITY e 'breaks off"}) {
    EXPECT_FALSE(WithoutDocumentType(type + "<a/>")) << type.constData();
    EXPECT_FALSE(WithoutDocumentType("\xff\xfe" + Utf16(type + "<a/>", false))) << type.constData();
  }
  EXPECT_FALSE(WithoutDocumentType("<!DOCTYPE a> <!DOCTYPE a [<!ENTITY e 'x'>]><a/>")) << "a second one";
  const QByteArray inComment = "<!DOCTYPE a [<!-- <!ENTITY e 'x'> -->]><a/>";
  EXPECT_TRUE(WithoutDocumentType(inComment));
}

}  // namespace
