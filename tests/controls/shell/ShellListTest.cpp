// The shell list over real folders: what rows say, and what stays theirs while the folder changes.
#include "ShownFolder.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "platform/KnownFolders.h"
#include "platform/SystemSettings.h"
#include "platform/Volumes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QScrollBar>

#include <algorithm>
#include <utility>

using testing::ElementsAre;
using TState = TRzShellList::TState;

namespace {

class TShellListTest : public testing::Test, protected TShownFolder {
 protected:
  void MakeFiles(int count) {
    for (int i = 0; i < count; ++i)
      Tree.MakeHole(Numbered(i), i);
  }
  [[nodiscard]] static QByteArray Numbered(int i) { return "file" + QByteArray::number(10'000 + i); }
  [[nodiscard]] static QString Name(int i) { return QString::fromLatin1(Numbered(i)); }
};

}  // namespace

TEST_F(TShellListTest, ShowsSubfoldersAboveFilesByName) {
  for (const char* const name : {"b.txt", "C.txt", "a.txt"})
    Tree.MakeFile(name, 3000);
  for (const char* const name : {"z", "Y"})
    Tree.MakeFolder(name);
  Tree.MakeFile("x", 1);
  const QString hidden = QString::fromLatin1(Tree.Hide("x"));
  QFile file(Tree.Path("a.txt"));
  const QDateTime time(QDate(2001, 2, 3), QTime(4, 5, 6));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime));
  file.close();
  ASSERT_TRUE(GoTo(Tree.Path()));
  EXPECT_EQ(Names(), hidden == u".x" ? u"Y z .x a.txt b.txt C.txt"_qs : u"Y z a.txt b.txt C.txt x"_qs);
  TListItem* const row = Row(u"a.txt"_qs);
  EXPECT_THAT(QStringList({row->SubItems()[0], row->SubItems()[1], row->SubItems()[2]}),
              ElementsAre(u"2.93 KB"_qs, TypeTextOfFile(u"a.txt"_qs),
                          QLocale().toString(time, QLocale::ShortFormat)));
  EXPECT_GE(row->ImageIndex(), 0);
  EXPECT_EQ(TRzShellList::ShellData(*row).Size(), 3000U);
  EXPECT_EQ(TRzShellList::ShellData(*row).Path(), Tree.Path("a.txt"));
  EXPECT_FALSE(TRzShellList::ShellData(*row).IsFolder());
  EXPECT_EQ(List.accessibleName(), u"Contents"_qs);
  TListItem* const folder = Row(u"z"_qs);
  EXPECT_TRUE(TRzShellList::ShellData(*folder).IsFolder());
  EXPECT_EQ(folder->SubItems()[0], QString()) << "the program's to write";
  EXPECT_EQ(List.TypeText(*folder), TypeTextOfFolder());
  EXPECT_NE(folder->ImageIndex(), row->ImageIndex());
}

TEST_F(TShellListTest, NamesOfAnyBytesAreShownAndEntered) {
  const QByteArray odd = HasDrives() ? QByteArray("caf\xc3\xa9 ") : QByteArray("caf\xe9");
  Tree.MakeFile(odd + '/' + odd, 1);
  ASSERT_TRUE(GoTo(Tree.Path()));
  ASSERT_EQ(List.Items().Count(), 1);
  List.SetSelected(List.Items()[0]);
  QTest::keyClick(&List, Qt::Key_Return);
  ASSERT_TRUE(WaitUntil([&] { return List.State() == TState::Complete; }));
  EXPECT_EQ(List.Path(), Tree.Path(odd));
  ASSERT_EQ(List.Items().Count(), 1);
  EXPECT_EQ(NameToBytes(List.Items()[0]->Caption()), odd);
}

TEST_F(TShellListTest, TheComputerLevelListsVolumesAndHome) {
  List.SetTexts({.FixedVolume = u"disk"_qs, .Home = u"home"_qs});
  List.Columns()[1].SetWidth(222);
  ASSERT_TRUE(GoTo(Tree.Path()));
  ASSERT_TRUE(GoTo(QString()));
  QStringList expected;
  for (const TVolume& volume : ListFixedVolumes())
    expected << volume.Root;
  const qsizetype fixed = expected.size();
  for (const TOtherVolume& volume : ListOtherVolumes())
    expected << volume.Root;
  expected << GetKnownFolder(TSpecialFolder::Profile);
  QStringList shown;
  for (TListItem* item : List.Items()) {
    shown << TRzShellList::ShellData(*item).Path();
    EXPECT_TRUE(TRzShellList::ShellData(*item).IsFolder());
    EXPECT_EQ(List.TypeText(*item) == u"disk", shown.size() <= fixed);
  }
  EXPECT_EQ(shown, expected);
  EXPECT_EQ(List.Items()[List.Items().Count() - 1]->SubItems()[0], u"home"_qs);
  EXPECT_EQ(List.Columns().Count(), 4);
  EXPECT_EQ(List.Columns()[1].Width(), 222) << "a width is kept wherever the list goes";
}

TEST_F(TShellListTest, TellsItsStepsInOrder) {
  Tree.MakeFile("sub/file", 1);
  QStringList log;
  List.OnPathChanged = [&] { log << u"path %1"_qs.arg(List.Items().Count()); };
  List.OnFillItem = [&](TListItem* item) {
    log << u"fill "_qs + item->Caption() + item->SubItems()[2].left(0);
  };
  List.OnFolderChanged = [&] { log << u"folder %1"_qs.arg(List.Items().Count()); };
  List.OnRefreshed = [&] { log << u"refreshed"_qs; };
  List.OnDblClick = [&] { log << u"double click in "_qs + ExtractFileName(List.Path()); };
  ASSERT_TRUE(GoTo(Tree.Path()));
  EXPECT_THAT(log, ElementsAre(u"path 0"_qs, u"fill sub"_qs, u"folder 1"_qs));
  log.clear();
  List.SetSelected(List.Items()[0]);
  QTest::keyClick(&List, Qt::Key_Return);
  ASSERT_TRUE(WaitUntil([&] { return List.State() == TState::Complete; }));
  EXPECT_THAT(log, ElementsAre(u"double click in "_qs + ExtractFileName(Tree.Path()), u"path 0"_qs,
                               u"fill file"_qs, u"folder 1"_qs));
  log.clear();
  Tree.MakeFile("sub/file", 2);
  ASSERT_TRUE(WaitUntil([&] { return log.size() == 2; }));
  EXPECT_THAT(log, ElementsAre(u"fill file"_qs, u"refreshed"_qs));
  log.clear();
  List.SetSelected(List.Items()[0]);
  QTest::keyClick(&List, Qt::Key_Return);
  EXPECT_THAT(log, ElementsAre(u"double click in sub"_qs)) << "a file is not gone into";
}

TEST_F(TShellListTest, ChangesLeaveSelectionMarksAndPlaceToTheirRows) {
  MakeFiles(300);
  ASSERT_TRUE(GoTo(Tree.Path()));
  Row(Name(120))->SetSelected(true);
  Row(Name(10))->SetChecked(true);
  Row(Name(130))->SetChecked(true);
  List.SetTopIndex(110);
  ASSERT_EQ(List.TopItem()->Caption(), Name(110));
  for (int i = 20; i < 60; ++i)
    Tree.Remove(Numbered(i));
  Tree.Remove(Numbered(110));
  for (const char* const name : {"a", "file10015b", "zz"})
    Tree.MakeFile(name, 1);
  Tree.MakeFolder("folder");
  ASSERT_TRUE(WaitUntil([&] { return List.Items().Count() == 263; }));
  EXPECT_EQ(List.Items()[0]->Caption(), u"folder"_qs);
  EXPECT_EQ(List.Items()[1]->Caption(), u"a"_qs);
  EXPECT_EQ(List.Items()[262]->Caption(), u"zz"_qs);
  EXPECT_TRUE(Row(Name(120))->Selected());
  EXPECT_EQ(List.SelCount(), 1);
  EXPECT_TRUE(Row(Name(10))->Checked() && Row(Name(130))->Checked());
  EXPECT_EQ(List.TopItem()->Caption(), Name(111)) << "the next one, where the first in view has gone";
}

TEST_F(TShellListTest, AListThatWasSortedKeepsItsOrder) {
  for (const char* const name : {"a", "b", "c", "d"})
    Tree.MakeFile(name, 1);
  List.OnCompare = [](TListItem* a, TListItem* b, int& result) {
    result = b->Caption().compare(a->Caption());
  };
  ASSERT_TRUE(GoTo(Tree.Path()));
  List.AlphaSort();
  ASSERT_EQ(Names(), u"d c b a"_qs);
  const TListItem* const changed = Row(u"b"_qs);
  Row(u"b"_qs)->SetSelected(true);
  Tree.Remove("c");
  Tree.Remove("a");
  Tree.MakeFile("b", 2000);
  Tree.MakeFile("aa", 1);
  ASSERT_TRUE(WaitForNames(u"d b aa"_qs)) << qPrintable(Names());
  EXPECT_TRUE(Row(u"b"_qs) == changed && changed->Selected());
  EXPECT_EQ(changed->SubItems()[0], u"1.95 KB"_qs);
  EXPECT_EQ(TRzShellList::ShellData(*changed).Size(), 2000U);
  ASSERT_TRUE(GoTo(Tree.Path()));
  EXPECT_EQ(Names(), u"aa b d"_qs);
}

TEST_F(TShellListTest, AFolderThatCantBeReadSaysSo) {
  Tree.MakeFile("closed/file", 1);
  Tree.MakeUnreadable("closed");
  Tree.MakeFolder("empty");
  const TOrdinaryUser user;
  const auto* const notice = List.findChild<QLabel*>();
  const std::pair<const char*, bool> cases[] = {
      {"closed", false}, {"empty", true}, {"missing", false}, {".", true}};
  for (const auto& [name, readable] : cases) {
    ASSERT_TRUE(GoTo(Tree.Path(name)));
    EXPECT_EQ(List.State(), readable ? TState::Complete : TState::Unreadable) << name;
    EXPECT_EQ(notice->isVisible(), !readable) << name;
    EXPECT_EQ(notice->text().isEmpty(), readable) << name;
    EXPECT_EQ(List.Path(), Tree.Path(name));
  }
}

TEST_F(TShellListTest, AFolderThatGoesLosesItsRows) {
  if (HasDrives()) GTEST_SKIP() << "Wine tells nothing of the end of a watched folder";
  Tree.MakeFile("sub/file", 1);
  ASSERT_TRUE(GoTo(Tree.Path("sub")));
  Tree.Remove("sub");
  ASSERT_TRUE(WaitUntil([&] { return List.State() == TState::Unreadable; }));
  EXPECT_EQ(List.Items().Count(), 0);
  EXPECT_EQ(List.Path(), Tree.Path("sub"));
  Tree.MakeFile("sub/again", 1);
  QTest::keyClick(&List, Qt::Key_F5);
  ASSERT_TRUE(WaitForNames(u"again"_qs)) << "where it comes back and is asked for";
  EXPECT_TRUE(WaitUntil([&] { return List.State() == TState::Complete; }));
  Tree.MakeFile("sub/more", 1);
  EXPECT_TRUE(WaitForNames(u"again more"_qs)) << "and is followed anew";
}

TEST_F(TShellListTest, MarksAreOfTheFolderThatWasShown) {
  if (HasDrives()) GTEST_SKIP() << "a folder that is held open keeps its name there";
  Tree.MakeFile("shown/file", 1);
  ASSERT_TRUE(GoTo(Tree.Path("shown")));
  Row(u"file"_qs)->SetChecked(true);
  Tree.MakeFile("shown/more", 1);
  ASSERT_TRUE(WaitForNames(u"file more"_qs));
  EXPECT_TRUE(Row(u"file"_qs)->Checked());
  Tree.Rename("shown", "aside");
  for (const char* const name : {"shown/file", "shown/most"})
    Tree.MakeFile(name, 1);
  QTest::keyClick(&List, Qt::Key_F5);
  ASSERT_TRUE(WaitForNames(u"file most"_qs));
  EXPECT_FALSE(Row(u"file"_qs)->Checked()) << "another file of the same name";
}

TEST_F(TShellListTest, ANavigationDuringAFillTakesOver) {
  MakeFiles(HasDrives() ? 1500 : 3000);
  Tree.MakeFile("sub/one", 1);
  for (int round = 0; round < 5; ++round) {
    List.SetPath(Tree.Path());
    ASSERT_TRUE(WaitUntil([&] { return List.Items().Count() >= round * 100; }));
    ASSERT_TRUE(GoTo(Tree.Path("sub")));
    EXPECT_EQ(Names(), u"one"_qs);
    QTest::qWait(20);
    EXPECT_EQ(Names(), u"one"_qs) << "nothing of the other folder comes after";
  }
}

TEST_F(TShellListTest, RowsThatAreLeftAreToldOfLittleByLittle) {
  const int count = HasDrives() ? 1500 : 3000;
  MakeFiles(count);
  Tree.MakeFolder("sub");
  int ended = 0;
  List.OnDeletion = [&ended](TListItem* item) { ended += item->Gone() ? 1 : 2 * item->Index(); };
  ASSERT_TRUE(GoTo(Tree.Path()));
  List.Items()[7]->SetSelected(true);
  List.SetPath(Tree.Path("sub"));
  EXPECT_EQ(List.Items().Count() + List.SelCount(), 0);
  EXPECT_EQ(ended, 0);
  EXPECT_TRUE(WaitUntil([&] { return ended == count + 1; }));
  ASSERT_TRUE(GoTo(Tree.Path()));
  List.SetPath(Tree.Path("sub"));
  ended = 0;
  List.Clear();
  EXPECT_EQ(ended, count + 1) << "as at the end of the list";
}

TEST_F(TShellListTest, RowsMayGoAndBeSortedDuringAFill) {
  const int count = HasDrives() ? 1500 : 3000;
  MakeFiles(count);
  List.OnCompare = [](TListItem* a, TListItem* b, int& result) {
    result = b->Caption().compare(a->Caption());
  };
  for (const bool sorted : {false, true}) {
    bool disturbed = false;
    List.SetPath(Tree.Path());
    ASSERT_TRUE(WaitUntil([&] {
      if (List.Items().Count() > 100 && List.Items().Count() < count && !std::exchange(disturbed, true)) {
        List.Items().Delete(3);
        if (sorted) List.AlphaSort();
      }
      return List.State() == TState::Complete;
    }));
    EXPECT_EQ(List.Items().Count(), count) << "the row that went is still on the disk";
    QStringList names = Names().split(u' ');
    EXPECT_TRUE(sorted || std::is_sorted(names.begin(), names.end()));
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end()) << "a row stands twice";
  }
}

TEST_F(TShellListTest, TypesComeForAllRowsInTheEnd) {
  MakeFiles(500);
  Tree.MakeFile("zz.png", 1);
  ASSERT_TRUE(GoTo(Tree.Path()));
  TListItem* const last = Row(u"zz.png"_qs);
  EXPECT_FALSE(List.Items()[0]->SubItems()[1].isEmpty()) << "in view";
  List.SetTopIndex(300);
  EXPECT_FALSE(List.TopItem()->SubItems()[1].isEmpty()) << "at once, as it comes into view";
  EXPECT_TRUE(WaitUntil([&] { return last->SubItems()[1] == TypeTextOfFile(u"zz.png"_qs); }));
  EXPECT_GE(last->ImageIndex(), 0);
}
