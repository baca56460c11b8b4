#include "views/downloads/DownloadsTab.h"

#include <QHash>
#include <QScopeGuard>
#include <QVBoxLayout>

#include <algorithm>

#include "controls/list/rd/RdListView.h"
#include "platform/Paths.h"
#include "scan/UnitScan.h"
#include "support/Korvel_Routine_New.h"
#include "support/ShellRoutines.h"
#include "views/commands/Commands.h"
#include "views/main/ResultTab.h"
#include "views/rows/ListHelpers.h"

namespace {

constexpr int kHeaderBoxTop = 7;  // pixels
// Rows announced to the list, more than a fill ever has: what is not used is given back at its end.
constexpr int kCountDelta = 5000;

}  // namespace

TDownloadsTab::TDownloadsTab(const TTabParts& parts, QWidget& panel)
    : QObject(&panel),
      FParts(parts),
      lvDownloadsFile(new TRdListView(&panel)),
      FFileRows(*lvDownloadsFile),
      FFileOperations(parts, kDownloadsTab, FFileRows) {
  BuildList();
  DressList();
  BuildHeaderBox();
  auto* column = new QVBoxLayout(&panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(lvDownloadsFile);
}

void TDownloadsTab::BuildList() {
  lvDownloadsFile->setObjectName(u"lvDownloadsFile"_qs);
  lvDownloadsFile->SetOptions({.CheckBoxes = true});
  lvDownloadsFile->SetSmallImages(&FParts.Images.cxmglstdownloadfiles);
  AddResultColumns(*lvDownloadsFile, kDownloadRules);
  NameSortDirections(*lvDownloadsFile, FParts.State.FLanguage);

  lvDownloadsFile->OnSelectItem = [this](TListItem*, bool selected) {
    ApplyEnableRules(FParts.Commands, kDownloadsTab, TTabEvent::RowSelected, selected);
  };
  lvDownloadsFile->OnColumnClick = [this](TListColumn* clicked) { lvDownloadsFileColumnClick(*clicked); };
  lvDownloadsFile->OnCompare = [this](TListItem* item1, TListItem* item2, int& result) {
    result = FDownloadSort.Compare(*item1, *item2);
  };
  lvDownloadsFile->OnMouseUp = [this](Qt::MouseButton, Qt::KeyboardModifiers, int, int) {
    lvDownloadsFileMouseUp();
  };
  lvDownloadsFile->OnDeletion = [forget = FFileRows.Forgetter()](TListItem* item) {
    forget(*item);
    FreeResultRow(*item);
  };
  AssignPopup(*lvDownloadsFile, FParts.Commands.Bars().Popup(u"pmDownloadFiles"_qs));
}

void TDownloadsTab::DressList() {
  TRdListProperties properties;
  properties.SortImage = &FParts.Images.cxmglstdownloadfiles;
  lvDownloadsFile->SetProperties(properties);
  TkLVSkinHeader& header = lvDownloadsFile->AllSkinHeader();
  header.GradientColorStart = clCream;
  header.GradientColorStop = clSilver;
  header.HeaderDividingColor = clBtnFace;
  header.HeaderBackGround = TPicture::FromResource(u"HeaderBackGround"_qs);
  lvDownloadsFile->AllSkinGroup().GroupLineStartColor = 1579032;
  lvDownloadsFile->AllSkinGroup().GroupLineEndColor = 10526880;
}

void TDownloadsTab::BuildHeaderBox() {
  CheckBox_Downloads = new THeaderCheckBox(*lvDownloadsFile, u"CheckBox_Downloads"_qs);
  CheckBox_Downloads->OnClick = [this](bool checked) {
    ApplyEnableRules(FParts.Commands, kDownloadsTab, TTabEvent::HeaderBox, checked);
  };
  CheckBox_Downloads->OnSpace = [this] { CountBoxes(); };
}

void TDownloadsTab::FormShow() {
  CheckBox_Downloads->Place(kHeaderBoxTop);
}

void TDownloadsTab::FormResize(int growth) {
  SpreadResultColumns(*lvDownloadsFile, kDownloadRules, growth);
}

void TDownloadsTab::Fill(const TTallyscopeScan& scan, const QStringList&) {
  FillRows(scan.DownloadFiles(), scan.DownloadLocations());
}

void TDownloadsTab::FillRows(const TList<TFileInfoEx>& records, const QStringList& roots) {
  lvDownloadsFile->Clear();
  FFileRows.SetRoots(roots);
  lvDownloadsFile->Items().BeginUpdate(kCountDelta);
  {
    const auto end = qScopeGuard([this] { lvDownloadsFile->Items().EndUpdate(); });
    DropImagesFrom(FParts.Images.cxmglstdownloadfiles, kDownloadRules.OwnImages);
    AddRows(records);
  }
  FDownloadSort.SetStartFlag();
  lvDownloadsFileColumnClick(lvDownloadsFile->Columns()[kSizeColumn]);
}

// The name of a type is looked up once per extension, an icon once per file.
void TDownloadsTab::AddRows(const TList<TFileInfoEx>& records) {
  QHash<QString, QString> types;
  QHash<QString, int> icons;
  TImageList& images = FParts.Images.cxmglstdownloadfiles;
  for (int i = 0; i < std::min(kDownloadRules.RowLimit, records.Count()); ++i) {
    const TFileInfoEx& record = records[i];
    const QString extension = ExtractFileExt(record.Name);
    if (!types.contains(extension)) types.insert(extension, GetFileTypeName(extension));
    const QString path = record.Path + record.Name;
    if (!icons.contains(path)) icons.insert(path, images.AddIcon(GetFileIconHandle(path)));
    KeepSize(*AddResultRow(*lvDownloadsFile, record, types[extension], icons[path]), record);
  }
}

int TDownloadsTab::RowCount() const {
  return lvDownloadsFile->Items().Count();
}

// The header has an arrow of its own, which a click has moved by its own rule before: it shows our mark.
void TDownloadsTab::lvDownloadsFileColumnClick(TListColumn& column) {
  FDownloadSort.ColumnClick(*lvDownloadsFile, column);
  const bool first = column.ImageIndex() == kDownloadRules.KeptImage;
  lvDownloadsFile->SetSort(column.Index(), first ? ssUp : ssDown);
}

// Wherever the click landed.
void TDownloadsTab::lvDownloadsFileMouseUp() {
  ApplyEnableRules(FParts.Commands, kDownloadsTab, TTabEvent::MouseUp);
  CountBoxes();
}

void TDownloadsTab::CountBoxes() {
  ApplyEnableRules(FParts.Commands, kDownloadsTab, TTabEvent::BoxesCounted,
                   CheckBox_Downloads->CountChecked() > 0);
}

void TDownloadsTab::SelectAll() {
  CheckBox_Downloads->CheckAll(true);
}

void TDownloadsTab::DeselectAll() {
  CheckBox_Downloads->CheckAll(false);
}

void TDownloadsTab::InvertSelection() {
  CheckBox_Downloads->Invert();
}
