// The picture control, and the one that shows one of the pictures it holds. Main thread.
#pragma once

#include <QRect>
#include <QWidget>

#include "controls/notes/Collection.h"
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

struct TPictureItem {
  static constexpr const char* kClassName = "TPictureItem";

  QString Name;
  TPicture Picture;
};

using TPictureCollection = TCollection<TPictureItem>;

// Holds its pictures by value, each shared with whoever gave it. Clear of the items leaves the picture that
// shows.
class TImageNote : public TImage {
 public:
  explicit TImageNote(QWidget* parent = nullptr) : TImage(parent) {}

  [[nodiscard]] TPictureCollection& Items() { return FItems; }
  [[nodiscard]] const TPictureCollection& Items() const { return FItems; }

  // The item shown, -1 for none. Setting any other index out of range is ignored.
  [[nodiscard]] int ImageIndex() const { return FImageIndex; }
  void SetImageIndex(int index);

  // Shown when the mouse rests on the control, with ShowHint on, which it is not at first.
  [[nodiscard]] const QString& Hint() const { return FHint; }
  void SetHint(const QString& hint);
  [[nodiscard]] bool ShowHint() const { return FShowHint; }
  void SetShowHint(bool show);

  // While the form is loading, ImageIndex is stored and shows nothing yet.
  void SetLoading(bool loading) { FLoading = loading; }

  // Keeps the bounds that the control has now: every later change of size is undone.
  [[nodiscard]] bool Locked() const { return FLocked; }
  void SetLocked(bool locked);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  TPictureCollection FItems;
  int FImageIndex = -1;
  QString FHint;
  bool FShowHint = false;
  bool FLoading = false;
  bool FLocked = false;
  QRect FLockedBounds;
};
