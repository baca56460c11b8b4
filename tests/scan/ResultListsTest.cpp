// The order of the result lists.
#include "scan/ScanRecords.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr quint64 kTop = quint64{1} << 63;

template <typename TSizeComparer>
class TSizeComparerTest : public testing::Test {};
using TComparers = testing::Types<TFileComparer, TFolderComparer>;
TYPED_TEST_SUITE(TSizeComparerTest, TComparers);

}  // namespace

TYPED_TEST(TSizeComparerTest, TheLargerUnsignedSizeComesFirst) {
  struct {
    quint64 Left, Right;
    int Result;
  } const cases[] = {
      {1, 2, 1},
      {2, 1, -1},
      {5, 5, 0},
      {kTop, 1, -1},
      {kTop - 1, kTop, 1},
      {0x1'0000'0000, 0xFFFF'FFFF, -1},
      {std::numeric_limits<quint64>::max(), kTop, -1},
  };
  for (const auto& [left, right, result] : cases)
    EXPECT_EQ(TypeParam().Compare({{}, {}, left}, {{}, {}, right}), result) << left << " " << right;
}

TYPED_TEST(TSizeComparerTest, SortsDescendingAndKeepsEqualRows) {
  TList<TFileInfoEx> list;
  for (const quint64 size : {quint64{3}, kTop + 1, quint64{7}, quint64{3}, quint64{0}})
    list.Add({u"/p/"_qs, QString::number(size), size});
  list.Sort(TypeParam());
  const quint64 expected[] = {kTop + 1, 7, 3, 3, 0};
  for (int i = 0; i < list.Count(); ++i) {
    EXPECT_EQ(list[i].Size, expected[i]);
    EXPECT_EQ(list[i].Name, QString::number(expected[i])) << "a row was torn apart";
  }
}
