#include "fixtures/SystemTest.h"
#include "support/ExtIniFiles.h"

namespace {

class TIniTest : public testing::Test {
 protected:
  void Fill(const char16_t* text) { FFile.SetStrings(QString::fromUtf16(text).split(u'\n')); }

  QString Load(const QByteArray& content) {
    FTree.WriteFile("x.ini", content);
    FFile.LoadFromFile(FTree.Path("x.ini"));
    return Read(u"S"_qs, u"k"_qs);
  }

  // "-" stands for what is not there.
  QString Read(const QString& section, const QString& key) const {
    return FFile.ReadString(section, key, u"-"_qs);
  }

  QString Values(const QString& section) const {
    QStringList lines{u"before"_qs};
    FFile.ReadSectionValues(section, lines);
    return lines.join(u'|');
  }

  QString Sections() const {
    QStringList sections{u"before"_qs};
    FFile.ReadSections(sections);
    return sections.join(u'|');
  }

  TTempTree FTree;
  TExtIniFile FFile;
};

}  // namespace

TEST_F(TIniTest, Grammar) {
  Fill(
      u"early = dropped\n"
      u"  [ Main ]  \n"
      u"key = a = b\n"
      u"\t; a comment = no\n"
      u"  blanks\t =  round both  \x01\n"
      u"quoted = \"x\" ; stays\n"
      u"wide =\u3000\u00a0x\u00a0\n"
      u"empty =\n"
      u"= nameless\n"
      u"no equals\n"
      u"[X] ; not a head\n"
      u"[]\n"
      u"in = the empty one\n");
  const std::tuple<QString, QString, QString> rows[] = {{u"mAIN"_qs, u"KEY"_qs, u"a = b"_qs},
                                                        {u"Main"_qs, u"blanks"_qs, u"round both"_qs},
                                                        {u"Main"_qs, u"quoted"_qs, u"\"x\" ; stays"_qs},
                                                        {u"Main"_qs, u"wide"_qs, u"\u3000\u00a0x\u00a0"_qs},
                                                        {u"Main"_qs, u"empty"_qs, {}},
                                                        {u"Main"_qs, {}, u"nameless"_qs},
                                                        {u"Main"_qs, u"no equals"_qs, u"-"_qs},
                                                        {u"Main"_qs, u"; a comment"_qs, u"-"_qs},
                                                        {u"Main"_qs, u"early"_qs, u"-"_qs},
                                                        {u"X"_qs, u"in"_qs, u"-"_qs},
                                                        {{}, u"in"_qs, u"the empty one"_qs},
                                                        {u"None"_qs, u"key"_qs, u"-"_qs}};
  for (const auto& [section, key, value] : rows)
    EXPECT_EQ(Read(section, key), value) << qPrintable(section + u'/' + key);
  EXPECT_TRUE(Values(u"Main"_qs).endsWith(u"|=nameless|no equals|[X] ; not a head"_qs));
}

TEST_F(TIniTest, OfAlikeSectionsAndKeysTheLastWins) {
  Fill(u"[S]\na=1\nonly=here\n[T]\n[s]\nA=2\nb=3\na=4\n");
  EXPECT_EQ(Read(u"S"_qs, u"a"_qs), u"4");
  EXPECT_EQ(Values(u"S"_qs), u"A=2|b=3|a=4") << "sections are not merged";
  EXPECT_EQ(Sections(), u"S|T|s");
  FFile.DeleteKey(u"S"_qs, u"a"_qs);
  EXPECT_EQ(Read(u"S"_qs, u"a"_qs), u"2");
  for (const char16_t* left : {u"here", u"-"}) {
    FFile.EraseSection(u"S"_qs);
    EXPECT_EQ(Read(u"S"_qs, u"only"_qs), QString::fromUtf16(left));
  }
  Fill(u"[GRÖSSE]\nstraße=1\nSTRASSE=2\n");
  EXPECT_EQ(Read(u"grösse"_qs, u"STRAßE"_qs), u"1") << "letters outside ASCII fold too, one by one";
}

TEST_F(TIniTest, WritingChangesMemoryInPlace) {
  Fill(u"[S]\na=1\nb=2\n");
  FFile.WriteString(u"s"_qs, u"A"_qs, u"x"_qs);
  FFile.WriteString(u"S"_qs, u"c"_qs, u" 3 "_qs);
  FFile.WriteString(u"New"_qs, u"k"_qs, u"v"_qs);
  EXPECT_EQ(Values(u"S"_qs) + Read(u"S"_qs, u"c"_qs), u"A=x|b=2|c= 3  3 ");
  EXPECT_EQ(Read(u"new"_qs, u"k"_qs), u"v");
}

TEST_F(TIniTest, TheMarkDecidesTheEncodingAndBrokenBytesDoNoHarm) {
  const QString value = u"Größe 𝄞 日本"_qs, text = u"[S]\r\nk="_qs + value + u"\r\n"_qs;
  for (const QByteArray& content :
       {"\xef\xbb\xbf" + text.toUtf8(), MarkedUtf16(text), MarkedUtf16(text, true)})
    EXPECT_EQ(Load(content), value);
  EXPECT_EQ(Load(text.toLocal8Bit()), QString::fromLocal8Bit(value.toLocal8Bit()));
  const char broken[] = "a\xff\x81";
  const QString kept = QStringLiteral(u"a\xdcff\xdc81");  // where names are bytes
  EXPECT_EQ(Load(QByteArray("[S]\nk=") + broken), HasDrives() ? QString::fromLocal8Bit(broken) : kept);
  EXPECT_EQ(Load("\xef\xbb\xbf[S]\nk=x\xc3"), u"x") << "half a letter at the end";
  EXPECT_EQ(Load(QByteArray("\xff\xfe[\0S\0]\0\n\0k\0=\0x\0y", 17)), u"x") << "half a unit at the end";
  EXPECT_EQ(Load(QByteArray("[S]\nk=a\0b", 9)), QString(u"a\0b"_qs));
}

TEST_F(TIniTest, ALoadReplacesAllAndAFileThatCantBeReadChangesNothing) {
  EXPECT_EQ(Load("[S]\rk=1\r\rj=2"), u"1");
  EXPECT_EQ(Load("[S]\nj=1\r\nk=2"), u"2");
  for (const char* name : {"none.ini", "."})
    EXPECT_THROW(FFile.LoadFromFile(FTree.Path(name)), TIniFileError);
  EXPECT_EQ(Read(u"S"_qs, u"k"_qs), u"2");
  EXPECT_EQ(Load(""), u"-");
  EXPECT_EQ(Sections(), QString());
}
