#include "views/DownloadsTab.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "controls/list/rd/RdListView.h"
#include "views/Pictures.h"
#include "views/ResultRows.h"

namespace {

constexpr QPoint kHeaderBox(6, 7);  // pixels
constexpr int kRoomForBox = 6;      // blanks before the first caption
constexpr int kCountDelta = 5000;

constexpr TResultRules kDownloadRules = {
    {210, 320, 120, 120}, DownloadImage::kAscending, DownloadImage::kDescending, DownloadImage::kOwn};

}  // namespace

TDownloadsTab::TDownloadsTab(TImageList& images, QWidget& panel) : QObject(&panel) {
  BuildList(images, panel);
  BuildHeaderBox();
  auto* column = new QVBoxLayout(&panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(lvDownloadsFile);
}

void TDownloadsTab::BuildList(TImageList& images, QWidget& panel) {
  lvDownloadsFile = new TRdListView(&panel);
  lvDownloadsFile->setObjectName(u"lvDownloadsFile"_qs);
  lvDownloadsFile->setAccessibleName(u"Download Directory"_qs);
  lvDownloadsFile->SetOptions({.CheckBoxes = true});
  lvDownloadsFile->SetSmallImages(&images);
  TRdListProperties properties;
  properties.SortImage = &images;
  lvDownloadsFile->SetProperties(properties);
  AddResultColumns(*lvDownloadsFile, kDownloadRules);
  TListColumn& name = lvDownloadsFile->Columns()[kNameColumn];
  name.SetCaption(u"     "_qs + name.Caption());

  TkLVSkinHeader& header = lvDownloadsFile->AllSkinHeader();
  header.GradientColorStart = clCream;
  header.GradientColorStop = clSilver;
  header.HeaderDividingColor = clBtnFace;
  header.HeaderBackGround = TPicture::FromResource(u"HeaderBackGround"_qs);
  lvDownloadsFile->AllSkinGroup().GroupLineStartColor = 1579032;
  lvDownloadsFile->AllSkinGroup().GroupLineEndColor = 10526880;

  lvDownloadsFile->OnDeletion = [](TListItem* item) { FreeResultRow(*item); };
}

void TDownloadsTab::BuildHeaderBox() {
  CheckBox_Downloads = new QCheckBox(lvDownloadsFile);
  CheckBox_Downloads->setObjectName(u"CheckBox_Downloads"_qs);
  CheckBox_Downloads->setAccessibleName(u"Select All"_qs);
  connect(CheckBox_Downloads, &QCheckBox::clicked, this, [this](bool checked) { CheckRows(checked); });
}

void TDownloadsTab::CheckRows(bool checked) {
  TkListItems& items = lvDownloadsFile->Items();
  if (items.Count() == 0) return;
  items.BeginUpdate(kCountDelta);
  for (TListItem* item : items)
    item->SetChecked(checked);
  items.EndUpdate();
}

void TDownloadsTab::FormShow() {
  TListColumn& name = lvDownloadsFile->Columns()[kNameColumn];
  name.SetCaption(QString(kRoomForBox, u' ') + name.Caption());
  CheckBox_Downloads->resize(CheckBox_Downloads->sizeHint());
  CheckBox_Downloads->move(kHeaderBox + lvDownloadsFile->HeaderRect().topLeft());
  CheckBox_Downloads->raise();
}

void TDownloadsTab::FormResize(int growth) {
  SpreadResultColumns(*lvDownloadsFile, kDownloadRules, growth);
}
