// The one line on the terminal that shows how far a scan is: a bar and the path at hand.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

// Not shared between threads. It is told of each message of the scan and writes only when it is asked to.
class TProgressLine {
 public:
  using TWrite = std::function<void(const QByteArray&)>;

  // Writes go through the function, one call for each.
  explicit TProgressLine(TWrite write);

  // The words of WM_SCANPROGRESS.
  void TakeProgress(quintptr wparam, qintptr lparam);
  void SetPath(const QString& path) { FPath = path; }

  // What the line says now, in at most so many columns.
  [[nodiscard]] QString Text(int columns) const;

  // Writes the line over the one before, if anything of it has changed.
  void Draw(int columns);

  // Takes the line off the terminal.
  void Erase();

 private:
  void Show(const QString& text);
  [[nodiscard]] int Percent() const;

  TWrite FWrite;
  QString FPath;
  QString FShown;
  int FSteps = 1;
  int FStep = 0;
  int FPhase = 0;
};
