#include "views/contents/ContentsTab.h"

#include <QWidget>

#include <algorithm>

#include "scan/UnitScan.h"
#include "views/main/MainState.h"
#include "views/rows/ResultRows.h"

TContentsTab::TContentsTab(const TTabParts& parts, QWidget& panel) : QObject(&panel), FParts(parts) {}

void TContentsTab::Fill(const TTallyscopeScan& scan, const QStringList&) {
  for (int i = 0; i < std::min(kTopRules.RowLimit, scan.Folders().Count()); ++i) {
    const TFileInfoEx& record = scan.Folders()[i];
    const QString path = record.Path + record.Name;
    if (!FFolderSizes.contains(path)) FFolderSizes.insert(path, static_cast<qint64>(record.Size));
  }
}

TSubject TContentsTab::Subject() const {
  return {StorePicture::kComputer32, FParts.State.FLanguage.GetMessage(u"M_PC"_qs, u"My Computer"_qs),
          FParts.StatusLine.CountText(RowCount()), std::nullopt};
}
