// A scroll bar drawn from pictures, or in a plain look without them. Main thread.
//
// Four parts, of which only this one is a widget: ScrollTrack has the numbers and the rectangles, ScrollInput
// what the user does, ScrollPainter the drawing, RdScrollBarImages the looks. A press goes to
// TScrollInput::Press, which steps the track and comes back by TScrollInputHost: Scrolled tells OnScroll,
// Changed tells OnChange. ScrollBy steps the same way. A range or position that the program sets goes to the
// track directly and tells OnChange alone, or nothing (SetParams, SetPositionSilent).
// A new picture of the skin is a word of TScrollPicture, its size in ScrollSizes, its drawing in
// ScrollPainter.cpp. What a screen reader hears is the value in its range; it may set it, which is told as a
// step by the program.
#pragma once

#include "controls/scroll/RdScrollBarImages.h"
#include "controls/scroll/ScrollInput.h"
#include "controls/scroll/ScrollPainter.h"
#include "controls/scroll/ScrollTrack.h"
#include "controls/scroll/ScrollTypes.h"
#include "controls/skin/RdBitmap.h"

#include <QTimer>
#include <QWidget>

struct TScrollPaint;

// Each change of the range sets the bar's enabled state: there is something to scroll as long as PageSize is
// at most Max - Min. With AutoHide it sets the visible state too.
//
// The bar has no keyboard focus if its focus policy is set to Qt::NoFocus; otherwise a press takes the
// focus, and arrows, Page Up, Page Down, Home and End move it.
//
// A handler may set any property, but must not delete the bar.
class TRdScrollBar : public QWidget, private TScrollInputHost {
 public:
  explicit TRdScrollBar(QWidget* parent = nullptr);
  ~TRdScrollBar() override;

  TScrollEvent OnScroll;                  // the user moves the bar; before OnChange
  std::function<void()> OnChange;         // Position has changed
  std::function<void()> OnTrackEnd;       // the mouse let go of the bar after a change
  std::function<void()> OnEnabledChange;  // the enabled state has changed
  TScrollDrawEvent OnDrawControl;         // asked only with OwnerDraw

  [[nodiscard]] TScrollBarKind Kind() const;
  void SetKind(TScrollBarKind kind);

  [[nodiscard]] TRdScrollBarImages& AllSkinImage() { return FImages; }
  [[nodiscard]] const TScrollSkin& Skin() const { return FImages.Skin(); }

  // Max is never below Min: the later value gives way. PageSize is the visible part, 0 for a thumb of the
  // smallest size; a negative one is ignored. A position beyond the last page is taken back to it.
  [[nodiscard]] int Min() const { return FTrack.Range().Min; }
  void SetMin(int min);
  [[nodiscard]] int Max() const { return FTrack.Range().Max; }
  void SetMax(int max);
  [[nodiscard]] int PageSize() const { return FTrack.Range().PageSize; }
  void SetPageSize(int pageSize);

  // Clamped to Min..Max, so it may be set beyond the last page, where no button leads.
  [[nodiscard]] int Position() const { return FTrack.Range().Position; }
  void SetPosition(int position);
  // Fires no event, and paints only if asked.
  void SetPositionSilent(int value, bool update);

  // All four at once, without an event. By itself it repaints at the next chance: at once with noRepaint
  // false, not at all with noInvalidate and noRepaint true.
  void SetParams(int min, int max, int pageSize, int position, bool noRepaint = true,
                 bool noInvalidate = false);

  // The steps of buttons and pages, 0 to 32767. 0 means computed from the range; reading gives the step in
  // effect.
  [[nodiscard]] int SmallChange() const { return FTrack.Range().SmallStep(); }
  void SetSmallChange(int change);
  [[nodiscard]] int LargeChange() const { return FTrack.Range().LargeStep(); }
  void SetLargeChange(int change);

  // Moves by that amount, down for a direction above 0 and up below, with the events and bounds of a press.
  void ScrollBy(int direction, int amount);

  // Milliseconds from a press to its first repeat.
  void SetWaitInterval(int milliseconds) { FInput.SetWaitInterval(milliseconds); }
  // The parts call OnDrawControl.
  void SetOwnerDraw(bool ownerDraw);

  // Not allowed, the bar is hidden whatever AutoHide says; allowed, it shows unless AutoHide hides it.
  void SetAllowed(bool allowed);

  // While reading, changes have no effect on layout, visible and enabled state, and OnChange keeps still.
  // The end lays out once.
  void SetReading(bool reading);

  // The rectangles of the parts now.
  [[nodiscard]] const TScrollLayout& Layout() const { return FTrack.Layout(); }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // TScrollInputHost
  void StartTimer(int milliseconds) override { FRepeatTimer.start(milliseconds); }
  void StopTimer() override { FRepeatTimer.stop(); }
  void Scrolled(const TScrollStep& step) override;
  void Changed() override;
  void TrackEnded() override;
  void RepaintPart(TScrollBarPos part) override;
  void RepaintAll() override { update(); }

  void ApplyKind();
  void LooksChanged();
  void SetRange(const TScrollRange& range);
  void ApplyEnabled();
  void ApplyAutoHide();
  void Arrange();
  void ApplyThickness(int thickness);
  void TellPosition();
  void PaintBar(QPainter& painter, const QRect& area);
  void PaintPart(QPainter& painter, const TScrollPaint& paint, TScrollBarPos part);
  void DrawPart(QPainter& painter, const TScrollPaint& paint, TScrollBarPos part, TButtonState state);
  [[nodiscard]] QColor ControlColor() const;

  TRdScrollBarImages FImages;
  // The input holds track and bar by reference and so stands behind the track.
  TScrollTrack FTrack;
  TScrollInput FInput;
  QTimer FRepeatTimer;
  TThumbBitmaps FThumbs;
  TRdBitmap FBackBuffer;
  int FWheelRest = 0;  // eighths of a degree that do not make a notch yet
  bool FOwnerDraw = false;
  bool FReading = false;
  bool FAllowed = true;
  bool FAutoSizing = false;
};
