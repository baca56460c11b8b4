#include "controls/buttons/CustomImageButton.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include "controls/skin/Colors.h"

namespace {

// Device-independent pixels, as is the inset.
constexpr QSize kDefaultSize(23, 23);
constexpr int kFocusInset = 2;
constexpr int kDarkShadowStrength = 143;  // of 255: how much of the text's colour it has

// The 3D dark shadow, which most palettes have as black, would not be told from a text that is not disabled.
QColor DisabledColor(TColor color, const QPalette& palette) {
  if (color != cl3DDkShadow) return ToQColor(color, palette);
  return Mixed(palette.color(QPalette::Active, QPalette::Window),
               palette.color(QPalette::Active, QPalette::WindowText), kDarkShadowStrength);
}

void TellState(QWidget* button, void (*mark)(QAccessible::State&)) {
  if (!QAccessible::isActive()) return;
  QAccessible::State changed;
  mark(changed);
  QAccessibleStateChangeEvent event(button, changed);
  QAccessible::updateAccessibility(&event);
}

void TellName(QWidget* button) {
  if (!QAccessible::isActive()) return;
  QAccessibleEvent event(button, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&event);
}

// What assistive tools are told: a button, a check box if it has one, and whether the panel beneath it is
// open.
//
// A name that the form has given (setAccessibleName) goes before the caption. The second line is the
// description, as it is read after the name.
class TAccessibleImageButton : public QAccessibleWidget {
 public:
  explicit TAccessibleImageButton(TCustomImageButton& button)
      : QAccessibleWidget(&button, QAccessible::Button), FButton(button) {}

  QAccessible::Role role() const override {
    return FButton.ShowCheckBox ? QAccessible::CheckBox : QAccessible::Button;
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    const TButtonLook& look = FButton.Look();
    state.checkable = look.ShowCheckBox;
    state.checked = look.ShowCheckBox && FButton.Checked();
    state.checkStateMixed = look.ShowCheckBox && look.CheckState == TButtonCheck::Grayed;
    state.pressed = FButton.State() == TImageButtonState::Down;
    state.expandable = FButton.FoldHeader();
    state.expanded = FButton.FoldHeader() && look.Expand;
    state.collapsed = FButton.FoldHeader() && !look.Expand;
    return state;
  }

  QString text(QAccessible::Text kind) const override {
    const QString told = QAccessibleWidget::text(kind);
    if (!told.isEmpty()) return told;
    const TButtonLook& look = FButton.Look();
    if (kind == QAccessible::Name) return look.Caption;
    if (kind == QAccessible::Description) return (look.SubCaption + u' ' + look.SubCaptionData).trimmed();
    return {};
  }

  QStringList actionNames() const override {
    QStringList names{pressAction()};
    if (FButton.ShowCheckBox) names.prepend(toggleAction());
    return names + QAccessibleWidget::actionNames();
  }

  // A handler may delete the button, and this object with it.
  void doAction(const QString& name) override {
    const bool toggles = name == toggleAction() && FButton.ShowCheckBox;
    if (!toggles && name != pressAction()) return QAccessibleWidget::doAction(name);
    if (!FButton.isEnabled()) return;
    toggles ? FButton.FlipCheck() : FButton.Click();
  }

  QStringList keyBindingsForAction(const QString& name) const override {
    if (name == toggleAction()) return {QKeySequence(Qt::Key_Space).toString(QKeySequence::NativeText)};
    if (name == pressAction()) return {QKeySequence(Qt::Key_Return).toString(QKeySequence::NativeText)};
    return QAccessibleWidget::keyBindingsForAction(name);
  }

 private:
  TCustomImageButton& FButton;
};

QAccessibleInterface* AccessibleOf(const QString&, QObject* object) {
  auto* const button = dynamic_cast<TCustomImageButton*>(object);
  return button == nullptr ? nullptr : new TAccessibleImageButton(*button);
}

}  // namespace

// The event is a field of the control that its handler may delete, so what runs is a copy.
bool TellEvent(const QPointer<QWidget>& control, const TButtonEvent& event) {
  const QPointer<QWidget> alive = control;
  const TButtonEvent running = event;
  if (running) running();
  return !alive.isNull();
}

TButtonPicture& TButtonPicture::operator=(const TPicture& picture) {
  const bool showed = FOwner.Shows(FValue);
  FValue = picture;
  if (FOnSet) FOnSet();
  FOwner.PictureSet(showed || FOwner.Shows(FValue));
  return *this;
}

TCustomImageButton::TCustomImageButton(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::TabFocus);
  setMouseTracking(true);
  resize(kDefaultSize);
  QAccessible::installFactory(AccessibleOf);
}

QSize TCustomImageButton::sizeHint() const {
  return kDefaultSize;
}

void TCustomImageButton::SetReading(bool reading) {
  FReading = reading;
  if (reading) return;
  ApplyAutoSize();
  update();
}

void TCustomImageButton::SetFoldHeader(bool header) {
  FFoldHeader = header;
  TellState(this, [](QAccessible::State& state) { state.expandable = true; });
}

void TCustomImageButton::Repaint() {
  if (!FReading) update();
}

void TCustomImageButton::ValueChanged(TButtonChange change) {
  if (!FReading) ApplyAutoSize();
  Repaint();
  if (change == TButtonChange::Checked)
    TellState(this, [](QAccessible::State& state) { state.checked = true; });
  if (change == TButtonChange::Expanded && FFoldHeader)
    TellState(this, [](QAccessible::State& state) { state.expanded = state.collapsed = true; });
  if (change != TButtonChange::Caption) return;
  TellName(this);
  CaptionChanged();
}

bool TCustomImageButton::Shows(const TPicture& picture) const {
  return &picture == &CheckBoxImageOf(FLook) || &picture == &IconSourceOf(FLook, FMood.IconState) ||
         PaintsPicture(picture);
}

void TCustomImageButton::PictureSet(bool shown) {
  if (FReading) return;
  ApplyAutoSize();
  if (shown) update();
}

TButtonMood TCustomImageButton::Mood() const {
  TButtonMood mood = FMood;
  mood.Over = mood.Over || FSpaceDown;
  return mood;
}

QRect TCustomImageButton::ShownIconRect() const {
  return IconRect(FLook, IconSourceOf(FLook, FMood.IconState).Size(), size());
}

void TCustomImageButton::SetState(TImageButtonState state) {
  if (state == FMood.State) return;
  FMood.State = state;
  if (state == TImageButtonState::Selected) FMood.Over = false;
  Repaint();
}

void TCustomImageButton::SetIconState(TButtonIconState state) {
  if (state == FMood.IconState) return;
  FMood.IconState = state;
  if (!IconSourceOf(FLook, state).Empty()) Repaint();
}

// A disabled icon stays so, and a pressed one until the release.
void TCustomImageButton::FollowIcon() {
  if (FMood.IconState == TButtonIconState::Disabled) return;
  const bool over = FInside && ShownIconRect().contains(FMouse);
  SetIconState(over ? TButtonIconState::Hover : TButtonIconState::Normal);
}

void TCustomImageButton::SetOver(bool over) {
  if (over == FMood.Over) return;
  const bool pressed = FMood.State == TImageButtonState::Down;
  FMood.Over = over;
  if (pressed || HasOverLook() || FLook.FontHoverColor != clDefault) Repaint();
}

void TCustomImageButton::EnterOrLeave(bool inside) {
  if (inside == FInside) return;
  FInside = inside;
  if (!isEnabled()) return;
  if (!TellEvent(this, inside ? OnMouseEnter : OnMouseLeave)) return;
  SetOver(FInside && isEnabled());
  if (FMood.IconState != TButtonIconState::Down) FollowIcon();
}

void TCustomImageButton::MouseAt(QPoint point) {
  FMouse = point;
  const QPointer<QWidget> alive(this);
  EnterOrLeave(rect().contains(point) && Hit(point));
  if (alive.isNull() || !isEnabled()) return;
  if (FMood.IconState != TButtonIconState::Down) FollowIcon();
  if (FInside) SetOver(true);
}

void TCustomImageButton::enterEvent(QEnterEvent* event) {
  MouseAt(event->position().toPoint());
}

void TCustomImageButton::leaveEvent(QEvent*) {
  EnterOrLeave(false);
}

void TCustomImageButton::mouseMoveEvent(QMouseEvent* event) {
  MouseAt(event->position().toPoint());
}

void TCustomImageButton::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  Press(event->position().toPoint());
}

// The box comes first, as its handler may disable or delete the button. A button that is Selected takes the
// press and clicks at its end, but never looks pressed.
void TCustomImageButton::Press(QPoint point) {
  const bool onBox = CheckBoxRect(FLook, size()).contains(point);
  const bool onIcon = ShownIconRect().contains(point);
  const bool flips = FLook.ShowCheckBox && (onBox || !(FFoldHeader || onIcon));
  if (flips && !FlipCheck()) return;
  if (onBox || !isEnabled()) return;
  FPressed = true;
  if (FMood.State == TImageButtonState::Selected) return;
  if (onIcon && FMood.IconState != TButtonIconState::Disabled) SetIconState(TButtonIconState::Down);
  if (FMood.State == TImageButtonState::Normal) SetState(TImageButtonState::Down);
}

// The look of the press ends, then OnClick comes, or OnIconClick for a press on the icon.
//
// The click comes first: it is left out if the icon is still held.
void TCustomImageButton::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  if (!FPressed) return;
  FPressed = false;
  FMouse = event->position().toPoint();
  // The release counts in the whole rectangle, also where the picture of the range leaves a hole.
  if (rect().contains(FMouse) && !Click()) return;
  const bool iconHeld = FMood.IconState == TButtonIconState::Down;
  CancelPress();
  if (iconHeld && ClickIcon()) FollowIcon();
}

bool TCustomImageButton::Click() {
  if (FMood.State == TImageButtonState::Down) SetState(TImageButtonState::Normal);
  if (FMood.IconState == TButtonIconState::Down && !ShownIconRect().isEmpty()) return true;
  return TellEvent(this, OnClick);
}

bool TCustomImageButton::ClickIcon() {
  return TellEvent(this, OnIconClick);
}

// A grayed box becomes checked.
bool TCustomImageButton::FlipCheck() {
  SetChecked(!Checked());
  return TellEvent(this, OnCheckBoxClick);
}

void TCustomImageButton::CancelPress() {
  FPressed = FSpaceDown = false;
  if (FMood.State == TImageButtonState::Down) SetState(TImageButtonState::Normal);
  FollowIcon();
}

void TCustomImageButton::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
      if (event->isAutoRepeat()) break;
      FSpaceDown = true;
      if (FMood.State == TImageButtonState::Normal) SetState(TImageButtonState::Down);
      break;
    case Qt::Key_Enter:
    case Qt::Key_Return:
      if (event->modifiers().testFlag(Qt::ShiftModifier))
        ClickIcon();
      else
        Click();
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

void TCustomImageButton::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space) return QWidget::keyReleaseEvent(event);
  if (!event->isAutoRepeat() && FSpaceDown) SpaceReleased();
}

void TCustomImageButton::SpaceReleased() {
  CancelPress();
  if (FLook.ShowCheckBox && (!FlipCheck() || FFoldHeader || !isEnabled())) return;
  Click();
}

void TCustomImageButton::focusInEvent(QFocusEvent*) {
  update();
}

void TCustomImageButton::focusOutEvent(QFocusEvent*) {
  CancelPress();
  update();
}

void TCustomImageButton::hideEvent(QHideEvent*) {
  CancelPress();
}

void TCustomImageButton::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) EnabledChanged();
  if (event->type() == QEvent::FontChange) ValueChanged(TButtonChange::Look);
}

// Selected is not remembered: a button that was disabled comes back as Normal.
void TCustomImageButton::EnabledChanged() {
  CancelPress();
  const bool enabled = isEnabled();
  FMood.Enabled = enabled;
  FMood.Over = enabled && FInside;
  FMood.IconState = enabled ? TButtonIconState::Normal : TButtonIconState::Disabled;
  SetState(enabled ? TImageButtonState::Normal : TImageButtonState::Disabled);
  FollowIcon();
  Repaint();
}

// The pixels of a widget can't be read back, so the picture is drawn a second time, into an image of one
// pixel per device-independent one. That is what a paint costs beside the picture itself.
QColor TCustomImageButton::TextColor(const QRect& text) const {
  const bool disabled = FMood.State == TImageButtonState::Disabled;
  QColor color;
  if (disabled)
    color = DisabledColor(FLook.DisabledFontColor, palette());
  else if (FMood.Over)
    color = ToQColor(FLook.FontHoverColor, palette());
  if (!color.isValid()) color = palette().color(foregroundRole());
  QImage ground(size(), QImage::Format_RGB32);
  ground.fill(palette().color(backgroundRole()));
  QPainter painter(&ground);
  PaintPicture(painter);
  return ReadableOn(BackgroundBehind(painter, text), color, disabled);
}

void TCustomImageButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintPicture(painter);
  PictureWasPainted(painter);
  const QRect text = CaptionRect();
  PaintTexts(painter, FLook, text, font(), TextColor(text));
  IconOf(FLook, FMood.IconState).Draw(painter, ShownIconRect());
  CheckBoxImageOf(FLook).Draw(painter, CheckBoxRect(FLook, size()));
  if (!hasFocus()) return;
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  focus.state |= QStyle::State_KeyboardFocusChange;  // nothing else brings the focus here
  focus.rect.adjust(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}
