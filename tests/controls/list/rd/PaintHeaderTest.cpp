// Pixels of header sections against the header skin.

#include "controls/list/rd/painter/RdHeaderPainter.h"
#include "controls/picture/ImageList.h"

#include "PaintSurface.h"

namespace {

const QRect kSection(20, 0, 100, 24);

class PaintHeader : public TPaintSurface {
 protected:
  PaintHeader() {
    Skin.Header.GradientColorStart = 0x0000FF;
    Skin.Header.GradientColorStop = 0xFF0000;
    Skin.Header.HeaderDividingColor = 0x00FF00;
    Section.Rect = kSection;
    Marks.Add(PlainPicture({16, 16}, Qt::yellow));
  }

  void Paint() {
    TRdHeaderPainter header(Start({160, 24}), Bitmap, Widget, Skin);
    header.PaintSection(Section);
  }

  TRdHeaderSection Section;
  TImageList Marks{QSize(16, 16)};
  TRdBitmap Bitmap;
};

TEST_F(PaintHeader, GradientAndDividerFillTheSection) {
  Paint();
  EXPECT_TRUE(IsAll({20, 0, 1, 24}, Qt::green)) << "the divider";
  EXPECT_TRUE(IsAll({21, 0, 99, 1}, Qt::red) && IsAll({21, 23, 99, 1}, Qt::blue));
  EXPECT_TRUE(IsAll({0, 0, 20, 24}, Qt::magenta) && IsAll({120, 0, 40, 24}, Qt::magenta));
  Section.First = true;
  Paint();
  EXPECT_TRUE(IsAll({20, 0, 100, 1}, Qt::red)) << "none before the first";
}

TEST_F(PaintHeader, PictureReplacesTheGradientOverTheButtonColor) {
  Skin.Header.HeaderBackGround = PlainPicture({4, 4}, QColor(0, 0, 0, 128));
  Skin.Header.HeaderDividingPic = PlainPicture({3, 4}, Qt::cyan);
  Paint();
  EXPECT_TRUE(IsAll({20, 0, 3, 24}, Qt::cyan));
  const int half = qGray(Widget.palette().color(QPalette::Button).rgb()) * 127 / 255;
  EXPECT_NEAR(At(60, 12).red(), half, 2);
}

TEST_F(PaintHeader, HotLooksNeedBothPictures) {
  Skin.Header.HeaderHoverImage = PlainPicture({4, 4}, Qt::cyan);
  Section.State = TPartState::Hot;
  Paint();
  EXPECT_EQ(Count(kSection, Qt::cyan), 0);
  Skin.Header.HeaderPressImage = PlainPicture({4, 4}, Qt::yellow);
  Paint();
  EXPECT_TRUE(IsAll({21, 0, 99, 24}, Qt::cyan));
  Section.State = TPartState::Pressed;
  Paint();
  EXPECT_TRUE(IsAll({21, 0, 99, 24}, Qt::yellow));
}

TEST_F(PaintHeader, ArrowStandsAtTheRightEdge) {
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
}

TEST_F(PaintHeader, CheckBoxFollowsCheckAll) {
  Skin.Header.HeaderChecked = PlainPicture({16, 16}, Qt::cyan);
  Skin.Header.HeaderUnChecked = PlainPicture({16, 16}, Qt::yellow);
  Section.First = true;
  Section.CheckBox = true;
  for (const bool checked : {false, true}) {
    Section.Checked = checked;
    Paint();
    EXPECT_TRUE(IsAll({25, 4, 16, 16}, checked ? Qt::cyan : Qt::yellow));
  }
}

TEST_F(PaintHeader, RestHasTheSameLookDownToOnePixel) {
  TRdHeaderPainter header(Start({160, 24}), Bitmap, Widget, Skin);
  header.PaintRest({120, 0, 0, 24});
  EXPECT_TRUE(IsAll({120, 0, 1, 24}, Qt::green));
  header.PaintRest({120, 0, 40, 24});
  EXPECT_TRUE(IsAll({121, 0, 39, 1}, Qt::red) && IsAll({121, 23, 39, 1}, Qt::blue));
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

}  // namespace
