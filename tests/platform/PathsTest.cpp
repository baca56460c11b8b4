#include "platform/Paths.h"

#include "fixtures/MountNamespace.h"
#include "fixtures/TempTree.h"

#include <gtest/gtest.h>

#include <random>

namespace {

QString Text(const char16_t* text) {
  return QString::fromUtf16(text);
}

TEST(Paths, PartsOfAPath) {
  const struct {
    const char16_t* Path;
    const char16_t* Dir;
    const char16_t* FilePath;
    const char16_t* Name;
    const char16_t* Ext;
  } rows[] = {
      {u"/a/b.c", u"/a", u"/a/", u"b.c", u".c"},
      {u"/a/", u"/a", u"/a/", u"", u""},
      {u"/a", u"/", u"/", u"a", u""},
      {u"/", u"/", u"/", u"", u""},
      {u"a", u"", u"", u"a", u""},
      {u"", u"", u"", u"", u""},
      {u"/a.d/b", u"/a.d", u"/a.d/", u"b", u""},
      {u"/a//b", u"/a", u"/a//", u"b", u""},
      {u"/a/.b", u"/a", u"/a/", u".b", u".b"},
      {u"x.tar.gz", u"", u"", u"x.tar.gz", u".gz"},
      {u"/a/b.", u"/a", u"/a/", u"b.", u"."},
  };
  for (const auto& row : rows) {
    const QString path = Text(row.Path);
    SCOPED_TRACE(path.toStdString());
    EXPECT_EQ(ExtractFileDir(path), Text(row.Dir));
    EXPECT_EQ(ExtractFilePath(path), Text(row.FilePath));
    EXPECT_EQ(ExtractFileName(path), Text(row.Name));
    EXPECT_EQ(ExtractFileExt(path), Text(row.Ext));
  }
}

TEST(Paths, DelimitersAtTheEnd) {
  const struct {
    const char16_t* Path;
    const char16_t* With;
    const char16_t* Without;
  } rows[] = {{u"/a", u"/a/", u"/a"}, {u"/a/", u"/a/", u"/a"},   {u"/", u"/", u"/"},
              {u"", u"/", u""},       {u"/a//", u"/a//", u"/a"}, {u"//", u"//", u"//"}};
  for (const auto& row : rows) {
    EXPECT_EQ(IncludeTrailingPathDelimiter(Text(row.Path)), Text(row.With));
    EXPECT_EQ(ExcludeTrailingPathDelimiter(Text(row.Path)), Text(row.Without));
  }
}

TEST(Paths, SameFolderAsideFromDelimitersAtTheEnd) {
  EXPECT_TRUE(SameFolder(Text(u"/a/b"), Text(u"/a/b/")));
  EXPECT_TRUE(SameFolder(Text(u"/"), Text(u"//")));
  EXPECT_FALSE(SameFolder(Text(u"/a/b"), Text(u"/a/B")));
  EXPECT_FALSE(SameFolder(Text(u"/"), QString()));
}

TEST(Paths, CompareTextFoldsAsciiLettersOnly) {
  EXPECT_EQ(CompareText(Text(u"AbZ"), Text(u"aBz")), 0);
  EXPECT_NE(CompareText(Text(u"\u00c4"), Text(u"\u00e4")), 0);
  EXPECT_NE(CompareText(Text(u"["), Text(u"{")), 0) << "the neighbours of the letters";
  EXPECT_LT(CompareText(Text(u"ab"), Text(u"abc")), 0);
  EXPECT_GT(CompareText(Text(u"B"), Text(u"a")), 0);
  EXPECT_LT(CompareText(Text(u"_"), Text(u"A")), 0) << "letters compare as small ones";
}

TEST(Paths, OnlyTopsOfFixedVolumesAreVolumeRoots) {
  TTempTree tree;
  tree.MakeLink("link to root", "/");
  EXPECT_TRUE(IsVolumeRoot(Text(u"/")));
  EXPECT_TRUE(IsVolumeRoot(Text(u"//")));
  for (const QString& path : {QString(), Text(u"C:\\"), Text(u"home"), Text(u"/usr"), Text(u"/proc"),
                              Text(u"/proc/"), tree.Path(), tree.Path("missing"), tree.Path("link to root")})
    EXPECT_FALSE(IsVolumeRoot(path)) << path.toStdString();
}

TEST(Paths, SameVolumeGoesByMountPoints) {
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

TEST(Paths, ABindMountIsAVolumeOfItsOwn) {
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

TEST(Names, BytesToTextAsExpected) {
  const struct {
    QByteArray Bytes;
    QString Name;
  } rows[] = {
      {"plain", Text(u"plain")},
      {"caf\xc3\xa9", Text(u"caf\u00e9")},
      {"\xe2\x82\xac", Text(u"\u20ac")},
      {"\xf0\x9f\x93\x81", Text(u"\U0001F4C1")},
      {"a\xff", QStringLiteral("a") + QChar(0xdcff)},
      {"\xc3", QString(QChar(0xdcc3))},
      {"\xc0\xaf", QString(QChar(0xdcc0)) + QChar(0xdcaf)},
      {"\xed\xb2\x80", QString(QChar(0xdced)) + QChar(0xdcb2) + QChar(0xdc80)},
      {"\xf4\x90\x80\x80", QString(QChar(0xdcf4)) + QChar(0xdc90) + QChar(0xdc80) + QChar(0xdc80)},
      {"\xf0\x9f\x93\x81\x81", Text(u"\U0001F4C1") + QChar(0xdc81)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(NameFromBytes(row.Bytes), row.Name) << row.Bytes.toHex().data();
    EXPECT_EQ(NameToBytes(row.Name), row.Bytes);
  }
}

// Short texts from a small alphabet of the bytes that decide reach every branch of the decoder.
TEST(Names, AnyBytesComeBack) {
  const QByteArray alphabet("a/\x7f\x80\x81\x9f\xa0\xbf\xc0\xc1\xc2\xdf\xe0\xed\xef\xf0\xf4\xf5\xff");
  std::mt19937 random(1);
  for (int i = 0; i < 200000; ++i) {
    QByteArray bytes;
    for (auto length = random() % 12; length > 0; --length)
      bytes += i % 2 == 0 ? alphabet[static_cast<qsizetype>(random() % 19)] : static_cast<char>(random());
    ASSERT_EQ(NameToBytes(NameFromBytes(bytes)), bytes) << bytes.toHex().data();
  }
}

TEST(Names, TextThatNoFileNameGivesIsAnsweredAllTheSame) {
  EXPECT_EQ(NameToBytes(QStringLiteral("a") + QChar(0xd800)), "a?");
  EXPECT_EQ(NameToBytes(QString(QChar(0xdc7f)) + QLatin1Char('b')), "?b");
  EXPECT_EQ(NameToBytes(QString(QChar(0xdd00))), "?");
}

TEST(Names, EscapesWhatIsNoText) {
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("caf\xc3\xa9 \xf0\x9f\x93\x81")), Text(u"caf\u00e9 \U0001F4C1"));
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("a\xe9\x80z")), Text(u"a\\xe9\\x80z"));
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("a\\xe9")), Text(u"a\\\\xe9")) << "told from the byte";
  EXPECT_EQ(EscapeUndecodable(QString(QChar(0xd83d)) + QChar(0xdc05) + QChar(0xdc05)),
            QString(QChar(0xd83d)) + QChar(0xdc05) + Text(u"\\udc05"));
  EXPECT_EQ(EscapeUndecodable(QString(QChar(0xd800))), Text(u"\\ud800"));
}

}  // namespace
