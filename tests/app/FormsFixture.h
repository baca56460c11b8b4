// Both forms of the program, joined as in main(), over a small real tree.
#pragma once

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>

#include <functional>
#include <memory>

#include "app/UnitScanWizard.h"
#include "controls/bars/BarManager.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/list/ListView.h"
#include "fixtures/GivenDialogs.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "views/main/UnitMain.h"

class TFormsTest : public testing::Test {
 protected:
  TFormsTest();

  // Makes the forms for a command line, and shows the main form.
  void Open(const QStringList& parameters = {});

  // Shows the wizard without the modal loop; the test pumps events itself.
  void ShowWizard();

  // Pumps events until the condition holds, at most ten seconds.
  [[nodiscard]] static bool WaitFor(const std::function<bool()>& condition);

  // Waits until the wizard has closed by itself after a scan.
  [[nodiscard]] bool WaitForResult();

  // From here on commands reach the wizard; the first activation, which opens it, is over by then.
  void Join();
  // Begins a scan of a folder in the open wizard, as a user does.
  void StartScan(const QString& folder);
  // Both forms with the small tree as the result.
  void Analyse();

  [[nodiscard]] bool OnFirstPage();
  [[nodiscard]] QString Label(const char* name);
  [[nodiscard]] TListView& List(const char* name);
  [[nodiscard]] QPushButton& Button(const char* name);
  [[nodiscard]] QStringList Captions(const char* list);
  [[nodiscard]] TdxBarButton& Command(const char* name);
  [[nodiscard]] bool Enabled(const char* command) { return Command(command).Enabled(); }
  [[nodiscard]] TdxTabContainerDockSite& Tabs();
  void ActivateTab(int index) { Tabs().SetActiveChildIndex(index); }
  static void Click(QWidget& widget);

  TTempTree FTree;
  TGivenDialogs FDialogs;
  std::unique_ptr<TFormMain> FForm;
  std::unique_ptr<TFormWizard> FWizard;
};
