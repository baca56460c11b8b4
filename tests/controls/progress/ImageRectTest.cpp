#include "controls/progress/PImageRect.h"

#include <gtest/gtest.h>

#include "controls/picture/Pictures.h"

TEST(ImageRect, AlignDecidesTheRectangle) {
  const QRect client(0, 0, 100, 40);
  const std::pair<TImageAlign, QRect> cases[] = {
      {TImageAlign::None, {7, 5, 20, 10}},   {TImageAlign::Custom, {7, 5, 20, 10}},
      {TImageAlign::Top, {0, 0, 100, 10}},   {TImageAlign::Bottom, {0, 30, 100, 10}},
      {TImageAlign::Left, {0, 0, 20, 40}},   {TImageAlign::Right, {80, 0, 20, 40}},
      {TImageAlign::Client, {0, 0, 100, 40}}};
  TImageItem item;
  item.Left = 7;
  item.Top = 5;
  item.Width = 20;
  item.Height = 10;
  for (const auto& [align, expected] : cases) {
    item.Align = align;
    EXPECT_EQ(ImageItemRect(item, client), expected) << static_cast<int>(align);
  }
}

TEST(ImageRect, ANewItemTakesNameAndSize) {
  TImageRect control;
  control.resize(30, 20);
  control.Items().Add();
  const TImageItem& item = control.Items().Add();
  EXPECT_EQ(item.Name, u"TImageItem2");
  EXPECT_EQ(QRect(item.Left, item.Top, item.Width, item.Height), control.rect());
}

TEST(ImageRect, PaintsInOrderAndSkipsTheHiddenAndTheEmpty) {
  TImageRect control;
  control.resize(30, 20);
  const std::pair<TPicture, bool> pictures[] = {{PictureOf({1, 1}, Qt::red), true},
                                                {PictureOf({4, 4}, Qt::blue), false},
                                                {PictureOf({30, 20}, Qt::green), true},
                                                {{}, true}};
  for (const auto& [picture, stretch] : pictures) {
    TImageItem& item = control.Items().Add();
    item.Picture = picture;
    item.Stretch = stretch;
  }
  control.Items()[2].Visible = false;
  const QImage image = control.grab().toImage();
  EXPECT_EQ(image.pixelColor(3, 3), QColor(Qt::blue)) << "drawn over the first, at the corner";
  EXPECT_EQ(image.pixelColor(4, 3), QColor(Qt::red)) << "in its own size";
  EXPECT_EQ(image.pixelColor(29, 19), QColor(Qt::red)) << "stretched to the end";
}
