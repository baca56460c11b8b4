// A control that paints a collection of positioned pictures. Main thread.
#pragma once

#include <QRect>
#include <QWidget>

#include "controls/notes/Collection.h"
#include "controls/picture/Picture.h"

// Where a picture lies in the control; the numbers are the stored ones.
enum class TImageAlign { None = 0, Top = 1, Bottom = 2, Left = 3, Right = 4, Client = 5, Custom = 6 };

// Bounds in device-independent pixels of the control.
struct TImageItem {
  static constexpr const char* kClassName = "TImageItem";

  QString Name;
  TPicture Picture;
  int Top = 0;
  int Left = 0;
  int Width = 0;
  int Height = 0;
  bool Stretch = false;
  TImageAlign Align = TImageAlign::None;
  bool Visible = true;
};

// The items of one control, painted in their order. Whoever changes an item afterwards calls the control's
// update().
class TImageCollection : public TCollection<TImageItem> {
 public:
  explicit TImageCollection(QWidget& owner) : FOwner(owner) {}

  // The new item stands at 0, 0 and takes the owner's size.
  TImageItem& Add();

 private:
  QWidget& FOwner;
};

// The rectangle of an item in a control of that client area.
[[nodiscard]] QRect ImageItemRect(const TImageItem& item, const QRect& client);

class TImageRect : public QWidget {
 public:
  explicit TImageRect(QWidget* parent = nullptr);

  [[nodiscard]] TImageCollection& Items() { return FItems; }
  [[nodiscard]] const TImageCollection& Items() const { return FItems; }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  TImageCollection FItems;
};
