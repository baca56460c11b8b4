// The records of a scan and the order of its result lists. Values: a copy shares its texts, and all files
// of one folder share one Path.
//
// Path is the folder that holds the entry and always ends in the path delimiter; Path followed by Name is
// the full path. Size is in bytes: a file's logical length, or the sum over all files below a folder.
#pragma once

#include "support/TList.h"

#include <QString>
#include <QStringView>

#include <cstddef>
#include <memory>
#include <vector>

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

// Files of one folder in the order of their listing, packed into one piece of memory. Moved, never copied.
class TFileBlock {
 public:
  TFileBlock() = default;

  [[nodiscard]] int Count() const { return FCount; }
  [[nodiscard]] quint64 SizeOf(int index) const { return Sizes()[index]; }
  [[nodiscard]] QStringView NameOf(int index) const;
  [[nodiscard]] const QString& Path() const { return FPath; }
  // What the block takes, without its Path.
  [[nodiscard]] size_t Bytes() const { return FBytes; }

  // Keeps the first so many.
  void Truncate(int count) { FCount = count; }

 private:
  friend class TFileBlockMaker;

  // The memory holds all sizes, then for each name the place behind its end in the texts, then the texts.
  [[nodiscard]] const quint64* Sizes() const { return reinterpret_cast<const quint64*>(FMemory.get()); }
  [[nodiscard]] const quint32* Ends() const { return reinterpret_cast<const quint32*>(Sizes() + FMade); }
  [[nodiscard]] const QChar* Texts() const { return reinterpret_cast<const QChar*>(Ends() + FMade); }

  QString FPath;
  std::shared_ptr<std::byte> FMemory;  // a place in a chunk that blocks share
  size_t FBytes = 0;
  int FMade = 0;  // files that the block was made with
  int FCount = 0;
};

// Gathers the files of a block. Blocks made one after the other lie in one chunk of memory, since the system
// takes its time over many small pieces; a chunk goes with the last of its blocks.
class TFileBlockMaker {
 public:
  void Add(QStringView name, quint64 size);
  [[nodiscard]] int Count() const { return static_cast<int>(FSizes.size()); }
  // The files added since the last block.
  [[nodiscard]] TFileBlock Take(const QString& path);

 private:
  [[nodiscard]] std::shared_ptr<std::byte> Allocate(size_t bytes);

  std::shared_ptr<std::byte[]> FChunk;
  size_t FChunkSize = 0;
  size_t FChunkUsed = 0;
  std::vector<quint64> FSizes;
  std::vector<quint32> FEnds;
  std::vector<QChar> FTexts;
};

// The files of a walk: reads like a list of TFileInfo in the order of discovery, whose records are made as
// they are asked for. An index outside 0 to Count-1 throws std::out_of_range.
class TFileList {
 public:
  class TIterator {
   public:
    TIterator(const TFileList& list, int index) : FList(list), FIndex(index) {}
    [[nodiscard]] TFileInfo operator*() const { return FList[FIndex]; }
    TIterator& operator++() { return ++FIndex, *this; }
    [[nodiscard]] bool operator!=(const TIterator& other) const { return FIndex != other.FIndex; }

   private:
    const TFileList& FList;
    int FIndex;
  };

  void Add(TFileBlock block);
  [[nodiscard]] int Count() const { return FEnds.empty() ? 0 : FEnds.back(); }
  [[nodiscard]] TFileInfo operator[](int index) const;
  [[nodiscard]] TIterator begin() const { return {*this, 0}; }
  [[nodiscard]] TIterator end() const { return {*this, Count()}; }
  void Clear() { *this = {}; }

  // What the files are packed in, in their order; spares those who look at all of them a record for each.
  [[nodiscard]] const std::vector<TFileBlock>& Blocks() const { return FBlocks; }

 private:
  std::vector<TFileBlock> FBlocks;  // none is empty
  std::vector<int> FEnds;           // by block, the index behind its last file
};
