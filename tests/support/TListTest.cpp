#include "support/TList.h"

#include <gtest/gtest.h>

#include <QThread>

#include <algorithm>
#include <mutex>
#include <random>

namespace {

struct TRecord {
  int Key = 0;
  int Place = 0;  // at the beginning
  friend bool operator==(const TRecord&, const TRecord&) = default;
};
using TRecords = std::vector<TRecord>;
using TExchanges = std::vector<std::pair<int, int>>;

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

// The steps of the sort as they are told, one after the other, recursion included.
void SortByTheSteps(TRecord* a, int left, int right, TExchanges& exchanges) {
  do {
    int i = left, j = right;
    const int pivot = a[left + (right - left) / 2].Key;
    do {
      while (a[i].Key < pivot)
        i++;
      while (a[j].Key > pivot)
        j--;
      if (i > j) continue;
      if (i != j) exchanges.emplace_back(i, j);
      std::swap(a[i++], a[j--]);
    } while (!(i > j));
    if (j > left) SortByTheSteps(a, left, j, exchanges);
    left = i;
  } while (left < right);
}

}  // namespace

TEST(QuickSort, ExchangesWhatTheStepsExchangeInTheirOrder) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 2000; ++round) {
    TRecords records(2 + random() % 60);
    const auto distinct = 1 + random() % 12;
    for (int place = 0; TRecord & record : records)
      record = {static_cast<int>(random() % distinct), place++};
    const int last = static_cast<int>(records.size()) - 1;
    TRecords expected = records, sorted = records;
    TExchanges expectedExchanges, exchanges;
    SortByTheSteps(expected.data(), 0, last, expectedExchanges);
    QuickSort<int>(
        0, last, [&](int i) { return sorted.data()[i]; },
        [&](int i, int j) {
          exchanges.emplace_back(i, j);
          std::swap(sorted.data()[i], sorted.data()[j]);
        },
        [](const TRecord& a, const TRecord& b) { return a.Key - b.Key; });
    ASSERT_EQ(exchanges, expectedExchanges) << "round " << round;
    ASSERT_EQ(Sorted(records), expected) << "round " << round;
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
