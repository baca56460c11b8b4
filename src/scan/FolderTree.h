// The folders of one scanned path that are worth a place in a picture of it, and what lies in them by kind of
// content. All that is smaller is counted with the folder that it lies in, so that nothing is missing.
#pragma once

#include "scan/ScanRecords.h"
#include "volindex/include/volindex_folders.h"

#include <QString>

#include <array>
#include <functional>
#include <vector>

// Bytes, by the kinds of volindex_folders.h.
using TKindSizes = std::array<quint64, TALLYSCOPE_KINDS>;

// Values. The first folder is the scanned one, with an empty name; each other one stands behind that in which
// it lies.
struct TFolderTree {
  struct TFolder {
    QString Name;
    int Parent = 0;     // place in Folders; the first one's is its own
    quint64 Total = 0;  // bytes of all files below it, never more than those of its parent
    TKindSizes Own{};   // of the files in it and in the folders below it that have no place here
  };
  std::vector<TFolder> Folders;  // empty where there was nothing to be read
};

// At most so many folders have a place, the largest ones, and none smaller than a part of the whole.
inline constexpr size_t kMostTreeFolders = 1500;
inline constexpr quint64 kSmallestTreePart = 20'000;

// A folder as it is gathered: in any order, with 0 for the scanned one. Few bytes, since it is climbed from
// each folder of a volume to those above it.
struct TGatheredFolder {
  bool There = false;
  quint32 Parent = 0;
  quint64 Total = 0;
};

// Keeps the largest folders. Asks for the names of these alone, and once for the files' bytes in each folder.
[[nodiscard]] TFolderTree MakeFolderTree(const std::vector<TGatheredFolder>& gathered,
                                         const std::function<QString(quint32 folder)>& nameOf,
                                         const std::function<TKindSizes(quint32 folder)>& ownOf);

// Of the volume that the volume index library holds. On the thread that calls the library.
[[nodiscard]] TFolderTree TreeOfVolume();

// Of what a walk has found below the root, which ends in the delimiter.
[[nodiscard]] TFolderTree TreeOfFiles(const QString& root, const TFileList& files);
