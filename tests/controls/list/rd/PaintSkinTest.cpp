// The published skins: what setting a property does besides storing it.

#include "controls/list/rd/skin/RdSkins.h"

#include "PaintSurface.h"

namespace {

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
  Header.HeaderChecked = PlainPicture({4, 4}, Qt::red);
  EXPECT_EQ(Values.Item.ItemHeight, 32);
  EXPECT_EQ(Changes, (std::vector{TSkinChange::RowHeight, TSkinChange::GroupExpand, TSkinChange::Header}));
  EXPECT_EQ(Header.HeaderHeight(), 27);
}

TEST_F(Skins, ValuesOutOfTheWayAreReplaced) {
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
}

TEST_F(Skins, SlicesSeedFromTheFirstPicture) {
  Item.ItemPic_BgOption.SetEmpty(false);
  EXPECT_TRUE(Values.Item.ItemPic_BgOption.Empty()) << "no picture yet";
  Item.ItemPic_BgSelect = PlainPicture({90, 90}, Qt::red);
  Item.ItemPic_BgNormal = PlainPicture({31, 20}, Qt::red);
  Item.ItemPic_BgOption.SetEmpty(false);
  EXPECT_EQ(Values.Item.ItemPic_BgOption, (TDesignSlices{10, 6, 10, 6}));
  Item.ItemPic_BgOption.SetLeft(4);
  Item.ItemPic_BgOption.SetEmpty(false);
  EXPECT_EQ(Values.Item.ItemPic_BgOption.Left, 4) << "what has a size is kept";
  Group.GroupPic_Bg = PlainPicture({9, 9}, Qt::red);
  Group.GroupPic_BgOption.SetEmpty(false);
  EXPECT_EQ(Values.Group.GroupPic_BgOption, (TDesignSlices{3, 3, 3, 3}));
}

TEST_F(Skins, FramedHoverPictureSetsCrossMode) {
  const struct {
    int ItemHeight;
    TPicture Picture;
    bool CrossMode;
  } rows[] = {{30, FramedPicture({10, 30}, Qt::red, Qt::red), false},
              {29, TPicture(), false},
              {30, TPicture(), true}};
  QImage framed = PlainImage({10, 30}, Qt::white);
  QPainter(&framed).fillRect(0, 1, 10, 28, QColor(252, 255, 255));
  for (const auto& row : rows) {
    Item.ItemHeight = row.ItemHeight;
    Item.ItemPic_BgHover = row.Picture.Empty() ? TPicture(framed) : row.Picture;
    EXPECT_EQ(Item.ItemPic_BgCrossMode, row.CrossMode) << row.ItemHeight;
  }
}

TEST_F(Skins, DisabledButtonIsTheNormalOneInGray) {
  Item.ButtonNormalImage = PlainPicture({5, 5}, QColor(200, 100, 40));
  const QColor gray = PicturePixels(Values.Item.ButtonGrayImage).pixelColor(2, 2);
  const int light = (28 * 40 + 151 * 100 + 77 * 200) / 256;
  EXPECT_EQ(gray, QColor(light, light, light));
  EXPECT_EQ(Values.Item.ButtonGrayImage.Size(), QSize(5, 5));
}

}  // namespace
