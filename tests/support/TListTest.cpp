#include "support/TList.h"

#include <gtest/gtest.h>

#include <QThread>

#include <algorithm>
#include <mutex>
#include <random>

namespace {

struct TRecord {
  int Key = 0;
  friend bool operator==(const TRecord&, const TRecord&) = default;
};
using TRecords = std::vector<TRecord>;
using TExchanges = std::vector<std::pair<size_t, size_t>>;

class TKeyComparer : public TComparer<TRecord> {
 public:
  int Compare(const TRecord& left, const TRecord& right) const override { return left.Key - right.Key; }
};

TRecords Sorted(const TRecords& records) {
  TList<TRecord> list;
  for (const TRecord& record : records)
    list.Add(record);
  list.Sort(TKeyComparer());
  return {list.begin(), list.end()};
}

}  // namespace

// Where records that compare equal come to stand shows in every list, so that the steps are fixed.
TEST(QuickSort, ExchangesTheSamePlacesInTheSameOrder) {
  std::string keys = "31415926535897932384";
  TExchanges exchanges;
  QuickSort<size_t>(
      0, keys.size() - 1, [&](size_t i) { return keys[i]; },
      [&](size_t i, size_t j) {
        exchanges.emplace_back(i, j);
        std::swap(keys[i], keys[j]);
      },
      [](char a, char b) { return a - b; });
  EXPECT_EQ(keys, "11223333445556788999");
  EXPECT_EQ(exchanges,
            (TExchanges{{0, 17}, {2, 16}, {4, 15},  {5, 9},   {0, 3},   {3, 6},   {4, 5},   {2, 3},
                        {5, 6},  {9, 19}, {11, 17}, {12, 16}, {13, 15}, {7, 13},  {8, 12},  {10, 11},
                        {7, 10}, {8, 9},  {11, 12}, {14, 19}, {16, 18}, {14, 15}, {15, 17}, {18, 19}}));
  std::mt19937 random(20240611);
  for (int round = 0; round < 2000; ++round) {
    TRecords records(2 + random() % 60);
    for (TRecord& record : records)
      record.Key = static_cast<int>(random() % (1 + static_cast<unsigned>(round) % 12));
    const TRecords sorted = Sorted(records);
    EXPECT_TRUE(std::ranges::is_sorted(sorted, {}, &TRecord::Key) &&
                std::ranges::is_permutation(sorted, records));
  }
}

// Every pass finds the largest record in the middle, so that the left part is always all but one: a call for
// each would not fit the stack.
TEST(QuickSort, TheWorstOrderNeedsNoDeepStack) {
  TRecords records{{0}}, sorted;
  for (int size = 2; size <= 8000; ++size)
    records.push_back(std::exchange(records[static_cast<size_t>(size - 1) / 2], {size}));
  std::mutex guard;
  const std::unique_ptr<QThread> thread(QThread::create([&] {
    const std::lock_guard lock(guard);
    sorted = Sorted(records);
  }));
  thread->setStackSize(256 * 1024);
  thread->start();
  thread->wait();
  const std::lock_guard lock(guard);
  ASSERT_EQ(sorted.size(), records.size());
  EXPECT_TRUE(std::ranges::is_sorted(sorted, {}, &TRecord::Key));
}

TEST(TList, TheFirstGrowthIsExactLaterOnesDoubleAndAnIndexOutsideIsRefused) {
  TList<int> list;
  EXPECT_EQ(list.Capacity(), 0);
  EXPECT_THROW((void)list[0], std::out_of_range);
  std::vector<int> capacities;
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(list.Add(i * i), i);
    capacities.push_back(list.Capacity());
  }
  EXPECT_EQ(capacities, (std::vector<int>{1, 2, 4, 4, 8, 8, 8, 8, 16}));
  EXPECT_EQ(list[8], 64);
  for (const int outside : {-1, 9})
    EXPECT_THROW((void)list[outside], std::out_of_range);
}

TEST(TList, ClearAndMovesReleaseEveryRecordOnce) {
  const QString text(100, u'x');
  TList<QString> list;
  for (int i = 0; i < 5; ++i)
    list.Add(text);
  TList<QString> moved(std::move(list));
  EXPECT_EQ(moved.Count(), 5);
  EXPECT_FALSE(text.isDetached());
  moved.Clear();
  EXPECT_EQ(moved.Count() + moved.Capacity(), 0);
  EXPECT_TRUE(text.isDetached());
}
