#include "fixtures/SystemTest.h"
#include "platform/Icons.h"

#include <QImage>

// An icon theme of its own with pictures of one colour each.
TEST(IconTheme, TheTypesOwnPictureThenItsKindsThenAnyFiles) {
  TTempTree tree;
  tree.WriteFile("made/index.theme", "[Icon Theme]\nName=Test\nDirectories=16\n[16]\nSize=16\nType=Fixed\n");
  tree.MakeFolder("made/16");
  const auto add = [&](const QByteArray& name, QColor colour) {
    QImage picture(16, 16, QImage::Format_ARGB32);
    picture.fill(colour);
    EXPECT_TRUE(picture.save(tree.Path("made/16/" + name + ".png")));
  };
  const auto colourOf = [](const QString& path) {
    QIcon::setThemeName(u"hicolor"_qs);
    QIcon::setThemeName(u"made"_qs);
    const QIcon icon = FileIcon(path);
    return icon.isNull() ? QColor() : icon.pixmap(16, 16).toImage().pixelColor(8, 8);
  };
  QIcon::setThemeSearchPaths({tree.Path()});
  add("unknown", Qt::green);
  EXPECT_EQ(colourOf(u"/a/b.no-such-type"_qs), QColor(Qt::green));
  add("text-x-generic", Qt::white);
  add("image-x-generic", Qt::blue);
  add("application-pdf", Qt::red);
  EXPECT_EQ(colourOf(u"/no/such/folder/a.pdf"_qs), QColor(Qt::red));
  EXPECT_EQ(colourOf(u"/a/b.PNG"_qs), QColor(Qt::blue)) << "no picture of its own";
  EXPECT_EQ(colourOf(u"/a.pdf/unknown.kind-of-file"_qs), QColor(Qt::white))
      << "the folder's name counts for nothing";
}
