// A progress bar made of named pictures, with a sheen that can move over its filled part. Main thread.
//
// Who does what: SetPosition reckons the widths of the filled part from the range (ApplyPosition) and
// repaints; the timer moves a sheen, a control of its own above the pictures, within what is filled (Tick,
// MoveSheen), and changes nothing that SetPosition has reckoned.
#pragma once

#include <QTimer>

#include <functional>
#include <memory>

#include "controls/progress/PImageRect.h"

class TImage;

// The fixed roles of the first six items, in their order of painting.
enum TProgressItem { bg_mid, bg_l, bg_r, fg_mid, fg_l, fg_r, kProgressItemCount };

// Pixels of a bar `width` wide that are filled at `position`, rounded up. `max` is above `min`. Beyond
// `max` it is wider than the bar, below `min` it is negative.
[[nodiscard]] int FilledWidth(int position, int min, int max, int width);

// Where the sheen is, in pixels of the bar.
struct TSheen {
  int Left = 0;
  int Width = 0;

  friend bool operator==(const TSheen&, const TSheen&) = default;
};

enum class TSheenMove { Advance, Shrink, Pause };

// Takes the sheen one tick on towards the right end of the filled part and says what was done. At the end
// it stands outside on the left.
TSheenMove MoveSheen(TSheen& sheen, int progressRight);

// Calls OnAnimate every 20 milliseconds. The work of a tick is a few numbers and a repaint of a control, so
// the "thread" is a timer on the interface thread: no tick can run beside the code that sets the bar.
class TAnimateThread {
 public:
  explicit TAnimateThread(std::function<void()> onAnimate);

  // The next tick comes that many milliseconds from now, the others at the same distance.
  void SetInterval(int milliseconds) { FTimer.start(milliseconds); }

 private:
  std::function<void()> OnAnimate;
  QTimer FTimer;
};

// Max, Min and the items take effect with the next Position. Position is not clamped: the filled part grows
// past the right edge, where it is cut off. With fewer than six items, with Max not above Min or while the
// bar is invisible, Position is only stored.
class TImageProgress : public TImageRect {
 public:
  explicit TImageProgress(QWidget* parent = nullptr);
  ~TImageProgress() override;

  [[nodiscard]] int Max() const { return FMax; }
  void SetMax(int max) { FMax = max; }
  [[nodiscard]] int Min() const { return FMin; }
  void SetMin(int min) { FMin = min; }
  [[nodiscard]] int Position() const { return FPosition; }
  void SetPosition(int position);

  // The right end of the filled part, 0 at first.
  [[nodiscard]] int ProgressRight() const { return FProgressRight; }

  // Whether the sheen moves.
  [[nodiscard]] bool OpenAnimate() const { return FAnimateThread != nullptr; }
  void SetOpenAnimate(bool open);

  [[nodiscard]] const TPicture& MoveImage() const;
  void SetMoveImage(const TPicture& picture);

  // The top of the sheen.
  [[nodiscard]] int AnimateTop() const { return FAnimateTop; }
  void SetAnimateTop(int top);

  // The control's own visible state, which a hidden parent does not change.
  [[nodiscard]] bool Visible() const;
  void setVisible(bool visible) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  void ApplyPosition();
  void Tick();
  void PlaceSheen(TSheen sheen);
  void WriteSheenToDebugOutput() const;
  void BeginPause();
  void EndPause();

  int FMax = 100;
  int FMin = 0;
  int FPosition = 0;
  int FProgressRight = 0;
  int FAnimateTop = 11;
  bool FPausing = false;
  TImage* FMoveControl;
  std::unique_ptr<TAnimateThread> FAnimateThread;
};
