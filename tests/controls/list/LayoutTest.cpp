// Rectangles and hits, without a window.
#include "controls/list/layout/ListLayout.h"

#include <gtest/gtest.h>

namespace {

// Rows of 20 pixels from row 10 on, columns of 100, 50 and 80 moved 30 to the left, check box and image.
TListMetrics Metrics() {
  TListMetrics metrics;
  metrics.Client = {300, 110};
  metrics.RowCount = 13;
  metrics.RowHeight = 20;
  metrics.TopRow = 10;
  metrics.HorzPos = 30;
  metrics.ColumnWidths = {100, 50, 80};
  metrics.CheckBox = {13, 13};
  metrics.SmallImage = {16, 16};
  metrics.Margin = 5;
  metrics.Gap = 4;
  return metrics;
}

}  // namespace

TEST(ListLayout, TheFirstCellHoldsCheckBoxImagesAndCaptionInThisOrder) {
  TListMetrics metrics = Metrics();
  metrics.HorzPos = 0;
  metrics.StateImage = {10, 10};
  const TCellParts first = TListLayout(metrics).CellParts(11, 0);
  EXPECT_EQ(first.Cell, QRect(0, 20, 100, 20));
  EXPECT_EQ(first.CheckBox, QRect(5, 23, 13, 13));
  EXPECT_EQ(first.StateImage, QRect(22, 25, 10, 10));
  EXPECT_EQ(first.SmallImage, QRect(36, 22, 16, 16));
  EXPECT_EQ(first.Text, QRect(56, 20, 39, 20));

  const TCellParts later = TListLayout(metrics).CellParts(11, 1);
  EXPECT_TRUE(later.CheckBox.isNull() && later.SmallImage.isNull());
  EXPECT_EQ(later.Text, QRect(105, 20, 40, 20));
  EXPECT_EQ(TListLayout(metrics).CellParts(11, 1, true).Text.left(), 125);
}

TEST(ListLayout, HitTest) {
  const std::tuple<QPoint, int, int, unsigned> cases[] = {{{-20 + 30, 5}, 10, 0, htOnLabel},
                                                          {{60, 45}, 12, 0, htOnLabel},
                                                          {{69, 5}, 10, 0, htOnLabel},
                                                          {{70, 5}, 10, 1, htOnLabel},
                                                          {{199, 19}, 10, 2, htOnLabel},
                                                          {{200, 5}, -1, -1, htNowhere},
                                                          {{75, 60}, -1, 1, htNowhere},
                                                          {{75, 59}, 12, 1, htOnLabel},
                                                          {{-1, 5}, -1, 0, htToLeft},
                                                          {{75, -1}, -1, 1, htAbove},
                                                          {{300, 110}, -1, -1, htToRight | htBelow}};
  for (const auto& [pos, row, column, flags] : cases) {
    const THit hit = TListLayout(Metrics()).HitTest(pos);
    EXPECT_EQ(std::tuple(hit.Row, hit.Column, hit.Flags), std::tuple(row, column, flags))
        << pos.x() << ',' << pos.y();
  }

  TListMetrics metrics = Metrics();
  metrics.HorzPos = 0;
  const auto flags = [&metrics](int x, int y) { return TListLayout(metrics).HitTest({x, y}).Flags; };
  EXPECT_EQ(flags(5, 3), htOnStateIcon);
  EXPECT_EQ(flags(17, 15), htOnStateIcon);
  EXPECT_EQ(flags(4, 8), htOnLabel);
  EXPECT_EQ(flags(18, 8), htOnLabel);
  EXPECT_EQ(flags(22, 8), htOnIcon);
  metrics.ColumnWidths[0] = 8;
  EXPECT_EQ(flags(9, 8), htOnLabel) << "the narrow column does not show this part of its box";
  metrics.RowSelect = false;
  EXPECT_EQ(TListLayout(metrics).HitTest({20, 8}).Row, -1);
}

TEST(ListLayout, ScrollingIntoViewMovesAsLittleAsPossible) {
  TListMetrics metrics = Metrics();
  metrics.RowCount = 100;
  const TListLayout layout(metrics);
  EXPECT_EQ(layout.RowsPerPage(), 5);
  EXPECT_EQ(layout.EndOfVisibleRows(), 16) << "the last row shows in part";
  EXPECT_EQ(layout.TopRowShowing(12, false), 10);
  EXPECT_EQ(layout.TopRowShowing(4, false), 4);
  EXPECT_EQ(layout.TopRowShowing(15, false), 11);
  EXPECT_EQ(layout.TopRowShowing(15, true), 10);
  EXPECT_EQ(layout.TopRowShowing(99, true), 95);
  EXPECT_EQ(layout.MaxTopRow(), 95);
}

TEST(ListLayout, OfTwoDividersTheRightOneIsCaught) {
  TListMetrics metrics = Metrics();
  metrics.HorzPos = 0;
  metrics.ColumnWidths = {100, 0, 80};
  const TListLayout layout(metrics);
  EXPECT_EQ(layout.DividerAt(97, 4), 1) << "a column of no width can be opened again";
  EXPECT_EQ(layout.DividerAt(105, 4), -1);
  EXPECT_EQ(layout.DividerAt(184, 4), 2);
}

TEST(HeaderLayout, TheMarkStandsRightOfTheCaption) {
  const std::tuple<TAlignment, int, int, int, int> cases[] = {{TAlignment::LeftJustify, 40, 105, 40, 149},
                                                              {TAlignment::RightJustify, 40, 155, 40, 199},
                                                              {TAlignment::Center, 40, 130, 40, 174},
                                                              {TAlignment::LeftJustify, 500, 105, 90, 199}};
  for (const auto& [alignment, textWidth, left, width, mark] : cases) {
    const THeaderParts parts = LayoutHeaderSection({100, 0, 120, 24}, textWidth, {16, 16}, alignment, 5, 4);
    EXPECT_EQ(parts.Text, QRect(left, 0, width, 24));
    EXPECT_EQ(parts.Mark, QRect(mark, 4, 16, 16));
  }
  EXPECT_TRUE(LayoutHeaderSection({0, 0, 20, 24}, 40, {16, 16}, TAlignment::LeftJustify, 5, 4).Mark.isNull());
}
