// What the kernel may answer to the two readers that ask it in bulk, made in memory and changed at will.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string_view>
#include <vector>

#include "volindex/readers/btrfs/SubvolumeScan.h"
#include "volindex/readers/xfs/InodeTable.h"

namespace volindex {

using TBuffer = std::vector<std::byte>;

template <class T>
void Put(TBuffer& bytes, std::size_t at, T value) {
  std::memcpy(bytes.data() + at, &value, sizeof value);
}

namespace xfs {

inline void AddChunk(TBuffer& chunks, std::uint64_t first, std::uint64_t used) {
  const std::size_t at = chunks.size();
  chunks.resize(at + kChunkSize);
  Put(chunks, at, first);
  Put(chunks, at + 8, used);
}

inline void AddInode(TBuffer& inodes, std::uint64_t number, std::uint16_t mode, std::uint64_t size,
                     std::uint32_t links = 1, std::uint64_t blocks = 0) {
  const std::size_t at = inodes.size();
  inodes.resize(at + kInodeSize);
  Put(inodes, at, number);
  Put(inodes, at + 8, size);
  Put(inodes, at + 16, blocks);
  Put(inodes, at + 112, links);
  Put(inodes, at + 124, std::uint16_t{5});
  Put(inodes, at + 132, mode);
}

class TMemoryInodes : public TInodeSource {
 public:
  bool Ask(TQuestion question, std::uint64_t from, std::uint32_t most,
           std::span<std::byte> answer) const override {
    if (++Asked == StopAt) Stop = true;
    if (Refuses == Asked) return false;
    const TBuffer& records = question == TQuestion::Chunks ? Chunks : Inodes;
    const std::size_t size = question == TQuestion::Chunks ? kChunkSize : kInodeSize;
    std::size_t at = 0;
    while (at + size <= records.size() && Load<std::uint64_t>(records, at) < from)
      at += size;
    const std::size_t count = std::min<std::size_t>(most, (records.size() - at) / size);
    std::copy_n(records.begin() + static_cast<std::ptrdiff_t>(at), count * size,
                answer.begin() + kHeaderSize);
    const std::uint32_t told = Lie != 0 ? Lie : static_cast<std::uint32_t>(count);
    std::memcpy(answer.data() + 16, &told, sizeof told);
    return true;
  }
  std::uint64_t MostInodes() const override { return 100'000; }
  unsigned GroupBits() const override { return 20; }
  uint32_t BlockSize() const override { return 4096; }

  TBuffer Chunks;
  TBuffer Inodes;
  std::uint32_t Lie = 0;  // the number of records, if not 0
  int Refuses = 0;        // this question, from 1 on
  int StopAt = 0;
  mutable std::atomic<int> Asked{0};
  mutable std::atomic<bool> Stop{false};
};

}  // namespace xfs

namespace btrfs {

inline void AddItem(TBuffer& tree, const TKey& key, const TBuffer& content) {
  const std::size_t at = tree.size();
  tree.resize(at + kHeadSize);
  Put(tree, at + 8, key.Number);
  Put(tree, at + 16, key.Offset);
  Put(tree, at + 24, key.Type);
  Put(tree, at + 28, static_cast<std::uint32_t>(content.size()));
  tree.insert(tree.end(), content.begin(), content.end());
}

inline void AddInode(TBuffer& tree, std::uint64_t number, std::uint32_t mode, std::uint64_t size,
                     std::uint32_t links = 1, std::uint64_t changed = 1) {
  TBuffer content(160);
  Put(content, 8, changed);
  Put(content, 16, size);
  Put(content, 40, links);
  Put(content, 52, mode);
  AddItem(tree, {number, kInode, 0}, content);
}

// One of the names in an item; further names tell their folder too.
inline TBuffer NameOf(std::string_view name, std::uint64_t furtherIn = 0) {
  TBuffer content(furtherIn != 0 ? 18 : 10);
  if (furtherIn != 0) Put(content, 0, furtherIn);
  Put(content, content.size() - 2, static_cast<std::uint16_t>(name.size()));
  const auto bytes = std::as_bytes(std::span(name));
  content.insert(content.end(), bytes.begin(), bytes.end());
  return content;
}

inline void AddEntry(TBuffer& tree, std::uint64_t folder, std::uint64_t place, std::uint64_t number,
                     std::string_view name, std::uint8_t type = kInode) {
  TBuffer content(30);
  Put(content, 0, number);
  Put(content, 8, type);
  Put(content, 27, static_cast<std::uint16_t>(name.size()));
  const auto bytes = std::as_bytes(std::span(name));
  content.insert(content.end(), bytes.begin(), bytes.end());
  AddItem(tree, {folder, kFolderEntry, place}, content);
}

// Items are served as they stand, whole or cut.
class TMemoryTree : public TTreeSource {
 public:
  std::optional<TFound> Search(const TKey& from, std::uint64_t last, std::uint32_t most,
                               std::span<std::byte> room) const override {
    if (++Searches == StopAt) Stop = true;
    if (Searches == Refuses) return std::nullopt;
    const TBytes tree = Searches > LaterFrom ? Later : Tree;
    most = std::min(most, AtOnce);
    std::uint64_t items = 0;
    std::size_t filled = 0;
    for (std::size_t at = 0; tree.size() - at >= kHeadSize && items < most;) {
      const TKey key{Load<std::uint64_t>(tree, at + 8), Load<std::uint32_t>(tree, at + 24),
                     Load<std::uint64_t>(tree, at + 16)};
      const std::size_t size =
          std::min<std::size_t>(kHeadSize + Load<std::uint32_t>(tree, at + 28), tree.size() - at);
      if (key >= from && key.Number <= last) {
        if (size > room.size() - filled) break;
        std::memcpy(room.data() + filled, tree.data() + at, size);
        filled += size;
        ++items;
      }
      at += size;
    }
    return TFound{items + Lie, room.first(filled)};
  }
  std::optional<std::uint64_t> Generation() const override { return 10; }
  bool Flush(const std::atomic<bool>&) const override { return true; }

  TBuffer Tree;
  TBuffer Later;  // what the tree is after so many searches
  int LaterFrom = 1'000'000'000;
  std::uint32_t AtOnce = 1'000'000'000;  // items that a search hands out at most
  std::uint64_t Lie = 0;                 // added to the number of items
  int Refuses = 0;                       // this search, from 1 on
  int StopAt = 0;
  mutable std::atomic<int> Searches{0};
  mutable std::atomic<bool> Stop{false};
};

// Folders "d" (300) and "d/e" (258, older than the one that it was moved to), files of 5, 7 and 11 bytes, one
// of them by three names, a link, a pipe, a subvolume, and an empty folder as the last of all.
inline TBuffer SmallTree() {
  TBuffer tree;
  AddInode(tree, 256, 0040755, 0);
  AddItem(tree, {256, kNames, 256}, NameOf(".."));
  AddEntry(tree, 256, 2, 257, "file");
  AddEntry(tree, 256, 3, 300, "d");
  AddEntry(tree, 256, 4, 400, "snapshot", 132);
  AddEntry(tree, 256, 5, 259, "z name");
  AddInode(tree, 257, 0100644, 5);
  AddItem(tree, {257, kNames, 256}, NameOf("file"));
  AddInode(tree, 258, 0040755, 100, 1, 10);
  AddItem(tree, {258, kNames, 300}, NameOf("e"));
  AddEntry(tree, 258, 2, 259, "b");
  AddEntry(tree, 258, 3, 259, "c");
  AddEntry(tree, 258, 4, 260, "link");
  AddInode(tree, 259, 0100644, 7, 3);
  AddItem(tree, {259, kNames, 256}, NameOf("z name"));
  TBuffer names = NameOf("b");
  AddItem(tree, {259, kNames, 258}, names);
  AddItem(tree, {259, kFurtherNames, 77}, NameOf("c", 258));
  AddInode(tree, 260, 0120777, 11);
  AddItem(tree, {260, kNames, 258}, NameOf("link"));
  AddItem(tree, {260, 108, 0}, TBuffer(32));
  AddInode(tree, 300, 0040755, 0);
  AddItem(tree, {300, kNames, 256}, NameOf("d"));
  AddEntry(tree, 300, 2, 258, "e");
  AddEntry(tree, 300, 3, 301, "pipe");
  AddEntry(tree, 300, 4, 310, "last");
  AddInode(tree, 301, 0010644, 13);
  AddItem(tree, {301, kNames, 300}, NameOf("pipe"));
  AddInode(tree, 310, 0040755, 0);
  AddItem(tree, {310, kNames, 300}, NameOf("last"));
  return tree;
}

}  // namespace btrfs

}  // namespace volindex
