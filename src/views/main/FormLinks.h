// How the two forms know each other: the wizard knows the main form by TResultForm, the main form knows the
// wizard by TScanForm. The program joins them at start. Main thread.
#pragma once

#include <QString>
#include <QStringList>

class TDialogs;
class TDriveList;
class TLanguage;
class TTallyscopeScan;
class QWidget;

// The main form, as the wizard sees it.
class TResultForm {
 public:
  virtual ~TResultForm() = default;

  [[nodiscard]] virtual const TDriveList& Drives() const = 0;
  [[nodiscard]] virtual const TLanguage& Language() const = 0;
  [[nodiscard]] virtual TDialogs& Dialogs() const = 0;

  // "Analyzing" and "Completed" in the user's language, and the caption of the Download Directory tab.
  [[nodiscard]] virtual QString AnalyzingText() const = 0;
  [[nodiscard]] virtual QString CompletedText() const = 0;
  [[nodiscard]] virtual QString DownloadsCaption() const = 0;

  // Fills the result tabs from the thread's lists, which must be at rest; handles waiting input meanwhile.
  virtual void FillResults(const TTallyscopeScan& scan, const QStringList& targets) = 0;

  // The wizard was closed while a scan ran: the drive list takes its width again.
  virtual void ScanAbandoned() = 0;

  // The window that the wizard is modal to.
  [[nodiscard]] virtual QWidget& Window() = 0;
};

// The wizard, as the main form sees it.
class TScanForm {
 public:
  virtual ~TScanForm() = default;

  // The paths of the next scan, or of the one that runs. With any of them the form begins at once when it is
  // shown. A scan that ends or is stopped leaves none.
  [[nodiscard]] virtual const QStringList& Targets() const = 0;
  virtual void AddTarget(const QString& path) = 0;
  virtual void ClearTargets() = 0;

  // Puts the user's language onto the form, before it is first shown.
  virtual void ApplyLanguage() = 0;

  // Shows the form over the main form and returns when it has closed.
  virtual void ShowModal() = 0;
  [[nodiscard]] virtual bool Showing() const = 0;

  // The thread with the lists of the last scan, if that came to its end and nothing has begun since: null
  // before the first, while one runs and after one that was stopped.
  [[nodiscard]] virtual const TTallyscopeScan* Result() const = 0;

  // Chooses what the first page offers: one folder, or the check marks of the drives that hold the paths.
  virtual void PreselectFolder(const QString& folder) = 0;
  virtual void PreselectDrives(const QStringList& paths) = 0;
};
