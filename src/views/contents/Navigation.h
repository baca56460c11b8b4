// The ways through the folders of the Contents tab, and the visits behind Back and Forward. Main thread.
#pragma once

#include <QString>
#include <QStringList>

class TContentsFill;
class TMainCommands;
class TRzShellCombo;
class TRzShellList;

// Two stacks of paths without a place in them: Back takes the last path of the one and puts the present one
// on the other. Who records what differs by the way of going: a double click the folder left, a pick in the
// combo the one above the folder reached. Only direct repeats are left out, and not for all ways. Empty is
// the computer level. A way ends a fill before it moves the list, and sets the three commands after.
class TNavigation {
 public:
  // All of them outlive this.
  TNavigation(TRzShellList& list, TRzShellCombo& combo, TContentsFill& fill, TMainCommands& commands);

  void lbtnBackClick();
  void lbtnForwardClick();
  void lbtnUpClick();

  // The combo has gone to another folder.
  void RzShellCombo1Change();

  // Before the list goes into the selected folder. False, with nothing done, if the selected row is none.
  bool ShellListContentDblClick();

  // Into the folder, by command; behind ShellListContentDblClick.
  void OpenFolder(const QString& path);

  void ClearHistory();

 private:
  void Enable(const char* command, bool enabled);
  void EnableAfterEntering();

  TRzShellList& FList;
  TRzShellCombo& FCombo;
  TContentsFill& FFill;
  TMainCommands& FCommands;
  QStringList FBackHistory;
  QStringList FForwardHistory;
};
