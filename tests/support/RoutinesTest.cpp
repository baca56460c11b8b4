#include "fixtures/SystemTest.h"
#include "platform/KnownFolders.h"
#include "support/AppFrame_New.h"
#include "support/Korvel_Routine_New.h"

#include <limits>

namespace {

using TRows = std::initializer_list<std::pair<QString, QString>>;
constexpr qint64 kKilo = 1024, kMega = kKilo * kKilo, kGiga = kMega * kKilo;

}  // namespace

// Of the locale is the decimal separator alone. Half way goes away from zero; in eighths, it is exact.
TEST(SizeToText, WholeBytesAndThenTwoDecimals) {
  using TLimits = std::numeric_limits<qint64>;
  const std::tuple<const char*, qint64, const char*> rows[] = {
      {"en_US", 0, "0 Byte"},
      {"en_US", 1023, "1023 Byte"},
      {"en_US", TLimits::min(), "-9223372036854775808 Byte"},
      {"en_US", kKilo, "1.00 KB"},
      {"en_US", kKilo + kKilo / 8, "1.13 KB"},
      {"en_US", kKilo + kKilo / 8 - 1, "1.12 KB"},
      {"en_US", kMega - 1, "1024.00 KB"},
      {"en_US", kMega, "1.00 MB"},
      {"en_US", kGiga - 1, "1024.00 MB"},
      {"en_US", kGiga, "1.00 GB"},
      {"en_US", kGiga + kGiga * 995 / 1000, "1.99 GB"},
      {"en_US", kGiga + kGiga * 995 / 1000 + 1, "2.00 GB"},
      {"en_US", 8'000'000'000 * kGiga + kGiga / 8, "8000000000.13 GB"},
      {"en_US", TLimits::max(), "8589934592.00 GB"},
      {"de_DE", 2048 * kGiga + kGiga / 2, "2048,50 GB"},
      {"ja_JP", 2048 * kGiga + kGiga / 2, "2048.50 GB"},
      {"ar_EG", 2048 * kGiga + kGiga / 2, "2048\u066b50 GB"}};
  for (const auto& [locale, bytes, text] : rows) {
    QLocale::setDefault(QLocale(QLatin1String(locale)));
    EXPECT_EQ(SizeToText(bytes).toStdString(), text) << bytes;
  }
  QLocale::setDefault(QLocale::c());
}

TEST(TextCutters, Table) {
  const QString text = u"a.bc.d"_qs, dots = u"a.bc.d."_qs;
  const TRows rows = {{LeftOfChar(text, 0, u'.'), u"a"_qs},
                      {LeftOfChar(text, 3, u'!'), {}},
                      {LeftOfChar(text, 3, QChar()), u"a.b"_qs},
                      {LeftOfChar(text, -1, QChar()), {}},
                      {LeftOfChar(text, 99, QChar()), text},
                      {RightOfLastChar(text, 0, u'.'), u"d"_qs},
                      {RightOfLastChar(text, 3, u'!'), text},
                      {RightOfLastChar(text, 3, QChar()), u"c.d"_qs},
                      {RightOfLastChar(text, -1, QChar()), {}},
                      {TrimBelowChar(u"\" \t!a \"b!\"\n"_qs, u'"'), u"a \"b"_qs},
                      {TrimBelowChar(u" !\"\" "_qs, u'"'), {}},
                      {TrimBelowChar(u"\x01\u00a0x\u3000 "_qs, u' '), u"\u00a0x\u3000"_qs},
                      {SplitToList(u";;a;b;"_qs, u";"_qs).join(u'|'), u"||a|b|"_qs},
                      {SplitToList(u"abc"_qs, {}).join(u'|'), u"abc"_qs}};
  for (const auto& [cut, expected] : rows)
    EXPECT_EQ(cut, expected);
  EXPECT_EQ(SplitToList({}, u";"_qs), QStringList(QString()));
  for (const auto& [n, place] : {std::pair(0, 0), {1, 7}, {2, 5}, {3, 2}, {4, 0}})
    EXPECT_EQ(LastCharPos(dots, u'.', n), place) << n;
}

TEST(GetFileTypeName, TypesOfTheSystemAndWordsForTheRest) {
  EXPECT_EQ(GetFileTypeName({}) + GetFileTypeName(u".a.no-such-type"_qs), u"FILENO-SUCH-TYPE FILE");
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
  for (const auto& [number, path] :
       {std::pair(26, frame.FUserDataPath), {35, frame.FCommonDataPath}, {4711, QString()}})
    EXPECT_EQ(GetSpecialFolderPath(number), path);
}

// A path without the mask is the one entry.
TEST(FolderSizeOf, SumsFilesOfAnyNameInPlainFolders) {
  TTempTree tree;
  const QByteArray odd = HasDrives() ? "a+b" : "a*b";
  tree.MakeFile(odd, 1);
  tree.MakeFile(".hidden file", 20);
  tree.MakeFile(HasDrives() ? "sub/\xe6\x97\xa5\xe6\x9c\xac" : "sub/bad\xff", 300);
  tree.MakeFile("sub/deeper/x", 4000);
  tree.MakeHole("sub/hole", qint64{1} << 40);
  for (const char* folder : {".git", "sub/.cache", "hid", "read only"})
    tree.MakeFile(QByteArray(folder) + "/x", 50000);
  tree.Hide("hid");
  tree.MakeReadOnly("read only");
  tree.MakeLink("loop", ".");
  const auto readOnly = GetFileStatus(tree.Path("read only"));
  const bool stays = (readOnly->Attributes & kAttributeReadOnly) == 0;  // Wine has no read-only folders
  const quint64 sub = 4300 + (quint64{1} << 40), rest = (HasDrives() ? 0 : 1) + (stays ? 50000 : 0);
  const std::pair<QByteArray, quint64> rows[] = {{"*.*", 21 + sub + rest},
                                                 {odd, 1},
                                                 {"sub", sub},
                                                 {".git", 0},
                                                 {"sub/", 0},
                                                 {"none", 0},
                                                 {"none/*.*", 0},
                                                 {"sub/deeper/x/*.*", 0}};
  for (const auto& [path, size] : rows)
    EXPECT_EQ(FolderSizeOf(tree.Path(path)), size) << path.constData();
  EXPECT_EQ(FolderSizeOf({}), 0U);
}

// "@" stands for a root and "|" for the delimiter. A known variable's value goes to the front; the folder of
// the system does so wherever its token stands, and the token goes only where it is the head.
TEST(ExtractCommandPath, CutsWhatStandsRoundThePath) {
  const TVariables variables{{"windir", HasDrives() ? "C:\\win" : "/win"},
                             {"systemroot", HasDrives() ? "C:\\sysroot\\" : "/sysroot/"},
                             {"ProgramFiles", nullptr}};
  const TRows rows = {{u"\"@opt|a b|prog\" /x"_qs, u"@opt|a b|prog"_qs},
                      {u"  \"!@opt|prog!\"  "_qs, u"@opt|prog"_qs},
                      {u";@opt|a;b"_qs, u"@opt|a;b"_qs},
                      {u"|\?\?|@opt|a|\?\?|b"_qs, u"@opt|a|\?\?|b"_qs},
                      {u"@opt|prog %1 %1"_qs, u"@opt|prog  %1"_qs},
                      {u"@opt|lib.dll,1,2"_qs, u"@opt|lib.dll"_qs},
                      {u"=\"@opt|prog\" \"%1\""_qs, u"="_qs},
                      {u"\"\""_qs, {}},
                      {u"@a-b|c -x"_qs, u"@a"_qs},  // a switch cuts at the first hyphen anywhere
                      {u"@a-b|c-x"_qs, u"@a-b|c-x"_qs},
                      {u"%SystemRoot%|system32|a.dll,1"_qs, u"@sysroot|system32|a.dll"_qs},
                      {u"%windir%|a||b"_qs, u"@win|a|b"_qs},
                      {u"0123456789%windir%|a"_qs, u"@win|9%windir%|a"_qs},
                      {u"%programfiles%|a"_qs, u"%programfiles%|a"_qs},
                      {u"|SystemRoot|sys|a"_qs, GetWindowsDir() + u"|sys|a"_qs},
                      {u"ab|systemroot|c"_qs, GetWindowsDir() + u"abot|c"_qs},
                      {u"0123456789ab|systemroot"_qs, GetWindowsDir() + u"0123456789ab|systemroot"_qs},
                      {u"RUNDLL32.exe lib.so"_qs, u"RUNDLL32.exe lib.so"_qs},
                      {u"rundll32.exe no|such|library"_qs, u"rundll32.exe no|such|library"_qs}};
  const auto local = [](QString text) {
    return text.replace(u"@"_qs, HasDrives() ? u"C:\\"_qs : u"/"_qs).replace(u'|', PathDelim);
  };
  TTempTree tree;
  tree.MakeFile("lib.so", 1);
  const QString here = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(tree.Path()));
  for (const auto& [line, path] : rows)
    EXPECT_EQ(ExtractCommandPath(local(line)), local(path)) << qPrintable(line);
  QDir::setCurrent(here);
  const QString ofTheSystem = HasDrives() ? GetSystemDir() + u"\\kernel32.dll"_qs : tree.Path("lib.so");
  const QString name = HasDrives() ? u"Kernel32.dll"_qs : ofTheSystem.mid(1);
  EXPECT_EQ(ExtractCommandPath(u"RunDll32.exe "_qs + name).toLower(), ofTheSystem.toLower());
}

TEST(ExtractCommandPath, SlashesBeginSwitchesAndDrivesComeToTheFrontWhereThereAreDrives) {
  const TRows rows = {{u"C:/opt/x y"_qs, u"C:"_qs},
                      {u"C:\\opt\\prog /s /q"_qs, u"C:\\opt\\prog"_qs},
                      {u"file in C:\\dir\\a"_qs, u"C:\\dir\\a"_qs},
                      {u"\\\\?\\C:\\a D:\\b"_qs, u"C:\\a D:\\b"_qs},
                      {u":\\a"_qs, u":\\a"_qs}};
  for (const auto& [line, path] : rows)
    EXPECT_EQ(ExtractCommandPath(line), HasDrives() ? path : line);
}
