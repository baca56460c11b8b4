#include "controls/skin/Colors.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

QPalette PaletteOf(const QColor& window, const QColor& text) {
  QPalette palette(text, window);
  palette.setColor(QPalette::Base, QColor(1, 2, 3));
  palette.setColor(QPalette::Button, QColor(4, 5, 6));
  palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(7, 8, 9));
  palette.setColor(QPalette::Shadow, QColor(10, 11, 12));
  return palette;
}

}  // namespace

TEST(Colors, ValuesAreBlueGreenRedOrAnIndexIntoThePalette) {
  const QPalette palette = PaletteOf(Qt::white, Qt::black);
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
  EXPECT_FALSE(ToQColor(clNone, palette).isValid());
  EXPECT_FALSE(ToQColor(clDefault, palette).isValid());
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
