// The wizard's second page: one row per path in progress, the bar and the path line. It follows the numbered
// messages of a scan and knows nothing of the thread behind them. Main thread.
//
// The bar has two measures: a position as such (ShowBarPosition), and steps of 300 units with phases within
// (ShowProgress), where each path and each place of downloads is a step. A row's mark has three states: none,
// running (which blinks, so that it is none every other time) and finished.
#pragma once

#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <vector>

class TEllipsisLabel;
class TImageList;
class TImageProgress;
class QLabel;
class TListView;
class TResultForm;

// A row of the page: what is scanned, as the user knows it.
struct TScanRow {
  QString Caption;
  int ImageIndex = 0;  // in the static images
};

// Owned by the wizard's page.
class TScanProgressPage : public QWidget {
 public:
  TScanProgressPage(const TResultForm& results, TImageList& images, QWidget* parent);
  ~TScanProgressPage() override;

  // Shows these rows with nothing done yet, and begins to blink the running one.
  void Begin(const std::vector<TScanRow>& rows);

  // The scan has moved to this row: the row before is finished, this one runs. -1: all is finished. A row
  // that does not exist is passed over.
  void ShowRow(int row);

  void ShowBarPosition(int position);

  // The bar by a step word (0: none) and a phase value (0: none) of WM_SCANPROGRESS.
  void ShowProgress(quintptr stepWord, int phase);

  // The path in progress; cheap enough for every path of a scan.
  void ShowPath(const QString& path);

  // No row has a mark any more.
  void ClearMarks();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void BuildRows(TImageList& images);
  void BuildBar();
  void PlaceBarTrack();
  void Timer_ShowIconTimer();
  void MarkRunning(int row);
  void MarkFinished(int row);
  void Mark(int row, int image, const QString& status);

  const TResultForm& FResults;
  QLabel* lblSelLoc;
  QLabel* lblWait;
  TListView* lvAnalyze;
  TImageProgress* imgPgBar;
  TEllipsisLabel* lblCurPath;
  QTimer Timer_ShowIcon;
  // Index in the list, beyond its end in a step that has no row; -1 before the first and after the last.
  int FCurrentRow = -1;
  int FCurrentStep = 0;
};
