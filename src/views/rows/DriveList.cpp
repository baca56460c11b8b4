#include "views/rows/DriveList.h"

#include <QLocale>

#include <algorithm>

#include "controls/list/ListView.h"
#include "platform/Paths.h"
#include "platform/Volumes.h"
#include "support/Korvel_Routine_New.h"
#include "views/main/Looks.h"

QString TDriveInfo::Caption() const {
  return Label + u'(' + VolumeName(Root) + u')';
}

void TDriveList::Enumerate(const QString& localDiskText) {
  FDrives.clear();
  FTotalSize = FTotalFree = 0;
  const QString systemDir = GetSystemDir();
  for (const TVolume& volume : ListFixedVolumes()) {
    const QString label = volume.Label.isEmpty() ? localDiskText : volume.Label;
    FDrives.push_back({volume.Root, SameVolume(volume.Root, systemDir), label, volume.Size, volume.Free});
    FTotalSize += volume.Size;
    FTotalFree += volume.Free;
  }
}

int TDriveList::IndexOf(const QString& root) const {
  const auto found = std::find_if(FDrives.begin(), FDrives.end(),
                                  [&](const TDriveInfo& drive) { return SameFolder(drive.Root, root); });
  return found != FDrives.end() ? static_cast<int>(found - FDrives.begin()) : -1;
}

QString DriveSizeText(qint64 bytes) {
  const double gigabytes = static_cast<double>(bytes) / 1024 / 1024 / 1024;
  const int decimals = gigabytes < 10 ? 2 : gigabytes < 100 ? 1 : 0;
  QLocale locale;
  locale.setNumberOptions(QLocale::OmitGroupSeparator);
  return locale.toString(gigabytes, 'f', decimals) + u" GB"_qs;
}

void FillDriveRows(TListView& list, const TDriveList& drives) {
  for (const TDriveInfo& drive : drives.Drives()) {
    TListItem* item = list.Items().Add();
    item->SetCaption(drive.Caption());
    item->SetImageIndex(drive.IsSystem ? StaticImage::kSystemDrive : StaticImage::kDrive);
    item->SubItems().Add(DriveSizeText(drive.Size));
    item->SubItems().Add(DriveSizeText(drive.Free));
    item->SetData(new TDriveRowData{drive.Size, drive.Free, drive.Root});
    if (drive.IsSystem) item->SetChecked(true);
  }
}

void FreeDriveRow(TListItem& item) {
  delete static_cast<TDriveRowData*>(item.Data());
  item.SetData(nullptr);
}

const TDriveRowData* DriveRowOf(const TListItem* item) {
  return item == nullptr ? nullptr : static_cast<const TDriveRowData*>(item->Data());
}

TListItem* FindDriveRow(TListView& list, const QString& path) {
  for (TListItem* item : list.Items())
    if (SameVolume(DriveRowOf(item)->Root, path)) return item;
  return nullptr;
}
