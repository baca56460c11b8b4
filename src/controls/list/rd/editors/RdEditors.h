// Editing in the cells of a TRdListView: opens the line editor or the drop-down list on a cell and writes
// what they give back to it. Main thread.
//
// The way of an edit: Open (by a press, a release or a key) shows the editor over the cell and tells that it
// opens; leaving the focus, Enter, a scroll, another press or Hide ends it by ExitEdit, or CloseUp of the
// drop-down list, which tell the end and write the cell. EditItem of the state is the truth: null means that
// nothing is being edited, whatever is still on the screen. Every event may clear it, so it is compared after
// each.
#pragma once

#include "controls/list/rd/RdListState.h"
#include "controls/list/rd/editors/RdInplaceEditors.h"

#include <QPoint>

#include <memory>
#include <optional>

class TRdListView;
class TkListItem;

class TRdEditors {
 public:
  explicit TRdEditors(TRdListView& list);
  ~TRdEditors();

  [[nodiscard]] const TRdEditState& State() const { return FState; }

  // Opens the editor of an edit or combo box cell, if the point is in its band or there is none. The row
  // becomes the selected and focused one. False leaves all editors hidden; so it does while one is being
  // left.
  bool Open(TkListItem& item, int column, std::optional<QPoint> pos, bool bothButtons);
  // By the release of a click.
  void OpenAtRelease(TkListItem& item, int column, const QPoint& pos);
  // The button is up: what was opened by the click is open for good.
  void EndGesture() { FState.EditActive = FState.EditStarted = false; }
  [[nodiscard]] bool Shown() const { return FEdit->isVisible() || FComboBox->isVisible(); }

  // Writes the text to the cell and hides the editors. Throws EListError if the row has no such cell.
  void Hide();
  // Hides them without a word to the cell.
  void Drop();
  // The row is gone: its editor has no cell any more, and is dropped once all that is going has gone.
  void Forget(const TkListItem& item);
  void DropForgotten();

  [[nodiscard]] TkInplaceEdit& Edit() { return *FEdit; }
  [[nodiscard]] TkInplaceComboBox& ComboBox() { return *FComboBox; }

 private:
  void OpenEdit(const QRect& band, const QString& text, int alignment);
  bool OpenComboBox(const QRect& band, const QString& text);
  bool EditKey(QKeyEvent& event);
  void EditChanged();
  void ExitEdit();
  void CloseUp();
  void ComboBoxChanged(TkListItem& item);
  void EndEdit();
  void Write(const QString& text, const char* error);
  // Runs a step of a gesture: its error goes to OnWriteLog, as no caller could catch it.
  template <typename Step>
  void Guarded(Step step);
  void Repaint(int column);

  TRdListView& FList;
  std::unique_ptr<TkInplaceEdit> FEdit;
  std::unique_ptr<TkInplaceComboBox> FComboBox;
  TRdEditState FState;
  int FColumn = -1;
  int FSavedIndex = -1;  // the line on opening
  // Leaving tells events and moves the focus, each of which may ask for leaving again.
  bool FExiting = false;
  // The edited row has gone; the editor follows as RowsChanged comes.
  bool FForgotten = false;
};
