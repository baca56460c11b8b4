#include "controls/scroll/RdScrollBar.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScreen>
#include <QStyle>

#include <algorithm>
#include <array>

#include "controls/AccessibleValue.h"
#include "controls/scroll/ScrollPainter.h"

namespace {

constexpr int kLargestBuffer = 2048;  // pixels; a larger bar is painted without one
constexpr int kLargestMinThumb = 21;  // pixels
constexpr int kUsualThickness = 16;   // pixels, where the platform has none
constexpr int kUsualLength = 100;     // pixels
constexpr int kWheelNotch = 120;      // eighths of a degree

TScrollDefaults PlatformDefaults(const QWidget& bar) {
  const QStyle& style = *bar.style();
  const int extent = style.pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &bar);
  const int thickness = extent > 0 ? extent : kUsualThickness;
  const int slider = style.pixelMetric(QStyle::PM_ScrollBarSliderMin, nullptr, &bar);
  return {thickness, thickness, std::min(slider > 0 ? slider : kLargestMinThumb, kLargestMinThumb)};
}

// The order of drawing: the thumb lies over the pages, the buttons over all.
constexpr std::array kDrawnParts{TScrollBarPos::PageUp, TScrollBarPos::PageDown, TScrollBarPos::Thumb,
                                 TScrollBarPos::TopButton, TScrollBarPos::BottomButton};

// What assistive tools are told of the bar: they read its value and set it as if the user had moved it.
class TAccessibleScrollBar : public TAccessibleValue<TRdScrollBar> {
 public:
  explicit TAccessibleScrollBar(TRdScrollBar& bar) : TAccessibleValue(bar, QAccessible::ScrollBar) {}

  QVariant minimumStepSize() const override { return FBar.SmallChange(); }

  void setCurrentValue(const QVariant& value) override {
    if (!FBar.isEnabled()) return;
    const int target = std::clamp(value.toInt(), FBar.Min(), FBar.Max());
    const bool up = target < FBar.Position();
    FBar.ScrollBy(up ? -1 : 1, up ? FBar.Position() - target : target - FBar.Position());
  }

  QStringList actionNames() const override {
    return QStringList{increaseAction(), decreaseAction()} + QAccessibleWidget::actionNames();
  }

  void doAction(const QString& name) override {
    const bool increase = name == increaseAction();
    if (!increase && name != decreaseAction()) return QAccessibleWidget::doAction(name);
    if (FBar.isEnabled()) FBar.ScrollBy(increase ? 1 : -1, FBar.SmallChange());
  }
};

}  // namespace

TRdScrollBar::TRdScrollBar(QWidget* parent)
    : QWidget(parent), FImages([this] { LooksChanged(); }), FInput(FTrack, *this) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_NoSystemBackground);
  connect(&FRepeatTimer, &QTimer::timeout, this, [this] { FInput.Tick(); });
  TellAccessibilityOf<TRdScrollBar, TAccessibleScrollBar>();
  resize(sizeHint());
  ApplyKind();
}

TRdScrollBar::~TRdScrollBar() = default;

TScrollBarKind TRdScrollBar::Kind() const {
  return FTrack.Room().Kind;
}

void TRdScrollBar::SetKind(TScrollBarKind kind) {
  if (kind == Kind()) return;
  TScrollRoom room = FTrack.Room();
  room.Kind = kind;
  FTrack.Arrange(room);
  ApplyKind();
}

void TRdScrollBar::ApplyKind() {
  const bool vertical = Kind() == TScrollBarKind::Vertical;
  setSizePolicy(vertical ? QSizePolicy::Fixed : QSizePolicy::Expanding,
                vertical ? QSizePolicy::Expanding : QSizePolicy::Fixed);
  LooksChanged();
}

void TRdScrollBar::SetMin(int min) {
  TScrollRange range = FTrack.Range();
  range.SetMin(min);
  SetRange(range);
}

void TRdScrollBar::SetMax(int max) {
  TScrollRange range = FTrack.Range();
  range.SetMax(max);
  SetRange(range);
}

void TRdScrollBar::SetPageSize(int pageSize) {
  TScrollRange range = FTrack.Range();
  range.SetPageSize(pageSize);
  SetRange(range);
}

void TRdScrollBar::SetRange(const TScrollRange& range) {
  const int before = Position();
  if (!FTrack.SetRange(range)) return;
  ApplyEnabled();
  Arrange();
  update();
  if (Position() != before && !FReading) Changed();
}

void TRdScrollBar::SetPosition(int position) {
  TScrollRange range = FTrack.Range();
  range.SetPosition(position);
  if (!FTrack.SetRange(range) || FReading) return;
  // A held thumb stays under the mouse, whatever position the program sets.
  if (FInput.DownPart() != TScrollBarPos::Thumb) {
    FTrack.Arrange();
    update();
  }
  Changed();
}

void TRdScrollBar::SetPositionSilent(int value, bool update) {
  TScrollRange range = FTrack.Range();
  range.SetPosition(value);
  if (!FTrack.SetRange(range)) return;
  TellPosition();
  if (!update || FReading) return;
  FTrack.Arrange();
  QWidget::update();
}

void TRdScrollBar::SetParams(int min, int max, int pageSize, int position, bool noRepaint,
                             bool noInvalidate) {
  const TScrollRange before = FTrack.Range();
  TScrollRange range = before;
  range.SetParams(min, max, pageSize, position);
  if (!FTrack.SetRange(range)) return;
  const bool sameScale = range.SameScale(before);
  if (!sameScale) ApplyEnabled();
  // A held thumb stays under the mouse unless its own size changes.
  if (FInput.DownPart() != TScrollBarPos::Thumb || !sameScale) Arrange();
  if (range.Position != before.Position) TellPosition();
  if (!noRepaint)
    repaint();
  else if (!noInvalidate)
    update();
}

void TRdScrollBar::SetSmallChange(int change) {
  TScrollRange range = FTrack.Range();
  range.SmallChange = std::clamp(change, 0, kMaxScrollInc);
  FTrack.SetRange(range);
}

void TRdScrollBar::SetLargeChange(int change) {
  TScrollRange range = FTrack.Range();
  range.LargeChange = std::clamp(change, 0, kMaxScrollInc);
  FTrack.SetRange(range);
}

void TRdScrollBar::ScrollBy(int direction, int amount) {
  const bool up = direction < 0;
  const TScrollMode mode = kScrollByProgram | (up ? kScrollUp : kScrollDown);
  FInput.StepBy(up ? -qint64{amount} : qint64{amount}, {true, TIScrollCode::Position, mode});
}

void TRdScrollBar::SetOwnerDraw(bool ownerDraw) {
  if (ownerDraw == FOwnerDraw) return;
  FOwnerDraw = ownerDraw;
  update();
}

// Whether the bar itself is disabled is asked of its own attribute: a disabled parent disables it too, but
// hides nothing.
void TRdScrollBar::SetAllowed(bool allowed) {
  FAllowed = allowed;
  setVisible(allowed && !(Skin().AutoHide && testAttribute(Qt::WA_ForceDisabled)));
}

void TRdScrollBar::SetReading(bool reading) {
  if (reading == FReading) return;
  FReading = reading;
  if (reading) return;
  ApplyEnabled();
  LooksChanged();
}

QSize TRdScrollBar::sizeHint() const {
  const TScrollDefaults defaults = PlatformDefaults(*this);
  const int own = FTrack.Room().Sizes.Thickness;
  const QSize size(own > 0 ? own : defaults.Thickness, kUsualLength);
  return Kind() == TScrollBarKind::Vertical ? size : size.transposed();
}

void TRdScrollBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::EnabledChange:
      FInput.Cancel();
      ApplyAutoHide();
      Arrange();
      update();
      if (OnEnabledChange) OnEnabledChange();
      break;
    // Another window may take the release with it.
    case QEvent::ActivationChange:
      if (!isActiveWindow()) FInput.LoseMouse();
      break;
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::ParentChange:
      LooksChanged();
      break;
    default:
      break;
  }
}

void TRdScrollBar::resizeEvent(QResizeEvent*) {
  if (!FAutoSizing) Arrange();
}

void TRdScrollBar::hideEvent(QHideEvent*) {
  FInput.Cancel();
}

void TRdScrollBar::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  FInput.Press(event->position().toPoint());
}

// A release that went elsewhere is made up for by the first move without the button.
void TRdScrollBar::mouseMoveEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  const bool lost = FInput.DownPart() != TScrollBarPos::None && !event->buttons().testFlag(Qt::LeftButton);
  if (lost) FInput.Release(point);
  FInput.Move(point);
}

void TRdScrollBar::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  FInput.Release(event->position().toPoint());
}

void TRdScrollBar::leaveEvent(QEvent*) {
  FInput.Leave();
}

void TRdScrollBar::wheelEvent(QWheelEvent* event) {
  const QPoint delta = event->angleDelta();
  FWheelRest += delta.y() != 0 ? delta.y() : delta.x();
  for (; FWheelRest >= kWheelNotch; FWheelRest -= kWheelNotch)
    FInput.Wheel(-1);
  for (; FWheelRest <= -kWheelNotch; FWheelRest += kWheelNotch)
    FInput.Wheel(1);
  event->accept();
}

void TRdScrollBar::keyPressEvent(QKeyEvent* event) {
  if (!FInput.Key(event->key())) QWidget::keyPressEvent(event);
}

void TRdScrollBar::Scrolled(const TScrollStep& step) {
  if (OnScroll) OnScroll(*this, step.StartChange, step.Code, step.Mode, step.ChangeValue);
}

void TRdScrollBar::Changed() {
  TellPosition();
  const auto told = OnChange;  // its owner may drop it meanwhile
  if (told) told();
}

void TRdScrollBar::TrackEnded() {
  const auto told = OnTrackEnd;
  if (told) told();
}

void TRdScrollBar::RepaintPart(TScrollBarPos part) {
  update(FTrack.Layout().RectOf(part));
}

void TRdScrollBar::TellPosition() {
  if (!QAccessible::isActive()) return;
  QAccessibleValueChangeEvent event(this, Position());
  QAccessible::updateAccessibility(&event);
}

void TRdScrollBar::LooksChanged() {
  // Composed from what has just changed.
  FThumbs.Clear();
  // A parent that shows through has to be painted beneath.
  setAttribute(Qt::WA_OpaquePaintEvent, ControlColor().isValid());
  if (!FReading) ApplyAutoHide();
  Arrange();
  update();
}

void TRdScrollBar::ApplyEnabled() {
  if (FReading) return;
  setEnabled(FTrack.Range().CanScroll());
  ApplyAutoHide();
}

void TRdScrollBar::ApplyAutoHide() {
  // The bar's own state: a disabled parent hides nothing.
  const bool shows = FAllowed && !testAttribute(Qt::WA_ForceDisabled);
  if (!FReading && Skin().AutoHide && isHidden() == shows) setVisible(shows);
}

// May resize the bar to the thickness of its pictures, which arranges nothing a second time (FAutoSizing).
void TRdScrollBar::Arrange() {
  if (FReading) return;
  TScrollRoom room = FTrack.Room();
  room.Sizes = ScrollSizes(Skin(), room.Kind, PlatformDefaults(*this));
  ApplyThickness(room.Sizes.Thickness);
  room.Bar = size();
  room.Screen = screen()->size();
  room.Enabled = isEnabled();
  FTrack.Arrange(room);
}

void TRdScrollBar::ApplyThickness(int thickness) {
  if (thickness <= 0 || FAutoSizing) return;
  const QScopedValueRollback<bool> guard(FAutoSizing, true);
  const QSize wanted =
      Kind() == TScrollBarKind::Vertical ? QSize(thickness, height()) : QSize(width(), thickness);
  if (wanted == size()) return;
  resize(wanted);
  updateGeometry();
}

QColor TRdScrollBar::ControlColor() const {
  if (Skin().Color == clNone) return {};
  if (Skin().Color != clDefault) return ToQColor(Skin().Color, palette());
  const QWidget* parent = parentWidget();
  return parent == nullptr ? palette().color(QPalette::Window)
                           : parent->palette().color(parent->backgroundRole());
}

void TRdScrollBar::paintEvent(QPaintEvent* event) {
  const QRect area = event->rect();
  QPainter surface(this);
  const bool buffered = width() <= kLargestBuffer && height() <= kLargestBuffer;
  if (!buffered || !FBackBuffer.SetSize(size(), devicePixelRatioF())) return PaintBar(surface, area);
  QPainter painter(&FBackBuffer.Image());
  painter.setClipRect(area);
  // The buffer has what was painted before; where the parent shows through it has to be empty again.
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(area, Qt::transparent);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  PaintBar(painter, area);
  painter.end();
  FBackBuffer.Blit(surface, area.topLeft(), area);
}

void TRdScrollBar::PaintBar(QPainter& painter, const QRect& area) {
  const TScrollPaint paint{Skin(), Kind(), palette(), ControlColor()};
  PaintBackground(painter, paint, rect(), area);
  const TScrollLayout& layout = FTrack.Layout();
  for (const TScrollBarPos part : kDrawnParts) {
    const bool page = part == TScrollBarPos::PageUp || part == TScrollBarPos::PageDown;
    if (page && !layout.HasThumb()) continue;
    if (layout.RectOf(part).intersects(area)) PaintPart(painter, paint, part);
  }
  if (hasFocus()) PaintFocus(painter, paint, layout.HasThumb() ? layout.ThumbRect : rect());
}

void TRdScrollBar::PaintPart(QPainter& painter, const TScrollPaint& paint, TScrollBarPos part) {
  const TButtonState state = isEnabled() ? FInput.StateOf(part) : TButtonState::Disabled;
  if (!FOwnerDraw || !OnDrawControl) return DrawPart(painter, paint, part, state);
  bool defaultDraw = false;
  const auto ask = [&] {
    painter.save();
    OnDrawControl(painter, part, FTrack.Layout().RectOf(part), state, defaultDraw);
    painter.restore();
  };
  ask();
  if (!defaultDraw) return;
  DrawPart(painter, paint, part, state);
  ask();
}

void TRdScrollBar::DrawPart(QPainter& painter, const TScrollPaint& paint, TScrollBarPos part,
                            TButtonState state) {
  const QRect& rect = FTrack.Layout().RectOf(part);
  if (part == TScrollBarPos::PageUp || part == TScrollBarPos::PageDown)
    return PaintPage(painter, paint, rect, part == TScrollBarPos::PageDown, state);
  if (part != TScrollBarPos::Thumb)
    return PaintButton(painter, paint, rect, part == TScrollBarPos::BottomButton, state);
  const bool hot = state == TButtonState::Hot || state == TButtonState::Down;
  const qreal density = painter.device()->devicePixelRatioF();
  FThumbs.Get(paint, rect.size(), density, hot).Blit(painter, rect.topLeft(), QRect(QPoint(), rect.size()));
}
