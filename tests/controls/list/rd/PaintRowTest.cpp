// Pixels of row backgrounds against what the skin says.

#include "controls/list/rd/painter/RdDrawing.h"
#include "controls/list/rd/painter/RdRowBackground.h"

#include "PaintSurface.h"

namespace {

const QRect kRow(0, 0, 40, 24);

class PaintRow : public TPaintSurface {
 protected:
  void Paint(const TRdRowLook& look) {
    PaintRowBackground(Start(kRow.size()), kRow, look, Skin, Widget.palette());
  }
  void PaintGroup(const TRdRowLook& look) {
    PaintGroupBackground(Start(kRow.size()), kRow, look, Skin, Widget.palette());
  }
  static TRdRowLook Look(bool selected, bool hovered, int index = 0) {
    TRdRowLook look;
    look.Index = index;
    look.Selected = selected;
    look.Hovered = hovered;
    return look;
  }
};

TEST_F(PaintRow, BaseColorFollowsStepAndOwnColor) {
  Skin.Item.ItemDrawStep = 1;
  UsePalette(QPalette(Qt::black, Qt::gray, Qt::white, Qt::gray, Qt::gray, Qt::black, QColor(10, 100, 200)));
  const struct {
    TColor Step;
    int Index;
    TColor Own;
    QColor Color;
  } rows[] = {{kAutoRowColor, 0, clDefault, QColor(10, 100, 200)},
              {kAutoRowColor, 1, clDefault, QColor(70, 160, 255)},
              {clNone, 1, clDefault, QColor(10, 100, 200)},
              {0x0000FF, 1, clDefault, Qt::red},
              {0x0000FF, 1, 0xFF0000, Qt::blue}};
  for (const auto& row : rows) {
    Skin.Item.ItemDrawStepColor = row.Step;
    TRdRowLook look = Look(false, false, row.Index);
    look.BackColor = row.Own;
    Paint(look);
    EXPECT_TRUE(IsAll(kRow, row.Color)) << row.Index << " " << row.Step;
  }
}

TEST_F(PaintRow, StateWithoutPictureIsRaised) {
  const QColor color(0x96, 0xFF, 0xFF);  // the default hover colour
  Paint(Look(false, true));
  EXPECT_TRUE(IsAll({0, 0, 1, 24}, Qt::white) && IsAll({39, 0, 1, 24}, Qt::white)) << "one pixel left out";
  const QPalette palette = Widget.palette();
  EXPECT_TRUE(IsAll({1, 0, 37, 1}, palette.color(QPalette::Midlight)));
  EXPECT_TRUE(IsAll({1, 23, 38, 1}, palette.color(QPalette::Shadow)));
  EXPECT_TRUE(IsAll({2, 1, 35, 1}, color));
  EXPECT_TRUE(IsAll({2, 22, 36, 1}, Shaded(palette.color(QPalette::Shadow), 50)));
  EXPECT_TRUE(IsAll({3, 2, 34, 1}, Shaded(color, -40))) << "first line of the gradient";
  EXPECT_TRUE(IsAll({3, 21, 34, 1}, Shaded(color, 20))) << "last line of the gradient";
}

TEST_F(PaintRow, StateChoice) {
  Skin.Item.ItemPic_BgHover = PlainPicture({8, 8}, Qt::cyan);
  const struct {
    const char* What;
    TColor Hover;
    TColor Select;
    bool HasSelectPicture;
    bool Selected;
    bool Hovered;
    QColor Middle;
  } rows[] = {{"hovered", 0, 0, false, false, true, Qt::cyan},
              {"no hover colour, no hover look", clNone, 0, false, false, true, Qt::white},
              {"nor with 1", 1, 0, false, false, true, Qt::white},
              {"selected before hovered", 0, 0, true, true, true, Qt::green},
              {"select picture needs no colour", 0, clNone, true, true, true, Qt::green},
              {"no select look gives way to hover", 0, clNone, false, true, true, Qt::cyan},
              {"and shows nothing alone", 0, clNone, false, true, false, Qt::white}};
  for (const auto& row : rows) {
    Skin.Item.ItemHoverColor = row.Hover;
    Skin.Item.ItemSelectColor = row.Select;
    Skin.Item.ItemPic_BgSelect = row.HasSelectPicture ? PlainPicture({8, 8}, Qt::green) : TPicture();
    Paint(Look(row.Selected, row.Hovered));
    EXPECT_EQ(At(20, 12), row.Middle) << row.What;
  }
}

TEST_F(PaintRow, NineSliceKeepsTheEdges) {
  Skin.Item.ItemPic_BgSelect = FramedPicture({9, 9}, Qt::red, Qt::green);
  Skin.Item.ItemPic_BgOption = {3, 3, 3, 3};
  Paint(Look(true, false));
  EXPECT_EQ(Count(kRow, Qt::red), 2 * 40 + 2 * 22);
  EXPECT_TRUE(IsAll(kRow.adjusted(1, 1, -1, -1), Qt::green));
}

TEST_F(PaintRow, CrossModeLeavesTheEdgeToTheSelectedNeighbour) {
  Skin.Item.ItemPic_BgHover = PlainPicture({8, 8}, Qt::cyan);
  Skin.Item.ItemPic_BgSelect = PlainPicture({8, 8}, Qt::green);
  const struct {
    bool CrossMode;
    bool Selected;
    TNeighbours Neighbours;
    bool Top;  // left out
    bool Bottom;
  } rows[] = {{true, false, {true, false}, true, false},
              {true, false, {false, true}, false, true},
              {true, true, {true, true}, true, false},
              {true, false, {true, true}, true, true},
              {false, false, {true, true}, false, false}};
  for (const auto& row : rows) {
    Skin.Item.ItemPic_BgCrossMode = row.CrossMode;
    TRdRowLook look = Look(row.Selected, true);
    look.Neighbours = row.Neighbours;
    Paint(look);
    EXPECT_EQ(IsAll({0, 0, 40, 1}, Qt::white), row.Top);
    EXPECT_EQ(IsAll({0, 23, 40, 1}, Qt::white), row.Bottom);
    EXPECT_TRUE(IsAll({0, 1, 40, 22}, row.Selected ? Qt::green : Qt::cyan));
  }
}

TEST_F(PaintRow, GroupRowsHaveTheirOwnPictures) {
  Skin.Group.GroupPic_Bg = PlainPicture({8, 8}, Qt::yellow);
  Skin.Group.GroupPic_BgHover = PlainPicture({8, 8}, Qt::cyan);
  const auto middle = [this](bool selected, bool hovered) {
    PaintGroup(Look(selected, hovered));
    return At(20, 12);
  };
  EXPECT_EQ(middle(false, false), Qt::yellow);
  EXPECT_EQ(middle(false, true), Qt::cyan);
  EXPECT_EQ(middle(true, true), Qt::yellow) << "selected has no picture";
}

TEST_F(PaintRow, BlankAreaGoesOnWithTheRows) {
  Skin.Item.ItemDrawStep = 1;
  Skin.Item.ItemDrawStepColor = 0x0000FF;
  const QRect blank(0, 0, 40, 50);
  PaintBlankArea(Start(blank.size()), blank, 3, 20, Skin, Widget.palette());
  EXPECT_TRUE(IsAll({0, 0, 40, 20}, Qt::red) && IsAll({0, 20, 40, 20}, Qt::white) &&
              IsAll({0, 40, 40, 10}, Qt::red));
  Skin.Item.ItemPic_BgFillBlank = false;
  PaintBlankArea(Start(blank.size()), blank, 3, 20, Skin, Widget.palette());
  EXPECT_TRUE(IsAll(blank, Qt::white));
}

TEST_F(PaintRow, LinesAndFrame) {
  Skin.Item.ItemGridColor = 0x0000FF;
  PaintGridLine(Start(kRow.size()), kRow, Skin.Item, Widget.palette());
  EXPECT_TRUE(IsAll({0, 23, 40, 1}, Qt::red));
  EXPECT_TRUE(IsAll({0, 0, 40, 23}, Qt::magenta));
  PaintControlFrame(Start({40, 40}), {0, 0, 40, 40}, 2, 0x0000FF, Widget.palette());
  EXPECT_EQ(Count({0, 0, 40, 40}, Qt::red), 4 * 39);
  EXPECT_EQ(Count({0, 0, 40, 40}, Qt::white), 4 * 37);
  PaintControlFrame(Start({40, 40}), {0, 0, 40, 40}, 2, clNone, Widget.palette());
  EXPECT_TRUE(IsAll({0, 0, 40, 40}, Qt::magenta));
}

// Rows are painted in their own coordinates, in a bitmap of the screen's density.
TEST_F(PaintRow, CanvasKeepsCoordinatesAndDensity) {
  TRdBitmap bitmap;
  TRowCanvas canvas(Start({60, 60}, 2), bitmap, QRect(10, 20, 30, 5));
  ASSERT_TRUE(canvas.Valid());
  FillGradient(canvas.Painter(), QRect(10, 20, 30, 5), Qt::red, Qt::blue, true);
  canvas.Blit();
  EXPECT_TRUE(IsAll({20, 40, 60, 1}, Qt::red));
  EXPECT_TRUE(IsAll({20, 49, 60, 1}, Qt::blue));
  EXPECT_EQ(Count({0, 0, 120, 120}, Qt::magenta), 120 * 120 - 60 * 10);
  EXPECT_FALSE(TRowCanvas(Painter, bitmap, QRect(0, 0, 0, 10)).Valid());
}

}  // namespace
