#include "scan/ScanRecords.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

QStringView TFileBlock::NameOf(int index) const {
  const quint32 begin = index == 0 ? 0 : Ends()[index - 1];
  return {Texts() + begin, static_cast<qsizetype>(Ends()[index] - begin)};
}

void TFileBlockMaker::Add(QStringView name, quint64 size) {
  FSizes.push_back(size);
  FTexts.insert(FTexts.end(), name.begin(), name.end());
  FEnds.push_back(static_cast<quint32>(FTexts.size()));
}

// What is aligned most strictly comes first, so that nothing stands between the three parts.
TFileBlock TFileBlockMaker::Take(const QString& path) {
  TFileBlock block;
  if (Count() == 0) return block;
  const size_t sizes = FSizes.size() * sizeof(quint64);
  const size_t ends = FEnds.size() * sizeof(quint32);
  const size_t texts = FTexts.size() * sizeof(QChar);
  block.FPath = path;
  block.FBytes = sizes + ends + texts;
  block.FMemory = Allocate(block.FBytes);
  std::memcpy(block.FMemory.get(), FSizes.data(), sizes);
  std::memcpy(block.FMemory.get() + sizes, FEnds.data(), ends);
  std::memcpy(block.FMemory.get() + sizes + ends, FTexts.data(), texts);
  block.FMade = block.FCount = Count();
  // Which keeps their room for the next block.
  FSizes.clear();
  FEnds.clear();
  FTexts.clear();
  return block;
}

// What is left of a chunk that is too short for the next block is given up: a block is never in two pieces.
// The pointer handed out shares the chunk's count, so that the chunk lives as long as the longest-lived block
// in it.
std::shared_ptr<std::byte> TFileBlockMaker::Allocate(size_t bytes) {
  // Bytes: some thousand files of ordinary names in one piece.
  constexpr size_t kChunk = size_t{256} << 10;
  if (FChunkSize - FChunkUsed < bytes) {
    FChunkSize = std::max(kChunk, bytes);
    FChunkUsed = 0;
    FChunk = std::make_shared_for_overwrite<std::byte[]>(FChunkSize);
  }
  std::byte* const place = FChunk.get() + FChunkUsed;
  FChunkUsed = std::min((FChunkUsed + bytes + alignof(quint64) - 1) & ~(alignof(quint64) - 1), FChunkSize);
  return {FChunk, place};
}

void TFileList::Add(TFileBlock block) {
  if (block.Count() == 0) return;
  FEnds.push_back(Count() + block.Count());
  FBlocks.push_back(std::move(block));
}

TFileInfo TFileList::operator[](int index) const {
  if (index < 0 || index >= Count()) throw std::out_of_range("TFileList: argument out of range");
  const auto place = std::upper_bound(FEnds.begin(), FEnds.end(), index) - FEnds.begin();
  const TFileBlock& block = FBlocks[static_cast<size_t>(place)];
  // A block that was truncated after a stop ends where the list says, not where its memory does.
  const int within = index - (FEnds[static_cast<size_t>(place)] - block.Count());
  return {block.Path(), block.NameOf(within).toString(), block.SizeOf(within)};
}
