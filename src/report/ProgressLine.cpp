#include "report/ProgressLine.h"

#include "report/TextColumns.h"
#include "scan/ScanMessages.h"

#include <algorithm>
#include <utility>

namespace {

// Columns of the bar between its brackets.
constexpr int kBarCells = 20;

}  // namespace

TProgressLine::TProgressLine(TWrite write) : FWrite(std::move(write)) {}

void TProgressLine::TakeProgress(quintptr wparam, qintptr lparam) {
  if (wparam == 0) {
    FPhase = static_cast<int>(lparam);
    return;
  }
  FSteps = std::max(ScanStepTotal(wparam), 1);
  FStep = ScanStepCurrent(wparam);
  FPhase = 0;
}

// Steps that are not counted in the total lie past the bar's end.
int TProgressLine::Percent() const {
  const int position = FStep * kPhaseDone + std::min(FPhase, kPhaseDone);
  return std::min(position * 100 / (FSteps * kPhaseDone), 100);
}

// In a narrow terminal the path gives way first, from its beginning, then the bar.
QString TProgressLine::Text(int columns) const {
  const int percent = Percent();
  const int filled = percent * kBarCells / 100;
  const QString bar = u'[' + QString(filled, u'#') + QString(kBarCells - filled, u' ') + u"] "_qs +
                      QString::number(percent).rightJustified(3) + u"% "_qs;
  return FitToColumns(bar, columns) + FitToColumns(FPath, columns - TextColumns(bar));
}

// A line that fills the last column would make some terminals go to the next line.
void TProgressLine::Draw(int columns) {
  Show(Text(columns - 1));
}

void TProgressLine::Erase() {
  if (FShown.isEmpty()) return;
  Show({});
  FWrite("\r");
}

// Blanks cover what is left of a longer line; so no terminal needs to know any escape sequence.
void TProgressLine::Show(const QString& text) {
  if (text == FShown) return;
  const int rest = std::max(TextColumns(FShown) - TextColumns(text), 0);
  FWrite("\r" + text.toUtf8() + QByteArray(rest, ' '));
  FShown = text;
}
