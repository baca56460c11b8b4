#include "views/main/StartParameters.h"

#include "fixtures/Completions.h"
#include "fixtures/SystemTest.h"
#include "platform/KnownFolders.h"

TEST(StartParameters, FirstParameterBeginsAScanWithoutRegardToCase) {
  EXPECT_EQ(TStartParameters({u"/ScanSys"_qs}).AutoStart(), TAutoStart::ScanSystem);
  EXPECT_EQ(TStartParameters({u"/SCANDRIVE"_qs}).AutoStart(), TAutoStart::ScanDrives);
  EXPECT_EQ(TStartParameters({u"/scan"_qs}).AutoStart(), TAutoStart::None);
  EXPECT_EQ(TStartParameters({u"x"_qs, u"/scansys"_qs}).AutoStart(), TAutoStart::None);
  EXPECT_EQ(TStartParameters(QStringList()).AutoStart(), TAutoStart::None);
}

TEST(StartParameters, HelpAndVersionAreAnsweredOnTheConsole) {
  EXPECT_TRUE(ConsoleAnswer({}).isEmpty());
  EXPECT_TRUE(ConsoleAnswer({u"/scansys"_qs, u"--help"_qs}).isEmpty());
  EXPECT_TRUE(ConsoleAnswer({u"--version"_qs}).startsWith("tallyscope "));
  EXPECT_EQ(ConsoleAnswer({u"--help"_qs}), ConsoleAnswer({u"-h"_qs}));
  EXPECT_EQ(MissingInCompletions(u"tallyscope"_qs, ConsoleAnswer({u"--help"_qs})), QStringList());
}

TEST(StartParameters, PathsToScanAreTheSystemVolumeOrTheFoldersThatExist) {
  const TTempTree tree;
  EXPECT_EQ(TStartParameters({u"/scansys"_qs, tree.Path()}).AutoPaths(), QStringList{SystemVolumeRoot()});
  EXPECT_EQ(
      TStartParameters({u"/scandrive"_qs, tree.Path("missing"), tree.Path(), QDir::tempPath()}).AutoPaths(),
      (QStringList{tree.Path(), QDir::tempPath()}));
  EXPECT_TRUE(TStartParameters({tree.Path(), tree.Path()}).AutoPaths().isEmpty());
}

TEST(StartParameters, AListFileOfOneFolderPreselectsIt) {
  TTempTree tree;
  const auto preselected = [&](const QByteArray& content) {
    tree.WriteFile("list.txt", content);
    return TStartParameters({u"x"_qs, tree.Path("list.txt")}).Preselection();
  };
  EXPECT_EQ(preselected("/srv/data\r\n").Folder, u"/srv/data"_qs);
  EXPECT_EQ(preselected("\xEF\xBB\xBF/srv/d\xC3\xA4ta").Folder, u"/srv/däta"_qs);
  for (const char* content : {"", "\n", "/srv/a\n/srv/b\n", "/\n"}) {
    const TPreselection chosen = preselected(content);
    EXPECT_FALSE(chosen.Folder.has_value()) << content;
    EXPECT_FALSE(chosen.Drives.has_value()) << content;
  }
}

TEST(StartParameters, OtherSecondParametersAreDrivesBetweenSemicolons) {
  const auto drives = [](const QString& second) {
    return TStartParameters({u"/scandrive"_qs, second}).Preselection().Drives;
  };
  EXPECT_EQ(drives(u"/;/home;"_qs), (QStringList{u"/"_qs, u"/home"_qs}));
  EXPECT_EQ(drives(u"/no/such/file"_qs), QStringList{u"/no/such/file"_qs});
  EXPECT_FALSE(TStartParameters({u"a"_qs, u"/"_qs, u"c"_qs}).Preselection().Drives.has_value());
}
