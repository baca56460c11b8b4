// A panel that a click on its header opens and closes, and the panel made of pictures that it is. Main
// thread.
#pragma once

#include <QPointer>
#include <QTimer>

#include <vector>

#include "controls/buttons/RdImageButton.h"
#include "controls/progress/PImageRect.h"

// Paints its Items, in their order, beneath the controls that stand on it.
class TRdImagePanel : public TImageRect {
 public:
  using TImageRect::TImageRect;
};

// A click on the header or a new IsOpen only starts the way; a few milliseconds later one step goes all of
// it, open to MaxHeight, closed to the header's height. Fold panels with the same parent that lie below go
// down as the panel grows and come back as it closes; those in a layout are left to the layout. A parent that
// is a fold panel itself grows along, and so does its own surroundings.
//
// While the panel is closed, what stands on it is hidden, so that Tab and assistive tools pass over it; what
// was hidden before stays so. A layout of the panel keeps clear of the header.
//
// Every handler may delete the panel.
class TRdFoldPanel : public TRdImagePanel {
  TRdImageButton* FButton;

 public:
  explicit TRdFoldPanel(QWidget* parent = nullptr);

  TButtonEvent OnOpened;
  TButtonEvent OnClosed;
  TButtonEvent OnTopButtonClick;

  // The header's own, under the panel's names.
  TButtonProperty<QString>& ButtonCaption = FButton->Caption;
  TButtonProperty<TButtonAlign>& ButtonCaptionALignment = FButton->ButtonCaptionAlignment;
  TButtonProperty<TColor>& ButtonDisabledFontColor = FButton->DisabledFontColor;  // clGrayText
  TButtonPicture& ButtonImageDown = FButton->ImageDown;
  TButtonPicture& ButtonImageNormal = FButton->ImageNormal;
  TButtonPicture& ButtonImageDisabled = FButton->ImageDisabled;
  TButtonPicture& ButtonImageOver = FButton->ImageOver;
  TButtonPicture& ExpandImage = FButton->ExpandImage;
  TButtonProperty<bool>& ShowCheckBox = FButton->ShowCheckBox;
  TButtonPicture& CheckBoxNormalImage = FButton->CheckBoxNormalImage;
  TButtonPicture& CheckBoxCheckedImage = FButton->CheckBoxCheckedImage;
  TButtonProperty<int>& CheckBoxOffset = FButton->CheckBoxOffset;
  TButtonEvent& CheckBoxOnClick = FButton->OnCheckBoxClick;
  TButtonPicture& IconUpNormal = FButton->UpNormalIcon;
  TButtonPicture& IconUpHover = FButton->UpHoverIcon;
  TButtonPicture& IconUpDown = FButton->UpDownIcon;
  TButtonPicture& IconDnNormal = FButton->DnNormalIcon;
  TButtonPicture& IconDnHover = FButton->DnHoverIcon;
  TButtonPicture& IconDnDown = FButton->DnDownIcon;
  TButtonProperty<int>& TextOffset = FButton->TextOffset;
  TButtonProperty<TButtonAlign>& IconAlign = FButton->IconAlign;
  TButtonProperty<bool>& IconVisible = FButton->IconVisible;
  TButtonProperty<int>& IconOffset = FButton->IconOffset;
  TButtonEvent& OnButtonMouseEnter = FButton->OnMouseEnter;
  TButtonEvent& OnButtonMouseLeave = FButton->OnMouseLeave;

  [[nodiscard]] bool Checked() const { return FButton->Checked(); }
  void SetChecked(bool checked) { FButton->SetChecked(checked); }
  [[nodiscard]] const QFont& ButtonCaptionFont() const { return FButton->font(); }
  void SetButtonCaptionFont(const QFont& font) { FButton->setFont(font); }
  // 25 at first. MinHeight follows, if it was the header's height.
  [[nodiscard]] int ButtonHeight() const { return FButton->height(); }
  void SetButtonHeight(int height);

  // False: a click on the header only tells OnTopButtonClick.
  [[nodiscard]] bool CanExpand() const { return FCanExpand; }
  void SetCanExpand(bool can) { FCanExpand = can; }

  // Setting it, to the present value too, has the next step settle the height and tell of it.
  [[nodiscard]] bool IsOpen() const { return FIsOpen; }
  void SetIsOpen(bool open);

  // The height of the open panel: what it was at its making, until it is set.
  [[nodiscard]] int MaxHeight() const { return FMaxHeight; }
  void SetMaxHeight(int height) { FMaxHeight = height; }
  // The header's height at its making, until it is set.
  [[nodiscard]] int MinHeight() const { return FMinHeight; }
  void SetMinHeight(int height) { FMinHeight = height; }
  // MaxHeight as it was when the header was last clicked to close, 0 before.
  [[nodiscard]] int OldHeight() const { return FOldHeight; }
  // What closing gives the parent back, 0 for no change.
  [[nodiscard]] int ParentHeight() const { return FParentHeight; }
  void SetParentHeight(int height);

  // Milliseconds that a gradual opening would take, and the pixels of each of its ticks. Told for those who
  // draw one; the panel itself goes all the way in one.
  [[nodiscard]] int ExpandTime() const { return FExpandTime; }
  void SetExpandTime(int milliseconds) { FExpandTime = milliseconds; }
  [[nodiscard]] int ExpandStep() const { return FExpandStep; }

  // The window that gets the panel's messages.
  [[nodiscard]] WId MsgHandle() const { return effectiveWinId(); }

  // The sub-component; its OnClick is the panel's.
  [[nodiscard]] TRdImageButton& Header() { return *FButton; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return {0, FButton->height()}; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  // A panel that went down, and where it stood before.
  struct TMoved {
    QPointer<TRdFoldPanel> Panel;
    int Top;
  };

  void HeaderClick();
  void Start();
  void Tick();
  void SettleClosed();
  void SettleOpen();
  void SetPanelHeight(int height);
  void ShowContent(bool show);
  [[nodiscard]] std::vector<TRdFoldPanel*> Siblings() const;
  [[nodiscard]] bool LiesBelow(const TRdFoldPanel& other) const;
  void CollectSiblings();
  [[nodiscard]] int FullHeight() const;
  void PlaceSiblings(int growth);
  void PlaceParent(int growth);
  void FollowContent(int height);

  QTimer FTimer;
  // Kept from the first opening to the end of a closing, so that panels that open one after another bring
  // each other back to the pixel.
  std::vector<TMoved> FTops;
  std::vector<QPointer<QWidget>> FHiddenContent;
  int FMaxHeight;
  int FMinHeight;
  int FOldHeight = 0;
  int FParentHeight = 0;
  int FTaken = 0;        // how much a parent that is a fold panel has grown for this one
  int FStartHeight = 0;  // before it began to grow
  int FExpandTime = 200;
  int FExpandStep = 0;
  bool FCanExpand = true;
  bool FIsOpen = false;
  bool FGrown = false;   // from the start of an opening to the end of a closing
  bool FFolded = false;  // from the end of a closing to the end of an opening
};

// From the first call on, fold panels are told to assistive tools. Later calls do nothing.
void TellAccessibilityOfFoldPanels();
