// The file commands over real files, by the rules of each tab.
#include "TabFixture.h"
#include "controls/shell/RzShellList.h"
#include "views/files/FileRows.h"
#include "views/rows/ListHelpers.h"

using FileOperations = TFileOperationsTest;

TEST_F(FileOperations, WhichRowsGoAfterADeleteDiffersByTab) {
  const std::tuple<TTabIndex, bool, bool, bool> rows[] = {{kOverviewTab, false, false, true},
                                                          {kContentsTab, true, false, true},
                                                          {kTopFilesTab, true, true, false},
                                                          {kDownloadsTab, true, true, false}};
  for (const auto& [tab, fileRowGoes, missingRowGoes, folderGoes] : rows) {
    Clear();
    AddFileRow("root", "file");
    On(tab).Delete();
    EXPECT_FALSE(There("root/file")) << tab;
    EXPECT_EQ(FList.Items().Count() == 0, fileRowGoes) << tab;
    Clear();
    AddRow("root", "missing");
    On(tab).Delete();
    EXPECT_EQ(FList.Items().Count() == 0, missingRowGoes) << tab;
    Clear();
    FTree.MakeFile("root/folder/inner", 1);
    AddRow("root", "folder", true);
    On(tab).Delete();
    EXPECT_EQ(There("root/folder"), !folderGoes) << tab;
    EXPECT_EQ(FList.Items().Count() == 0, folderGoes) << tab;
  }
}

TEST_F(FileOperations, TheSelectedRowOrTheCheckedOnes) {
  for (const TTabIndex tab : kTabs) {
    Clear();
    for (const char* name : {"a", "b", "c"})
      AddFileRow("root", name);
    FList.SetSelected(FList.Items()[1]);
    FList.Items()[1]->SetChecked(false);
    On(tab).Delete();
    const bool selected = tab == kOverviewTab;
    EXPECT_EQ(There("root/a"), selected) << tab;
    EXPECT_EQ(There("root/b"), !selected) << tab;
    EXPECT_EQ(There("root/c"), selected) << tab;
  }
  Clear();
  On(kOverviewTab).Delete();
  On(kOverviewTab).Move();
  EXPECT_TRUE(FDialogs.Said.isEmpty()) << "no selected row, no question";
  EXPECT_TRUE(LargeOn());
}

TEST_F(FileOperations, WhatAnAnswerLeavesAndWhatFollows) {
  for (const TTabIndex tab : kTabs) {
    Clear();
    FRows.Refills = 0;
    AddFileRow("root", "file");
    AddFileRow("root", "other");
    FList.Items()[0]->SetChecked(false);
    FLine.SetCountText(u"-"_qs);
    FDialogs.Yes = false;
    On(tab).Delete();
    EXPECT_TRUE(There("root/other"));
    EXPECT_EQ(LargeOn(), tab != kOverviewTab) << tab;
    EXPECT_EQ(FDialogs.Said.size(), 1);
    FDialogs.Yes = true;
    On(tab).Delete();
    EXPECT_FALSE(LargeOn()) << tab;
    EXPECT_EQ(FRows.Refills, tab == kContentsTab) << tab;
    EXPECT_EQ(CountPanel(), tab == kTopFilesTab || tab == kDownloadsTab ? u"1 items"_qs : u"-"_qs) << tab;
  }
  Clear();
  FRows.Refills = 0;
  On(kContentsTab).Delete();
  EXPECT_EQ(FRows.Refills, 1) << "with no row checked, too";
}

TEST_F(FileOperations, WaitingInputIsHandledAsOftenAsTold) {
  for (const TTabIndex tab : kTabs) {
    Clear();
    for (int row = 0; row < 20; ++row)
      AddRow("root", "missing");
    for (TListItem* item : FList.Items())
      item->SetChecked(false);
    EXPECT_EQ(PumpsIn([&] { On(tab).Move(); }), tab == kOverviewTab ? 0 : 20) << tab;
    EXPECT_EQ(PumpsIn([&] { On(tab).Delete(); }), tab == kOverviewTab ? 0 : 2) << tab;
  }
}

TEST_F(FileOperations, AMoveTakesRowsAlongAndReplacesNothing) {
  for (const TTabIndex tab : kTabs) {
    for (const bool delimited : {false, true}) {
      Clear();
      FLine.SetCountText(u"-"_qs);
      AddFileRow("root", "first");
      AddFileRow("root", "held");
      FTree.MakeFile("to/held", 2);
      AddFileRow("root", "file");
      FDialogs.Folder = FTree.Path("to") + (delimited ? QString(PathDelim) : QString());
      On(tab).Move();
      EXPECT_TRUE(There("to/file") && !There("root/file")) << tab;
      EXPECT_EQ(There("to/first"), tab != kOverviewTab) << tab;
      EXPECT_EQ(There("root/held"), true) << tab;
      EXPECT_EQ(GetFileStatus(FTree.Path("to/held"))->Size, 2U) << tab;
      const QString to = FTree.Path("to") + PathDelim;
      EXPECT_EQ(LocationOf(2), tab == kContentsTab ? FTree.Path("root") + PathDelim : to) << tab;
      EXPECT_NE(LocationOf(1), to) << tab;
      EXPECT_TRUE(FList.Items()[2]->Checked()) << tab;
      EXPECT_EQ(CountPanel(), tab == kContentsTab ? u"3 items"_qs : u"-"_qs) << tab;
      EXPECT_TRUE(LargeOn()) << tab;
      FTree.Remove("to/file");
      if (There("to/first")) FTree.Remove("to/first");
    }
  }
  FDialogs.Folder.reset();
  AddFileRow("root", "kept");
  On(kTopFilesTab).Move();
  EXPECT_TRUE(There("root/kept")) << "cancelled";
}

TEST_F(FileOperations, AMovedRowIsActedOnInItsNewFolder) {
  AddFileRow("root", "file");
  On(kTopFilesTab).Move();
  FTree.MakeFile("root/file", 1);
  On(kTopFilesTab).Delete();
  EXPECT_FALSE(There("to/file"));
  EXPECT_TRUE(There("root/file"));
  AddRow("root", "file");
  EXPECT_TRUE(FRows.OpenParent(0).IsOpen());
  On(kTopFilesTab).Move();
  FTree.Rename("to", "hold");
  FTree.MakeFile("precious/file", 1);
  FTree.MakeLink("to", "precious");
  EXPECT_FALSE(FRows.OpenParent(0).IsOpen()) << "a link has the place of the folder that the user chose";
  Clear();
  AddRow("root", "file");
  AddRow("to", "file");
  EXPECT_FALSE(FRows.OpenParent(1).IsOpen()) << "this row was not moved here";
}

TEST_F(FileOperations, NothingIsReachedThroughALinkOrInThePlaceOfSomethingElse) {
  FTree.MakeFile("precious/file", 1);
  FTree.MakeLink("root/link", "../precious");
  FTree.MakeAll({"root/was folder", "root/was file/inner"});
  for (const TTabIndex tab : kTabs) {
    for (const bool moves : {false, true}) {
      for (int row = 0; row < 3; ++row) {
        Clear();
        if (row == 0) AddRow("root/link", "file");
        if (row == 1) AddRow("root", "was folder", true);
        if (row == 2) AddRow("root", "was file");
        moves ? On(tab).Move() : On(tab).Delete();
      }
      EXPECT_TRUE(There("precious/file") && There("root/was folder") && There("root/was file/inner")) << tab;
    }
  }
  if (HasDrives()) return;  // Wine deletes what the link of a file leads to
  FTree.MakeLink("root/one link", "../precious/file");
  Clear();
  AddRow("root", "one link");
  On(kTopFilesTab).Delete();
  EXPECT_FALSE(There("root/one link"));
  EXPECT_TRUE(There("precious/file")) << "a link is deleted itself";
}

// When the first rows have been handled, a row goes, another comes above them, one is checked and one unchecked.
TEST_F(FileOperations, AListThatChangesMeanwhileHidesNoCheckedRowAndAddsNone) {
  FTree.MakeFile("root/late", 1);
  for (const bool moves : {false, true}) {
    Clear();
    for (int row = 0; row < 31; ++row)
      AddFileRow("root", "file" + QByteArray::number(row));
    FList.Items()[15]->SetChecked(false);
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, &FForm, [&] {
      if (There(moves ? "root/file1" : "root/file30")) return;
      other.stop();
      FList.Items()[15]->SetChecked(true);
      FList.Items()[16]->SetChecked(false);
      if (moves)
        FList.Items().Delete(1);
      else
        AddRow("root", "late", false, 0);
    });
    other.start(0);
    moves ? On(kTopFilesTab).Move() : On(kTopFilesTab).Delete();
    EXPECT_FALSE(other.isActive());
    QList<int> left;
    for (int row = 0; row < 31; ++row)
      if (There("root/file" + QByteArray::number(row))) left << row;
    EXPECT_EQ(left, (QList<int>{15, 16})) << moves;
    EXPECT_TRUE(There("root/late"));
  }
}

// The first row is handled before input is; then commands, keys and clicks find nothing to act on.
TEST_F(FileOperations, CommandsAndInputAreDroppedWhileItRunsAndClosingEndsIt) {
  for (int row = 0; row < 11; ++row)
    AddFileRow("root", QByteArray::number(row));
  int clicks = 0;
  bool close = false;
  FCommands.OnClick("btnScan", [&clicks] { ++clicks; });
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, &FForm, [&] {
    FCommands.Button("btnScan").Click();
    QTest::keyClick(&FList, Qt::Key_Space);
    QTest::mouseClick(FList.viewport(), Qt::LeftButton, {}, {60, FList.Layout().RowRect(0).center().y()});
    if (close) FForm.close();
  });
  user.start(0);
  FList.SetSelected(nullptr);
  FDialogs.Folder = FTree.Path("missing");
  On(kTopFilesTab).Move();
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(FList.Selected(), nullptr);
  close = true;
  On(kTopFilesTab).Delete();
  user.stop();
  EXPECT_EQ(FList.Items().Count(), 10) << "the window was closed behind the first row";
  EXPECT_TRUE(There("root/0") && !There("root/10"));
  FCommands.Button("btnScan").Click();
  EXPECT_EQ(clicks, 1) << "the hold ends with the work";
}

TEST_F(FileOperations, AFailedOpenIsToldOnTwoTabs) {
  for (const TTabIndex tab : {kOverviewTab, kTopFilesTab, kDownloadsTab}) {
    Clear();
    On(tab).Open();
    EXPECT_TRUE(FDialogs.Said.isEmpty()) << "no row";
    AddRow("root", "missing");
    On(tab).Open();
    EXPECT_EQ(FDialogs.Said, tab == kOverviewTab ? QStringList() : QStringList{u"Open file failed"_qs});
  }
}

TEST_F(FileOperations, TheMenuKeysOpenThePopupAtTheFocusedRow) {
  auto& popup = FCommands.Bars().Popup(u"pmTop100"_qs);
  AssignPopup(FList, popup);
  AddRow("root", "a");
  AddRow("root", "b");
  FList.SetItemFocused(FList.Items()[1]);
  const int top = FList.viewport()->mapToGlobal(FList.Layout().RowRect(1).topLeft()).y();
  QTest::keyClick(&FList, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(popup.isVisible());
  EXPECT_GT(popup.y(), top);
  EXPECT_LT(popup.y(), top + FList.Layout().RowRect(1).height());
  popup.close();
  QTest::keyClick(&FList, Qt::Key_F10);
  EXPECT_FALSE(popup.isVisible());
  const QPoint beside(30, FList.viewport()->height() - 3);
  QTest::mouseClick(FList.viewport(), Qt::RightButton, {}, beside);
  EXPECT_TRUE(popup.isVisible());
  popup.close();
}

TEST_F(FileOperations, RowsOfAFolderAreActedOnInTheFolderThatIsHeld) {
  FTree.MakeAll({"root/a", "root/sub/b"});
  TRzShellList list;
  list.SetOptions({.CheckBoxes = true});
  TShellFileRows rows(list);
  int refills = 0;
  rows.OnRefill = [&refills] { ++refills; };
  TFileOperations operations(Parts(), kContentsTab, rows);
  list.SetPath(FTree.Path("root"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return rows.Count() == 2; }, 10000));
  EXPECT_TRUE(rows.Row(0).IsFolder);
  EXPECT_EQ(rows.Row(0).Name, u"sub"_qs);
  FDialogs.Folder = FTree.Path("to");
  list.Items()[1]->SetChecked(true);
  if (!HasDrives()) {  // there nobody can do this to a folder that is held
    FTree.Rename("root", "moved");
    FTree.MakeFile("root/a", 1);
  }
  operations.Delete();
  EXPECT_EQ(refills, 1);
  EXPECT_EQ(There("root/a"), !HasDrives());
  EXPECT_FALSE(There("moved/a"));
  list.Items()[0]->SetChecked(true);
  list.Refresh();
  const auto unchecked = [&] { return !list.Items()[0]->Checked(); };
  EXPECT_EQ(QTest::qWaitFor(unchecked, HasDrives() ? 500 : 10000), !HasDrives())
      << "what was checked lay in the folder before";
  list.SetPath(QString());
  ASSERT_TRUE(QTest::qWaitFor([&] { return rows.Count() > 0; }, 10000));
  EXPECT_FALSE(rows.OpenParent(0).IsOpen()) << "a volume";
}
