#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "fixtures/Variables.h"
#include "support/Korvel_Routine_New.h"

#include <gtest/gtest.h>

#include <QDir>

namespace {

// In both "@" stands for a root and "|" for the delimiter.
struct TRow {
  QString CommandLine;
  QString Path;
};

QString Local(QString text) {
  text.replace(u"@"_qs, HasDrives() ? u"C:\\"_qs : u"/"_qs);
  return text.replace(u'|', PathDelim);
}

void ExpectAll(std::initializer_list<TRow> rows) {
  for (const TRow& row : rows)
    EXPECT_EQ(ExtractCommandPath(Local(row.CommandLine)), Local(row.Path)) << qPrintable(row.CommandLine);
}

}  // namespace

TEST(ExtractCommandPath, CutsWhatStandsRoundThePath) {
  ExpectAll({
      {u"@opt|a.txt"_qs, u"@opt|a.txt"_qs},
      {u"\"@opt|a b|prog\" /x"_qs, u"@opt|a b|prog"_qs},
      {u"  \"!@opt|prog!\"  "_qs, u"@opt|prog"_qs},
      {u";@opt|a;b"_qs, u"@opt|a;b"_qs},
      {u"|\?\?|@opt|a|\?\?|b"_qs, u"@opt|a|\?\?|b"_qs},
      {u"@opt|prog %1 %1"_qs, u"@opt|prog  %1"_qs},
      {u"@opt|lib.dll,1,2"_qs, u"@opt|lib.dll"_qs},
      {u"=\"@opt|prog\" \"%1\""_qs, u"="_qs},
      {QString(), QString()},
      {u"\"\""_qs, QString()},
  });
}

TEST(ExtractCommandPath, ASwitchCutsAtTheFirstHyphenAnywhere) {
  ExpectAll({
      {u"@opt|prog -x"_qs, u"@opt|prog"_qs},
      {u"@a-b|c -x"_qs, u"@a"_qs},
      {u"@a-b|c-x"_qs, u"@a-b|c-x"_qs},
      {u"@data|a - b.txt"_qs, u"@data|a"_qs},
  });
}

TEST(ExtractCommandPath, SlashesBeginSwitchesAndDrivesComeToTheFrontWhereThereAreDrives) {
  const struct {
    QString CommandLine, OnLinux, OnWindows;
  } rows[] = {
      {u"C:/opt/x y"_qs, u"C:/opt/x y"_qs, u"C:"_qs},
      {u"C:\\opt\\prog /s /q"_qs, u"C:\\opt\\prog /s /q"_qs, u"C:\\opt\\prog"_qs},
      {u"file in C:\\dir\\a"_qs, u"file in C:\\dir\\a"_qs, u"C:\\dir\\a"_qs},
      {u"\\\\?\\C:\\a D:\\b"_qs, u"\\\\?\\C:\\a D:\\b"_qs, u"C:\\a D:\\b"_qs},
      {u":\\a"_qs, u":\\a"_qs, u":\\a"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(ExtractCommandPath(row.CommandLine), HasDrives() ? row.OnWindows : row.OnLinux);
}

TEST(ExtractCommandPath, KnownVariablesGoToTheFront) {
  const TVariables variables{{"windir", HasDrives() ? "C:\\win" : "/win"},
                             {"systemroot", HasDrives() ? "C:\\sysroot\\" : "/sysroot/"},
                             {"ProgramFiles", nullptr}};
  ExpectAll({
      {u"%SystemRoot%|system32|a.dll,1"_qs, u"@sysroot|system32|a.dll"_qs},
      {u"%windir%|a||b"_qs, u"@win|a|b"_qs},
      {u"0123456789%windir%|a"_qs, u"@win|9%windir%|a"_qs},
      {u"%programfiles%|a"_qs, u"%programfiles%|a"_qs},
  });
}

// The head goes wherever the token stands, and the token only where it is the head.
TEST(ExtractCommandPath, SystemRootToken) {
  ExpectAll({
      {u"|SystemRoot|sys|a"_qs, GetWindowsDir() + u"|sys|a"_qs},
      {u"ab|systemroot|c"_qs, GetWindowsDir() + u"abot|c"_qs},
      {u"0123456789ab|systemroot"_qs, GetWindowsDir() + u"0123456789ab|systemroot"_qs},
  });
}

TEST(ExtractCommandPath, RunDllIsTakenOffOnlyForALibraryOfTheSystem) {
  TTempTree tree;
  tree.MakeFile("lib.so", 1);
  const QString here = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(tree.Path()));
  const QString ofTheSystem = HasDrives() ? GetSystemDir() + u"\\kernel32.dll"_qs : tree.Path("lib.so");
  const QString name = HasDrives() ? u"Kernel32.dll"_qs : ofTheSystem.mid(1);
  EXPECT_EQ(ExtractCommandPath(u"RunDll32.exe "_qs + name).toLower(), ofTheSystem.toLower());
  ExpectAll({
      {u"RUNDLL32.exe lib.so"_qs, u"RUNDLL32.exe lib.so"_qs},
      {u"rundll32.exe no|such|library"_qs, u"rundll32.exe no|such|library"_qs},
      {u"rundll32.exe"_qs, u"rundll32.exe"_qs},
  });
  QDir::setCurrent(here);
}
