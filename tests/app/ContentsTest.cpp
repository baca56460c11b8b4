// The Contents tab: what its rows, the status bar and the commands say, and the ways through the folders.
#include "ContentsFixture.h"
#include "platform/KnownFolders.h"
#include "views/contents/ContentsTab.h"

namespace {

class Contents : public TContentsTest {
 protected:
  void SetUp() override { Enter(); }
  [[nodiscard]] TContentsTab& Tab() {
    return *dynamic_cast<TContentsTab*>(FForm->findChild<QWidget*>(u"DockPnlcontent"_qs)->children().first());
  }
  void ClickColumn(int column) { Shown().OnColumnClick(&Shown().Columns()[column]); }
  [[nodiscard]] int Compared(TListItem* item1, TListItem* item2) {
    int result = 0;
    Shown().OnCompare(item1, item2, result);
    return result;
  }
  void SizeComes(qint64 size, const char* folder) {
    const TFolderSizeInfo info{static_cast<quint64>(size), FTree.Path(folder)};
    SendMessage(&Tab().Rows().Window(), WM_FOLDERSIZE, 0, reinterpret_cast<qintptr>(&info));
  }
  [[nodiscard]] QString Captions() {
    QStringList captions;
    for (int column = 0; column < Shown().Columns().Count(); ++column)
      captions << Shown().Columns()[column].Caption();
    return captions.join(u'|');
  }
  // Goes as far as the command leads; the folders on the way.
  [[nodiscard]] QString PressToTheEnd(const char* command) {
    QStringList folders;
    while (Enabled(command) && Press(command))
      folders << ExtractFileName(Here());
    return folders.join(u' ');
  }
  // Name, type and size line of panel 1.
  [[nodiscard]] QString Status() {
    return QStringList{Label("lblFileName"), Label("lblFileType"), Label("lblFileSize")}.join(u'|');
  }
};

}  // namespace

TEST_F(Contents, TheComputerLevelTellsOfTheDrives) {
  EXPECT_EQ(Here(), u"computer"_qs);
  EXPECT_EQ(Captions(), u"Name|Type|Total Size|Free Space"_qs);
  const auto& drives = FForm->Drives().Drives();
  for (size_t i = 0; i < drives.size(); ++i) {
    const TSubItems& cells = Shown().Items()[static_cast<int>(i)]->SubItems();
    EXPECT_EQ(cells[1], SizeToText(drives[i].Size));
    EXPECT_EQ(cells[2], SizeToText(drives[i].Free));
  }
  const int home = Shown().Items().Count() - 1;
  EXPECT_EQ(Shown().Items()[home]->SubItems()[1], QString());
  EXPECT_EQ(Status(), u"My Computer|%1 items|hidden"_qs.arg(home + 1));
  Shown().SetItemIndex(home);
  EXPECT_EQ(Status(), Shown().Items()[home]->Caption() + u"|Home Folder|hidden"_qs);
  if (drives.empty()) return;
  Shown().SetItemIndex(0);
  EXPECT_EQ(Label("lblFileSize"), u"Size: "_qs + SizeToText(drives[0].Size));
  TListItem* const drive = Shown().Items()[0];
  TListItem* const place = Shown().Items()[home];
  ClickColumn(2);
  EXPECT_EQ(Compared(drive, drive), 1) << "a drive is never less than another";
  EXPECT_EQ(Compared(drive, place), 1) << "places in the list of drives";
  EXPECT_EQ(Compared(place, drive), -1);
  ClickColumn(2);
  EXPECT_EQ(Compared(drive, place), -1);
  EXPECT_EQ(Compared(drive, drive), -1);
}

TEST_F(Contents, AFolderHasItsSizesAndTellsOfTheSelectedRow) {
  ASSERT_TRUE(Pick(""));
  EXPECT_EQ(Captions(), u"Name|Size|Type|Date Modified"_qs);
  EXPECT_EQ(Status(), FTree.Path() + u"|4 items|hidden"_qs);
  EXPECT_EQ(Shown().accessibleDescription(), FTree.Path());
  ASSERT_TRUE(WaitForSizes());
  EXPECT_EQ(Cell("films", 0), SizeToText(4003000));
  EXPECT_EQ(Cell("empty", 0), u"0 Byte"_qs);
  EXPECT_EQ(Cell("root.bin", 0), u"500 Byte"_qs);
  Select("films");
  EXPECT_EQ(Status(), u"films|"_qs + Cell("films", 1) + u"|Size: 3.82 MB"_qs);
  EXPECT_TRUE(Enabled("mniCOpen") && Enabled("btnPPT") && Enabled("lbtnProperty"));
  Select("root.bin");
  EXPECT_EQ(Status(), u"root.bin|"_qs + Cell("root.bin", 1) + u"|Size: 500 Byte"_qs);
  Shown().SetSelected(nullptr);
  EXPECT_EQ(Status(), FTree.Path() + u"|4 items|hidden"_qs);
  EXPECT_FALSE(Enabled("mniCOpen") || Enabled("btnOFF"));
  Select("films");
  FTree.Remove("films");
  ASSERT_TRUE(WaitFor([this] { return Row(u"films"_qs) == nullptr; }));
  EXPECT_EQ(Status(), FTree.Path() + u"|3 items|hidden"_qs);
  EXPECT_FALSE(Enabled("lbtnOpen"));
}

TEST_F(Contents, ASizeGoesToItsRowIfThatIsShownStill) {
  ASSERT_TRUE(Pick(""));
  ASSERT_TRUE(WaitForSizes());
  Select("films");
  SizeComes(2048, "films");
  EXPECT_EQ(Cell("films", 0), u"2.00 KB"_qs);
  EXPECT_EQ(Label("lblFileSize"), u"Size: 2.00 KB"_qs);
  SizeComes(4096, "music/a");
  ASSERT_TRUE(Pick("music"));
  EXPECT_FALSE(Enabled("btnOpen")) << "the selection has gone with the rows";
  EXPECT_EQ(Cell("a", 0), u"4.00 KB"_qs);
  FTree.Remove("music/a");
  ASSERT_TRUE(WaitFor([this] { return Row(u"a"_qs) == nullptr; }));
  SizeComes(4096, "music/a");
  EXPECT_EQ(Names(), u"cover.jpg"_qs);
}

// Files stay in their rows; a first click on Size puts the largest folder last.
TEST_F(Contents, SizesOrderTheFoldersAmongEachOther) {
  ASSERT_TRUE(Pick(""));
  ASSERT_TRUE(WaitForSizes());
  EXPECT_EQ(Names(), u"empty films music root.bin"_qs);
  ClickColumn(0);
  EXPECT_EQ(Names(), u"empty films music root.bin"_qs);
  ClickColumn(0);
  EXPECT_EQ(Names(), u"root.bin music films empty"_qs);
  ClickColumn(1);
  EXPECT_EQ(Names(), u"root.bin empty music films"_qs);
  EXPECT_EQ(Compared(Row(u"root.bin"_qs), Row(u"empty"_qs)), 0);
  EXPECT_LT(Compared(Row(u"empty"_qs), Row(u"films"_qs)), 0);
  EXPECT_EQ(Shown().Columns()[1].ImageIndex(), -1);
  ASSERT_TRUE(Pick("music"));
  ASSERT_TRUE(Pick(""));
  EXPECT_EQ(Names(), u"empty films music root.bin"_qs) << "a fill is not sorted";
  ClickColumn(1);
  EXPECT_EQ(Names(), u"films music empty root.bin"_qs);
  EXPECT_EQ(PaddedSizeKey(0) + PaddedSizeKey(12345678901234), u"000000000000000012345678901234"_qs);
  EXPECT_EQ(PaddedSizeKey(1234567890123456), u"1234567890123456"_qs);
}

TEST_F(Contents, ClicksOnBoxesCountInFoldersOnlyAndCommandsEverywhere) {
  const auto markOnly = [this](int row) {
    Shown().SetItemFocused(Shown().Items()[row]);
    QTest::keyClick(&Shown(), Qt::Key_Space);
  };
  markOnly(0);
  EXPECT_TRUE(Shown().Items()[0]->Checked());
  EXPECT_FALSE(Enabled("btnDelete"));
  ASSERT_TRUE(Press("btnInverSel"));
  EXPECT_EQ(Enabled("mniCDelete"), Shown().Items().Count() > 1);
  ASSERT_TRUE(Press("btnSelAll"));
  EXPECT_TRUE(Enabled("mniCDelete") && Enabled("lbtnMove"));
  Shown().OnClick();
  EXPECT_FALSE(Enabled("mniCDelete") || Enabled("lbtnMove"));
  ASSERT_TRUE(Pick(""));
  markOnly(2);
  EXPECT_TRUE(Enabled("btnDelete") && Enabled("lbtnDelete") && Enabled("mniCMove"));
  markOnly(2);
  EXPECT_FALSE(Enabled("btnDelete"));
  ASSERT_TRUE(Press("btnSelAll"));
  ASSERT_TRUE(Press("btnDeSelAll"));
  EXPECT_FALSE(Enabled("btnDelete") || Shown().Items()[0]->Checked());
}

// What each way records differs, and so do the commands after it.
TEST_F(Contents, TheHistoryIsRecordedByTheWayOfGoing) {
  EXPECT_EQ(Ways(), u"---"_qs);
  ASSERT_TRUE(Pick("music/a"));  // records music, the folder above
  EXPECT_EQ(Ways(), u"B-U"_qs);
  ASSERT_TRUE(Press("lbtnBack"));
  EXPECT_EQ(Here(), u"tree/music"_qs.replace(u'/', PathDelim));
  EXPECT_EQ(Ways(), u"-FU"_qs);
  ASSERT_TRUE(Press("lbtnForward"));  // records music
  EXPECT_EQ(ExtractFileName(Here()), u"a"_qs);
  EXPECT_EQ(Ways(), u"B-U"_qs);
  ASSERT_TRUE(Press("lbtnUp"));  // records music/a
  ASSERT_TRUE(Press("lbtnUp"));  // records music
  EXPECT_EQ(Here(), u"tree"_qs);
  ASSERT_TRUE(EnterRow("music"));  // records the tree
  EXPECT_EQ(Ways(), u"B-U"_qs);
  EXPECT_EQ(PressToTheEnd("lbtnBack"), u"tree music a music"_qs);
  EXPECT_EQ(PressToTheEnd("lbtnForward"), u"a music tree music"_qs);
}

TEST_F(Contents, OpenOnAFolderRecordsTheFolderLeftAndTheOneEntered) {
  ASSERT_TRUE(Pick(""));
  ASSERT_TRUE(Press("lbtnUp"));
  ASSERT_TRUE(Press("lbtnBack"));
  EXPECT_EQ(Ways(), u"BFU"_qs);
  Select("films");
  ASSERT_TRUE(Press("mniCOpen"));
  EXPECT_EQ(ExtractFileName(Here()), u"films"_qs);
  EXPECT_EQ(Ways(), u"B-U"_qs);
  EXPECT_EQ(Label("lblFileSize"), u"hidden"_qs);
  ASSERT_TRUE(Press("lbtnBack"));
  EXPECT_EQ(ExtractFileName(Here()), u"films"_qs);
  ASSERT_TRUE(Press("lbtnBack"));
  EXPECT_EQ(Here(), u"tree"_qs);
}

TEST_F(Contents, ARepeatIsLeftOutAndUpFromAVolumeGoesToTheComputer) {
  const QString root = SystemVolumeRoot();
  ASSERT_TRUE(Type(root));       // records the computer
  ASSERT_TRUE(Press("lbtnUp"));  // records the volume
  EXPECT_EQ(Here(), u"computer"_qs);
  EXPECT_EQ(Ways(), u"B--"_qs);
  ASSERT_TRUE(Press("lbtnBack"));
  ASSERT_TRUE(Press("lbtnBack"));
  EXPECT_EQ(Here(), u"computer"_qs);
  EXPECT_EQ(Ways(), u"-F-"_qs);
  ASSERT_TRUE(Press("lbtnForward"));
  ActivateTab(kTopFilesTab);
  ActivateTab(kContentsTab);
  EXPECT_EQ(Ways(), u"--U"_qs) << "whatever the history holds";
  ASSERT_TRUE(Press("lbtnUp"));
  ASSERT_TRUE(Press("lbtnBack"));  // the volume
  EXPECT_EQ(Ways(), u"BFU"_qs);
}

TEST_F(Contents, KeysAndTheMouseGoTheSameWays) {
  ASSERT_TRUE(Pick("music/a"));
  Shown().setFocus();
  const auto key = [this](Qt::Key code, Qt::KeyboardModifier modifier) {
    QTest::keyClick(&Shown(), code, modifier);
    return WaitForFill() ? ExtractFileName(Here()) : QString();
  };
  const auto button = [this](Qt::MouseButton which) {
    QTest::mouseClick(Shown().viewport(), which);
    return WaitForFill() ? ExtractFileName(Here()) : QString();
  };
  EXPECT_EQ(key(Qt::Key_Backspace, Qt::NoModifier), u"music"_qs);
  EXPECT_EQ(key(Qt::Key_Left, Qt::AltModifier), u"a"_qs);
  EXPECT_EQ(key(Qt::Key_Right, Qt::AltModifier), u"music"_qs);
  EXPECT_EQ(key(Qt::Key_Up, Qt::AltModifier), u"tree"_qs);
  EXPECT_EQ(button(Qt::BackButton), u"music"_qs);
  EXPECT_EQ(button(Qt::ForwardButton), u"tree"_qs);
  ActivateTab(kOverviewTab);
  EXPECT_EQ(key(Qt::Key_Backspace, Qt::NoModifier), u"tree"_qs) << "not while another tab shows";
}

// A stop without a navigation behind it: rows come without sizes, and the end opens the folder again.
TEST_F(Contents, AFillThatWasStoppedForNothingIsDoneOverAndTakesTheKnownSizes) {
  Shown().SetPath(FTree.Path());
  ASSERT_TRUE(Tab().Rows().Filling());
  Tab().Rows().Stop();
  ASSERT_TRUE(WaitForFill());
  EXPECT_EQ(Cell("films", 0), QString());
  EXPECT_EQ(Tab().Rows().CurrentFolder(), FTree.Path());
  ASSERT_TRUE(WaitFor([this] { return Row(u"films"_qs) != nullptr && Cell("films", 0) == u"3.82 MB"_qs; }));
  SizeComes(2048, "films");
  Select("films");
  Tab().FillAgain();
  EXPECT_EQ(Cell("films", 0), u"3.82 MB"_qs) << "a size that is known";
  EXPECT_EQ(Status(), FTree.Path() + u"|4 items|hidden"_qs);
  const TListItem* row = Shown().Items()[0];
  for (const auto& [word, more] : {std::pair{quintptr{5}, qintptr{22}}, {quintptr{4}, qintptr{23}}})
    SendMessage(&Tab().Rows().Window(), 2340, word, more);
  EXPECT_EQ(Shown().Items().Item(0), row);
  SendMessage(&Tab().Rows().Window(), 2340, 5, 23);
  EXPECT_EQ(Shown().Items().Count(), 0);
}

TEST_F(Contents, AResultBringsItsSizesAndTheComputerLevel) {
  ASSERT_TRUE(Pick("music"));
  ActivateTab(kOverviewTab);
  FWizard->show();
  StartScan(FTree.Path());
  ASSERT_TRUE(WaitForResult());
  FTree.MakeFile("films/later", 90000);
  EXPECT_EQ(Label("lblFileName"), ExtractFileName(FTree.Path()));
  ActivateTab(kContentsTab);
  ASSERT_TRUE(WaitForFill());
  EXPECT_EQ(Here(), u"computer"_qs);
  ASSERT_TRUE(Pick(""));
  EXPECT_EQ(Cell("films", 0), SizeToText(4003000)) << "at once, from the result";
  ActivateTab(kOverviewTab);
  ActivateTab(kContentsTab);
  EXPECT_EQ(Here(), u"tree"_qs) << "the result is shown once";
}

TEST_F(Contents, TheStatusBarIsLeftToTheTabThatShows) {
  ASSERT_TRUE(Pick(""));
  Select("films");
  ActivateTab(kOverviewTab);
  List("lvOverview").SetSelected(List("lvOverview").Items()[0]);
  const QString drive = Status();
  FTree.MakeFile("another", 1);
  ASSERT_TRUE(WaitFor([this] { return Row(u"another"_qs) != nullptr; }));
  Select("another");
  Shown().SetPath(QString());
  ASSERT_TRUE(WaitForFill());
  EXPECT_EQ(Status(), drive);
  EXPECT_FALSE(Enabled("btnOpen"));
}

// The sum goes on over folders without end, and an answer may be on its way to the form that closes.
TEST_F(Contents, TheFormClosesWithoutWaitingForASum) {
  for (int i = 0; i < 60; ++i)
    FTree.MakeFile("many/" + QByteArray::number(i) + "/file", 1);
  ASSERT_TRUE(Pick("many"));
  ASSERT_TRUE(WaitFor([this] { return Row(u"0"_qs) != nullptr; }));
  QElapsedTimer clock;
  clock.start();
  FForm->close();
  FWizard.reset();
  FForm.reset();
  EXPECT_LT(clock.elapsed(), 2000);
}
