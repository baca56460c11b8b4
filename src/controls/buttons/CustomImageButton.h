// What the two image buttons have in common: the texts, icon and check box with their properties, and the way
// from mouse, keys and assistive tools to the events. Main thread.
//
// How a button works, from outside in. A property (Caption, Expand, ...) writes a field of what the button
// shows and calls ValueChanged, which repaints, sizes and tells assistive tools. Mouse and keys change the
// mood and tell the events. paintEvent asks the descendant for its picture and the place of the caption
// (PaintPicture, CaptionRect), which have them from ButtonLook.h by look and mood, and paints texts, icon and
// box itself. A new value of a button is a field of TButtonLook, a property here or in RdImageButton.h, and
// its use in ButtonLook.cpp.
#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

#include "controls/buttons/ButtonLook.h"

using TButtonEvent = std::function<void()>;

// Tells an event, an unassigned one to nobody. The handler stays whole while it runs, whatever becomes of its
// owner. False if it has deleted the control: then return at once and touch no field.
[[nodiscard]] bool TellEvent(const QPointer<QWidget>& control, const TButtonEvent& event);

// What a button has to do about a new value.
enum class TButtonChange { Look, Caption, Checked, Expanded, Pictures };

// The button, as its properties know it. It outlives them.
class TButtonOwner {
 public:
  virtual ~TButtonOwner() = default;
  virtual void ValueChanged(TButtonChange change) = 0;
  // The picture is one of those that the button shows now.
  [[nodiscard]] virtual bool Shows(const TPicture& picture) const = 0;
  virtual void PictureSet(bool shown) = 0;
};

// A published value of a button: reads and writes a field of what it shows and lets the button follow.
template <class T>
class TButtonProperty {
 public:
  TButtonProperty(TButtonOwner& owner, T& value, TButtonChange change = TButtonChange::Look)
      : FOwner(owner), FValue(value), FChange(change) {}
  TButtonProperty(const TButtonProperty&) = delete;
  TButtonProperty& operator=(const TButtonProperty&) = delete;

  [[nodiscard]] const T& Get() const { return FValue; }
  operator const T&() const { return FValue; }  // NOLINT: stands for its value

  TButtonProperty& operator=(const T& value) {
    if (FValue == value) return *this;
    FValue = value;
    FOwner.ValueChanged(FChange);
    return *this;
  }

 private:
  TButtonOwner& FOwner;
  T& FValue;
  TButtonChange FChange;
};

// A published picture. A new one repaints the button only if it shows, or showed before.
class TButtonPicture {
 public:
  TButtonPicture(TButtonOwner& owner, TPicture& value, TButtonEvent onSet = {})
      : FOwner(owner), FValue(value), FOnSet(std::move(onSet)) {}
  TButtonPicture(const TButtonPicture&) = delete;
  TButtonPicture& operator=(const TButtonPicture&) = delete;

  [[nodiscard]] const TPicture& Get() const { return FValue; }
  operator const TPicture&() const { return FValue; }  // NOLINT: stands for its value
  TButtonPicture& operator=(const TPicture& picture);

 private:
  TButtonOwner& FOwner;
  TPicture& FValue;
  TButtonEvent FOnSet;
};

// By mouse, a press flips the check box and the release clicks: a press on the box only flips, one beside it
// does both, one on the icon only clicks the icon. In the header of a fold panel a press beside the box only
// clicks.
//
// By keys, Space is a press beside the box (on it, in the header of a fold panel), Enter a click, Shift+Enter
// a click on the icon. The button takes the focus by Tab alone, so that a click leaves it where it is.
//
// Every handler but OnPaintImage may delete the button.
class TCustomImageButton : public QWidget, protected TButtonOwner {
 protected:
  // Stands before the properties, which are made of references to its fields.
  TButtonLook FLook;

 public:
  TButtonEvent OnClick;
  TButtonEvent OnCheckBoxClick;  // the user has flipped the check box
  TButtonEvent OnIconClick;
  TButtonEvent OnMouseEnter;
  TButtonEvent OnMouseLeave;

  TButtonProperty<QString> Caption{*this, FLook.Caption, TButtonChange::Caption};
  TButtonProperty<int> TextOffset{*this, FLook.TextOffset};
  TButtonProperty<int> TextTopOffset{*this, FLook.TextTopOffset};
  TButtonProperty<TColor> DisabledFontColor{*this, FLook.DisabledFontColor};
  TButtonProperty<QString> SubCaption{*this, FLook.SubCaption};
  TButtonProperty<int> SubCaptionOffset{*this, FLook.SubCaptionOffset};
  TButtonProperty<QFont> SubCaptionFont{*this, FLook.SubCaptionFont};
  TButtonProperty<QString> SubCaptionData{*this, FLook.SubCaptionData};
  TButtonProperty<QFont> SubCaptionDataFont{*this, FLook.SubCaptionDataFont};

  // Which icons show, Up or Dn, and that the button looks pressed.
  TButtonProperty<bool> Expand{*this, FLook.Expand, TButtonChange::Expanded};
  TButtonPicture ExpandImage{*this, FLook.ExpandImage};
  TButtonPicture UpDownIcon{*this, FLook.Up.Down};
  TButtonPicture UpHoverIcon{*this, FLook.Up.Hover};
  TButtonPicture UpNormalIcon{*this, FLook.Up.Normal};
  TButtonPicture DnDownIcon{*this, FLook.Dn.Down};
  TButtonPicture DnHoverIcon{*this, FLook.Dn.Hover};
  TButtonPicture DnNormalIcon{*this, FLook.Dn.Normal};
  TButtonProperty<bool> IconVisible{*this, FLook.IconVisible};
  TButtonProperty<int> IconOffset{*this, FLook.IconOffset};

  TButtonProperty<bool> ShowCheckBox{*this, FLook.ShowCheckBox};
  TButtonPicture CheckBoxNormalImage{*this, FLook.CheckBoxNormalImage};
  TButtonPicture CheckBoxCheckedImage{*this, FLook.CheckBoxCheckedImage};
  TButtonProperty<int> CheckBoxOffset{*this, FLook.CheckBoxOffset};

  // Not checked is off, whatever it was.
  [[nodiscard]] bool Checked() const { return FLook.CheckState == TButtonCheck::On; }
  void SetChecked(bool checked) { FCheckState = checked ? TButtonCheck::On : TButtonCheck::Off; }

  // Selected is for the program to set and to end; a press does not change it.
  [[nodiscard]] TImageButtonState State() const { return FMood.State; }
  void SetState(TImageButtonState state);

  // The button is the header of a panel that it opens and closes.
  [[nodiscard]] bool FoldHeader() const { return FFoldHeader; }
  void SetFoldHeader(bool header);

  // While reading, nothing is repainted and no picture sets slices or size. The end makes up for it.
  void SetReading(bool reading);

  // As the user would; all give false if a handler has deleted the button.
  bool Click();
  bool FlipCheck();
  bool ClickIcon();

  [[nodiscard]] const TButtonLook& Look() const { return FLook; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  explicit TCustomImageButton(QWidget* parent);

  [[nodiscard]] bool Reading() const { return FReading; }
  // As it is painted: a button that Space holds looks as if the mouse did.
  [[nodiscard]] TButtonMood Mood() const;

  virtual void PaintPicture(QPainter& painter) const = 0;
  virtual void PictureWasPainted(QPainter&) {}
  [[nodiscard]] virtual QRect CaptionRect() const = 0;
  // The picture is one of those that PaintPicture draws now.
  [[nodiscard]] virtual bool PaintsPicture(const TPicture& picture) const = 0;
  [[nodiscard]] virtual bool HasOverLook() const = 0;
  // That point of its rectangle belongs to the button.
  [[nodiscard]] virtual bool Hit(QPoint) const { return true; }
  virtual void CaptionChanged() {}
  virtual void ApplyAutoSize() {}

  // The icon's place, empty if none shows.
  [[nodiscard]] QRect ShownIconRect() const;
  void MouseAt(QPoint point);
  TButtonProperty<TButtonCheck> FCheckState{*this, FLook.CheckState, TButtonChange::Checked};

  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

  // TButtonOwner
  void ValueChanged(TButtonChange change) override;
  [[nodiscard]] bool Shows(const TPicture& picture) const override;
  void PictureSet(bool shown) override;

 private:
  void Repaint();
  void SetIconState(TButtonIconState state);
  void FollowIcon();
  void SetOver(bool over);
  void EnterOrLeave(bool inside);
  void Press(QPoint point);
  void CancelPress();
  void SpaceReleased();
  void EnabledChanged();
  [[nodiscard]] QColor TextColor(const QRect& text) const;

  // FInside follows the mouse always. FMood.Over is what the button shows of it: not while it is disabled,
  // and not from the moment it is made Selected until the mouse moves on it again.
  TButtonMood FMood;
  QPoint FMouse;          // where the mouse was last
  bool FInside = false;   // and whether that was on the button
  bool FPressed = false;  // a press goes on, by mouse
  bool FSpaceDown = false;
  bool FFoldHeader = false;
  bool FReading = false;
};
