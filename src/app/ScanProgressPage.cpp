#include "app/ScanProgressPage.h"

#include <QLabel>
#include <QVBoxLayout>

#include "app/WizardBand.h"
#include "controls/list/ListView.h"
#include "controls/notes/Labels.h"

#include "controls/progress/PImageProgress.h"
#include "scan/ScanMessages.h"
#include "views/main/Looks.h"
#include "views/main/ResultTab.h"
#include "views/rows/ListHelpers.h"

namespace {

// Milliseconds that a mark shows and that it does not; units of a step, as ScanMessages.h counts them;
// pixels.
constexpr int kBlinkMs = 500;
constexpr int kStepUnits = 300;
constexpr int kBarHeight = 17;

}  // namespace

TScanProgressPage::TScanProgressPage(const TResultForm& results, TImageList& images, QWidget* parent)
    : QWidget(parent), FResults(results) {
  auto* band = new TWizardBand(u"Image1"_qs, this);
  lblSelLoc = AddWizardTitle(u"lblSelLoc"_qs, u"Analyzing the selected location"_qs, *band);
  lblWait = MakeWizardLabel(
      u"lblWait"_qs, u"Tallyscope is analyzing the selected location. Please wait for a while."_qs, this);
  BuildRows(images);
  BuildBar();
  lblCurPath = new TEllipsisLabel(this);
  lblCurPath->setObjectName(u"lblCurPath"_qs);

  auto* column = new QVBoxLayout;
  column->setContentsMargins(kWizardMargin, 10, kWizardMargin, 12);
  column->setSpacing(6);
  column->addWidget(lblWait);
  column->addSpacing(4);
  column->addWidget(lvAnalyze, 1);
  column->addSpacing(6);
  column->addWidget(imgPgBar);
  column->addWidget(lblCurPath);
  LayOutUnderBand(*this, *band, *column);

  Timer_ShowIcon.setInterval(kBlinkMs);
  connect(&Timer_ShowIcon, &QTimer::timeout, this, [this] { Timer_ShowIconTimer(); });
}

TScanProgressPage::~TScanProgressPage() = default;

void TScanProgressPage::BuildRows(TImageList& images) {
  lvAnalyze = new TListView(this);
  lvAnalyze->setObjectName(u"lvAnalyze"_qs);
  TListViewOptions options;
  // Rows stand in the order in which they are scanned.
  options.ColumnClick = false;
  lvAnalyze->SetOptions(options);
  lvAnalyze->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  lvAnalyze->SetSmallImages(&images);
  lvAnalyze->SetStateImages(&images);
  lvAnalyze->Columns().Add(u"Analysis Path"_qs, 350);
  lvAnalyze->Columns().Add(u"Status"_qs, 150);
}

void TScanProgressPage::BuildBar() {
  imgPgBar = new TImageProgress(this);
  imgPgBar->setObjectName(u"imgPgBar"_qs);
  imgPgBar->setFixedHeight(kBarHeight);
  for (const char* name : {"bg_mid", "bg_l", "bg_r", "fg_mid", "fg_l", "fg_r"}) {
    TImageItem& item = imgPgBar->Items().Add();
    item.Name = QLatin1String(name);
    item.Picture = TPicture::FromResource(item.Name);
    item.Width = item.Picture.Size().width();
    item.Height = kBarHeight;
    item.Stretch = true;
  }
  // A bar that is full, until the first scan begins.
  imgPgBar->SetMax(99);
  imgPgBar->SetPosition(100);
}

void TScanProgressPage::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  layout()->activate();
  FitLastColumn(*lvAnalyze);
  PlaceBarTrack();
}

// The track is translucent: its middle lies between its caps and not beneath them.
void TScanProgressPage::PlaceBarTrack() {
  TImageCollection& items = imgPgBar->Items();
  items[bg_mid].Left = items[bg_l].Width;
  items[bg_mid].Width = imgPgBar->width() - items[bg_l].Width - items[bg_r].Width;
  items[bg_r].Left = imgPgBar->width() - items[bg_r].Width;
  imgPgBar->update();
}

void TScanProgressPage::Begin(const std::vector<TScanRow>& rows) {
  lvAnalyze->Items().Clear();
  for (const TScanRow& row : rows) {
    TListItem* item = lvAnalyze->Items().Add();
    item->SetCaption(row.Caption);
    item->SetImageIndex(row.ImageIndex);
    item->SubItems().Add(QString());
  }
  imgPgBar->SetPosition(0);
  imgPgBar->show();
  lblCurPath->SetCaption(QString());
  lblCurPath->show();
  FitLastColumn(*lvAnalyze);
  FCurrentRow = -1;
  Timer_ShowIcon.start();
}

// A row that the scan jumped over keeps what it shows: only the one before is marked as finished.
void TScanProgressPage::ShowRow(int row) {
  if (row == FCurrentRow) return;
  if (row == -1) {
    Timer_ShowIcon.stop();
    MarkFinished(lvAnalyze->Items().Count() - 1);
  } else {
    if (TListItem* item = lvAnalyze->Items().Item(row)) {
      lvAnalyze->SetSelected(item);
      item->MakeVisible(false);
    }
    MarkFinished(row - 1);
    MarkRunning(row);
  }
  FCurrentRow = row;
}

void TScanProgressPage::MarkRunning(int row) {
  Mark(row, StaticImage::kRunning, FResults.AnalyzingText() + u"..."_qs);
}

void TScanProgressPage::MarkFinished(int row) {
  Mark(row, StaticImage::kFinished, FResults.CompletedText());
}

void TScanProgressPage::Mark(int row, int image, const QString& status) {
  TListItem* item = lvAnalyze->Items().Item(row);
  if (item == nullptr) return;
  item->SetStateIndex(image);
  item->SubItems().Put(0, status);
}

void TScanProgressPage::ShowBarPosition(int position) {
  imgPgBar->SetPosition(position);
}

void TScanProgressPage::ShowProgress(quintptr stepWord, int phase) {
  if (stepWord != 0) {
    FCurrentStep = ScanStepCurrent(stepWord);
    imgPgBar->SetMin(0);
    imgPgBar->SetMax(ScanStepTotal(stepWord) * kStepUnits);
    imgPgBar->SetPosition(FCurrentStep * kStepUnits);
  }
  if (phase != 0) {
    const qint64 position = qint64{FCurrentStep} * kStepUnits + phase;
    // A phase that would lead past the end is passed over, as those of a step that the total does not count.
    if (imgPgBar->Max() >= position) imgPgBar->SetPosition(static_cast<int>(position));
  }
}

void TScanProgressPage::ShowPath(const QString& path) {
  lblCurPath->SetCaption(FResults.AnalyzingText() + u": "_qs + path);
}

void TScanProgressPage::ClearMarks() {
  for (TListItem* item : lvAnalyze->Items())
    item->SetStateIndex(-1);
}

// A row that has been finished between two ticks keeps its mark.
void TScanProgressPage::Timer_ShowIconTimer() {
  TListItem* item = lvAnalyze->Items().Item(FCurrentRow);
  if (item == nullptr) return;
  if (item->StateIndex() == -1)
    item->SetStateIndex(StaticImage::kRunning);
  else if (item->StateIndex() == StaticImage::kRunning)
    item->SetStateIndex(-1);
}
