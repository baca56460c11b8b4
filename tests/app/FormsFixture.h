// Both forms of the program, joined as in main(), over a small real tree.
#pragma once

#include "fixtures/FormTest.h"

#include "app/UnitScanWizard.h"
#include "controls/bars/BarManager.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/list/ListView.h"
#include "controls/notes/PPageNote.h"
#include "support/Korvel_Routine_New.h"
#include "views/main/UnitMain.h"

class TFormsTest : public testing::Test {
 protected:
  TFormsTest() {
    FTree.MakeFile("root.bin", 500);
    FTree.MakeHole("films/long.mkv", 4000000);
    FTree.MakeFile("films/short.mkv", 3000);
    FTree.MakeFile("music/a/song.ogg", 20000);
    FTree.MakeFile("music/cover.jpg", 700);
    FTree.MakeFolder("empty");
  }

  // Makes the forms for a command line, with language files of one's own where a folder is named.
  void Open(const QStringList& parameters = {}, const QString& languages = {}) {
    const TStartParameters start(parameters);
    FForm = std::make_unique<TFormMain>(start, FDialogs, languages);
    FWizard = std::make_unique<TFormWizard>(*FForm, FForm->StaticImages(), start);
  }
  // Shows the wizard without the modal loop; the test pumps events itself.
  void ShowWizard() {
    FForm->show();
    FWizard->show();
  }
  // Pumps events until the condition holds, at most half a minute.
  [[nodiscard]] static bool WaitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 30'000);
  }
  // Waits until the wizard has closed by itself after a scan.
  [[nodiscard]] bool WaitForResult() {
    return WaitFor([this] { return !FWizard->isVisible(); });
  }
  // From here on commands reach the wizard; the first activation, which opens it, is over by then.
  void Join() {
    ASSERT_TRUE(WaitFor([this] { return FForm->Activated(); }));
    FForm->SetScanForm(*FWizard);
  }
  // Begins a scan of a folder in the open wizard, as a user does.
  void StartScan(const QString& folder) {
    FWizard->PreselectFolder(folder);
    Click(Button("btnAnalyze"));
  }
  // Both forms with the small tree as the result.
  void Analyse() {
    Open();
    ShowWizard();
    StartScan(FTree.Path());
    ASSERT_TRUE(WaitForResult());
    Join();
  }

  [[nodiscard]] bool OnFirstPage() { return FWizard->findChild<TPageNote*>(u"pgntScan"_qs)->TabIndex() == 0; }
  [[nodiscard]] QString Label(const char* name) {
    const auto* label = FForm->findChild<QLabel*>(QLatin1String(name));
    return label->isVisibleTo(FForm.get()) ? label->text() : u"hidden"_qs;
  }
  [[nodiscard]] TListView& List(const char* name) {
    auto* list = FForm->findChild<TListView*>(QLatin1String(name));
    return list != nullptr ? *list : *FWizard->findChild<TListView*>(QLatin1String(name));
  }
  [[nodiscard]] QPushButton& Button(const char* name) {
    return *FWizard->findChild<QPushButton*>(QLatin1String(name));
  }
  [[nodiscard]] QStringList Captions(const char* list) {
    QStringList captions;
    for (const TListItem* item : List(list).Items())
      captions += item->Caption();
    return captions;
  }
  [[nodiscard]] TdxBarButton& Command(const char* name) {
    return *FForm->findChild<TdxBarButton*>(QLatin1String(name));
  }
  [[nodiscard]] bool Enabled(const char* command) { return Command(command).Enabled(); }
  [[nodiscard]] TdxTabContainerDockSite& Tabs() {
    return *FForm->findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs);
  }
  void ActivateTab(int index) { Tabs().SetActiveChildIndex(index); }
  static void Click(QWidget& widget) { QTest::mouseClick(&widget, Qt::LeftButton); }
  // On the check box of a row.
  static void ClickBox(TCustomListView& list, int row, Qt::MouseButton button = Qt::LeftButton) {
    const int y = list.Layout().RowRect(row - list.TopIndex()).center().y();
    int x = 0;
    while (x < 60 && (list.GetHitTestInfoAt(x, y) & htOnStateIcon) == 0)
      ++x;
    EXPECT_LT(x, 60) << "no check box";
    QTest::mouseClick(list.viewport(), button, {}, {x + 3, y});
  }

  TTempTree FTree;
  TGivenDialogs FDialogs;
  std::unique_ptr<TFormMain> FForm;
  std::unique_ptr<TFormWizard> FWizard;
};
