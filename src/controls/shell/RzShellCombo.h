// The folder of a TRzShellList as a box: it shows the path, drops down the ways to other folders and takes a
// typed path.
//
// The rows are the computer, the folders above the one shown, this folder, and then the volumes, the home
// folder and those for the desktop, documents and downloads as far as they are there. Enter goes to the typed
// path, "~" being the home folder and a relative one beginning at the folder shown. A path that is no folder
// stays as typed, in another colour and marked as not found, and the list stays where it is; Escape shows the
// list's path again. What is there is looked up on threads: Enter is answered a moment later, or never by a
// server that is gone, and whatever the user or the list does meanwhile calls it off.
#pragma once

#include "controls/shell/ShellListing.h"

#include <QComboBox>
#include <QString>

#include <functional>

class TRzShellList;

// Main thread.
class TRzShellCombo : public QComboBox {
 public:
  explicit TRzShellCombo(QWidget* parent = nullptr);

  // Linked, each follows the other. The list outlives the combo or is taken back with null.
  void SetShellList(TRzShellList* list);

  // Of the list; empty is the computer level.
  [[nodiscard]] QString Path() const;
  void SetPath(const QString& path);

  // The typed path is no folder.
  [[nodiscard]] bool NotFound() const { return FNotFound; }

  // In the user's language.
  void SetTexts(const QString& computer, const QString& notFound);

  // The user has gone to another folder by this box, and the list shows it.
  std::function<void()> OnChange;

  void showPopup() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddPlace(const QString& name, const QString& path, int depth);
  void AddAncestors();
  void AddShortcuts();
  void ShowPath();
  void GoToTyped();
  void Go(const QString& path);
  void MarkNotFound(bool notFound);

  TRzShellList* FList = nullptr;
  QString FComputer;
  QString FNotFoundText;
  bool FNotFound = false;
  size_t FShortcuts = 0;  // that have a row
  TDetachedTask FShortcutLook;
  TDetachedTask FTypedLook;
};
