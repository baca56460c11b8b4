#include "views/TopFilesTab.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include <algorithm>

#include "controls/list/ListView.h"
#include "platform/Messages.h"
#include "scan/UnitScan.h"
#include "support/ShellRoutines.h"
#include "views/Commands.h"
#include "views/ListHelpers.h"
#include "views/MainState.h"
#include "views/Pictures.h"
#include "views/StatusLine.h"

namespace {

constexpr int kRows = 100;
constexpr int kRowsPerPump = 4;
constexpr int kHeaderBoxLeft = 6;  // pixels

constexpr TResultRules kTopFileRules = {
    {210, 320, 120, 120}, FileImage::kAscending, FileImage::kDescending, FileImage::kOwn};

// On while a row is selected, off while none is.
constexpr std::initializer_list<const char*> kRowCommands = {"mniTOpen",     "mniTOFF", "mniTPPT", "lbtnOpen",
                                                             "lbtnProperty", "btnOFF",  "btnPPT",  "btnOpen"};

}  // namespace

TTopFilesTab::TTopFilesTab(const TTopFilesParts& parts, QWidget& panel)
    : QObject(&panel), FParts(parts), FTopFileSort(kTopFileRules) {
  BuildList(panel);
  auto* column = new QVBoxLayout(&panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(lvTopFile);

  CheckBox_All = new QCheckBox(lvTopFile);
  CheckBox_All->setObjectName(u"CheckBox_All"_qs);
  CheckBox_All->setAccessibleName(FParts.Commands.Button("mniTSelAll").Caption());
  connect(CheckBox_All, &QCheckBox::clicked, this, [this] { CheckBox_AllClick(); });
}

TTopFilesTab::~TTopFilesTab() = default;

void TTopFilesTab::BuildList(QWidget& panel) {
  lvTopFile = new TListView(&panel);
  lvTopFile->setObjectName(u"lvTopFile"_qs);
  lvTopFile->setAccessibleName(u"Top 100 Files"_qs);
  TListViewOptions options;
  options.CheckBoxes = true;
  lvTopFile->SetOptions(options);
  lvTopFile->SetSmallImages(&FParts.FileImages);
  AddResultColumns(*lvTopFile, kTopFileRules);

  lvTopFile->OnSelectItem = [this](TListItem* item, bool selected) { lvTopFileSelectItem(item, selected); };
  lvTopFile->OnColumnClick = [this](TListColumn* clicked) { FTopFileSort.ColumnClick(*lvTopFile, *clicked); };
  lvTopFile->OnCompare = [this](TListItem* item1, TListItem* item2, int& result) {
    result = FTopFileSort.Compare(*item1, *item2);
  };
  lvTopFile->OnMouseUp = [this](Qt::MouseButton, Qt::KeyboardModifiers, int x, int y) {
    lvTopFileMouseUp(x, y);
  };
  lvTopFile->OnDeletion = [](TListItem* item) { FreeResultRow(*item); };
  lvTopFile->OnContextPopup = [this](const QPoint&, bool& handled) {
    FParts.Commands.Bars().Popup(u"pmTop100"_qs).PopupFromCursorPos();
    handled = true;
  };
}

void TTopFilesTab::Clear() {
  lvTopFile->Clear();
}

void TTopFilesTab::FillResults(const TTallyscopeScan& scan) {
  DropImagesFrom(FParts.FileImages, kTopFileRules.OwnImages);
  for (int i = 0; i < std::min(kRows, scan.Files().Count()); ++i) {
    AddFileRow(*lvTopFile, FParts.FileImages, scan.Files()[i]);
    if (i % kRowsPerPump == 0) PumpMessages();
  }
  FTopFileSort.SortBySize(*lvTopFile);
}

void TTopFilesTab::Activate() {
  lvTopFile->SetSelected(nullptr);
  FitLastColumn(*lvTopFile);
  ShowCount();
}

void TTopFilesTab::ShowCount() {
  FParts.StatusLine.ShowText(QString::number(lvTopFile->Items().Count()) + u' ' +
                             FParts.State.FLanguage.GetMessage(u"M_Items"_qs, u"items"_qs));
}

// Six blanks before the first caption leave room for the box in the header.
void TTopFilesTab::FormShow() {
  TListColumn& name = lvTopFile->Columns()[kNameColumn];
  name.SetCaption(QString(6, u' ') + name.Caption());
  FitLastColumn(*lvTopFile);
  PositionHeaderCheckBox();
}

void TTopFilesTab::PositionHeaderCheckBox() {
  CheckBox_All->resize(CheckBox_All->sizeHint());
  const QRect header = lvTopFile->HeaderRect();
  CheckBox_All->move(kHeaderBoxLeft, header.top() + (header.height() - CheckBox_All->height()) / 2);
  CheckBox_All->raise();
}

void TTopFilesTab::FormResize(int growth) {
  SpreadResultColumns(*lvTopFile, kTopFileRules, growth);
  FitLastColumn(*lvTopFile);
}

void TTopFilesTab::lvTopFileSelectItem(const TListItem* item, bool selected) {
  FParts.Commands.SetEnabled(kRowCommands, selected);
  if (!selected) {
    ShowCount();
    return;
  }
  TStatusLine& line = FParts.StatusLine;
  line.SetIcon(GetFileIconHandle(ResultPath(*item)));
  line.ShowDetails();
  line.SetNameAndType(item->Caption(), item->SubItems().Text(kTypeColumn - 1));
  line.SetSizeLine(line.SizeLine(item->SubItems().Text(kSizeColumn - 1)));
}

void TTopFilesTab::lvTopFileMouseUp(int x, int y) {
  TMainCommands& commands = FParts.Commands;
  commands.SetEnabled({"mniTMove", "mniTDel"}, false);
  if ((lvTopFile->GetHitTestInfoAt(x, y) & htOnStateIcon) == 0) return;
  const int checked = CheckedCount();
  CheckBox_All->setChecked(checked == lvTopFile->Items().Count());
  commands.SetEnabled({"lbtnDelete", "btnDelete", "lbtnMove", "btnMove", "mniTMove", "mniTDel"}, checked > 0);
}

int TTopFilesTab::CheckedCount() const {
  const auto& items = lvTopFile->Items();
  return static_cast<int>(
      std::count_if(items.begin(), items.end(), [](const TListItem* item) { return item->Checked(); }));
}

void TTopFilesTab::CheckBox_AllClick() {
  const bool checked = CheckBox_All->isChecked();
  CheckRows(checked);
  FParts.Commands.SetEnabled({"lbtnDelete", "lbtnMove"}, checked);
  FParts.Commands.SetEnabled({"lbtnOpen", "lbtnProperty"}, false);
}

void TTopFilesTab::CheckRows(bool checked) {
  const TListUpdate update(lvTopFile->Items());
  for (TListItem* item : lvTopFile->Items())
    item->SetChecked(checked);
}

void TTopFilesTab::SelectAll() {
  CheckRows(true);
  CheckBox_All->setChecked(true);
}

void TTopFilesTab::DeselectAll() {
  CheckRows(false);
  CheckBox_All->setChecked(false);
}

void TTopFilesTab::InvertSelection() {
  const TListUpdate update(lvTopFile->Items());
  for (TListItem* item : lvTopFile->Items())
    item->SetChecked(!item->Checked());
  CheckBox_All->setChecked(CheckedCount() == lvTopFile->Items().Count());
}
