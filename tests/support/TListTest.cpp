#include "SmallStack.h"
#include "support/TList.h"

#include <gtest/gtest.h>

#include <QString>

#include <algorithm>
#include <random>
#include <vector>

namespace {

struct TRecord {
  int Key = 0;
  int Id = 0;
  friend bool operator==(const TRecord&, const TRecord&) = default;
};

class TKeyComparer : public TComparer<TRecord> {
 public:
  int Compare(const TRecord& left, const TRecord& right) const override { return left.Key - right.Key; }
};

using TRecords = std::vector<TRecord>;

TRecords WithIds(const std::vector<int>& keys) {
  TRecords records;
  for (const int key : keys)
    records.push_back({key, static_cast<int>(records.size())});
  return records;
}

TRecords Sorted(const TRecords& records) {
  TList<TRecord> list;
  for (const TRecord& record : records)
    list.Add(record);
  list.Sort(TKeyComparer());
  return {list.begin(), list.end()};
}

using TExchanges = std::vector<std::pair<int, int>>;

// The steps of the sort as they are told, one after the other, recursion included.
void SortByTheSteps(TRecords& a, int left, int right, TExchanges& exchanges) {
  const auto keyAt = [&a](int place) { return a.at(static_cast<size_t>(place)).Key; };
  do {
    int i = left;
    int j = right;
    const int pivot = keyAt(left + (right - left) / 2);
    do {
      while (keyAt(i) < pivot)
        i++;
      while (keyAt(j) > pivot)
        j--;
      if (i > j) continue;
      if (i != j) exchanges.emplace_back(i, j);
      std::swap(a.at(static_cast<size_t>(i)), a.at(static_cast<size_t>(j)));
      i++;
      j--;
    } while (!(i > j));
    if (j > left) SortByTheSteps(a, left, j, exchanges);
    left = i;
  } while (left < right);
}

// Every pass finds the largest record in the middle, so that the left part is always all but one.
std::vector<int> WorstOrder(int count) {
  std::vector<int> keys{0};
  for (int size = 2; size <= count; ++size) {
    const auto middle = static_cast<size_t>((size - 1) / 2);
    keys.push_back(keys[middle]);
    keys[middle] = size;
  }
  return keys;
}

// Up to 60 records of few different keys.
TRecords RandomRecords(std::mt19937& random) {
  std::vector<int> keys(2 + random() % 60);
  const auto distinct = 1 + random() % 12;
  for (int& key : keys)
    key = static_cast<int>(random() % distinct);
  return WithIds(keys);
}

}  // namespace

TEST(QuickSort, ExchangesWhatTheStepsExchangeInTheirOrder) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 2000; ++round) {
    const TRecords records = RandomRecords(random);
    const int last = static_cast<int>(records.size()) - 1;
    TRecords expected = records;
    TExchanges expectedExchanges;
    SortByTheSteps(expected, 0, last, expectedExchanges);

    TRecords sorted = records;
    TExchanges exchanges;
    QuickSort<int>(
        0, last, [&](int i) { return sorted.at(static_cast<size_t>(i)); },
        [&](int i, int j) {
          exchanges.emplace_back(i, j);
          std::swap(sorted.at(static_cast<size_t>(i)), sorted.at(static_cast<size_t>(j)));
        },
        [](const TRecord& a, const TRecord& b) { return a.Key - b.Key; });
    ASSERT_EQ(exchanges, expectedExchanges) << "round " << round;
    ASSERT_EQ(Sorted(records), expected) << "round " << round;
  }
}

TEST(QuickSort, TheWorstOrderNeedsNoDeepStack) {
  constexpr int kCount = 8000;
  const TRecords sorted = OnSmallStack([] { return Sorted(WithIds(WorstOrder(kCount))); });
  ASSERT_EQ(sorted.size(), size_t{kCount});
  EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end(),
                             [](const TRecord& a, const TRecord& b) { return a.Key < b.Key; }));
}

TEST(TList, TheFirstGrowthIsExactAndLaterOnesDouble) {
  TList<int> list;
  EXPECT_EQ(list.Capacity(), 0);
  std::vector<int> capacities;
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(list.Add(i * i), i);
    capacities.push_back(list.Capacity());
  }
  EXPECT_EQ(capacities, (std::vector<int>{1, 2, 4, 4, 8, 8, 8, 8, 16}));
  EXPECT_EQ(list[8], 64);
}

TEST(TList, AnIndexOutsideIsRefused) {
  TList<int> list;
  EXPECT_THROW((void)list[0], std::out_of_range);
  list.Add(1);
  EXPECT_THROW((void)list[-1], std::out_of_range);
  EXPECT_THROW((void)list[1], std::out_of_range);
  EXPECT_EQ(list[0], 1);
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
  EXPECT_EQ(moved.Count(), 0);
  EXPECT_EQ(moved.Capacity(), 0);
  EXPECT_TRUE(text.isDetached());
  EXPECT_EQ(moved.Add(text), 0);
}
