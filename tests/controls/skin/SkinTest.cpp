#include "controls/skin/DesignRect.h"

#include <gtest/gtest.h>

#include <QPainter>

#include <climits>
#include <stdexcept>

#include "controls/picture/Pictures.h"
#include "controls/skin/Colors.h"
#include "controls/skin/RdBitmap.h"

namespace {

// Column c, row r of the picture's nine fields.
QColor FieldColor(int column, int row) {
  return QColor(40 + 80 * column, 40 + 80 * row, 200);
}

// Nine fields of one colour each, with the corners 4 wide and 3 high and a middle of 6 by 5.
QImage NineFields(int scale = 1) {
  QImage image(QSize(14, 11) * scale, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const int column = x < 4 * scale ? 0 : x < 10 * scale ? 1 : 2;
      const int row = y < 3 * scale ? 0 : y < 8 * scale ? 1 : 2;
      image.setPixelColor(x, y, FieldColor(column, row));
    }
  }
  image.setDevicePixelRatio(scale);
  return image;
}

constexpr TDesignSlices kNine{4, 3, 4, 3};

// Stripes of 4 pixels, white first, along x.
TPicture Stripes(QSize size) {
  QImage image = Filled(size, Qt::white);
  for (int x = 0; x < size.width(); ++x)
    for (int y = 0; y < size.height() && x / 4 % 2 == 1; ++y)
      image.setPixelColor(x, y, Qt::black);
  return TPicture(image);
}

QImage Drawn(QSize size, const QRect& target, const TPicture& picture, const TDesignSlices& slices) {
  QImage surface = Filled(size, Qt::red);
  QPainter painter(&surface);
  DrawDesignRect(painter, target, picture, slices);
  return surface;
}

QPalette OddPalette() {
  QPalette palette(Qt::black, Qt::white);
  palette.setColor(QPalette::Base, QColor(1, 2, 3));
  palette.setColor(QPalette::Button, QColor(4, 5, 6));
  palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(7, 8, 9));
  palette.setColor(QPalette::Shadow, QColor(10, 11, 12));
  return palette;
}

}  // namespace

TEST(DesignParts, SlicesKeepTheirSizeAndComeInTheOrderOfDrawing) {
  const std::vector<TDesignPart> expected{
      {{0, 0, 4, 3}, {10, 20, 4, 3}},   {{0, 3, 4, 5}, {10, 23, 4, 34}}, {{0, 8, 4, 3}, {10, 57, 4, 3}},
      {{4, 0, 6, 3}, {14, 20, 22, 3}},  {{4, 8, 6, 3}, {14, 57, 22, 3}}, {{10, 0, 4, 3}, {36, 20, 4, 3}},
      {{10, 3, 4, 5}, {36, 23, 4, 34}}, {{10, 8, 4, 3}, {36, 57, 4, 3}}, {{4, 3, 6, 5}, {14, 23, 22, 34}}};
  EXPECT_EQ(DesignParts({14, 11}, {10, 20, 30, 40}, kNine), expected);
  EXPECT_EQ(DesignParts({14, 11}, {10, 20, 30, 40}, {4, 3, kSameSlice, kSameSlice}), expected);
}

TEST(DesignParts, AnAxisOfAlmostThePicturesSizeIsNotSlicedAndPartsWithoutSizeAreSkipped) {
  const std::pair<QSize, std::size_t> cases[] = {{{14, 11}, 1}, {{15, 10}, 1}, {{16, 11}, 3}, {{12, 10}, 3},
                                                 {{14, 13}, 3}, {{13, 9}, 3},  {{16, 13}, 9}};
  for (const auto& [target, parts] : cases)
    EXPECT_EQ(DesignParts({14, 11}, QRect(QPoint(), target), kNine).size(), parts) << target.width();

  const std::vector<TDesignPart> whole{{{0, 0, 14, 11}, {0, 0, 50, 50}}};
  EXPECT_EQ(DesignParts({14, 11}, {0, 0, 50, 50}, {}), whole);
  EXPECT_EQ(DesignParts({14, 11}, {0, 0, 50, 50}, {0, 0, 0, 0, sdmFill}), whole) << "stretched, not tiled";
  EXPECT_EQ(DesignParts({14, 11}, {0, 0, 8, 50}, kNine).size(), 6u) << "no room for the middle column";
}

TEST(DesignParts, FillingTilesOnlyPartsLargerThanThreePixelsBothWays) {
  std::vector<QRect> tiled;
  for (const TDesignPart& part : DesignParts({14, 11}, {0, 0, 60, 60}, {4, 3, 4, 3, sdmFill}))
    if (part.Tiled) tiled.push_back(part.Source);
  // Left and right edge 4 by 5 and the middle 6 by 5; the upper and lower edge are but 3 high.
  EXPECT_EQ(tiled, (std::vector<QRect>{{0, 3, 4, 5}, {10, 3, 4, 5}, {4, 3, 6, 5}}));
}

TEST(DrawDesignRect, EveryPixelHasTheColourOfItsField) {
  for (const int scale : {1, 2}) {
    QImage surface = Filled(QSize(40, 30) * scale, Qt::red);
    surface.setDevicePixelRatio(scale);
    const QRect target(5, 4, 30, 20);
    QPainter painter(&surface);
    DrawDesignRect(painter, target, TPicture(NineFields(), NineFields(2)), kNine);
    painter.end();
    for (int y = 0; y < 30; ++y) {
      for (int x = 0; x < 40; ++x) {
        const int column = x < 9 ? 0 : x < 31 ? 1 : 2;
        const int row = y < 7 ? 0 : y < 21 ? 1 : 2;
        const QColor expected = target.contains(x, y) ? FieldColor(column, row) : QColor(Qt::red);
        ASSERT_EQ(surface.pixelColor(QPoint(x, y) * scale), expected) << x << ", " << y << " x" << scale;
      }
    }
  }
}

TEST(DrawDesignRect, FillingRepeatsThePatternAndCutsTheLastTile) {
  // The middle is one stripe of each colour; 29 pixels are three pairs and 5 pixels of the fourth.
  const QImage image = Drawn({40, 30}, {0, 0, 37, 30}, Stripes({16, 16}), {4, 4, 4, 4, sdmFill});
  for (int x = 4; x < 33; ++x)
    EXPECT_EQ(image.pixelColor(x, 15), QColor((x - 4) % 8 < 4 ? Qt::black : Qt::white)) << x;
  for (int x = 33; x < 37; ++x)
    EXPECT_EQ(image.pixelColor(x, 15), QColor(Qt::black)) << "the right edge, which no tile may cover";
}

TEST(DrawDesignRect, AlphaBlendsAndATransparentColourIsLeftOut) {
  const QImage blended =
      Drawn({20, 20}, {0, 0, 20, 20}, PictureOf({6, 6}, QColor(0, 0, 255, 51)), {2, 2, 2, 2});
  EXPECT_EQ(blended.pixelColor(10, 10), QColor(204, 0, 51));

  TRdBitmap bitmap(Filled({6, 6}, Qt::green));
  bitmap.Image().setPixelColor(0, 0, Qt::blue);
  bitmap.SetTransparentColor(QColor(Qt::green));
  QImage surface = Filled({20, 20}, Qt::red);
  QPainter painter(&surface);
  DrawDesignRect(painter, {0, 0, 20, 20}, bitmap, {2, 2, 2, 2});
  EXPECT_EQ(surface.pixelColor(0, 0), QColor(Qt::blue));
  EXPECT_EQ(surface.pixelColor(10, 10), QColor(Qt::red));
}

TEST(DesignRect, SettingEmptyTellsTheOwnerWhoSeedsItOnce) {
  TDesignRect design;
  std::vector<bool> seedings;
  design.OnChange = [&seedings](TDesignRect& changed) {
    seedings.push_back(changed.AutoFill());
    if (changed.AutoFill()) changed.SetSlices(TDesignSlices::ThirdsOf({31, 17}, sdmFill));
  };
  design.SetEmpty(false);
  EXPECT_EQ(design.Slices(), (TDesignSlices{10, 5, 10, 5, sdmFill}));
  design.SetEmpty(false);
  design.SetLeft(3);
  design.SetLeft(3);
  EXPECT_EQ(seedings, (std::vector{true, false, false})) << "a seeded one keeps its values";
  design.SetEmpty(true);
  EXPECT_EQ(design.Slices(), (TDesignSlices{0, 0, 0, 0, sdmFill}));
  EXPECT_EQ(seedings.size(), 4u);
}

TEST(RdBitmap, AnySizeIsSafeAndSharedPixelsStayWithTheOthers) {
  TRdBitmap bitmap;
  ASSERT_TRUE(bitmap.SetSize({30, 20}, 2.0));
  EXPECT_EQ(bitmap.Image().size(), QSize(60, 40));
  const TRdBitmap shared = bitmap;
  for (const QSize size : {QSize(0, 20), QSize(30, 0), QSize(-1, -1)}) {
    EXPECT_TRUE(!bitmap.SetSize(size) && bitmap.Empty());
  }
  EXPECT_FALSE(bitmap.SetSize({INT_MAX, INT_MAX}, 2.0)) << "more than an image can hold";
  EXPECT_EQ(shared.Size(), QSize(30, 20));
}

TEST(Colors, ValuesAreBlueGreenRedOrAnIndexIntoThePalette) {
  const QPalette palette = OddPalette();
  const std::pair<TColor, QColor> cases[] = {
      {0x00112233, QColor(0x33, 0x22, 0x11)},
      {14333439, QColor(255, 181, 218)},
      {clCream, QColor(255, 251, 240)},
      {clSilver, QColor(192, 192, 192)},
      {-16777211, QColor(1, 2, 3)},        // window
      {-16777201, QColor(4, 5, 6)},        // button face
      {-16777199, QColor(7, 8, 9)},        // gray text
      {-16777195, QColor(10, 11, 12)},     // 3D dark shadow
      {-16777210, QColor(153, 153, 153)},  // window frame, between text and window
      {-16777216 + 31, Qt::white}          // no such index
  };
  for (const auto& [value, expected] : cases)
    EXPECT_EQ(ToQColor(value, palette).rgb(), expected.rgb()) << value;
  EXPECT_FALSE(ToQColor(clNone, palette).isValid() || ToQColor(clDefault, palette).isValid());
  EXPECT_EQ(ToTColor(QColor(0x33, 0x22, 0x11)), 0x00112233);
}

TEST(Colors, ShadingClampsAndMixingRefusesFactorsOutsideAByte) {
  EXPECT_EQ(Shaded(QColor(10, 100, 250), 20), QColor(30, 120, 255));
  EXPECT_EQ(Shaded(QColor(10, 100, 250), -60), QColor(0, 40, 190));

  const QColor from(0, 200, 100);
  const QColor to(255, 100, 100);
  EXPECT_EQ(Mixed(from, to, 0), from);
  EXPECT_EQ(Mixed(from, to, 255), to);
  EXPECT_EQ(Mixed(from, to, 51), QColor(51, 180, 100));
  EXPECT_THROW((void)Mixed(from, to, 256), std::invalid_argument);
  EXPECT_THROW((void)Mixed(from, to, -1), std::invalid_argument);
}
