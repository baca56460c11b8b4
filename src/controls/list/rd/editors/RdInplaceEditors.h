// The two editors that stand in cells: a line editor and a drop-down list. Main thread.
#pragma once

#include "controls/skin/Colors.h"

#include <QLineEdit>
#include <QListWidget>

#include <functional>

// Of an edit cell.
class TkInplaceEdit : public QLineEdit {
 public:
  explicit TkInplaceEdit(QWidget* parent);

  // The focus has gone elsewhere. Where it goes with the whole window this comes from the event loop: within
  // a change of the active window nobody may destroy that.
  std::function<void()> OnExit;
  // A key before the editor takes it; true keeps it from the editor.
  std::function<bool(QKeyEvent& event)> OnKey;

 protected:
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;
};

// Colours of the lines; clDefault is the control's own.
struct TkComboColors {
  TColor ListFrameColor = clWindowFrame;
  TColor ItemHotBgColor = clHighlight;
  TColor ItemHotColor = clHighlightText;
  TColor ItemBgColor = clWindow;
  TColor ItemColor = clDefault;
};

// The drop-down list of combo box cells. The box itself is the cell that the list view has painted: only the
// lines show.
class TkInplaceComboBox : public QListWidget {
 public:
  explicit TkInplaceComboBox(QWidget* parent);

  // The list was closed, by a choice or without one.
  std::function<void()> OnCloseUp;

  void SetColors(const TkComboColors& colors);
  void SetItems(const QStringList& items);
  [[nodiscard]] QStringList Items() const;

  // The chosen line, -1 for none.
  [[nodiscard]] int ItemIndex() const { return FItemIndex; }
  void SetItemIndex(int index) { FItemIndex = index; }

  // Shows the lines below the box, a rectangle of the screen; above it where there is no room.
  void DropDown(const QRect& box);
  void CloseUp() { hide(); }

  // The tip of a line that is wider than the list, empty for none.
  [[nodiscard]] QString HintAt(const QPoint& pos) const;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Choose(int line);

  int FItemIndex = -1;
  int FHintIndex = -1;  // the line that the tip is of
};
