// Pixels of rows and header sections against what the skin says, and what setting a skin does besides.
#include "controls/list/rd/painter/RdDrawing.h"
#include "controls/list/rd/painter/RdHeaderPainter.h"
#include "controls/list/rd/painter/RdRowBackground.h"
#include "controls/list/rd/skin/RdSkins.h"
#include "controls/picture/ImageList.h"

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
  const std::tuple<TColor, int, TColor, QColor> rows[] = {{kAutoRowColor, 0, clDefault, QColor(10, 100, 200)},
                                                          {kAutoRowColor, 1, clDefault, QColor(70, 160, 255)},
                                                          {clNone, 1, clDefault, QColor(10, 100, 200)},
                                                          {0x0000FF, 1, clDefault, Qt::red},
                                                          {0x0000FF, 1, 0xFF0000, Qt::blue}};
  for (const auto& [step, index, own, color] : rows) {
    Skin.Item.ItemDrawStepColor = step;
    TRdRowLook look = Look(false, false, index);
    look.BackColor = own;
    Paint(look);
    EXPECT_TRUE(IsAll(kRow, color)) << index << " " << step;
  }
}

TEST_F(PaintRow, StateWithoutPictureIsRaised) {
  const QColor color(0x96, 0xFF, 0xFF);  // the default hover colour
  Paint(Look(false, true));
  EXPECT_TRUE(IsAll({0, 0, 1, 24}, Qt::white) && IsAll({39, 0, 1, 24}, Qt::white)) << "one pixel left out";
  const QPalette palette = Widget.palette();
  EXPECT_TRUE(IsAll({1, 0, 37, 1}, palette.color(QPalette::Midlight)) && IsAll({2, 1, 35, 1}, color));
  EXPECT_TRUE(IsAll({1, 23, 38, 1}, palette.color(QPalette::Shadow)));
  EXPECT_TRUE(IsAll({3, 2, 34, 1}, Shaded(color, -40))) << "first line of the gradient";
  EXPECT_TRUE(IsAll({3, 21, 34, 1}, Shaded(color, 20))) << "last line of the gradient";
}

TEST_F(PaintRow, StateChoice) {
  Skin.Item.ItemPic_BgHover = PictureOf({8, 8}, Qt::cyan);
  const std::tuple<const char*, TColor, TColor, bool, bool, bool, QColor> rows[] = {
      {"hovered", 0, 0, false, false, true, Qt::cyan},
      {"no hover colour, no hover look", clNone, 0, false, false, true, Qt::white},
      {"nor with 1", 1, 0, false, false, true, Qt::white},
      {"selected before hovered", 0, 0, true, true, true, Qt::green},
      {"select picture needs no colour", 0, clNone, true, true, true, Qt::green},
      {"no select look gives way to hover", 0, clNone, false, true, true, Qt::cyan},
      {"and shows nothing alone", 0, clNone, false, true, false, Qt::white}};
  for (const auto& [what, hover, select, hasSelectPicture, selected, hovered, middle] : rows) {
    Skin.Item.ItemHoverColor = hover;
    Skin.Item.ItemSelectColor = select;
    Skin.Item.ItemPic_BgSelect = hasSelectPicture ? PictureOf({8, 8}, Qt::green) : TPicture();
    Paint(Look(selected, hovered));
    EXPECT_EQ(At(20, 12), middle) << what;
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
  Skin.Item.ItemPic_BgHover = PictureOf({8, 8}, Qt::cyan);
  Skin.Item.ItemPic_BgSelect = PictureOf({8, 8}, Qt::green);
  // The last two: whether that edge is left out.
  const std::tuple<bool, bool, TNeighbours, bool, bool> rows[] = {{true, false, {true, false}, true, false},
                                                                  {true, false, {false, true}, false, true},
                                                                  {true, true, {true, true}, true, false},
                                                                  {true, false, {true, true}, true, true},
                                                                  {false, false, {true, true}, false, false}};
  for (const auto& [crossMode, selected, neighbours, top, bottom] : rows) {
    Skin.Item.ItemPic_BgCrossMode = crossMode;
    TRdRowLook look = Look(selected, true);
    look.Neighbours = neighbours;
    Paint(look);
    EXPECT_EQ(IsAll({0, 0, 40, 1}, Qt::white), top);
    EXPECT_EQ(IsAll({0, 23, 40, 1}, Qt::white), bottom);
    EXPECT_TRUE(IsAll({0, 1, 40, 22}, selected ? Qt::green : Qt::cyan));
  }
}

TEST_F(PaintRow, GroupRowsHaveTheirOwnPictures) {
  Skin.Group.GroupPic_Bg = PictureOf({8, 8}, Qt::yellow);
  Skin.Group.GroupPic_BgHover = PictureOf({8, 8}, Qt::cyan);
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
  EXPECT_TRUE(IsAll({0, 23, 40, 1}, Qt::red) && IsAll({0, 0, 40, 23}, Qt::magenta));
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
  EXPECT_TRUE(IsAll({20, 40, 60, 1}, Qt::red) && IsAll({20, 49, 60, 1}, Qt::blue));
  EXPECT_EQ(Count({0, 0, 120, 120}, Qt::magenta), 120 * 120 - 60 * 10);
  EXPECT_FALSE(TRowCanvas(Painter, bitmap, QRect(0, 0, 0, 10)).Valid());
}

const QRect kSection(20, 0, 100, 24);

class PaintHeader : public TPaintSurface {
 protected:
  PaintHeader() {
    Skin.Header.GradientColorStart = 0x0000FF;
    Skin.Header.GradientColorStop = 0xFF0000;
    Skin.Header.HeaderDividingColor = 0x00FF00;
    Section.Rect = kSection;
    Marks.Add(PictureOf({16, 16}, Qt::yellow));
  }

  void Paint() {
    TRdHeaderPainter header(Start({160, 24}), Bitmap, Widget, Skin);
    header.PaintSection(Section);
  }

  TRdHeaderSection Section;
  TImageList Marks{QSize(16, 16)};
  TRdBitmap Bitmap;
};

TEST_F(PaintHeader, GradientAndDividerFillTheSectionAndTheRestDownToOnePixel) {
  Paint();
  EXPECT_TRUE(IsAll({20, 0, 1, 24}, Qt::green)) << "the divider";
  EXPECT_TRUE(IsAll({21, 0, 99, 1}, Qt::red) && IsAll({21, 23, 99, 1}, Qt::blue));
  EXPECT_TRUE(IsAll({0, 0, 20, 24}, Qt::magenta) && IsAll({120, 0, 40, 24}, Qt::magenta));
  Section.First = true;
  Paint();
  EXPECT_TRUE(IsAll({20, 0, 100, 1}, Qt::red)) << "none before the first";

  TRdHeaderPainter header(Start({160, 24}), Bitmap, Widget, Skin);
  header.PaintRest({120, 0, 0, 24});
  EXPECT_TRUE(IsAll({120, 0, 1, 24}, Qt::green));
  header.PaintRest({120, 0, 40, 24});
  EXPECT_TRUE(IsAll({121, 0, 39, 1}, Qt::red) && IsAll({121, 23, 39, 1}, Qt::blue));
}

TEST_F(PaintHeader, PictureReplacesTheGradientAndHotLooksNeedBothPictures) {
  Skin.Header.HeaderBackGround = PictureOf({4, 4}, QColor(0, 0, 0, 128));
  Skin.Header.HeaderDividingPic = PictureOf({3, 4}, Qt::cyan);
  Paint();
  EXPECT_TRUE(IsAll({20, 0, 3, 24}, Qt::cyan));
  const int half = qGray(Widget.palette().color(QPalette::Button).rgb()) * 127 / 255;
  EXPECT_NEAR(At(60, 12).red(), half, 2);

  Skin.Header.HeaderDividingPic = {};
  Skin.Header.HeaderHoverImage = PictureOf({4, 4}, Qt::cyan);
  Section.State = TPartState::Hot;
  Paint();
  EXPECT_EQ(Count(kSection, Qt::cyan), 0);
  Skin.Header.HeaderPressImage = PictureOf({4, 4}, Qt::yellow);
  Paint();
  EXPECT_TRUE(IsAll({21, 0, 99, 24}, Qt::cyan));
  Section.State = TPartState::Pressed;
  Paint();
  EXPECT_TRUE(IsAll({21, 0, 99, 24}, Qt::yellow));
}

TEST_F(PaintHeader, ArrowStandsAtTheRightEdgeAndTheBoxFollowsCheckAll) {
  Section.Arrows = &Marks;
  Section.Arrow = 0;
  Paint();
  EXPECT_TRUE(IsAll({104, 4, 16, 16}, Qt::yellow));
  EXPECT_EQ(Count(kSection, Qt::yellow), 16 * 16);
  for (const int bad : {-1, 1}) {
    Section.Arrow = bad;
    Paint();
    EXPECT_EQ(Count(kSection, Qt::yellow), 0);
  }

  Skin.Header.HeaderChecked = PictureOf({16, 16}, Qt::cyan);
  Skin.Header.HeaderUnChecked = PictureOf({16, 16}, Qt::yellow);
  Section.First = true;
  Section.CheckBox = true;
  for (const bool checked : {false, true}) {
    Section.Checked = checked;
    Paint();
    EXPECT_TRUE(IsAll({25, 4, 16, 16}, checked ? Qt::cyan : Qt::yellow));
  }
}

TEST_F(PaintHeader, CaptionIsReadableOnALightHeaderOfADarkDesktop) {
  UseDarkPalette();
  Skin.Header.GradientColorStart = clCream;
  Skin.Header.GradientColorStop = clSilver;
  Section.Caption = u"Name"_qs;
  Section.First = true;
  Paint();
  EXPECT_LT(Darkest({30, 4, 40, 16}), 80);
}

class Skins : public ::testing::Test, protected TSkinOwner {
 protected:
  void SkinChanged(TSkinChange change) override { Changes.push_back(change); }
  int HeaderHeight() const override { return 27; }

  std::vector<TSkinChange> Changes;
  TListSkin Values;
  TkLVSkinItem Item{*this, Values.Item};
  TkLVSkinGroup Group{*this, Values.Group};
  TkLVSkinHeader Header{*this, Values.Header};
};

TEST_F(Skins, PropertiesWriteThroughAndTellOnce) {
  Item.ItemHeight = 32;
  Item.ItemHeight = 32;
  Group.GroupCanExpand = false;
  Header.HeaderChecked = PictureOf({4, 4}, Qt::red);
  EXPECT_EQ(Values.Item.ItemHeight, 32);
  EXPECT_EQ(Changes, (std::vector{TSkinChange::RowHeight, TSkinChange::GroupExpand, TSkinChange::Header}));
  EXPECT_EQ(Header.HeaderHeight(), 27);
}

TEST_F(Skins, ValuesOutOfTheWayAreReplacedAndTheDisabledButtonIsTheNormalOneInGray) {
  Item.ItemHoverColor = clNone;
  Item.ItemSelectColor = clNone;
  EXPECT_EQ(Item.ItemSelectColor, clNone);
  Item.ItemHoverColor = clDefault;
  Item.ItemSelectColor = clDefault;
  EXPECT_EQ(Item.ItemHoverColor, 16777110);
  EXPECT_EQ(Item.ItemSelectColor, 14333439);
  for (const auto& [set, kept] : {std::pair(150, 100), std::pair(-3, 0), std::pair(60, 60)}) {
    Group.GroupLineRightPer = set;
    EXPECT_EQ(Group.GroupLineRightPer, kept);
  }

  Item.ButtonNormalImage = PictureOf({5, 5}, QColor(200, 100, 40));
  const int light = (28 * 40 + 151 * 100 + 77 * 200) / 256;
  EXPECT_EQ(PicturePixels(Values.Item.ButtonGrayImage).pixelColor(2, 2), QColor(light, light, light));
  EXPECT_EQ(Values.Item.ButtonGrayImage.Size(), QSize(5, 5));
}

TEST_F(Skins, SlicesSeedFromTheFirstPicture) {
  Item.ItemPic_BgOption.SetEmpty(false);
  EXPECT_TRUE(Values.Item.ItemPic_BgOption.Empty()) << "no picture yet";
  Item.ItemPic_BgSelect = PictureOf({90, 90}, Qt::red);
  Item.ItemPic_BgNormal = PictureOf({31, 20}, Qt::red);
  Item.ItemPic_BgOption.SetEmpty(false);
  EXPECT_EQ(Values.Item.ItemPic_BgOption, (TDesignSlices{10, 6, 10, 6}));
  Item.ItemPic_BgOption.SetLeft(4);
  Item.ItemPic_BgOption.SetEmpty(false);
  EXPECT_EQ(Values.Item.ItemPic_BgOption.Left, 4) << "what has a size is kept";
  Group.GroupPic_Bg = PictureOf({9, 9}, Qt::red);
  Group.GroupPic_BgOption.SetEmpty(false);
  EXPECT_EQ(Values.Group.GroupPic_BgOption, (TDesignSlices{3, 3, 3, 3}));
}

TEST_F(Skins, FramedHoverPictureSetsCrossMode) {
  const std::tuple<int, TPicture, bool> rows[] = {{30, FramedPicture({10, 30}, Qt::red, Qt::red), false},
                                                  {29, TPicture(), false},
                                                  {30, TPicture(), true}};
  QImage framed = Filled({10, 30}, Qt::white);
  QPainter(&framed).fillRect(0, 1, 10, 28, QColor(252, 255, 255));
  for (const auto& [itemHeight, picture, crossMode] : rows) {
    Item.ItemHeight = itemHeight;
    Item.ItemPic_BgHover = picture.Empty() ? TPicture(framed) : picture;
    EXPECT_EQ(Item.ItemPic_BgCrossMode, crossMode) << itemHeight;
  }
}

}  // namespace
