// From gestures to acts: presses, releases and keys on the rows of a list, the rules of selecting (one,
// toggled, a range from the anchor) and the letters typed ahead. Knows no window; the list hands it what was
// hit.
//
// Each act may tell events, whose handlers may do anything to the list: rows are followed as objects, and
// after the list itself is gone nothing more is done.
//
// From a press to the bits: Press finds box or row, PressRow and Apply choose the rule (SelectOnly, Toggle,
// SelectRange), ChangeState of the rows changes the bits of one row at a time and tells the list of each, and
// the list tells its events. A new gesture of the keyboard is a case of Key, and of TargetOf if it moves.
#pragma once

#include "controls/list/layout/ListLayout.h"
#include "controls/list/model/ListItems.h"

#include <Qt>

#include <functional>

class TRowStates;

// What the mouse and the keys need of a list. The row host implements it; tests may without a window.
class TRowInputHost {
 public:
  virtual ~TRowInputHost() = default;

  [[nodiscard]] virtual const TListViewOptions& Options() const = 0;
  [[nodiscard]] virtual TListItems& InputItems() = 0;

  [[nodiscard]] virtual int TopIndex() const = 0;
  virtual void SetTopIndex(int row) = 0;
  [[nodiscard]] virtual int RowsPerPage() const = 0;
  virtual void MakeRowVisible(int row, bool partialOk) = 0;
  // Steps to the right, or to the left below 0.
  virtual void ScrollHorz(int steps) = 0;

  // The caption that type-ahead looks for.
  [[nodiscard]] virtual QString RowText(int row) const = 0;
  // A row's check box is switched by the user.
  virtual void SwitchCheck(TListItem& item, bool checked) { item.SetState(kRowChecked, checked); }
};

// The letters typed in quick succession, and the row they lead to.
class TTypeAhead {
 public:
  // Adds letters typed at a time (milliseconds); those older than pauseMs before it are forgotten.
  void Add(const QString& text, qint64 now, qint64 pauseMs);

  // The first of count rows that begins with the letters, without regard to case: from the current row on, or
  // from the next one if a single letter, maybe repeated, was typed. The search goes round; -1 for none.
  [[nodiscard]] int Find(int count, int current, const std::function<QString(int row)>& text) const;

 private:
  QString FLetters;
  qint64 FLastTyped = 0;
};

class TRowInput {
 public:
  explicit TRowInput(TRowInputHost& host) : FHost(host) {}

  // A button goes down, anywhere on the rows; clicks: with its release it makes a click.
  void BeginPress(bool clicks) {
    FCollapse = nullptr;
    FClicks = clicks;
  }
  // What the press does. Returns true if it switched a check box, which leaves the selection alone.
  bool Press(const THit& hit, Qt::MouseButton button, Qt::KeyboardModifiers shift);
  // The release of the left button. True if it ends a click.
  bool Release();
  // The release went elsewhere.
  void LosePress() { BeginPress(false); }
  // The rows are others, or the row goes: the release changes no selection.
  void KeepSelection() { FCollapse = nullptr; }
  void Forget(const TListItem& item) {
    if (FCollapse == &item) FCollapse = nullptr;
  }

  // A key that moves, selects, checks or scrolls. False for a key that is none of these.
  bool Key(int key, Qt::KeyboardModifiers shift);
  // Typed letters look for a row whose caption begins with them. False if the text holds none.
  bool Type(const QString& text, qint64 now);

  // The row alone: the others are deselected first. It takes focus and anchor.
  void SelectOnly(TListItem& item);
  void DeselectAll();

 private:
  [[nodiscard]] TListItems& Items() const { return FHost.InputItems(); }
  [[nodiscard]] TRowStates& States() const { return Items().Owner().RowStates(); }
  [[nodiscard]] TEventScope Scope() const { return TEventScope(Items().Owner().Life()); }
  [[nodiscard]] int FocusedRow() const;
  [[nodiscard]] TListItem* AnchorItem() const;

  [[nodiscard]] bool OnCheckBox(const THit& hit) const;
  void PressRow(TListItem& item, Qt::MouseButton button, Qt::KeyboardModifiers shift);

  // What Ctrl and Shift make of a key's or click's move to the row; ctrlFocuses: Ctrl alone moves the focus
  // without selecting, as for keys, else it toggles, as for clicks.
  void Apply(TListItem& item, Qt::KeyboardModifiers shift, bool ctrlFocuses);
  void Toggle(TListItem& item);
  // From the anchor to the row, alone or in addition to what is selected. The anchor stays.
  void SelectRange(TListItem& item, bool add);
  void SelectAll();
  // The rows from first to last are left alone.
  void DeselectOutside(int first, int last);
  void ChangeAll(const std::vector<TListItem*>& items, unsigned bits, unsigned mask);
  [[nodiscard]] std::vector<TListItem*> SelectedItems() const;

  [[nodiscard]] int TargetOf(int key) const;
  [[nodiscard]] int PageTarget(int from, int direction) const;
  bool MoveTo(int row, Qt::KeyboardModifiers shift);
  bool Space(Qt::KeyboardModifiers shift);
  void SwitchChecks(TListItem& item);

  TRowInputHost& FHost;
  TTypeAhead FTypeAhead;
  // The row is forgotten as it goes (Forget), so the pointer is good whenever it is not null.
  // What the release is to do: select this row alone, which was pressed while selected among others; click.
  TListItem* FCollapse = nullptr;
  bool FClicks = false;
};
