// Editing in the cells of a TRdListView: opens the line editor or the drop-down list on a cell and writes
// what they give back to it. Main thread.
#pragma once

#include "controls/list/rd/editors/InplaceComboBox.h"
#include "controls/list/rd/editors/InplaceEdit.h"

#include <QPoint>

#include <memory>
#include <optional>

class TRdListView;
class TkListItem;

class TRdEditors {
 public:
  explicit TRdEditors(TRdListView& list);
  ~TRdEditors();

  // Opens the editor of an edit or combo box cell, if the point is in its band or there is none. The row
  // becomes the selected and focused one. False leaves all editors hidden.
  bool Open(TkListItem& item, int column, std::optional<QPoint> pos, bool bothButtons);
  [[nodiscard]] bool Shown() const { return FEdit->isVisible() || FComboBox->isVisible(); }

  // Writes the text to the cell and hides the editors. Throws EListError if the row has no such cell.
  void Hide();
  // Hides them without a word to the cell.
  void Drop();

  [[nodiscard]] TkInplaceEdit& Edit() { return *FEdit; }
  [[nodiscard]] TkInplaceComboBox& ComboBox() { return *FComboBox; }

 private:
  void OpenEdit(const QRect& band, const QString& text, int alignment);
  void OpenComboBox(const QRect& band, const QString& text);
  bool EditKey(QKeyEvent& event);
  void EditChanged();
  void ExitEdit();
  void CloseUp();
  void ComboBoxChanged(TkListItem& item);
  void Write(const QString& text, const char* error);
  // Runs a step of a gesture: its error goes to OnWriteLog, as no caller could catch it.
  template <typename Step>
  void Guarded(Step step);
  void Repaint(int column);

  TRdListView& FList;
  std::unique_ptr<TkInplaceEdit> FEdit;
  std::unique_ptr<TkInplaceComboBox> FComboBox;
  int FColumn = -1;
  int FSavedIndex = -1;  // the line on opening
  bool FExiting = false;
};
