#include "views/topfiles/TopFilesTab.h"

#include <QVBoxLayout>

#include <algorithm>

#include "controls/list/ListView.h"
#include "platform/Messages.h"
#include "scan/UnitScan.h"
#include "support/ShellRoutines.h"
#include "views/commands/Commands.h"
#include "views/main/ResultTab.h"
#include "views/rows/ListHelpers.h"

TTopFilesTab::TTopFilesTab(const TTabParts& parts, QWidget& panel)
    : QObject(&panel),
      FParts(parts),
      lvTopFile(new TListView(&panel)),
      FFileRows(*lvTopFile),
      FFileOperations(parts, kTopFilesTab, FFileRows) {
  BuildList();
  BuildHeaderBox();
  auto* column = new QVBoxLayout(&panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(lvTopFile);
}

void TTopFilesTab::BuildList() {
  lvTopFile->setObjectName(u"lvTopFile"_qs);
  lvTopFile->SetOptions({.CheckBoxes = true});
  lvTopFile->SetSmallImages(&FParts.Images.cxmglstlvFile);
  AddResultColumns(*lvTopFile, kTopFileRules);
  NameSortDirections(*lvTopFile, FParts.State.FLanguage);

  lvTopFile->OnSelectItem = [this](TListItem* item, bool selected) { lvTopFileSelectItem(item, selected); };
  lvTopFile->OnColumnClick = [this](TListColumn* clicked) { lvTopFileColumnClick(*clicked); };
  lvTopFile->OnCompare = [this](TListItem* item1, TListItem* item2, int& result) {
    result = FTopFileSort.Compare(*item1, *item2);
  };
  lvTopFile->OnMouseUp = [this](Qt::MouseButton, Qt::KeyboardModifiers, int x, int y) {
    lvTopFileMouseUp(x, y);
  };
  lvTopFile->OnDblClick = [this] { Open(); };
  lvTopFile->OnDeletion = [forget = FFileRows.Forgetter()](TListItem* item) {
    forget(*item);
    FreeResultRow(*item);
  };
  AssignPopup(*lvTopFile, FParts.Commands.Bars().Popup(u"pmTop100"_qs));
}

void TTopFilesTab::BuildHeaderBox() {
  CheckBox_All = new THeaderCheckBox(*lvTopFile, u"CheckBox_All"_qs);
  CheckBox_All->OnClick = [this](bool checked) { CheckBox_AllClick(checked); };
  CheckBox_All->OnSpace = [this] { CountBoxes(); };
}

void TTopFilesTab::FormShow() {
  FitLastColumn(*lvTopFile);
  CheckBox_All->Place();
}

void TTopFilesTab::FormResize(int growth) {
  SpreadResultColumns(*lvTopFile, kTopFileRules, growth);
  FitLastColumn(*lvTopFile);
}

void TTopFilesTab::Reset() {
  lvTopFile->Clear();
  ApplyEnableRules(FParts.Commands, kTopFilesTab, TTabEvent::Reset);
}

// Rows of the result before may stand here still, where a reset was followed by a look at this tab.
void TTopFilesTab::Fill(const TTallyscopeScan& scan, const QStringList& targets) {
  lvTopFile->Clear();
  FFileRows.SetRoots(targets);
  DropImagesFrom(FParts.Images.cxmglstlvFile, kTopFileRules.OwnImages);
  for (int i = 0; i < std::min(kTopFileRules.RowLimit, scan.Files().Count()); ++i) {
    KeepSize(*AddFileRow(*lvTopFile, FParts.Images.cxmglstlvFile, scan.Files()[i]), scan.Files()[i]);
    if (i % kTopFileRules.RowsPerPump == 0) PumpMessages();
  }
  FTopFileSort.SetStartFlag();
  lvTopFileColumnClick(lvTopFile->Columns()[kSizeColumn]);
}

void TTopFilesTab::Activate() {
  if (lvTopFile->Items().Count() == 0) Refill();
  lvTopFile->SetSelected(nullptr);
  FitLastColumn(*lvTopFile);
}

// Unlike those of a fill, these rows keep the result's order and have no size: a sort by it leaves them so.
void TTopFilesTab::Refill() {
  // Null after a scan that was stopped: its lists are never read.
  const TTallyscopeScan* scan = FParts.Host.ScanForm()->Result();
  if (scan == nullptr) return;
  DropImagesFrom(FParts.Images.cxmglstlvFile, kTopFileRules.OwnImages);
  for (int i = 0; i < std::min(kTopFileRules.RowLimit, scan->Files().Count()); ++i)
    AddFileRow(*lvTopFile, FParts.Images.cxmglstlvFile, scan->Files()[i]);
}

int TTopFilesTab::RowCount() const {
  return lvTopFile->Items().Count();
}

void TTopFilesTab::lvTopFileColumnClick(TListColumn& column) {
  FTopFileSort.ColumnClick(*lvTopFile, column);
}

void TTopFilesTab::lvTopFileSelectItem(const TListItem* item, bool selected) {
  ApplyEnableRules(FParts.Commands, kTopFilesTab, TTabEvent::RowSelected, selected);
  TStatusLine& line = FParts.StatusLine;
  if (!selected) return line.ShowCount(RowCount());
  line.SetIcon(GetFileIconHandle(ResultPath(*item)));
  line.ShowDetails();
  line.SetLines(item->Caption(), item->SubItems().Text(kTypeColumn - 1),
                line.SizeLine(item->SubItems().Text(kSizeColumn - 1)));
}

// A click beside the boxes switches two commands off and counts nothing.
void TTopFilesTab::lvTopFileMouseUp(int x, int y) {
  ApplyEnableRules(FParts.Commands, kTopFilesTab, TTabEvent::MouseUp);
  if ((lvTopFile->GetHitTestInfoAt(x, y) & htOnStateIcon) != 0) CountBoxes();
}

void TTopFilesTab::CountBoxes() {
  ApplyEnableRules(FParts.Commands, kTopFilesTab, TTabEvent::BoxesCounted, CheckBox_All->CountChecked() > 0);
}

void TTopFilesTab::CheckBox_AllClick(bool checked) {
  ApplyEnableRules(FParts.Commands, kTopFilesTab, TTabEvent::HeaderBox, checked);
}

void TTopFilesTab::SelectAll() {
  CheckBox_All->CheckAll(true);
}

void TTopFilesTab::DeselectAll() {
  CheckBox_All->CheckAll(false);
}

void TTopFilesTab::InvertSelection() {
  CheckBox_All->Invert();
}
