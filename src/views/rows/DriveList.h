// The fixed drives of the computer: gathered once, shown as rows by the Overview and by the scan wizard.
#pragma once

#include <QString>

#include <vector>

class TImageList;
class TListItem;
class TListView;

// One fixed drive.
struct TDriveInfo {
  QString Root;  // with its delimiter: "C:\" or "/home/"; the drive's key
  bool IsSystem = false;
  QString Label;
  qint64 Size = 0;  // bytes
  qint64 Free = 0;  // bytes available to this user

  // "Label(C:)".
  [[nodiscard]] QString Caption() const;
};

// What hangs on the Data of a drive row; freed by the list's deletion handler.
struct TDriveRowData {
  qint64 Size = 0;  // bytes
  qint64 Free = 0;  // bytes
  QString Root;
};

// Owned by the main form for its whole life. Main thread.
class TDriveList {
 public:
  // Reads the fixed volumes. A drive without a label gets the given text. Blocks on the file system.
  void Enumerate(const QString& localDiskText);

  [[nodiscard]] const std::vector<TDriveInfo>& Drives() const { return FDrives; }

  // The place of a drive, by its root; -1 for any other path.
  [[nodiscard]] int IndexOf(const QString& root) const;

  // Sums over all drives in bytes, settled by Enumerate; no deletion changes them.
  [[nodiscard]] qint64 TotalSize() const { return FTotalSize; }
  [[nodiscard]] qint64 TotalFree() const { return FTotalFree; }

 private:
  std::vector<TDriveInfo> FDrives;
  qint64 FTotalSize = 0;
  qint64 FTotalFree = 0;
};

// Bytes in GB with two decimals below 10, one below 100, none from there on: "9.99 GB", "10.0 GB".
[[nodiscard]] QString DriveSizeText(qint64 bytes);

// Adds one row per drive, in order: caption, capacity, free space. The system drive has image 0 and, where
// the list has check boxes, its mark; any other image 1.
void FillDriveRows(TListView& list, const TDriveList& drives);

// Frees the data of a drive row: what the deletion handlers of the drive lists do.
void FreeDriveRow(TListItem& item);

// The data of a drive row, null for no row.
[[nodiscard]] const TDriveRowData* DriveRowOf(const TListItem* item);

// The row whose drive is the volume of the path, or null.
[[nodiscard]] TListItem* FindDriveRow(TListView& list, const QString& path);
