// The Contents tab, today its place in the row of tabs: it has no list yet, its tab is off, and it keeps what
// an analysis tells of folder sizes. Main thread.
#pragma once

#include <QHash>
#include <QObject>

#include "views/main/ResultTab.h"

class TContentsTab : public QObject, public TResultTab {
 public:
  TContentsTab(const TTabParts& parts, QWidget& panel);

  // The folders that lead a result go into the sizes.
  void Fill(const TTallyscopeScan& scan, const QStringList& targets) override;

  // The computer, while no folder is shown.
  [[nodiscard]] TSubject Subject() const override;

  // Bytes below each folder that was measured, by full path without a delimiter at its end.
  [[nodiscard]] const QHash<QString, qint64>& FolderSizes() const { return FFolderSizes; }

 private:
  TTabParts FParts;
  QHash<QString, qint64> FFolderSizes;
};
