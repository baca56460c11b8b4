// Texts of paths and names, and the volumes that they lie on.
#include "platform/Paths.h"

#include "fixtures/SystemTest.h"
#include "platform/KnownFolders.h"
#include "platform/Messages.h"

#include <filesystem>
#include <random>

namespace {

TEST(Paths, PartsOfAPath) {
  // path|ExtractFileDir|ExtractFilePath|ExtractFileName|ExtractFileExt
  for (const QString& row :
       {u"/a/b.c|/a|/a/|b.c|.c"_qs, u"/a/|/a|/a/||"_qs, u"/a|/|/|a|"_qs, u"/|/|/||"_qs, u"a|||a|"_qs,
        u"||||"_qs, u"ab/c|ab|ab/|c|"_qs, u"/a.d/b|/a.d|/a.d/|b|"_qs, u"/a//b|/a|/a//|b|"_qs,
        u"/a/.b|/a|/a/|.b|.b"_qs, u"x.tar.gz|||x.tar.gz|.gz"_qs, u"/a/b.|/a|/a/|b.|."_qs}) {
    const QStringList parts = row.split(u'|');
    const QString path = NativePath(parts[0]);
    EXPECT_EQ(ExtractFileDir(path), NativePath(parts[1])) << path.toStdString();
    EXPECT_EQ(ExtractFilePath(path), NativePath(parts[2])) << path.toStdString();
    EXPECT_EQ(ExtractFileName(path), parts[3]) << path.toStdString();
    EXPECT_EQ(ExtractFileExt(path), parts[4]) << path.toStdString();
  }
}

TEST(Paths, DelimitersAtTheEnd) {
  // path|with one|without
  for (const QString& row : {u"/a|/a/|/a"_qs, u"/a/|/a/|/a"_qs, u"/|/|/"_qs, u"a/|a/|a"_qs,
                             u"/a//|/a//|/a"_qs, HasDrives() ? u"//|//|/"_qs : u"//|//|//"_qs}) {
    const QStringList parts = row.split(u'|');
    EXPECT_EQ(IncludeTrailingPathDelimiter(NativePath(parts[0])), NativePath(parts[1]));
    EXPECT_EQ(ExcludeTrailingPathDelimiter(NativePath(parts[0])), NativePath(parts[2]));
  }
  EXPECT_EQ(IncludeTrailingPathDelimiter(QString()), QString(PathDelim));
  EXPECT_EQ(ExcludeTrailingPathDelimiter(QString()), QString());
}

TEST(Paths, WhatIsTheSameAndWhatIsAbsolute) {
  const auto same = [](const QString& a, const QString& b) {
    return SameFolder(NativePath(a), NativePath(b));
  };
  EXPECT_TRUE(same(u"/a/b"_qs, u"/a/b/"_qs) && same(u"/"_qs, u"//"_qs));
  EXPECT_EQ(same(u"/a/b"_qs, u"/a/B"_qs), HasDrives());
  EXPECT_FALSE(same(u"/a/ä"_qs, u"/a/Ä"_qs)) << "no other letters fold";
  EXPECT_FALSE(same(u"/"_qs, QString()));
  EXPECT_EQ(CompareText(u"AbZ"_qs, u"aBz"_qs), 0);
  EXPECT_NE(CompareText(u"Ä"_qs, u"ä"_qs), 0);
  EXPECT_NE(CompareText(u"["_qs, u"{"_qs), 0) << "the neighbours of the letters";
  EXPECT_LT(CompareText(u"ab"_qs, u"abc"_qs), 0);
  EXPECT_GT(CompareText(u"B"_qs, u"a"_qs), 0);
  EXPECT_LT(CompareText(u"_"_qs, u"A"_qs), 0) << "letters compare as small ones";
  for (const QString& path : {u"/"_qs, u"/a"_qs})
    EXPECT_EQ(IsAbsolutePath(path), !HasDrives()) << path.toStdString();
  for (const QString& path : {u"C:\\a"_qs, u"c:"_qs})
    EXPECT_EQ(IsAbsolutePath(path), HasDrives()) << path.toStdString();
  for (const QString& path : {u""_qs, u"a"_qs, u":"_qs, u"\\a"_qs, u"a/C:\\"_qs, u"\\\\s\\t"_qs})
    EXPECT_FALSE(IsAbsolutePath(path)) << path.toStdString();
}

// The halves of a pair that stand alone are the bytes of a name that is no UTF-8.
TEST(Names, BytesToTextAsExpected) {
  const auto bytes = [](std::initializer_list<char16_t> units) {
    return QString::fromUtf16(std::data(units), std::ssize(units));
  };
  const std::pair<QByteArray, QString> rows[] = {
      {"plain", u"plain"_qs},
      {"caf\xc3\xa9", u"café"_qs},
      {"\xe2\x82\xac", u"€"_qs},
      {"\xf0\x9f\x93\x81", u"📁"_qs},
      {"a\xff", bytes({u'a', 0xdcff})},
      {"\xc3", bytes({0xdcc3})},
      {"\xc0\xaf", bytes({0xdcc0, 0xdcaf})},
      {"\xed\xb2\x80", bytes({0xdced, 0xdcb2, 0xdc80})},
      {"\xf4\x90\x80\x80", bytes({0xdcf4, 0xdc90, 0xdc80, 0xdc80})},
      {"\xf0\x9f\x93\x81\x81", u"📁"_qs + QChar(0xdc81)}};
  for (const auto& [name, text] : rows) {
    EXPECT_EQ(NameFromBytes(name), text) << name.toHex().data();
    EXPECT_EQ(NameToBytes(text), name);
  }
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("caf\xc3\xa9 \xf0\x9f\x93\x81")), u"café 📁"_qs);
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("a\xe9\x80z")), u"a\\xe9\\x80z"_qs);
  EXPECT_EQ(EscapeUndecodable(NameFromBytes("a\\xe9")), u"a\\\\xe9"_qs) << "told from the byte";
  EXPECT_EQ(EscapeUndecodable(bytes({0xd83d, 0xdc05, 0xdc05, 0xd800})),
            bytes({0xd83d, 0xdc05}) + u"\\udc05\\ud800"_qs);
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

TEST(Texts, WhatTheSystemsCodePageHasComesBack) {
  const QByteArray bytes = HasDrives() ? "caf\xe9" : "caf\xc3\xa9";
  const QString text = TextFromAnsi(bytes);
  EXPECT_EQ(TextToAnsi(text), bytes);
  EXPECT_EQ(TextToAnsi(text + u'\\'), bytes + '\\');
}

TEST(Texts, AShorterPathTextLeavesNothingOfTheLongerOne) {
  TPathText text;
  for (const qsizetype size : {260, 259, 2, 0}) {
    text.Store(QString(size, u'x'));
    EXPECT_EQ(text.Load(), QString(std::min<qsizetype>(size, 259), u'x'))
        << "cut and ended inside the buffer";
  }
}

TEST(Texts, KnownVariablesAreReplacedAndOthersStay) {
  const TVariables set{{"TALLYSCOPE_A", "v"}, {"tallyscope_b", nullptr}, {"TALLYSCOPE_B", "w"}};
  const std::pair<QString, QString> rows[] = {
      {u"%TALLYSCOPE_A%"_qs, u"v"_qs},
      {u"a%TALLYSCOPE_A%b%TALLYSCOPE_A%"_qs, u"avbv"_qs},
      {u"%tallyscope_b%"_qs, HasDrives() ? u"w"_qs : u"%tallyscope_b%"_qs}};
  for (const auto& [text, expanded] : rows)
    EXPECT_EQ(ExpandEnvironment(text), expanded) << text.toStdString();
  for (const QString& text :
       {QString(), u"no name"_qs, u"%NO_SUCH_NAME%/x"_qs, u"100%"_qs, u"%%"_qs, u"a%%b"_qs})
    EXPECT_EQ(ExpandEnvironment(text), text);
}

TEST(Volumes, TheSystemsVolumeComesFirstWithItsSizes) {
  const QVector<TVolume> volumes = ListFixedVolumes();
  ASSERT_FALSE(volumes.isEmpty());
  EXPECT_EQ(volumes.front().Root, NativePath(u"/"_qs));
  const auto top = std::filesystem::space(HasDrives() ? "C:\\" : "/");
  EXPECT_EQ(static_cast<std::uintmax_t>(volumes.front().Size), top.capacity);
  EXPECT_NEAR(static_cast<double>(volumes.front().Free), static_cast<double>(top.available), 4e9);
  EXPECT_TRUE(std::is_sorted(volumes.begin(), volumes.end(),
                             [](const TVolume& a, const TVolume& b) { return a.Root < b.Root; }));
}

TEST(Volumes, RootOfAPath) {
  for (const QString& root : Roots()) {
    EXPECT_TRUE(IsVolumeRoot(root) && IsVolumeRoot(VolumeName(root))) << root.toStdString();
    EXPECT_TRUE(root.endsWith(PathDelim) && VolumeRootOf(root) == root) << root.toStdString();
  }
  TTempTree tree;
  tree.MakeFile("file", 1);
  EXPECT_EQ(VolumeRootOf(tree.Path("not/there")), VolumeRootOf(tree.Path("file")));
  EXPECT_TRUE(Roots().contains(VolumeRootOf(tree.Path())) || !HasDrives());
  EXPECT_EQ(VolumeRootOf(u"relative"_qs) + VolumeRootOf(QString()), QString());
}

}  // namespace
