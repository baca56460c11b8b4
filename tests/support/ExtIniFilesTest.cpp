#include "fixtures/NativePath.h"
#include "fixtures/TempTree.h"
#include "support/ExtIniFiles.h"

#include <gtest/gtest.h>

namespace {

void Fill(TExtIniFile& file, const char16_t* text) {
  file.SetStrings(QString::fromUtf16(text).split(u'\n'));
}

// "-" stands for what is not there.
QString Read(const TExtIniFile& file, const QString& section, const QString& key) {
  return file.ReadString(section, key, u"-"_qs);
}

QStringList Values(const TExtIniFile& file, const QString& section) {
  QStringList lines{u"before"_qs};
  file.ReadSectionValues(section, lines);
  return lines;
}

class TLoadTest : public testing::Test {
 protected:
  QString Load(const QByteArray& content) {
    FTree.WriteFile("x.ini", content);
    FFile.LoadFromFile(FTree.Path("x.ini"));
    return Read(FFile, u"S"_qs, u"k"_qs);
  }

  TTempTree FTree;
  TExtIniFile FFile;
};

}  // namespace

TEST(TExtIniFile, Grammar) {
  TExtIniFile file;
  Fill(file,
       u"early = dropped\n"
       u"  [ Main ]  \n"
       u"key = a = b\n"
       u"\t; a comment = no\n"
       u"  blanks\t =  round both  \x01\n"
       u"quoted = \"x\" ; stays\n"
       u"#hash = 1\n"
       u"//slash = 2\n"
       u"wide =\u3000\u00a0x\u00a0\n"
       u"empty =\n"
       u"= nameless\n"
       u"no equals\n"
       u"[X] ; not a head\n"
       u"[]\n"
       u"in = the empty one\n");
  const struct {
    QString Section, Key, Value;
  } rows[] = {
      {u"Main"_qs, u"key"_qs, u"a = b"_qs},
      {u"mAIN"_qs, u"KEY"_qs, u"a = b"_qs},
      {u"Main"_qs, u"blanks"_qs, u"round both"_qs},
      {u"Main"_qs, u"quoted"_qs, u"\"x\" ; stays"_qs},
      {u"Main"_qs, u"#hash"_qs, u"1"_qs},
      {u"Main"_qs, u"//slash"_qs, u"2"_qs},
      {u"Main"_qs, u"wide"_qs, u"\u3000\u00a0x\u00a0"_qs},
      {u"Main"_qs, u"empty"_qs, QString()},
      {u"Main"_qs, QString(), u"nameless"_qs},
      {u"Main"_qs, u"no equals"_qs, u"-"_qs},
      {u"Main"_qs, u"; a comment"_qs, u"-"_qs},
      {u"Main"_qs, u"early"_qs, u"-"_qs},
      {u"X"_qs, u"in"_qs, u"-"_qs},
      {QString(), u"in"_qs, u"the empty one"_qs},
      {u"None"_qs, u"key"_qs, u"-"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Read(file, row.Section, row.Key), row.Value) << qPrintable(row.Section + u'/' + row.Key);
  EXPECT_EQ(Values(file, u"Main"_qs).mid(7),
            QStringList({u"=nameless"_qs, u"no equals"_qs, u"[X] ; not a head"_qs}));
}

TEST(TExtIniFile, OfAlikeSectionsAndKeysTheLastWins) {
  TExtIniFile file;
  Fill(file, u"[S]\na=1\nonly=here\n[T]\n[s]\nA=2\nb=3\na=4\n");
  EXPECT_EQ(Read(file, u"S"_qs, u"a"_qs), u"4");
  EXPECT_EQ(Read(file, u"S"_qs, u"only"_qs), u"-") << "sections are not merged";
  EXPECT_EQ(Values(file, u"S"_qs), QStringList({u"A=2"_qs, u"b=3"_qs, u"a=4"_qs}));
  QStringList sections;
  file.ReadSections(sections);
  EXPECT_EQ(sections, QStringList({u"S"_qs, u"T"_qs, u"s"_qs}));

  file.DeleteKey(u"S"_qs, u"a"_qs);
  EXPECT_EQ(Read(file, u"S"_qs, u"a"_qs), u"2");
  file.EraseSection(u"S"_qs);
  EXPECT_EQ(Read(file, u"S"_qs, u"only"_qs), u"here");
  file.EraseSection(u"S"_qs);
  EXPECT_EQ(Read(file, u"S"_qs, u"only"_qs), u"-");
}

TEST(TExtIniFile, LettersOutsideAsciiFoldToo) {
  TExtIniFile file;
  Fill(file, u"[GRÖSSE]\nstraße=1\nSTRASSE=2\n");
  EXPECT_EQ(Read(file, u"grösse"_qs, u"STRAßE"_qs), u"1");
  EXPECT_EQ(Read(file, u"grösse"_qs, u"strasse"_qs), u"2");
}

TEST(TExtIniFile, WritingChangesMemoryInPlace) {
  TExtIniFile file;
  Fill(file, u"[S]\na=1\nb=2\n");
  file.WriteString(u"s"_qs, u"A"_qs, u"x"_qs);
  file.WriteString(u"S"_qs, u"c"_qs, u" 3 "_qs);
  file.WriteString(u"New"_qs, u"k"_qs, u"v"_qs);
  EXPECT_EQ(Values(file, u"S"_qs), QStringList({u"A=x"_qs, u"b=2"_qs, u"c= 3 "_qs}));
  EXPECT_EQ(Read(file, u"S"_qs, u"c"_qs), u" 3 ");
  EXPECT_EQ(Read(file, u"new"_qs, u"k"_qs), u"v");
}

TEST_F(TLoadTest, TheMarkDecidesTheEncoding) {
  const QString text = u"[S]\r\nk=Größe 𝄞 日本\r\n"_qs;
  const QString value = u"Größe 𝄞 日本"_qs;
  QByteArray little("\xff\xfe");
  QByteArray big("\xfe\xff");
  for (const QChar unit : text) {
    little += QByteArray(1, static_cast<char>(unit.cell())) + static_cast<char>(unit.row());
    big += QByteArray(1, static_cast<char>(unit.row())) + static_cast<char>(unit.cell());
  }
  EXPECT_EQ(Load("\xef\xbb\xbf" + text.toUtf8()), value);
  EXPECT_EQ(Load(little), value);
  EXPECT_EQ(Load(big), value);
  EXPECT_EQ(Load(text.toLocal8Bit()), QString::fromLocal8Bit(value.toLocal8Bit()));
}

TEST_F(TLoadTest, BrokenBytesAreReadWithoutHarm) {
  const char broken[] = "a\xff\x81";
  const QString kept = QStringLiteral(u"a\xdcff\xdc81");  // where names are bytes
  EXPECT_EQ(Load(QByteArray("[S]\nk=") + broken), HasDrives() ? QString::fromLocal8Bit(broken) : kept);
  EXPECT_EQ(Load("\xef\xbb\xbf[S]\nk=x\xc3"), u"x") << "half a letter at the end";
  EXPECT_EQ(Load(QByteArray("\xff\xfe[\0S\0]\0\n\0k\0=\0x\0y", 17)), u"x") << "half a unit at the end";
  EXPECT_EQ(Load(QByteArray("[S]\nk=a\0b", 9)), QString(u"a\0b"_qs));
}

TEST_F(TLoadTest, AllLineEndsAreKnownAndALoadReplacesAll) {
  EXPECT_EQ(Load("[S]\rk=1\r\rj=2"), u"1");
  EXPECT_EQ(Load("[S]\nj=1\r\nk=2"), u"2");
  EXPECT_EQ(Load(""), u"-");
  QStringList sections;
  FFile.ReadSections(sections);
  EXPECT_EQ(sections, QStringList());
}

TEST_F(TLoadTest, AFileThatCantBeReadThrowsAndChangesNothing) {
  Load("[S]\nk=1\n");
  EXPECT_THROW(FFile.LoadFromFile(FTree.Path("none.ini")), TIniFileError);
  EXPECT_THROW(FFile.LoadFromFile(FTree.Path()), TIniFileError);
  EXPECT_EQ(Read(FFile, u"S"_qs, u"k"_qs), u"1");
}
