#include "platform/Icons.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace {

constexpr char16_t kThemeName[] = u"made-for-the-test";

void WriteText(const QString& path, const char* text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(text);
}

// An icon theme of its own with pictures of one colour each.
class IconThemeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const QString theme = FFolder.path() + u'/' + QString::fromUtf16(kThemeName);
    ASSERT_TRUE(QDir().mkpath(theme + QLatin1String("/16")));
    WriteText(theme + QLatin1String("/index.theme"),
              "[Icon Theme]\nName=Test\nDirectories=16\n[16]\nSize=16\nType=Fixed\n");
    FTheme = theme;
    QIcon::setThemeSearchPaths({FFolder.path()});
  }

  void AddPicture(const char* name, QColor colour) {
    QImage picture(16, 16, QImage::Format_ARGB32);
    picture.fill(colour);
    ASSERT_TRUE(picture.save(FTheme + QLatin1String("/16/") + QLatin1String(name) + QLatin1String(".png")));
  }

  static QColor ColourOf(const char* path) {
    QIcon::setThemeName(QStringLiteral("hicolor"));
    QIcon::setThemeName(QString::fromUtf16(kThemeName));
    const QIcon icon = FileIcon(QString::fromUtf8(path));
    return icon.isNull() ? QColor() : icon.pixmap(16, 16).toImage().pixelColor(8, 8);
  }

  QTemporaryDir FFolder;
  QString FTheme;
};

TEST_F(IconThemeTest, TheTypesOwnPictureThenItsKindsThenAnyFiles) {
  AddPicture("text-x-generic", Qt::white);
  AddPicture("image-x-generic", Qt::blue);
  AddPicture("application-pdf", Qt::red);
  EXPECT_EQ(ColourOf("/no/such/folder/a.pdf"), QColor(Qt::red));
  EXPECT_EQ(ColourOf("/a/b.PNG"), QColor(Qt::blue)) << "no picture of its own";
  EXPECT_EQ(ColourOf("/a.pdf/unknown.kind-of-file"), QColor(Qt::white))
      << "the folder's name counts for nothing";
}

TEST_F(IconThemeTest, ATypeThatIsNotKnownHasThePictureForIt) {
  AddPicture("unknown", Qt::green);
  EXPECT_EQ(ColourOf("/a/b.no-such-type"), QColor(Qt::green));
}

}  // namespace
