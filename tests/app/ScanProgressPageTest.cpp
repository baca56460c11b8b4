#include "app/ScanProgressPage.h"

#include "FormsFixture.h"
#include "controls/notes/EllipsisLabel.h"
#include "controls/picture/ImageList.h"
#include "controls/progress/PImageProgress.h"
#include "scan/ScanMessages.h"
#include "views/rows/Pictures.h"

class ScanProgressPage : public TFormsTest {
 protected:
  ScanProgressPage() {
    Open();
    FPage = std::make_unique<TScanProgressPage>(*FForm, FForm->StaticImages(), nullptr);
    FPage->resize(595, 330);
    FPage->show();
    FPage->Begin({{u"one"_qs, 0}, {u"two"_qs, 1}, {u"three"_qs, 2}});
    FRows = FPage->findChild<TListView*>(u"lvAnalyze"_qs);
    FBar = FPage->findChild<TImageProgress*>(u"imgPgBar"_qs);
  }

  [[nodiscard]] QString Marks() const {
    QString marks;
    for (const TListItem* row : FRows->Items())
      marks += QString::number(row->StateIndex()) + row->SubItems().Text(0) + u';';
    return marks;
  }

  std::unique_ptr<TScanProgressPage> FPage;
  TListView* FRows;
  TImageProgress* FBar;
};

TEST_F(ScanProgressPage, TheBarIsAsStored) {
  const TScanProgressPage fresh(*FForm, FForm->StaticImages(), nullptr);
  const auto* bar = fresh.findChild<TImageProgress*>(u"imgPgBar"_qs);
  EXPECT_EQ(bar->Max(), 99);
  EXPECT_EQ(bar->Position(), 100);
  EXPECT_EQ(FBar->width(), 559);
  EXPECT_EQ(FBar->Position(), 0) << "a scan that begins empties it";
}

TEST_F(ScanProgressPage, TheRunningRowAndTheFinishedOneAreMarked) {
  FPage->ShowRow(0);
  EXPECT_EQ(Marks(), u"4Analyzing...;-1;-1;"_qs);
  FPage->ShowRow(1);
  EXPECT_EQ(Marks(), u"3Completed;4Analyzing...;-1;"_qs);
  EXPECT_EQ(FRows->ItemIndex(), 1);
  FPage->ClearMarks();
  EXPECT_EQ(Marks(), u"-1Completed;-1Analyzing...;-1;"_qs);
}

TEST_F(ScanProgressPage, ARowThatDoesNotExistFinishesTheOneBefore) {
  FPage->ShowRow(3);
  EXPECT_EQ(Marks(), u"-1;-1;3Completed;"_qs);
}

TEST_F(ScanProgressPage, TheSameRowAgainChangesNothing) {
  FPage->ShowRow(1);
  FRows->Items()[0]->SetStateIndex(-1);
  FPage->ShowRow(1);
  EXPECT_EQ(FRows->Items()[0]->StateIndex(), -1);
}

TEST_F(ScanProgressPage, StepsAndPhasesMoveTheBar) {
  FPage->ShowProgress(ScanStepWord(5, 1), 0);
  EXPECT_EQ(FBar->Max(), 1500);
  EXPECT_EQ(FBar->Position(), 300);
  FPage->ShowProgress(0, 150);
  EXPECT_EQ(FBar->Position(), 450);
  FPage->ShowProgress(ScanStepWord(5, 4), 300);
  EXPECT_EQ(FBar->Position(), 1500);
}

TEST_F(ScanProgressPage, PhasesPastTheEndAreDropped) {
  FPage->ShowProgress(ScanStepWord(1, 0), 300);
  FPage->ShowProgress(ScanStepWord(1, 1), 0);
  FPage->ShowProgress(0, 120);
  EXPECT_EQ(FBar->Position(), 300);
}

TEST_F(ScanProgressPage, ThePathLineNamesWhatIsRead) {
  FPage->ShowPath(u"/usr/lib/"_qs);
  EXPECT_EQ(FPage->findChild<TEllipsisLabel*>(u"lblCurPath"_qs)->Caption(), u"Analyzing: /usr/lib/"_qs);
}
