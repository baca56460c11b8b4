// The image buttons: with a picture for each state, drawn in nine slices, and with three. Main thread.
#pragma once

#include <QImage>

#include "controls/buttons/CustomImageButton.h"

class TRdImageButton : public TCustomImageButton {
  TButtonPictures FPictures;
  TPicture FImageRange;
  bool FAutoSize = false;
  bool FAutoSizeByText = false;

 public:
  explicit TRdImageButton(QWidget* parent = nullptr);

  TButtonEvent OnCaptionChanged;
  // The picture is painted, texts and icons are not. Must not delete the button.
  std::function<void(QPainter&)> OnPaintImage;

  // The size follows the caption, or with AutoSize the picture that shows, if there is one. In a layout it is
  // the preferred size.
  TButtonProperty<bool> AutoSize{*this, FAutoSize};
  TButtonProperty<bool> AutoSizeByText{*this, FAutoSizeByText};

  TButtonProperty<TColor> FontHoverColor{*this, FLook.FontHoverColor};
  TButtonProperty<TButtonAlign> ButtonCaptionAlignment{*this, FLook.ButtonCaptionAlignment};
  TButtonProperty<int> TextLeftMargin{*this, FLook.TextLeftMargin};
  TButtonProperty<bool> WordWrap{*this, FLook.WordWrap};
  TButtonProperty<TButtonAlign> IconAlign{*this, FLook.IconAlign};
  TButtonPicture UpDisableIcon{*this, FLook.Up.Disable};
  TButtonPicture DnDisableIcon{*this, FLook.Dn.Disable};

  // Without slices, a square picture of at least 15 seeds ImageOption with a third of its size.
  TButtonPicture ImageNormal{*this, FPictures.ImageNormal, [this] { SeedSlices(); }};
  TButtonPicture ImageDown{*this, FPictures.ImageDown};
  TButtonPicture ImageOver{*this, FPictures.ImageOver};
  TButtonPicture ImageDisabled{*this, FPictures.ImageDisabled};
  TButtonPicture ImageSelected{*this, FPictures.ImageSelected};
  // Black pixels, and all outside of it, are not part of the button: what the mouse does there reaches what
  // lies beneath. An empty or wholly transparent one is no limit.
  TButtonPicture ImageRange{*this, FImageRange, [this] { ReadRange(); }};
  // Set to be not empty, slices without a size take a third of ImageNormal.
  TDesignRect ImageOption;

  TButtonProperty<TButtonCheck>& CheckState = FCheckState;
  TButtonPicture CheckBoxGrayedImage{*this, FLook.CheckBoxGrayedImage};
  TButtonProperty<TCheckAlignY> CheckBoxAlignY{*this, FLook.CheckBoxAlignY};
  TButtonProperty<int> CheckBoxOffsetY{*this, FLook.CheckBoxOffsetY};

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void PaintPicture(QPainter& painter) const override;
  void PictureWasPainted(QPainter& painter) override;
  [[nodiscard]] QRect CaptionRect() const override;
  [[nodiscard]] bool PaintsPicture(const TPicture& picture) const override;
  [[nodiscard]] bool HasOverLook() const override { return !FPictures.ImageOver.Empty(); }
  [[nodiscard]] bool Hit(QPoint point) const override;
  void CaptionChanged() override;
  void ApplyAutoSize() override;

 private:
  void SeedSlices();
  void FollowSlices();
  void ReadRange();
  [[nodiscard]] QSize TextSize() const;
  [[nodiscard]] bool PassBeneath(QMouseEvent& event);
  [[nodiscard]] QWidget* WidgetBeneath(QPoint global);

  QImage FRange;               // the pixels of ImageRange; null for no limit
  QPointer<QWidget> FBeneath;  // has been pressed through the button
};

// The older form: left, middle and right pictures for each state. It has no icon for the disabled one.
class TRdImageButtonEx : public TCustomImageButton {
  TSlicedPictures FPictures;

 public:
  explicit TRdImageButtonEx(QWidget* parent = nullptr) : TCustomImageButton(parent) {
    FLook.GrayIcon = false;
  }

  TButtonPicture ImageNormalMiddle{*this, FPictures.Normal.Middle};
  TButtonPicture ImageNormalLeft{*this, FPictures.Normal.Left};
  TButtonPicture ImageNormalRight{*this, FPictures.Normal.Right};
  TButtonPicture ImageDisabledMiddle{*this, FPictures.Disabled.Middle};
  TButtonPicture ImageDisabledLeft{*this, FPictures.Disabled.Left};
  TButtonPicture ImageDisabledRight{*this, FPictures.Disabled.Right};
  TButtonPicture ImageDownMiddle{*this, FPictures.Down.Middle};
  TButtonPicture ImageDownLeft{*this, FPictures.Down.Left};
  TButtonPicture ImageDownRight{*this, FPictures.Down.Right};
  TButtonPicture ImageOverMiddle{*this, FPictures.Over.Middle};
  TButtonPicture ImageOverLeft{*this, FPictures.Over.Left};
  TButtonPicture ImageOverRight{*this, FPictures.Over.Right};
  TButtonProperty<TButtonAlign> ButtonCaptionALignment{*this, FLook.ButtonCaptionAlignment};

 protected:
  void PaintPicture(QPainter& painter) const override;
  [[nodiscard]] QRect CaptionRect() const override;
  [[nodiscard]] bool PaintsPicture(const TPicture& picture) const override;
  // Even without pictures: the middle of the normal set then gives way.
  [[nodiscard]] bool HasOverLook() const override { return true; }
};
