#include "platform/PathText.h"

#include <gtest/gtest.h>

namespace {

TEST(PathText, AShorterTextLeavesNothingOfTheLongerOne) {
  TPathText text;
  text.Store(QString(260, u'x'));
  EXPECT_EQ(text.Load(), QString(259, u'x')) << "a long text is cut and ended inside the buffer";
  text.Store(QString(259, u'y'));
  EXPECT_EQ(text.Load(), QString(259, u'y'));
  text.Store(QStringLiteral("/b"));
  EXPECT_EQ(text.Load(), QStringLiteral("/b"));
  text.Store(QString());
  EXPECT_EQ(text.Load(), QString());
}

}  // namespace
