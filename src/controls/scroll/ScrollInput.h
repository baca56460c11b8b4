// What mouse, wheel and keys do to a scroll bar, without a widget. Main thread.
//
// Order of what the host is told: for a step Scrolled, then, with the parts at their new places, Changed; for
// a drag the same at each move; at the release TrackEnded, if the position is another than at the press. A
// handler may set the range or disable the bar in each of these; the input reads the track anew after it.
#pragma once

#include "controls/scroll/ScrollTypes.h"

#include <QPoint>

class TScrollTrack;

// One move of the bar by the user.
struct TScrollStep {
  bool StartChange = true;
  TIScrollCode Code = TIScrollCode::Position;
  TScrollMode Mode = 0;
  int ChangeValue = 0;

  friend bool operator==(const TScrollStep&, const TScrollStep&) = default;
};

// The widget, or a test in its place.
class TScrollInputHost {
 public:
  virtual ~TScrollInputHost() = default;

  // The timer repeats with that interval and calls Tick, until it is started anew or stopped.
  virtual void StartTimer(int milliseconds) = 0;
  virtual void StopTimer() = 0;

  // The position is the new one in each; the layout is new in Changed.
  virtual void Scrolled(const TScrollStep& step) = 0;
  virtual void Changed() = 0;
  virtual void TrackEnded() = 0;

  virtual void RepaintPart(TScrollBarPos part) = 0;
  virtual void RepaintAll() = 0;
};

class TScrollInput {
 public:
  // Both outlive the object.
  TScrollInput(TScrollTrack& track, TScrollInputHost& host) : FTrack(track), FHost(host) {}

  void SetWaitInterval(int milliseconds) { FWaitInterval = milliseconds; }

  // The left button, with points of the bar, also outside of it.
  void Press(QPoint point);
  void Move(QPoint point);
  void Release(QPoint point);
  void Leave();
  // The window has lost the mouse, and a release may never come: what was pressed is released where it is.
  void LoseMouse();
  void Tick();
  // One notch, up for a direction below 0.
  void Wheel(int direction);
  // A Qt::Key. Says whether it is one that moves a bar.
  bool Key(int key);
  // One step, clamped as all steps are. Does nothing if the position does not change.
  void StepBy(qint64 amount, TScrollStep step);
  // The bar is disabled or hidden: what was begun ends without an event.
  void Cancel();

  [[nodiscard]] TScrollBarPos DownPart() const { return FDownPart; }
  [[nodiscard]] TScrollBarPos HotPart() const { return FHotPart; }
  // The look of a part of an enabled bar.
  [[nodiscard]] TButtonState StateOf(TScrollBarPos part) const;

 private:
  void StepPart(TScrollBarPos part, bool startChange);
  void DragTo(QPoint point);
  void SetHotPart(TScrollBarPos part);

  TScrollTrack& FTrack;
  TScrollInputHost& FHost;
  // Milliseconds.
  int FWaitInterval = 500;
  TScrollBarPos FDownPart = TScrollBarPos::None;
  TScrollBarPos FHotPart = TScrollBarPos::None;
  QPoint FMouse;
  // Where the thumb was taken: the mouse, the first pixel of the thumb, and the position at any press.
  QPoint FDragOffset;
  int FDragStartThumb = 0;
  int FDownPosition = 0;
  bool FRepeating = false;  // the first wait is over
};
