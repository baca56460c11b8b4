// The file commands of any tab over a list of rows, real files and dialogs that give set answers.
#pragma once

#include "views/files/FileOperations.h"

#include <gtest/gtest.h>

#include <QMainWindow>
#include <QTimer>

#include "controls/list/ListView.h"
#include "controls/notes/Image.h"
#include "fixtures/GivenDialogs.h"
#include "fixtures/TempTree.h"
#include "fixtures/TestUser.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "views/commands/Commands.h"
#include "views/main/ResultTab.h"
#include "views/rows/ResultRows.h"

inline constexpr TTabIndex kTabs[] = {kOverviewTab, kContentsTab, kTopFilesTab, kDownloadsTab};
inline constexpr int kFolderImage = 0;

struct TCountingRows : public TResultFileRows {
  using TResultFileRows::TResultFileRows;
  void Refill() override { ++Refills; }
  int Refills = 0;
};

class TFileOperationsTest : public testing::Test, public TTabHost {
 protected:
  TFileOperationsTest() {
    FList.SetOptions({.CheckBoxes = true});
    AddResultColumns(FList, kTopRules);
    FList.OnDeletion = [forget = FRows.Forgetter()](TListItem* item) { forget(*item); };
    FForm.setCentralWidget(&FList);
    FForm.show();
    FRows.SetRoots({FTree.Path("root")});
    FTree.MakeFolder("root");
    FTree.MakeFolder("to");
    FDialogs.Folder = FTree.Path("to");
    FDialogs.Yes = true;
  }
  ~TFileOperationsTest() override { FForm.takeCentralWidget(); }

  TScanForm* ScanForm() const override { return nullptr; }
  void ActivateAgain() override {}
  QWidget& Window() override { return FForm; }

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
  TFileOperations On(TTabIndex tab) {
    return TFileOperations({*this, FState, FCommands, FLine, FDialogs, FPictures, FImages}, tab, FRows);
  }
  void SetLarge(bool on) { FCommands.SetEnabled({"lbtnDelete", "lbtnMove"}, on); }
  [[nodiscard]] bool LargeOn() { return FCommands.Button("lbtnDelete").Enabled(); }
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
  QMainWindow FForm;
  TMainCommands FCommands{FForm};
  TImageNote FPictures;
  TMainState FState{QString()};
  TdxStatusBar FBar;
  TStatusLine FLine{FBar, FPictures, FState};
  TGivenDialogs FDialogs;
  TFormImages FImages;
  TListView FList;
  TCountingRows FRows{FList, kFolderImage};
};
