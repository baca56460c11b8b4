#include "fixtures/TempTree.h"
#include "support/Korvel_Routine_New.h"

#include <gtest/gtest.h>

#include <QDir>

namespace {

struct TRow {
  QString CommandLine;
  QString Path;
};

// The variables of the table are set while one lives.
class TVariables {
 public:
  TVariables() {
    qputenv("windir", "/win");
    qputenv("systemroot", "/sysroot/");
  }
  ~TVariables() {
    qunsetenv("windir");
    qunsetenv("systemroot");
  }
};

void ExpectAll(std::initializer_list<TRow> rows) {
  for (const TRow& row : rows)
    EXPECT_EQ(ExtractCommandPath(row.CommandLine), row.Path) << qPrintable(row.CommandLine);
}

}  // namespace

TEST(ExtractCommandPath, CutsWhatStandsRoundThePath) {
  ExpectAll({
      {u"/opt/a.txt"_qs, u"/opt/a.txt"_qs},
      {u"\"/opt/a b/prog\" /x"_qs, u"/opt/a b/prog"_qs},
      {u"  \"!/opt/prog!\"  "_qs, u"/opt/prog"_qs},
      {u";/opt/a;b"_qs, u"/opt/a;b"_qs},
      {u"/\?\?/opt/a/\?\?/b"_qs, u"opt/a/\?\?/b"_qs},
      {u"/opt/prog %1 %1"_qs, u"/opt/prog  %1"_qs},
      {u"/opt/lib.dll,1,2"_qs, u"/opt/lib.dll"_qs},
      {QString(), QString()},
      {u"\"\""_qs, QString()},
  });
}

TEST(ExtractCommandPath, ASwitchCutsAtTheFirstHyphenAnywhere) {
  ExpectAll({
      {u"/opt/prog -x"_qs, u"/opt/prog"_qs},
      {u"/a-b/c -x"_qs, u"/a"_qs},
      {u"/a-b/c-x"_qs, u"/a-b/c-x"_qs},
      {u"/data/a - b.txt"_qs, u"/data/a"_qs},
  });
}

TEST(ExtractCommandPath, SwitchesAndDriveLettersAreNoMatterWhereSlashDelimits) {
  ExpectAll({{u"/opt/x/y"_qs, u"/opt/x/y"_qs}, {u"file in C:\\dir\\a"_qs, u"file in C:\\dir\\a"_qs}});
}

TEST(ExtractCommandPath, KnownVariablesGoToTheFront) {
  const TVariables variables;
  ExpectAll({
      {u"%SystemRoot%/system32/a.dll,1"_qs, u"/sysroot/system32/a.dll"_qs},
      {u"%windir%/a//b"_qs, u"/win/a/b"_qs},
      {u"0123456789%windir%/a"_qs, u"/win/9%windir%/a"_qs},
      {u"%programfiles%/a"_qs, u"%programfiles%/a"_qs},
  });
}

// The head goes wherever the token stands, and the token only where it is the head.
TEST(ExtractCommandPath, SystemRootToken) {
  ExpectAll({
      {u"/SystemRoot/sys/a"_qs, GetWindowsDir() + u"/sys/a"_qs},
      {u"ab/systemroot/c"_qs, GetWindowsDir() + u"abot/c"_qs},
      {u"0123456789ab/systemroot"_qs, GetWindowsDir() + u"0123456789ab/systemroot"_qs},
  });
}

TEST(ExtractCommandPath, RunDllIsTakenOffOnlyForALibraryOfTheSystem) {
  TTempTree tree;
  tree.MakeFile("lib.so", 1);
  const QString library = tree.Path("lib.so");
  ExpectAll({
      {u"RUNDLL32.exe "_qs + library, u"RUNDLL32.exe "_qs + library},
      {u"RunDll32.exe "_qs + library.mid(1), library},
      {u"rundll32.exe no/such/library"_qs, u"rundll32.exe no/such/library"_qs},
      {u"rundll32.exe"_qs, u"rundll32.exe"_qs},
  });
}
