#include "app/TargetPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

#include "app/ScanProgressPage.h"
#include "app/WizardBand.h"
#include "controls/list/ListView.h"

#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "support/Korvel_Routine_New.h"
#include "support/PLanguage.h"
#include "views/main/Dialogs.h"
#include "views/main/Looks.h"
#include "views/main/ResultTab.h"
#include "views/rows/DriveList.h"
#include "views/rows/ListHelpers.h"

namespace {

constexpr int kDriveListHeight = 96;  // pixels, at least
constexpr int kNameWidth = 340;

}  // namespace

TTargetPage::TTargetPage(const TResultForm& results, TImageList& images, QWidget* parent)
    : QWidget(parent), FResults(results) {
  Build(images);
  FillDriveRows(*lvDrive, FResults.Drives());
  // The folder above the desktop, which is the home folder on most systems.
  edtBtnFolder->setText(ExtractFileDir(GetSpecialFolderPath(static_cast<int>(TSpecialFolder::Desktop))));

  connect(rbScanDrive, &QRadioButton::clicked, this, [this] { rbScanDriveClick(); });
  connect(rbScanFolder, &QRadioButton::clicked, this, [this] { rbScanFolderClick(); });
  connect(edtBtnFolder, &QLineEdit::textChanged, this, [this] { edtBtnFolderChange(); });
  connect(Button_Browse, &QPushButton::clicked, this, [this] { Button_BrowseClick(); });
  lvDrive->OnItemChecked = [this](TListItem*) { lvDriveItemChecked(); };
}

TTargetPage::~TTargetPage() = default;

void TTargetPage::Build(TImageList& images) {
  auto* band = new TWizardBand(u"imgBK"_qs, this);
  lblWel = AddWizardTitle(u"lblWel"_qs, u"Korvel Tallyscope"_qs, *band);
  lbl_Warning_Content = MakeWizardLabel(
      u"lbl_Warning_Content"_qs,
      u"Tallyscope provides easy and effective way to search for the largest files and folders in your "
      u"disks. "
      u"After analyzing, it allows you to check the files and folders which are taking up your valuable disk "
      u"space."_qs,
      this);
  BuildDriveChoice(images);
  BuildFolderChoice();

  auto* folderRow = new QHBoxLayout;
  folderRow->setContentsMargins(kWizardIndent, 0, 0, 0);
  folderRow->addWidget(edtBtnFolder, 1);
  folderRow->addWidget(Button_Browse);
  auto* driveRow = new QHBoxLayout;
  driveRow->setContentsMargins(kWizardIndent, 0, 0, 0);
  driveRow->addWidget(lvDrive);

  auto* column = new QVBoxLayout;
  column->setContentsMargins(kWizardMargin, 10, kWizardMargin, 12);
  column->setSpacing(6);
  column->addWidget(lbl_Warning_Content);
  column->addSpacing(4);
  column->addWidget(rbScanDrive);
  column->addLayout(driveRow, 1);
  column->addSpacing(2);
  column->addWidget(rbScanFolder);
  column->addLayout(folderRow);
  LayOutUnderBand(*this, *band, *column);
}

void TTargetPage::BuildDriveChoice(TImageList& images) {
  rbScanDrive = new QRadioButton(u"Scan Drives"_qs, this);
  rbScanDrive->setObjectName(u"rbScanDrive"_qs);
  rbScanDrive->setChecked(true);

  lvDrive = new TListView(this);
  lvDrive->setObjectName(u"lvDrive"_qs);
  TListViewOptions options;
  options.CheckBoxes = true;
  options.ColumnClick = false;
  lvDrive->SetOptions(options);
  lvDrive->setMinimumHeight(kDriveListHeight);
  lvDrive->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  lvDrive->SetSmallImages(&images);
  const auto addColumn = [this](const QString& caption, int width, TAlignment alignment) {
    lvDrive->Columns().Add(caption, width, alignment).SetMinWidth(width);
  };
  addColumn(u"Name"_qs, kNameWidth, TAlignment::LeftJustify);
  addColumn(u"Capacity"_qs, 95, TAlignment::RightJustify);
  addColumn(u"Free Space"_qs, 100, TAlignment::RightJustify);
  lvDrive->OnDeletion = [](TListItem* item) { FreeDriveRow(*item); };
}

// With many drives there is a scroll bar beside the columns.
//
// The width by design comes back first, as an earlier look may have had a bar and this one not.
void TTargetPage::FitColumns() {
  lvDrive->Columns()[0].SetMinWidth(kNameWidth);
  FitFirstColumn(*lvDrive, lvDrive->ClientWidth());
}

void TTargetPage::BuildFolderChoice() {
  rbScanFolder = new QRadioButton(u"Scan Folder"_qs, this);
  rbScanFolder->setObjectName(u"rbScanFolder"_qs);
  edtBtnFolder = new QLineEdit(this);
  edtBtnFolder->setObjectName(u"edtBtnFolder"_qs);
  edtBtnFolder->setEnabled(false);
  Button_Browse = new QPushButton(u"Browse..."_qs, this);
  Button_Browse->setObjectName(u"Button_Browse"_qs);
}

// Only what belongs to the chosen way reacts; the other keeps its marks or its text for later.
void TTargetPage::EnableChoice() {
  rbScanDrive->setEnabled(true);
  rbScanFolder->setEnabled(true);
  lvDrive->setEnabled(rbScanDrive->isChecked());
  edtBtnFolder->setEnabled(rbScanFolder->isChecked());
  Button_Browse->setEnabled(rbScanFolder->isChecked());
}

void TTargetPage::rbScanDriveClick() {
  EnableChoice();
  ChoiceChanged();
}
void TTargetPage::rbScanFolderClick() {
  EnableChoice();
  ChoiceChanged();
}
void TTargetPage::edtBtnFolderChange() {
  ChoiceChanged();
}
void TTargetPage::lvDriveItemChecked() {
  ChoiceChanged();
}

void TTargetPage::ChoiceChanged() {
  if (OnChoiceChanged) OnChoiceChanged();
}

void TTargetPage::Button_BrowseClick() {
  const QString title = FResults.Language().GetMessage(u"M_Sel_Dir"_qs, u"Select directory:"_qs);
  if (const auto folder = FResults.Dialogs().SelectFolderDialog(*window(), title))
    edtBtnFolder->setText(*folder);
}

// Asks the file system at each letter that is typed, on the main thread.
bool TTargetPage::CanAnalyze() const {
  if (FolderChosen()) return DirectoryExists(edtBtnFolder->text());
  return std::any_of(lvDrive->Items().begin(), lvDrive->Items().end(),
                     [](const TListItem* item) { return item->Checked(); });
}

bool TTargetPage::FolderChosen() const {
  return rbScanFolder->isChecked();
}

QStringList TTargetPage::ChosenTargets() const {
  if (FolderChosen()) return {edtBtnFolder->text()};
  QStringList roots;
  for (const TListItem* item : lvDrive->Items())
    if (item->Checked()) roots.append(DriveRowOf(item)->Root);
  return roots;
}

std::vector<TScanRow> TTargetPage::RowsOf(const QStringList& targets) const {
  std::vector<TScanRow> rows;
  for (const QString& target : targets) {
    // A volume that is none of the fixed drives has no row.
    if (!IsVolumeRoot(target))
      rows.push_back({target, StaticImage::kFolder});
    else if (const TListItem* drive = FindDriveRow(*lvDrive, target))
      rows.push_back({drive->Caption(), drive->ImageIndex()});
  }
  // The downloads of one folder alone are walked too, in a step that has no row.
  if (targets.size() > 1 || (targets.size() == 1 && IsVolumeRoot(targets.first())))
    rows.push_back({FResults.DownloadsCaption(), StaticImage::kFolder});
  return rows;
}

void TTargetPage::PreselectFolder(const QString& folder) {
  rbScanFolder->setChecked(true);
  edtBtnFolder->setText(folder);
  EnableChoice();
  ChoiceChanged();
}

void TTargetPage::PreselectDrives(const QStringList& paths) {
  rbScanDrive->setChecked(true);
  // Of the marks that stand there, only the first row's is taken away.
  if (TListItem* first = lvDrive->Items().Item(0)) first->SetChecked(false);
  for (const QString& path : paths)
    if (TListItem* drive = FindDriveRow(*lvDrive, path)) drive->SetChecked(true);
  EnableChoice();
  ChoiceChanged();
}
