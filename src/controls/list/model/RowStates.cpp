#include "controls/list/model/RowStates.h"

#include <algorithm>
#include <bit>

unsigned TRowStateList::State(int row) const {
  return Has(row) ? FStates[static_cast<size_t>(row)] : 0;
}

void TRowStateList::Change(int row, unsigned bits, unsigned mask) {
  if (!Has(row)) return;
  const unsigned before = State(row);
  const unsigned after = (before & ~mask) | (bits & mask);
  if (after == before) return;
  Put(row, after);
  const auto listener = OnChange;  // the list, and this with it, may be destroyed meanwhile
  if (listener) listener(row, before, after);
}

void TRowStateList::Put(int row, unsigned state) {
  if (!Has(row)) return;
  quint8& place = FStates[static_cast<size_t>(row)];
  Recount(place, state);
  place = static_cast<quint8>(state);
}

void TRowStateList::Recount(unsigned before, unsigned after) {
  if (before == after) return;
  for (unsigned bit = 0; bit < std::size(FCounts); ++bit)
    FCounts[bit] += static_cast<int>(after >> bit & 1) - static_cast<int>(before >> bit & 1);
}

void TRowStateList::Insert(int row, int count) {
  FStates.insert(FStates.begin() + std::clamp(row, 0, Count()), static_cast<size_t>(count), 0);
}

void TRowStateList::Remove(int row, int count) {
  const auto first = FStates.begin() + row;
  std::for_each(first, first + count, [this](unsigned state) { Recount(state, 0); });
  FStates.erase(first, first + count);
}

void TRowStateList::Remove(const std::vector<int>& rows) {
  int heir = -1;
  size_t kept = 0;
  auto next = rows.begin();
  for (size_t row = 0; row < FStates.size(); ++row) {
    const bool leaves = next != rows.end() && static_cast<size_t>(*next) == row;
    if (!leaves) {
      FStates[kept++] = FStates[row];
      continue;
    }
    ++next;
    if ((FStates[row] & kRowFocused) != 0) heir = static_cast<int>(kept);
    Recount(FStates[row], 0);
  }
  FStates.resize(kept);
  if (heir >= 0) Put(std::min(heir, Count() - 1), State(std::min(heir, Count() - 1)) | kRowFocused);
}

// A walk, but for the focus: one row has it, and where it was last found is tried first.
int TRowStateList::Next(int after, unsigned bits) const {
  if ((bits & kRowFocused) != 0 && CountOf(kRowFocused) == 0) return -1;
  const auto is = [bits](unsigned state) { return (state & bits) == bits; };
  if ((bits & kRowFocused) != 0 && (State(FFocusHint) & kRowFocused) != 0)
    return FFocusHint > after && is(State(FFocusHint)) ? FFocusHint : -1;
  const auto from = FStates.begin() + std::clamp(after + 1, 0, Count());
  const auto found = std::find_if(from, FStates.end(), is);
  if (found == FStates.end()) return -1;
  const int row = static_cast<int>(found - FStates.begin());
  if ((bits & kRowFocused) != 0) FFocusHint = row;
  return row;
}

int TRowStateList::CountOf(unsigned bit) const {
  return FCounts[std::countr_zero(bit)];
}
