#include "views/overview/OverviewTab.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

#include "controls/list/ListView.h"
#include "controls/notes/Image.h"
#include "platform/FileTests.h"
#include "platform/Messages.h"
#include "platform/Paths.h"
#include "platform/Process.h"
#include "scan/UnitScan.h"
#include "support/Korvel_Routine_New.h"
#include "support/ShellRoutines.h"
#include "views/commands/Commands.h"
#include "views/main/Looks.h"
#include "views/main/ResultTab.h"
#include "views/rows/ListHelpers.h"

namespace {

constexpr int kPictureSide = 64;

// The tip differs between the form's making and a reset.
constexpr const char16_t* kFirstTip = u"Tips: you can double click one item to perform quick analysis.";
constexpr const char16_t* kResetTip = u"Tips: You can double click on an item to perform quick analysis.";

}  // namespace

// Above the lists: picture, name, kind, sizes and counts of the present subject.
class TOverviewHeader : public QWidget {
 public:
  // The picture store outlives the header.
  TOverviewHeader(const TImageNote& pictures, QWidget* parent);

  void SetPicture(int storeIndex);
  void SetName(const QString& name);

  // A null text hides the line.
  void SetType(const QString& type);
  void SetSize(const QString& size);
  void SetUsed(const QString& used);

  void SetCounts(quint32 files, quint32 folders);
  void HideCounts();

 private:
  [[nodiscard]] QLabel* AddLabel(const QString& name, const QString& caption);
  void AddPair(int column, int row, QLabel*& caption, QLabel*& value, const QString& captionName,
               const QString& captionText, const QString& valueName);
  static void ShowPair(QLabel* caption, QLabel* value, bool show);

  const TImageNote& ImageNote1;
  QGridLayout* FGrid = nullptr;
  TImage* imgType;
  QLabel* lblName;
  QLabel* lblType;
  QLabel* lblStcSize;
  QLabel* lblSize;
  QLabel* lblstcUsed;
  QLabel* lblUsed;
  QLabel* lblStcFiles;
  QLabel* lblFiles;
  QLabel* lblStcFolders;
  QLabel* lblFolders;
};

TOverviewHeader::TOverviewHeader(const TImageNote& pictures, QWidget* parent)
    : QWidget(parent), ImageNote1(pictures) {
  imgType = new TImage(this);
  imgType->setObjectName(u"imgType"_qs);
  imgType->setFixedSize(kPictureSide, kPictureSide);
  lblName = AddLabel(u"lblName"_qs, QString());
  lblName->setFont(TitleFont(parent->font()));
  lblName->setMinimumWidth(1);
  SetTextColor(*lblName, kTitleColor);
  lblType = AddLabel(u"lblType"_qs, QString());

  FGrid = new QGridLayout;
  FGrid->setHorizontalSpacing(8);
  FGrid->setVerticalSpacing(2);
  FGrid->addWidget(lblName, 0, 0, 1, 5);
  FGrid->addWidget(lblType, 1, 0, 1, 5);
  AddPair(0, 2, lblStcSize, lblSize, u"lblStcSize"_qs, u"Size:"_qs, u"lblSize"_qs);
  AddPair(0, 3, lblstcUsed, lblUsed, u"lblstcUsed"_qs, u"Used space:"_qs, u"lblUsed"_qs);
  AddPair(2, 2, lblStcFiles, lblFiles, u"lblStcFiles"_qs, u"Files:"_qs, u"lblFiles"_qs);
  AddPair(2, 3, lblStcFolders, lblFolders, u"lblStcFolders"_qs, u"Folders:"_qs, u"lblFolders"_qs);
  FGrid->setColumnMinimumWidth(1, 140);
  FGrid->setColumnStretch(4, 1);
  FGrid->setRowStretch(4, 1);

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(12, 8, 12, 6);
  row->setSpacing(14);
  row->addWidget(imgType, 0, Qt::AlignVCenter);
  row->addLayout(FGrid, 1);
}

QLabel* TOverviewHeader::AddLabel(const QString& name, const QString& caption) {
  auto* label = new QLabel(caption, this);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

void TOverviewHeader::AddPair(int column, int row, QLabel*& caption, QLabel*& value,
                              const QString& captionName, const QString& captionText,
                              const QString& valueName) {
  caption = AddLabel(captionName, captionText);
  value = AddLabel(valueName, QString());
  caption->setBuddy(value);
  FGrid->addWidget(caption, row, column);
  FGrid->addWidget(value, row, column + 1);
}

void TOverviewHeader::ShowPair(QLabel* caption, QLabel* value, bool show) {
  caption->setVisible(show);
  value->setVisible(show);
}

void TOverviewHeader::SetPicture(int storeIndex) {
  imgType->SetPicture(ImageNote1.Items()[storeIndex].Picture);
}

void TOverviewHeader::SetName(const QString& name) {
  lblName->setText(name);
}

void TOverviewHeader::SetType(const QString& type) {
  lblType->setText(type);
  lblType->setVisible(!type.isNull());
}

void TOverviewHeader::SetSize(const QString& size) {
  lblSize->setText(size);
  ShowPair(lblStcSize, lblSize, !size.isNull());
}

void TOverviewHeader::SetUsed(const QString& used) {
  lblUsed->setText(used);
  ShowPair(lblstcUsed, lblUsed, !used.isNull());
}

void TOverviewHeader::SetCounts(quint32 files, quint32 folders) {
  lblFiles->setText(QString::number(files));
  lblFolders->setText(QString::number(folders));
  ShowPair(lblStcFiles, lblFiles, true);
  ShowPair(lblStcFolders, lblFolders, true);
}

void TOverviewHeader::HideCounts() {
  ShowPair(lblStcFiles, lblFiles, false);
  ShowPair(lblStcFolders, lblFolders, false);
}

// The tab.

TOverviewTab::TOverviewTab(const TTabParts& parts, QWidget& panel)
    : QObject(&panel),
      FParts(parts),
      lvTop(new TListView(&panel)),
      FFileRows(*lvTop, DockImage::kFolder),
      FFileOperations(parts, kOverviewTab, FFileRows) {
  FHeader = new TOverviewHeader(FParts.Pictures, &panel);
  lblLarge = new QLabel(&panel);
  lblLarge->setObjectName(u"lblLarge"_qs);
  lblLarge->setTextFormat(Qt::PlainText);
  lblLarge->setContentsMargins(12, 2, 12, 4);
  SetTextColor(*lblLarge, kHeadingColor);
  BuildLists(panel);

  auto* column = new QVBoxLayout(&panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(FHeader);
  column->addWidget(lblLarge);
  column->addWidget(lvOverview, 1);
  column->addWidget(lvTop, 1);
  ShowDrives(QString::fromUtf16(kFirstTip));
}

void TOverviewTab::BuildLists(QWidget& panel) {
  BuildDriveList(panel);
  BuildTopList();
  FillDriveRows(*lvOverview, FParts.State.FDrives);
}

void TOverviewTab::BuildDriveList(QWidget& panel) {
  lvOverview = new TListView(&panel);
  lvOverview->setObjectName(u"lvOverview"_qs);
  TListViewOptions options;
  options.MultiSelect = true;
  options.ColumnClick = false;
  lvOverview->SetOptions(options);
  lvOverview->SetSmallImages(&FParts.Images.imglstStatic);

  TListColumn& name = lvOverview->Columns().Add(u"Name"_qs, 500);
  name.SetMinWidth(500);
  name.SetMaxWidth(500);
  lvOverview->Columns().Add(u"Capacity"_qs, 100, TAlignment::RightJustify).SetMinWidth(100);
  lvOverview->Columns().Add(u"Free Space"_qs, 100, TAlignment::RightJustify).SetMinWidth(100);

  lvOverview->OnSelectItem = [this](TListItem* item, bool selected) { lvOverviewSelectItem(item, selected); };
  lvOverview->OnDblClick = [this] { lvOverviewDblClick(); };
  lvOverview->OnDeletion = [](TListItem* item) { FreeDriveRow(*item); };
}

void TOverviewTab::BuildTopList() {
  lvTop->setObjectName(u"lvTop"_qs);
  lvTop->SetSmallImages(&FParts.Images.cxmglstdock);
  AddResultColumns(*lvTop, kTopRules);
  NameSortDirections(*lvTop, FParts.State.FLanguage);

  lvTop->OnSelectItem = [this](TListItem*, bool) { lvTopSelectItem(); };
  lvTop->OnColumnClick = [this](TListColumn* column) { FTopSort.ColumnClick(*lvTop, *column); };
  lvTop->OnCompare = [this](TListItem* item1, TListItem* item2, int& result) {
    result = FTopSort.Compare(*item1, *item2);
  };
  lvTop->OnDblClick = [this] { Open(); };
  lvTop->OnDeletion = [forget = FFileRows.Forgetter()](TListItem* item) {
    forget(*item);
    FreeResultRow(*item);
  };
  AssignPopup(*lvTop, FParts.Commands.Bars().Popup(u"pmTop10"_qs));
}

QString TOverviewTab::Text(const QString& key, const QString& defaultText) const {
  return FParts.State.FLanguage.GetMessage(key, defaultText);
}

void TOverviewTab::Reset() {
  ShowDrives(QString::fromUtf16(kResetTip));
  FitColumns();
}

void TOverviewTab::ShowDrives(const QString& tip) {
  const TDriveList& drives = FParts.State.FDrives;
  lvTop->Clear();
  lvTop->hide();
  lvOverview->show();
  lblLarge->setText(Text(u"M_Tip"_qs, tip));
  FHeader->SetPicture(StorePicture::kComputer64);
  FHeader->SetName(Text(u"M_PC"_qs, u"My Computer"_qs));
  FHeader->SetType({});
  FHeader->HideCounts();
  FHeader->SetSize(SizeToText(drives.TotalSize()));
  FHeader->SetUsed(SizeToText(drives.TotalSize() - drives.TotalFree()));
  FParts.StatusLine.SetComputer();
}

void TOverviewTab::lvOverviewSelectItem(TListItem* item, bool selected) {
  TStatusLine& line = FParts.StatusLine;
  const TListItem* current = lvOverview->Selected();
  const TDriveRowData* drive = DriveRowOf(current);
  line.ShowSizeLine();
  if (selected && drive != nullptr) {
    line.SetPicture(SameVolume(drive->Root, GetWindowsDir()) ? StorePicture::kSystemDisk32
                                                             : StorePicture::kDisk32);
    lvOverview->SetHint(
        Text(u"M_Hint"_qs, u"Double click to analyze %s"_qs).replace(u"%s"_qs, item->Caption()));
    line.SetLines(current->Caption(), line.SizeLine(SizeToText(drive->Size)),
                  line.UsedLine(SizeToText(drive->Size - drive->Free)));
  } else if (!selected) {
    line.SetComputer();
    lvOverview->SetHint({});
  }
}

// No scan is under way, so there are no other targets: with this one the wizard begins at once.
void TOverviewTab::lvOverviewDblClick() {
  const TDriveRowData* drive = DriveRowOf(lvOverview->Selected());
  TScanForm* form = FParts.Host.ScanForm();
  if (drive == nullptr || form == nullptr || form->Showing()) return;
  form->AddTarget(drive->Root);
  form->ShowModal();
}

void TOverviewTab::lvTopSelectItem() {
  const TListItem* item = lvTop->Selected();
  if (item == nullptr) return FParts.Host.ActivateAgain();
  TStatusLine& line = FParts.StatusLine;
  const QString path = ResultPath(*item);
  // Also true of a file that has come into the place of a folder since the scan: what is there is what the
  // icon shows.
  if (FileExists(path))
    line.SetIcon(GetFileIconHandle(path));
  else
    line.SetPicture(StorePicture::kFolder32);
  line.SetLines(item->Caption(), item->SubItems().Text(kTypeColumn - 1),
                line.SizeLine(item->SubItems().Text(kSizeColumn - 1)));
  ApplyEnableRules(FParts.Commands, kOverviewTab, TTabEvent::RowSelected, true);
}

void TOverviewTab::Activate() {
  if (lvTop->Selected() != nullptr) lvTop->SetSelected(nullptr);
  lvOverview->SetSelected(nullptr);
}

void TOverviewTab::FormShow() {
  lvOverview->setFocus();
  FitLastColumn(*lvOverview);
  FitLastColumn(*lvTop);
}

void TOverviewTab::FitColumns() {
  FitLastColumn(*lvOverview);
}

// The drive list takes half the growth on top of what it has now, every time.
void TOverviewTab::FormResize(int growth) {
  SpreadResultColumns(*lvTop, kTopRules, growth);
  for (const int column : {1, 2}) {
    TListColumn& sized = lvOverview->Columns()[column];
    sized.SetWidth(sized.Width() + growth / 2);
  }
  FitLastColumn(*lvOverview);
  FitLastColumn(*lvTop);
}

void TOverviewTab::Fill(const TTallyscopeScan& scan, const QStringList& targets) {
  FFileRows.SetRoots(targets);
  FillTop(scan);
  FTopSort.SetStartFlag();
  FTopSort.ColumnClick(*lvTop, lvTop->Columns()[kSizeColumn]);
  ShowSubject(scan, targets);
  lblLarge->setText(Text(u"M_Largest"_qs, u"Largest folders and files"_qs));
  lvOverview->hide();
  lvTop->show();
  lvTop->setFocus();
  FitLastColumn(*lvTop);
  TrimWorkingSet();
}

// Folders first, then files, up to the limit of each; the sort that follows mixes them. A folder without
// bytes is no find.
void TOverviewTab::FillTop(const TTallyscopeScan& scan) {
  const TListUpdate update(lvTop->Items());
  const QString folderType = Text(u"M_Folder"_qs, u"File Folder"_qs);
  for (int i = 0; i < std::min(kTopRules.RowLimit, scan.Folders().Count()); ++i) {
    const TFileInfoEx& record = scan.Folders()[i];
    if (record.Size > 0) KeepSize(*AddResultRow(*lvTop, record, folderType, DockImage::kFolder), record);
    if (i % kTopRules.RowsPerPump == 0) PumpMessages();
  }
  DropImagesFrom(FParts.Images.cxmglstdock, kTopRules.OwnImages);
  for (int i = 0; i < std::min(kTopRules.RowLimit, scan.Files().Count()); ++i) {
    KeepSize(*AddFileRow(*lvTop, FParts.Images.cxmglstdock, scan.Files()[i]), scan.Files()[i]);
    if (i % kTopRules.RowsPerPump == 0) PumpMessages();
  }
}

void TOverviewTab::ShowSubject(const TTallyscopeScan& scan, const QStringList& targets) {
  if (targets.isEmpty()) return;
  if (targets.size() > 1) {
    FHeader->SetName(Text(u"M_PC"_qs, u"My Computer"_qs));
    FHeader->SetType({});
    FHeader->HideCounts();
    FHeader->SetPicture(StorePicture::kComputer64);
    FParts.StatusLine.SetComputer();
  } else if (IsVolumeRoot(targets.first())) {
    ShowDriveSubject(scan, targets.first());
  } else {
    ShowFolderSubject(scan, targets.first());
  }
}

void TOverviewTab::ShowFolderSubject(const TTallyscopeScan& scan, const QString& folder) {
  const QString size = SizeToText(static_cast<qint64>(scan.TotalSize()));
  FHeader->SetName(folder);
  FHeader->SetType(Text(u"M_Folder"_qs, u"File Folder"_qs));
  FHeader->SetSize(size);
  FHeader->SetUsed({});
  FHeader->SetCounts(scan.FileCount(), scan.FolderCount());
  FHeader->SetPicture(StorePicture::kFolder64);
  const QString lastName = RightOfLastChar(ExcludeTrailingPathDelimiter(folder), 0, PathDelim);
  FParts.StatusLine.SetSubject({StorePicture::kFolder32, lastName, size, std::nullopt});
}

void TOverviewTab::ShowDriveSubject(const TTallyscopeScan& scan, const QString& drive) {
  TStatusLine& line = FParts.StatusLine;
  FHeader->SetType(Text(u"M_Local_Disk"_qs, u"Local Disk"_qs));
  FHeader->SetCounts(scan.FileCount(), scan.FolderCount());
  FHeader->SetPicture(StorePicture::kDisk64);
  line.SetPicture(SameVolume(drive, GetSystemDir()) ? StorePicture::kSystemDisk32 : StorePicture::kDisk32);
  const TListItem* row = FindDriveRow(*lvOverview, drive);
  if (row == nullptr) return;
  const TDriveRowData& data = *DriveRowOf(row);
  const QString size = SizeToText(data.Size);
  const QString used = SizeToText(data.Size - data.Free);
  FHeader->SetName(row->Caption());
  FHeader->SetSize(size);
  FHeader->SetUsed(used);
  line.SetLines(row->Caption(), line.SizeLine(size), line.UsedLine(used));
}
