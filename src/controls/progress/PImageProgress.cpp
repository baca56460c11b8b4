#include "controls/progress/PImageProgress.h"

#include <QAccessible>

#include <algorithm>

#include "controls/AccessibleValue.h"
#include "controls/notes/Image.h"
#include "platform/Process.h"

namespace {

// A sweep goes ten pixels per tick, five hundred a second, and rests for a second between two.
constexpr int kTickInterval = 20;     // milliseconds
constexpr int kSweepPause = 5 * 200;  // milliseconds
constexpr int kSheenStep = 10;
constexpr int kSheenShrink = 20;
constexpr int kSheenStart = -20;
constexpr qint64 kFarOutside = QWIDGETSIZE_MAX;  // no wild position makes coordinates overflow

void Debug(const char* what, int value) {
  DebugOutput((QByteArray(what) + QByteArray::number(value)).constData());
}

// A progress bar to assistive tools, with its range and position.
class TAccessibleProgress : public TAccessibleValue<TImageProgress> {
 public:
  explicit TAccessibleProgress(TImageProgress& bar) : TAccessibleValue(bar, QAccessible::ProgressBar) {}
};

}  // namespace

// Rounded up, so that the first step of a long way shows. In 64 bits, as the range may be all of int.
int FilledWidth(int position, int min, int max, int width) {
  const qint64 scaled = (qint64{position} - min) * width;
  const qint64 range = qint64{max} - min;
  const qint64 filled = scaled / range + (scaled % range != 0 ? 1 : 0);
  return static_cast<int>(std::clamp(filled, -kFarOutside, kFarOutside));
}

// The sheen walks to the right with its end ten pixels before that of the filled part; there it shrinks, and
// then rests.
TSheenMove MoveSheen(TSheen& sheen, int progressRight) {
  const bool advances = progressRight - sheen.Width > sheen.Left;
  if (!advances && sheen.Left >= progressRight) {
    sheen = {kSheenStart, 0};
    return TSheenMove::Pause;
  }
  sheen.Width = std::max(0, progressRight - sheen.Left - kSheenShrink);
  if (!advances) return TSheenMove::Shrink;
  sheen.Left += kSheenStep;
  return TSheenMove::Advance;
}

TAnimateThread::TAnimateThread(std::function<void()> onAnimate) : OnAnimate(std::move(onAnimate)) {
  QObject::connect(&FTimer, &QTimer::timeout, &FTimer, [this] { OnAnimate(); });
  FTimer.start(kTickInterval);
}

TImageProgress::TImageProgress(QWidget* parent) : TImageRect(parent), FMoveControl(new TImage(this)) {
  FMoveControl->setObjectName(u"MoveImage"_qs);
  FMoveControl->setGeometry(0, FAnimateTop, 0, height());
  FMoveControl->hide();
  TellAccessibilityOf<TImageProgress, TAccessibleProgress>();
}

TImageProgress::~TImageProgress() = default;

void TImageProgress::SetPosition(int position) {
  FPosition = position;
  ApplyPosition();
  if (!QAccessible::isActive()) return;
  QAccessibleValueChangeEvent event(this, position);
  QAccessible::updateAccessibility(&event);
}

// Ends keep the widths of their pictures and the middle gets the rest, so that the least filled part is as
// wide as both ends.
void TImageProgress::ApplyPosition() {
  TImageCollection& items = Items();
  if (items.Count() < kProgressItemCount || !Visible() || FMax <= FMin) return;
  for (const int index : {fg_mid, fg_l, fg_r})
    items[index].Visible = FPosition != FMin;

  TImageItem& middle = items[fg_mid];
  TImageItem& left = items[fg_l];
  TImageItem& right = items[fg_r];
  left.Width = left.Picture.Size().width();
  right.Width = right.Picture.Size().width();
  middle.Width = std::max(0, FilledWidth(FPosition, FMin, FMax, width()) - left.Width - right.Width);
  middle.Left = left.Width;
  right.Left = left.Width + middle.Width;
  FProgressRight = right.Left + right.Width;
  update();
}

void TImageProgress::SetOpenAnimate(bool open) {
  if (open == OpenAnimate()) return;
  FPausing = false;
  FAnimateThread = open ? std::make_unique<TAnimateThread>([this] { Tick(); }) : nullptr;
}

const TPicture& TImageProgress::MoveImage() const {
  return FMoveControl->Picture();
}

void TImageProgress::SetMoveImage(const TPicture& picture) {
  FMoveControl->SetPicture(picture);
}

void TImageProgress::SetAnimateTop(int top) {
  FAnimateTop = top;
  FMoveControl->move(FMoveControl->x(), top);
}

// Not isVisible: a control of a form that is not shown yet is as good as visible, and takes its positions.
bool TImageProgress::Visible() const {
  return !(isHidden() && testAttribute(Qt::WA_WState_ExplicitShowHide));
}

void TImageProgress::setVisible(bool visible) {
  TImageRect::setVisible(visible);
  ApplyPosition();
}

void TImageProgress::resizeEvent(QResizeEvent* event) {
  TImageRect::resizeEvent(event);
  ApplyPosition();
}

void TImageProgress::moveEvent(QMoveEvent* event) {
  TImageRect::moveEvent(event);
  ApplyPosition();
}

void TImageProgress::Tick() {
  if (FPausing) return EndPause();
  // Nothing is filled that it could run over.
  if (FPosition < 1) return PlaceSheen({FMoveControl->x(), 0});

  TSheen sheen{FMoveControl->x(), FMoveControl->width()};
  const TSheenMove move = MoveSheen(sheen, FProgressRight);
  PlaceSheen(sheen);
  if (move == TSheenMove::Shrink) WriteSheenToDebugOutput();
  if (move == TSheenMove::Pause) BeginPause();
}

void TImageProgress::PlaceSheen(TSheen sheen) {
  FMoveControl->setGeometry(sheen.Left, FAnimateTop, sheen.Width, height());
}

void TImageProgress::WriteSheenToDebugOutput() const {
  const int rightLeft = Items().Count() > fg_r ? Items()[fg_r].Left : 0;
  Debug("Items[Ord(fg_right)].Left: ", rightLeft);
  Debug("****** FMoveImage.Left: ", FMoveControl->x());
  Debug("****** FMoveImage.Width: ", FMoveControl->width());
}

void TImageProgress::BeginPause() {
  FMoveControl->hide();
  update();
  FPausing = true;
  FAnimateThread->SetInterval(kSweepPause);
}

void TImageProgress::EndPause() {
  FPausing = false;
  FAnimateThread->SetInterval(kTickInterval);
  if (FPosition >= FMax) return;
  PlaceSheen({FMoveControl->x(), 0});
  FMoveControl->show();
}
