// The older form of the image button: left, middle and right pictures for each state. It has no icon for the
// disabled one. Main thread.
#pragma once

#include "controls/buttons/CustomImageButton.h"

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
