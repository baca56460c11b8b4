// The folders of a subvolume by their numbers, 16 bytes each: the id under which the index knows a folder,
// and whether all that is said of its entries agrees. A folder is told of by what lies in it, perhaps before
// it is met itself.
//
// That the entries agree with the names is checked without keeping either: each name adds a weight made of
// the inode's number to its folder's sum, each entry takes the same off, and what is left must be 0. Damage
// that cancels out by chance is missed once in two thousand million times; a list of all entries would take
// many times the room.
#pragma once

#include "volindex/index/FolderTable.h"

#include <array>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

namespace volindex::btrfs {

// Any thread.
class TFolderNumbers {
 public:
  // With the root folder, which has its name.
  TFolderNumbers();

  // The id of the folder; one that is new gets that from `reserve`.
  [[nodiscard]] TFolderId IdOf(std::uint64_t number, const std::function<TFolderId()>& reserve);
  [[nodiscard]] std::optional<TFolderId> Find(std::uint64_t number);

  // Of a folder that has an id: notes that it has its name.
  void Name(std::uint64_t number);
  // Adds to the sum of the folder's entries, each of which is added once and taken off once where all is
  // well.
  void Weigh(std::uint64_t number, std::uint32_t weight);

  // What an entry weighs, twice a number of 31 bits.
  [[nodiscard]] static std::uint32_t WeightOf(std::uint64_t number) {
    return static_cast<std::uint32_t>(number * 0x9E3779B97F4A7C15 >> 32) & ~kNamed;
  }

  // By rising numbers: the folders without a name, and those with one whose entries do not cancel out. When
  // no thread adds any more.
  [[nodiscard]] std::vector<std::uint64_t> Unnamed() const;
  [[nodiscard]] std::vector<std::uint64_t> Uneven() const;

 private:
  static constexpr std::uint32_t kNamed = 1;
  struct TSlot {
    std::uint64_t Number = 0;  // 0 where nothing is kept
    TFolderId Id = kNoFolder;
    std::uint32_t State = 0;  // the sum of the weights, and kNamed
  };
  struct TPart {
    std::mutex Lock;
    std::vector<TSlot> Slots = std::vector<TSlot>(16);  // a power of two, never full
    std::size_t Count = 0;
  };

  [[nodiscard]] TPart& PartOf(std::uint64_t number) { return FParts[number % FParts.size()]; }
  [[nodiscard]] static TSlot& SlotOf(std::vector<TSlot>& slots, std::uint64_t number);
  template <class TTest>
  [[nodiscard]] std::vector<std::uint64_t> NumbersWhere(TTest&& test) const;

  // So many locks that threads hardly meet; none is ever held together with another. `reserve` is called
  // under one, and takes that of the folder table at most.
  std::array<TPart, 64> FParts;
};

}  // namespace volindex::btrfs
