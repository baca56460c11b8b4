// One tab between real commands, a real status bar and dialogs that give set answers; and the file commands
// of any tab over a list of rows and real files.
#pragma once

#include "fixtures/FormTest.h"

#include "controls/list/ListView.h"
#include "controls/notes/Image.h"
#include "views/commands/Commands.h"
#include "views/files/FileOperations.h"
#include "views/main/ResultTab.h"
#include "views/rows/ResultRows.h"

inline constexpr TTabIndex kTabs[] = {kOverviewTab, kContentsTab, kTopFilesTab, kDownloadsTab};
inline constexpr int kFolderImage = 0;

struct TCountingRows : public TResultFileRows {
  using TResultFileRows::TResultFileRows;
  void Refill() override { ++Refills; }
  int Refills = 0;
};

class TTabTest : public testing::Test, public TTabHost {
 protected:
  TScanForm* ScanForm() const override { return nullptr; }
  void ActivateAgain() override {}
  QWidget& Window() override { return FForm; }
  [[nodiscard]] TTabParts Parts() { return {*this, FState, FCommands, FLine, FDialogs, FPictures, FImages}; }
  [[nodiscard]] bool Enabled(const char* command) { return FCommands.Button(command).Enabled(); }

  QMainWindow FForm;
  TMainCommands FCommands{FForm};
  TImageNote FPictures;
  TMainState FState{QString()};
  TdxStatusBar FBar;
  TStatusLine FLine{FBar, FPictures, FState};
  TGivenDialogs FDialogs;
  TFormImages FImages;
};

class TFileOperationsTest : public TTabTest {
 protected:
  TFileOperationsTest() {
    FList.SetOptions({.CheckBoxes = true});
    AddResultColumns(FList, kTopRules);
    FList.OnDeletion = [forget = FRows.Forgetter()](TListItem* item) { forget(*item); };
    FForm.setCentralWidget(&FList);
    FForm.show();
    FRows.SetRoots({FTree.Path("root")});
    FTree.MakeAll({"root/", "to/"});
    FDialogs.Folder = FTree.Path("to");
    FDialogs.Yes = true;
  }
  ~TFileOperationsTest() override { FForm.takeCentralWidget(); }

  // A checked row of "folder/name", the last one or at an index, the selected one from now on.
  void AddRow(const QByteArray& folder, const QByteArray& name, bool isFolder = false, int row = -1) {
    TListItem* item = FList.Items().Insert(row < 0 ? FList.Items().Count() : row);
    item->SetCaption(QString::fromLatin1(name));
    item->SubItems().Assign({FTree.Path(folder) + PathDelim, u"1 Byte"_qs, u"FILE"_qs});
    item->SetImageIndex(isFolder ? kFolderImage : 5);
    item->SetChecked(true);
    FList.SetSelected(item);
  }
  void AddFileRow(const QByteArray& folder, const QByteArray& name) {
    FTree.MakeFile(folder + '/' + name, 1);
    AddRow(folder, name);
  }
  void Clear() {
    FList.Clear();
    FDialogs.Said.clear();
    SetLarge(true);
  }
  TFileOperations On(TTabIndex tab) { return TFileOperations(Parts(), tab, FRows); }
  void SetLarge(bool on) { FCommands.SetEnabled({"lbtnDelete", "lbtnMove"}, on); }
  [[nodiscard]] bool LargeOn() { return Enabled("lbtnDelete"); }
  [[nodiscard]] bool There(const QByteArray& name) const {
    return GetFileStatus(FTree.Path(name)).has_value();
  }
  [[nodiscard]] QString CountPanel() const { return FBar.Panels(0).Text(); }
  [[nodiscard]] QString LocationOf(int row) { return FList.Items()[row]->SubItems().Text(0); }
  // How often waiting input is handled within the body.
  static int PumpsIn(const std::function<void()>& body) {
    int pumps = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&pumps] { ++pumps; });
    timer.start(0);
    body();
    return pumps;
  }

  TTestUser FUser;  // whose trash it is
  TTempTree FTree;
  TListView FList;
  TCountingRows FRows{FList, kFolderImage};
};
