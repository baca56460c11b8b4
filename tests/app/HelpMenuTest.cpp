#include <QDesktopServices>
#include <QMessageBox>
#include <QTimer>

#include "FormsFixture.h"
#include "controls/bars/BarItems.h"
#include "fixtures/NativePath.h"
#include "views/commands/Commands.h"

// Takes web addresses in place of the desktop.
class TBrowser : public QObject {
  Q_OBJECT
 public:
  TBrowser() { QDesktopServices::setUrlHandler(u"https"_qs, this, "Open"); }
  ~TBrowser() override { QDesktopServices::unsetUrlHandler(u"https"_qs); }
  Q_SLOT void Open(const QUrl& url) { Opened.append(url); }
  QList<QUrl> Opened;
};

class HelpMenu : public TFormsTest {
 protected:
  void Choose(const char* command) { FForm->findChild<TdxBarButton*>(QLatin1String(command))->Click(); }
};

TEST_F(HelpMenu, AboutShowsTheBoxOfItsLibrary) {
  Open();
  FForm->show();
  QString shown;
  QTimer::singleShot(300, [&shown] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      shown = box->text();
      box->accept();
    }
  });
  Choose("btnAbout");
  EXPECT_TRUE(shown.contains(u"Tallyscope"_qs)) << qPrintable(shown);
}

TEST_F(HelpMenu, HomepageAndHelpGoToTheBrowserAndWithoutTheLibraryOnlyHelpDoes) {
  Open();
  TBrowser browser;
  Choose("btnHome");
  EXPECT_EQ(browser.Opened.size(), 1);
  browser.Opened.clear();
  if (!HasDrives()) {  // where paths have drives, addresses go to the system's shell, past Qt
    Choose("btnHelp");
    ASSERT_EQ(browser.Opened.size(), 1);
    EXPECT_EQ(browser.Opened[0].path() + u'?' + browser.Opened[0].query(), u"/forumdisplay.php?f=41"_qs);
    browser.Opened.clear();
  }

  btnAboutClick(FTree.Path("nothing"));
  btnHomeClick(FTree.Path("nothing"));
  EXPECT_TRUE(browser.Opened.isEmpty());
}

#include "HelpMenuTest.moc"
