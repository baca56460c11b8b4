#include "controls/scroll/ScrollInput.h"

#include <Qt>

#include <algorithm>
#include <limits>

#include "controls/scroll/ScrollTrack.h"

namespace {

// After the first wait, twenty steps a second.
constexpr int kRepeatInterval = 50;  // milliseconds
constexpr int kWheelSteps = 2;

// The range may be all of int, so a difference may be more than one.
int Difference(int from, int to) {
  using TLimits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<qint64>(qint64{to} - from, TLimits::min(), TLimits::max()));
}

bool IsPage(TScrollBarPos part) {
  return part == TScrollBarPos::PageUp || part == TScrollBarPos::PageDown;
}

bool IsUp(TScrollBarPos part) {
  return part == TScrollBarPos::TopButton || part == TScrollBarPos::PageUp;
}

TIScrollCode LineCode(bool up) {
  return up ? TIScrollCode::LineUp : TIScrollCode::LineDown;
}

TIScrollCode PageCode(bool up) {
  return up ? TIScrollCode::PageUp : TIScrollCode::PageDown;
}

TScrollMode Mode(TScrollMode means, bool up) {
  return means | (up ? kScrollUp : kScrollDown);
}

}  // namespace

void TScrollInput::Press(QPoint point) {
  FHost.StopTimer();
  FMouse = point;
  FRepeating = false;
  FDownPosition = FTrack.Range().Position;
  FDownPart = FTrack.Layout().PartAt(point);
  SetHotPart(FDownPart);
  FHost.RepaintPart(FDownPart);
  if (FDownPart == TScrollBarPos::None) return;
  if (FDownPart == TScrollBarPos::Thumb) {
    FDragOffset = point;
    FDragStartThumb = FTrack.ThumbStart();
    return;
  }
  // The timer first: what the step's handlers do may end the press.
  FHost.StartTimer(FWaitInterval);
  StepPart(FDownPart, true);
}

void TScrollInput::Tick() {
  if (FDownPart == TScrollBarPos::None || FDownPart == TScrollBarPos::Thumb) return FHost.StopTimer();
  if (!FRepeating) FHost.StartTimer(kRepeatInterval);
  FRepeating = true;
  // The thumb that has come under the mouse ends the paging.
  if (IsPage(FDownPart)) SetHotPart(FTrack.Layout().PartAt(FMouse));
  // A mouse that was drawn off the part only pauses the repeat.
  if (FHotPart == FDownPart) StepPart(FDownPart, false);
}

void TScrollInput::Move(QPoint point) {
  FMouse = point;
  if (FDownPart == TScrollBarPos::Thumb)
    DragTo(point);
  else
    SetHotPart(FTrack.Layout().PartAt(point));
}

void TScrollInput::DragTo(QPoint point) {
  const bool vertical = FTrack.Room().Kind == TScrollBarKind::Vertical;
  const QPoint way = point - FDragOffset;
  const int before = FTrack.Range().Position;
  const bool changed = FTrack.DragThumb(FDragStartThumb + (vertical ? way.y() : way.x()));
  FHost.RepaintAll();
  if (!changed) return;
  const int difference = Difference(before, FTrack.Range().Position);
  FHost.Scrolled({false, TIScrollCode::Track, Mode(kScrollByThumb, difference < 0), difference});
  FHost.Changed();
}

void TScrollInput::Release(QPoint point) {
  FHost.StopTimer();
  FMouse = point;
  if (FDownPart != TScrollBarPos::None && FTrack.Range().Position != FDownPosition) FHost.TrackEnded();
  const bool dragged = FDownPart == TScrollBarPos::Thumb;
  FHost.RepaintPart(FDownPart);
  FDownPart = TScrollBarPos::None;
  if (dragged) {
    // The thumb leaves the mouse and takes the place of the position.
    FTrack.Arrange();
    FHost.RepaintAll();
  }
  SetHotPart(FTrack.Layout().PartAt(point));
}

void TScrollInput::LoseMouse() {
  if (FDownPart != TScrollBarPos::None) Release(FMouse);
}

void TScrollInput::Leave() {
  SetHotPart(TScrollBarPos::None);
}

void TScrollInput::Wheel(int direction) {
  const bool up = direction < 0;
  const qint64 amount = qint64{kWheelSteps} * FTrack.Range().SmallStep();
  StepBy(up ? -amount : amount, {true, LineCode(up), Mode(kScrollByWheel, up)});
}

bool TScrollInput::Key(int key) {
  const TScrollRange& range = FTrack.Range();
  const bool up = key == Qt::Key_Up || key == Qt::Key_Left || key == Qt::Key_PageUp || key == Qt::Key_Home;
  const TScrollMode mode = Mode(kScrollByKey, up);
  const int direction = up ? -1 : 1;
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
      StepBy(direction * qint64{range.SmallStep()}, {true, LineCode(up), mode});
      return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      StepBy(direction * qint64{range.LargeStep()}, {true, PageCode(up), mode});
      return true;
    case Qt::Key_Home:
    case Qt::Key_End:
      StepBy((up ? qint64{range.Min} : range.LargestPosition()) - range.Position,
             {true, up ? TIScrollCode::Top : TIScrollCode::Bottom, mode});
      return true;
    default:
      return false;
  }
}

void TScrollInput::StepPart(TScrollBarPos part, bool startChange) {
  const TScrollRange& range = FTrack.Range();
  const bool up = IsUp(part);
  const int amount = IsPage(part) ? range.LargeStep() : range.SmallStep();
  const TIScrollCode code = IsPage(part) ? PageCode(up) : LineCode(up);
  StepBy(up ? -amount : amount,
         {startChange, code, Mode(IsPage(part) ? kScrollByPage : kScrollByButton, up)});
}

void TScrollInput::StepBy(qint64 amount, TScrollStep step) {
  TScrollRange range = FTrack.Range();
  const int before = range.Position;
  range.SetPosition(range.StepTarget(amount));
  if (!FTrack.SetRange(range)) return;
  step.ChangeValue = Difference(before, range.Position);
  // OnScroll finds the new position in the old layout; OnChange finds both new.
  FHost.Scrolled(step);
  FTrack.Arrange();
  FHost.RepaintAll();
  FHost.Changed();
}

void TScrollInput::Cancel() {
  FHost.StopTimer();
  FDownPart = TScrollBarPos::None;
  FHotPart = TScrollBarPos::None;
}

void TScrollInput::SetHotPart(TScrollBarPos part) {
  if (part == FHotPart) return;
  FHost.RepaintPart(FHotPart);
  FHotPart = part;
  FHost.RepaintPart(FHotPart);
}

TButtonState TScrollInput::StateOf(TScrollBarPos part) const {
  if (FDownPart == part && (FHotPart == part || part == TScrollBarPos::Thumb)) return TButtonState::Down;
  if (FDownPart == TScrollBarPos::None && FHotPart == part) return TButtonState::Hot;
  return TButtonState::Normal;
}
