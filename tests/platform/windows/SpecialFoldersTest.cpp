#include "fixtures/QtPrinters.h"
#include "fixtures/Variables.h"
#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>

namespace {

QString Variable(const char* name) {
  return qEnvironmentVariable(name);
}

TEST(SpecialFolders, FoldersByNumberAreTheOnesOfTheEnvironment) {
  EXPECT_TRUE(SameFolder(GetKnownFolder(TSpecialFolder::AppData), Variable("APPDATA")));
  EXPECT_TRUE(SameFolder(GetKnownFolder(TSpecialFolder::LocalAppData), Variable("LOCALAPPDATA")));
  EXPECT_TRUE(SameFolder(GetKnownFolder(TSpecialFolder::CommonAppData), Variable("PROGRAMDATA")));
  EXPECT_TRUE(SameFolder(GetKnownFolder(TSpecialFolder::Profile), Variable("USERPROFILE")));
  const QString profile = IncludeTrailingPathDelimiter(Variable("USERPROFILE"));
  for (const TSpecialFolder folder : {TSpecialFolder::Personal, TSpecialFolder::Desktop}) {
    EXPECT_TRUE(GetKnownFolder(folder).startsWith(profile, Qt::CaseInsensitive));
    EXPECT_TRUE(DirectoryExists(GetKnownFolder(folder)));
  }
}

TEST(SpecialFolders, PlacesOfTheSystemAndTheProgram) {
  EXPECT_TRUE(SameFolder(GetWindowsFolder(), Variable("SystemRoot")));
  EXPECT_TRUE(SameFolder(GetSystemFolder(), Variable("SystemRoot") + u"\\system32"_qs));
  EXPECT_TRUE(SameFolder(SystemVolumeRoot(), Variable("SystemDrive") + u'\\'));
  EXPECT_EQ(ProgramFolder(), QDir::toNativeSeparators(QCoreApplication::applicationDirPath()) + u'\\');
}

TEST(SpecialFolders, DownloadsAreAtHomeAndBrowsersInTheApplicationData) {
  const TVariables set{{"HOMEDRIVE", "X:"}, {"HOMEPATH", "\\me"}, {"LOCALAPPDATA", "Y:\\local"}};
  EXPECT_EQ(GetDownloadsFolder(), u"X:\\me\\Downloads"_qs);
  EXPECT_EQ(GetBrowserFolder(TBrowser::Chrome), u"Y:\\local\\Google\\Chrome\\User Data"_qs);
  EXPECT_EQ(GetBrowserFolder(TBrowser::Firefox),
            GetKnownFolder(TSpecialFolder::AppData) + u"\\Mozilla\\Firefox"_qs);
}

TEST(SpecialFolders, ATextExpandedForDownloadsIsCutAt259) {
  const QByteArray home(300, 'h');
  const TVariables set{{"HOMEDRIVE", "X:"}, {"HOMEPATH", home.constData()}};
  EXPECT_EQ(GetDownloadsFolder().size(), 259);
}

}  // namespace
