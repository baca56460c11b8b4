#include "platform/PathText.h"

#include <gtest/gtest.h>

namespace {

TEST(PathText, ALongTextIsCutAndEndedInsideTheBuffer) {
  TPathText text;
  for (const int length : {258, 259, 260, 5000}) {
    text.Store(QString(length, u'x'));
    EXPECT_EQ(text.Load(), QString(std::min(length, 259), u'x'));
  }
}

TEST(PathText, AShorterTextLeavesNothingOfTheLongerOne) {
  TPathText text;
  text.Store(QStringLiteral("/a/long/path"));
  text.Store(QStringLiteral("/b"));
  EXPECT_EQ(text.Load(), QStringLiteral("/b"));
  text.Store(QString());
  EXPECT_EQ(text.Load(), QString());
}

}  // namespace
