// Where an exception ends that nobody has caught: one place for every event handler, posted message and fill
// of the program. It is told in a report that the user can copy, and the program goes on. Nothing is logged
// or sent, and a crash stays a crash.
//
// A fault passes three hands: notify catches it, Take drops it or posts it, Report shows it. Only the last
// makes a window, and only on the main thread.
#pragma once

#include <QApplication>
#include <QPointer>

class QPlainTextEdit;
class TLanguage;

// Sets `handled` for the texts of a few faults of which the user is not told. It asks whether the whole text
// lies within one of the known ones, not the other way round.
void mdxcptnhndlr1Exception(const QByteArray& text, bool& handled);

// The application object of the program. Main thread; events of other threads' objects are guarded too.
class TGuardedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  // Reports belong to this form and are in this language from now on; both outlive the message loop. Before,
  // they stand alone and are in English.
  void ReportOn(QWidget& form, const TLanguage& language);

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  void Take(const char* type, const char* text, const QEvent& event) noexcept;
  void Report(const QString& fault);
  void OpenReport();
  [[nodiscard]] QString Text(const QString& key, const QString& defaultText) const;

  // Both null until ReportOn.
  QWidget* FForm = nullptr;
  const TLanguage* FLanguage = nullptr;
  QPointer<QPlainTextEdit> FReport;  // while a report shows; what happens meanwhile is added to it
};
