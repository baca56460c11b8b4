// Both forms of the program, joined as in main(), over a small real tree.
#pragma once

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>

#include <functional>
#include <memory>

#include "app/UnitScanWizard.h"
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

  [[nodiscard]] bool OnFirstPage();
  [[nodiscard]] QString Label(const char* name);
  [[nodiscard]] TListView& List(const char* name);
  [[nodiscard]] QPushButton& Button(const char* name);
  [[nodiscard]] QStringList Captions(const char* list);
  static void Click(QWidget& widget);

  TTempTree FTree;
  TGivenDialogs FDialogs;
  std::unique_ptr<TFormMain> FForm;
  std::unique_ptr<TFormWizard> FWizard;
};
