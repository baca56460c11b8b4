// The download pass as the wizard shows it: a row of its own behind the paths, and steps of the bar.
#include "FormsFixture.h"
#include "controls/progress/PImageProgress.h"
#include "fixtures/TestUser.h"
#include "platform/Paths.h"

class DownloadRow : public TFormsTest {
 protected:
  // A browser that downloads into the folder of the films.
  DownloadRow() {
    const QString films = FTree.Path("films").replace(u"\\"_qs, u"\\\\"_qs);
    FUser.Home.WriteFile(TTestUser::Firefox + "/profiles.ini", "[Profile0]\nPath=p\n");
    FUser.Home.WriteFile(TTestUser::Firefox + "/p/prefs.js",
                         "user_pref(\"browser.download.dir\", \"" + NameToBytes(films) + "\");\n");
    Open();
  }

  TTestUser FUser;
};

TEST_F(DownloadRow, FollowsThePathsAndItsFoldersAreStepsOfTheBar) {
  ShowWizard();  // the first show takes targets from the command line only
  FWizard->reject();
  FWizard->AddTarget(FTree.Path("films"));
  FWizard->AddTarget(FTree.Path("music"));
  ShowWizard();
  ASSERT_TRUE(WaitForResult());
  const TListView& rows = List("lvAnalyze");
  ASSERT_EQ(rows.Items().Count(), 3);
  EXPECT_EQ(rows.Items()[1]->SubItems().Text(0), u"Completed"_qs);
  EXPECT_EQ(rows.Items()[2]->Caption(), u"Download Directory"_qs);
  EXPECT_EQ(rows.Items()[2]->SubItems().Text(0), u"Analyzing..."_qs);
  const auto* bar = FWizard->findChild<TImageProgress*>(u"imgPgBar"_qs);
  EXPECT_EQ(bar->Max(), 900);
  EXPECT_EQ(bar->Position(), 900);
  EXPECT_EQ(FWizard->Result()->DownloadFiles().Count(), 2);
}
