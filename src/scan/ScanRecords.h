// The records of a scan and the order of its result lists. Values: a copy shares its texts, and all files
// of one folder share one Path.
//
// Path is the folder that holds the entry and always ends in the path delimiter; Path followed by Name is
// the full path. Size is in bytes: a file's logical length, or the sum over all files below a folder.
#pragma once

#include "support/TList.h"

#include <QString>

// One file found by a walk.
struct TFileInfo {
  QString Path;
  QString Name;
  quint64 Size = 0;
};

// One direct subfolder of the walked root, with the size of all that lies below it.
struct TFolderInfo {
  QString Path;
  QString Name;
  quint64 Size = 0;
};

// One result row, file or folder.
struct TFileInfoEx {
  QString Path;
  QString Name;
  quint64 Size = 0;
};

Q_DECLARE_TYPEINFO(TFileInfo, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(TFolderInfo, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(TFileInfoEx, Q_RELOCATABLE_TYPE);

// The larger size comes first; the order of equal sizes is what the sort's steps give.
class TFileComparer : public TComparer<TFileInfoEx> {
 public:
  [[nodiscard]] int Compare(const TFileInfoEx& left, const TFileInfoEx& right) const override {
    return left.Size < right.Size ? 1 : left.Size > right.Size ? -1 : 0;
  }
};

class TFolderComparer : public TComparer<TFileInfoEx> {
 public:
  [[nodiscard]] int Compare(const TFileInfoEx& left, const TFileInfoEx& right) const override {
    return left.Size < right.Size ? 1 : left.Size > right.Size ? -1 : 0;
  }
};
