// Small things that several forms share about their lists. Main thread.
#pragma once

#include <QCheckBox>

#include <functional>
#include <optional>

class TCustomListView;
class TdxBarPopupMenu;

// Gives the last column the width that the other columns leave, at least 5 pixels; nothing if they leave
// none. A list without rows keeps the width of a vertical scroll bar free, one with rows does not.
void FitLastColumn(TCustomListView& list);

// Takes from the first column what the columns exceed that many pixels by.
void FitFirstColumn(TCustomListView& list, int room);

// Widens the columns that would cut their captions, a sort mark beside them, and keeps them so wide. The
// first one gives way as far as they would take more than `room` pixels together and more than before.
void HoldCaptions(TCustomListView& list, int room);

// Gives the list its popup menu: where the mouse is, whatever row is under it, and by the menu key or
// Shift+F10 at the focused row. Takes the list's OnContextPopup and OnKeyDown.
void AssignPopup(TCustomListView& list, TdxBarPopupMenu& popup);

// The box in a list's header that stands for the boxes of all rows. A child of the list, which owns it. A
// click on it gives every row its state; what it shows follows the rows only where told.
class THeaderCheckBox : public QCheckBox {
 public:
  THeaderCheckBox(TCustomListView& list, const QString& name);

  // Runs after a click on the box.
  std::function<void(bool checked)> OnClick;
  // The space bar, which switches a row's box, was released.
  std::function<void()> OnSpace;

  // The checked rows. The box is marked exactly if that is all of them, as it is with no rows at all.
  int CountChecked();

  // Every row and the box, without OnClick.
  void CheckAll(bool checked);
  void Invert();

  // Puts the box on the header, at this height in it or in the middle, and six blanks before the first
  // caption, once, as room for it.
  void Place(std::optional<int> top = std::nullopt);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void CheckRows(bool checked);

  TCustomListView& FList;
  bool FRoomMade = false;
};
