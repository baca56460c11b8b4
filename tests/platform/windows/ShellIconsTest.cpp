#include "platform/Icons.h"

#include <gtest/gtest.h>

#include <QImage>

namespace {

QImage PictureOf(const QString& path) {
  return FileIcon(path).pixmap(16, 16).toImage();
}

TEST(ShellIcons, AFileNeedNotExistAndItsExtensionDecides) {
  const QString folder = u"C:\\no\\such folder\\"_qs;
  const QImage text = PictureOf(folder + u"a.txt"_qs);
  EXPECT_FALSE(text.isNull());
  EXPECT_EQ(PictureOf(folder + u"another one.TXT"_qs), text);
  EXPECT_EQ(PictureOf(folder + QString(300, u'x') + u".txt"_qs), text) << "a path of any length";
  EXPECT_FALSE(PictureOf(folder + u"b.no-such-type"_qs).isNull());
}

}  // namespace
