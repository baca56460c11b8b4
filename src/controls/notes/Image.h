// The picture control. Main thread.
#pragma once

#include <QWidget>

#include "controls/picture/Picture.h"

class QIcon;

// Shows one picture at its top left corner, or stretched over the control. Its preferred size is the
// picture's.
class TImage : public QWidget {
 public:
  explicit TImage(QWidget* parent = nullptr);

  [[nodiscard]] const TPicture& Picture() const { return FPicture; }
  void SetPicture(const TPicture& picture);

  // The icon rendered at that size in device-independent pixels.
  void SetIcon(const QIcon& icon, QSize size) { SetPicture(TPicture::FromIcon(icon, size)); }

  [[nodiscard]] bool Stretch() const { return FStretch; }
  void SetStretch(bool stretch);

  [[nodiscard]] QSize sizeHint() const override { return FPicture.Size(); }
  [[nodiscard]] QSize minimumSizeHint() const override { return {}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  TPicture FPicture;
  bool FStretch = false;
};
