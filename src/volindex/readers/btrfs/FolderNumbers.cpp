#include "volindex/readers/btrfs/FolderNumbers.h"

#include "volindex/readers/btrfs/TreeItems.h"

#include <algorithm>
#include <utility>

namespace volindex::btrfs {

TFolderNumbers::TFolderNumbers() {
  (void)IdOf(kRootNumber, [] { return kRootFolder; });
  Name(kRootNumber);
}

// The place of the number, or the free one where it belongs.
TFolderNumbers::TSlot& TFolderNumbers::SlotOf(std::vector<TSlot>& slots, std::uint64_t number) {
  std::size_t at = static_cast<std::size_t>(number * 0x9E3779B97F4A7C15 >> 20);
  while (slots[at & (slots.size() - 1)].Number != 0 && slots[at & (slots.size() - 1)].Number != number)
    ++at;
  return slots[at & (slots.size() - 1)];
}

TFolderId TFolderNumbers::IdOf(std::uint64_t number, const std::function<TFolderId()>& reserve) {
  TPart& part = PartOf(number);
  const std::lock_guard guard(part.Lock);
  if (const TSlot& known = SlotOf(part.Slots, number); known.Number != 0) return known.Id;
  if (4 * ++part.Count > 3 * part.Slots.size()) {
    std::vector<TSlot> more(2 * part.Slots.size());
    for (const TSlot& slot : part.Slots)
      if (slot.Number != 0) SlotOf(more, slot.Number) = slot;
    part.Slots = std::move(more);
  }
  return (SlotOf(part.Slots, number) = {number, reserve(), 0}).Id;
}

std::optional<TFolderId> TFolderNumbers::Find(std::uint64_t number) {
  TPart& part = PartOf(number);
  const std::lock_guard guard(part.Lock);
  const TSlot& slot = SlotOf(part.Slots, number);
  return slot.Number != 0 ? std::optional(slot.Id) : std::nullopt;
}

void TFolderNumbers::Name(std::uint64_t number) {
  TPart& part = PartOf(number);
  const std::lock_guard guard(part.Lock);
  SlotOf(part.Slots, number).State |= kNamed;
}

void TFolderNumbers::Weigh(std::uint64_t number, std::uint32_t weight) {
  TPart& part = PartOf(number);
  const std::lock_guard guard(part.Lock);
  SlotOf(part.Slots, number).State += weight;
}

template <class TTest>
std::vector<std::uint64_t> TFolderNumbers::NumbersWhere(TTest&& test) const {
  std::vector<std::uint64_t> numbers;
  for (const TPart& part : FParts)
    for (const TSlot& slot : part.Slots)
      if (slot.Number != 0 && test(slot.State)) numbers.push_back(slot.Number);
  std::ranges::sort(numbers);
  return numbers;
}

std::vector<std::uint64_t> TFolderNumbers::Unnamed() const {
  return NumbersWhere([](std::uint32_t state) { return (state & kNamed) == 0; });
}

std::vector<std::uint64_t> TFolderNumbers::Uneven() const {
  return NumbersWhere([](std::uint32_t state) { return (state & kNamed) != 0 && state != kNamed; });
}

}  // namespace volindex::btrfs
