// The time in which a delete or move runs, with the window alive: it handles waiting input now and then, and
// what arrives there must not meet a list that is half way through. Main thread.
#pragma once

#include <QObject>
#include <QPointer>

class QEvent;
class QProgressDialog;
class QWidget;
class TFileMove;
class TLanguage;
class TMainCommands;

// From its making on, every command is dropped. From Begin on, once the user has answered, so is everything
// that he does with mouse and keys, but for the box that tells of a long copy. Closing the window passes, and
// ends the work after the row at hand.
class TFileWork : public QObject {
 public:
  TFileWork(TMainCommands& commands, QWidget& window, const TLanguage& language);
  ~TFileWork() override;

  void Begin();

  // No further row is to be worked on: the window was closed, or the user cancelled a copy.
  [[nodiscard]] bool Ended() const { return FEnded; }

  // Waits for the end of a move, which an end of the work stops. One that takes longer than a moment leaves
  // the window alive, and after a second a box tells how far it is. True if the entry was moved.
  [[nodiscard]] bool Await(TFileMove& move, const QString& name);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool IsInProgressBox(QObject* watched) const;
  void ShowProgress(TFileMove& move, const QString& name);

  TMainCommands& FCommands;
  QWidget& FWindow;
  const TLanguage& FLanguage;
  QPointer<QProgressDialog> FProgressBox;
  bool FBegun = false;
  bool FEnded = false;
};
