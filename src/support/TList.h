// A growable array of records by value with the program's one sort: the quicksort of the result lists.
#pragma once

#include <QTypeInfo>

#include <cstdlib>
#include <limits>
#include <new>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

inline void Prefetch([[maybe_unused]] const void* address) {
#ifdef __has_builtin
#if __has_builtin(__builtin_prefetch)
  __builtin_prefetch(address);
#endif
#endif
}

// A comparer gives a negative number, 0 or a positive number as the left record comes before, with or
// after the right one.
template <typename T>
class TComparer {
 public:
  virtual ~TComparer() = default;
  [[nodiscard]] virtual int Compare(const T& left, const T& right) const = 0;
};

// One pass over left to right: what comes before the middle record goes to its left, what comes after it to
// its right. Returns where the right part begins and where the left part ends.
template <typename Index, typename At, typename Exchange, typename Compare>
[[nodiscard]] std::pair<Index, Index> QuickSortPartition(Index left, Index right, const At& at,
                                                         const Exchange& exchange, const Compare& compare) {
  Index i = left;
  Index j = right;
  const auto pivot = at(left + (right - left) / 2);
  do {
    while (compare(at(i), pivot) < 0)
      ++i;
    while (compare(at(j), pivot) > 0)
      --j;
    if (i <= j) {
      if (i != j) exchange(i, j);
      ++i;
      --j;
    }
  } while (i <= j);
  return {i, j};
}

// The quicksort of the result lists over any indexed sequence: pivot in the middle, no second key, not
// stable. Its steps are fixed, so that records that compare equal come out in the same places every time.
// It never recurses: the worst order costs time and memory, not stack.
//   at(i)            gives the record at place i, 0-based
//   exchange(i, j)   swaps two places
//   compare(a, b)    as TComparer::Compare; one that contradicts itself can lead to places beside the range
template <typename Index, typename At, typename Exchange, typename Compare>
void QuickSort(Index left, Index right, const At& at, const Exchange& exchange, const Compare& compare) {
  std::vector<std::pair<Index, Index>> later;  // ranges whose turn comes after the one at hand, nearest last
  for (;;) {
    while (left < right) {
      const auto [i, j] = QuickSortPartition(left, right, at, exchange, compare);
      if (left < j) {
        if (i < right) later.emplace_back(i, right);
        right = j;
      } else {
        left = i;
      }
    }
    if (later.empty()) return;
    std::tie(left, right) = later.back();
    later.pop_back();
  }
}

// Owns its records. Not shared between threads without the caller's care. The first growth takes exactly
// the room that is asked for, later ones double it; an index outside 0 to Count-1 throws
// std::out_of_range; a capacity beyond 2^31-1 throws std::bad_alloc.
template <typename T>
class TList {
 public:
  TList() = default;
  TList(const TList&) = delete;
  TList& operator=(const TList&) = delete;
  TList(TList&& other) noexcept { Swap(other); }
  TList& operator=(TList&& other) noexcept {
    Swap(other);
    return *this;
  }
  ~TList() { Clear(); }

  // Copies or moves a record to the end and returns its index.
  int Add(T record) {
    if (FCount == FCapacity) Grow(FCount + 1LL);
    new (FRecords + FCount) T(std::move(record));
    return FCount++;
  }

  [[nodiscard]] int Count() const { return FCount; }
  [[nodiscard]] int Capacity() const { return FCapacity; }

  [[nodiscard]] const T& operator[](int index) const { return FRecords[Checked(index)]; }
  [[nodiscard]] T& operator[](int index) { return FRecords[Checked(index)]; }

  [[nodiscard]] const T* begin() const { return FRecords; }
  [[nodiscard]] const T* end() const { return FRecords + FCount; }

  // Count and capacity are 0 afterwards.
  void Clear() {
    for (int i = 0; i < FCount; ++i)
      FRecords[i].~T();
    std::free(static_cast<void*>(FRecords));
    FRecords = nullptr;
    FCount = 0;
    FCapacity = 0;
  }

  // A comparer that contradicts itself leaves some order or throws std::out_of_range; no record is lost.
  void Sort(const TComparer<T>& comparer) {
    QuickSort<int>(
        0, FCount - 1, [this](int i) -> const T& { return (*this)[i]; },
        [this](int i, int j) { std::swap(FRecords[i], FRecords[j]); },
        [&comparer](const T& a, const T& b) { return comparer.Compare(a, b); });
  }

 private:
  // Records are moved in memory as they are, so that growing a long list costs no pass over it.
  static_assert(QTypeInfo<T>::isRelocatable, "declare the record with Q_DECLARE_TYPEINFO");

  [[nodiscard]] int Checked(int index) const {
    if (index < 0 || index >= FCount) throw std::out_of_range("TList: argument out of range");
    return index;
  }

  void Grow(long long wanted) {
    long long capacity = FCapacity == 0 ? wanted : FCapacity;
    while (capacity < wanted)
      capacity *= 2;
    if (capacity > std::numeric_limits<int>::max()) throw std::bad_alloc();
    void* records = std::realloc(static_cast<void*>(FRecords), static_cast<size_t>(capacity) * sizeof(T));
    if (records == nullptr) throw std::bad_alloc();
    FRecords = static_cast<T*>(records);
    FCapacity = static_cast<int>(capacity);
  }

  void Swap(TList& other) noexcept {
    std::swap(FRecords, other.FRecords);
    std::swap(FCount, other.FCount);
    std::swap(FCapacity, other.FCapacity);
  }

  T* FRecords = nullptr;
  int FCount = 0;
  int FCapacity = 0;
};
