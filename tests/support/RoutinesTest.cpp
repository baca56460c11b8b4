#include "fixtures/NativePath.h"
#include "fixtures/TestUser.h"
#include "platform/KnownFolders.h"
#include "support/AppFrame_New.h"
#include "support/Korvel_Routine_New.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <limits>

namespace {

constexpr qint64 kKilo = 1024;
constexpr qint64 kMega = kKilo * kKilo;
constexpr qint64 kGiga = kMega * kKilo;

// While one lives, the user's locale is another one.
class TLocaleFor {
 public:
  explicit TLocaleFor(const QString& name) { QLocale::setDefault(QLocale(name)); }
  ~TLocaleFor() { QLocale::setDefault(QLocale::c()); }
};

}  // namespace

TEST(SizeToText, Table) {
  const TLocaleFor locale(u"en_US"_qs);
  const struct {
    qint64 Bytes;
    const char* Text;
  } rows[] = {
      {0, "0 Byte"},
      {1023, "1023 Byte"},
      {-5000, "-5000 Byte"},
      {std::numeric_limits<qint64>::min(), "-9223372036854775808 Byte"},
      {1024, "1.00 KB"},
      {1536, "1.50 KB"},
      {kKilo + kKilo / 8, "1.13 KB"},  // half way goes away from zero
      {kKilo + kKilo / 8 - 1, "1.12 KB"},
      {8'000'000'000 * kGiga + kGiga / 8, "8000000000.13 GB"},
      {kGiga + kGiga * 995 / 1000, "1.99 GB"},
      {kGiga + kGiga * 995 / 1000 + 1, "2.00 GB"},
      {kMega - 1, "1024.00 KB"},
      {kMega, "1.00 MB"},
      {kGiga - 1, "1024.00 MB"},
      {kGiga, "1.00 GB"},
      {2048 * kGiga, "2048.00 GB"},
      {std::numeric_limits<qint64>::max(), "8589934592.00 GB"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(SizeToText(row.Bytes).toStdString(), row.Text) << row.Bytes;
}

// In eighths, x.125 and x.375 are exact and lie half way between two texts.
TEST(SizeToText, OnlyTheDecimalSeparatorIsOfTheLocale) {
  const struct {
    QString Locale;
    QString Text;
  } rows[] = {
      {u"de_DE"_qs, u"2048,50 GB"_qs}, {u"ja_JP"_qs, u"2048.50 GB"_qs}, {u"ar_EG"_qs, u"2048\u066b50 GB"_qs}};
  for (const auto& row : rows) {
    const TLocaleFor locale(row.Locale);
    EXPECT_EQ(SizeToText(2048 * kGiga + kGiga / 2), row.Text) << qPrintable(row.Locale);
  }
}

TEST(TextCutters, LeftOfCharAndRightOfLastChar) {
  const QString text = u"a.bc.d"_qs;
  EXPECT_EQ(LeftOfChar(text, 0, u'.'), u"a");
  EXPECT_EQ(LeftOfChar(text, 3, u'!'), u"");
  EXPECT_EQ(LeftOfChar(text, 3, QChar()), u"a.b");
  EXPECT_EQ(LeftOfChar(text, -1, QChar()), u"");
  EXPECT_EQ(LeftOfChar(text, 99, QChar()), text);
  EXPECT_EQ(RightOfLastChar(text, 0, u'.'), u"d");
  EXPECT_EQ(RightOfLastChar(text, 3, u'!'), text);
  EXPECT_EQ(RightOfLastChar(text, 3, QChar()), u"c.d");
  EXPECT_EQ(RightOfLastChar(text, -1, QChar()), u"");
  EXPECT_EQ(RightOfLastChar(u"a."_qs, 0, u'.'), u"");
}

TEST(TextCutters, LastCharPosCountsFromTheEnd) {
  const QString text = u"a.bc.d."_qs;
  const int places[] = {0, 7, 5, 2, 0};
  for (int n = 0; n < 5; ++n)
    EXPECT_EQ(LastCharPos(text, u'.', n), places[n]) << n;
  EXPECT_EQ(LastCharPos(QString(), u'.', 1), 0);
}

TEST(TextCutters, TrimBelowCharTakesAllCodesUpToTheGivenOne) {
  EXPECT_EQ(TrimBelowChar(u"\" \t!a \"b!\"\n"_qs, u'"'), u"a \"b");
  EXPECT_EQ(TrimBelowChar(u" !\"\" "_qs, u'"'), u"");
  EXPECT_EQ(TrimBelowChar(QString(), u'"'), u"");
  EXPECT_EQ(TrimBelowChar(u"\x01\u00a0x\u3000 "_qs, u' '), u"\u00a0x\u3000") << "blanks of higher codes stay";
}

TEST(TextCutters, SplitToListKeepsEmptyParts) {
  const struct {
    QString Text;
    QStringList Parts;
  } rows[] = {
      {u"a;b;"_qs, {u"a"_qs, u"b"_qs, QString()}},
      {u";;x"_qs, {QString(), QString(), u"x"_qs}},
      {u"one"_qs, {u"one"_qs}},
      {QString(), {QString()}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(SplitToList(row.Text, u";"_qs), row.Parts) << qPrintable(row.Text);
  EXPECT_EQ(SplitToList(u"abc"_qs, QString()), QStringList(u"abc"_qs));
}

TEST(GetFileTypeName, TypesOfTheSystemAndWordsForTheRest) {
  EXPECT_EQ(GetFileTypeName(QString()), u"FILE");
  EXPECT_EQ(GetFileTypeName(u".no-such-type"_qs), u"NO-SUCH-TYPE FILE");
  EXPECT_EQ(GetFileTypeName(u".a.zzqzz"_qs), u"ZZQZZ FILE");
  EXPECT_FALSE(GetFileTypeName(u".rtf"_qs).endsWith(u"FILE"_qs));
}

TEST(SpecialFolders, ByNumberAndInTheFrame) {
  const TTestUser user;
  const TVariables variables{{"XDG_CONFIG_DIRS", "/etc/common:/etc/other"}};
  const TAppFrame frame;
  EXPECT_EQ(frame.FUserDataPath, user.Home.Path(TTestUser::AppData));
  EXPECT_EQ(frame.FCommonDataPath, HasDrives() ? qEnvironmentVariable("ProgramData") : u"/etc/common"_qs);
  EXPECT_EQ(frame.FAppPath, ProgramFolder());
  EXPECT_TRUE(frame.FAppPath.endsWith(PathDelim));
  EXPECT_EQ(GetSpecialFolderPath(26), frame.FUserDataPath);
  EXPECT_EQ(GetSpecialFolderPath(35), frame.FCommonDataPath);
  EXPECT_EQ(GetSpecialFolderPath(4711), QString());
}
