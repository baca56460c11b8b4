// The pictures as the program finds them: every drawing is embedded at both sizes, the icon theme
// serves every name, and the pieces of the progress bar fit together.

#include <gtest/gtest.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QXmlStreamReader>
#include <map>

namespace {

using namespace Qt::StringLiterals;

QString DataFolder() {
  return qEnvironmentVariable("TALLYSCOPE_SOURCE_DIR") + u"/data"_qs;
}

QImage Art(const QString& name) {
  return QImage(u":/art/%1.png"_qs.arg(name));
}

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Each picture's name and its size in device-independent pixels, from the drawings.
std::map<QString, QSize> ExpectedPictures() {
  std::map<QString, QSize> pictures;
  for (const QFileInfo& drawing : QDir(DataFolder() + u"/art"_qs).entryInfoList({u"*.svg"_qs})) {
    QXmlStreamReader reader(ReadFile(drawing.filePath()));
    reader.readNextStartElement();
    const auto size = reader.attributes();
    pictures[drawing.completeBaseName()] = {size.value("width"_L1).toInt(), size.value("height"_L1).toInt()};
  }
  pictures.erase(u"tallyscope"_qs);
  for (int size : {48, 64, 128, 256})
    pictures[u"tallyscope%1"_qs.arg(size)] = QSize(size, size);
  return pictures;
}

// How many pixels stand out from the page by at least a tenth of the full range.
int VisiblePixels(const QImage& picture, const QColor& page) {
  QImage image(picture.size(), QImage::Format_RGB32);
  image.fill(page);
  QPainter(&image).drawImage(0, 0, picture);
  int count = 0;
  for (int at = 0; at < image.width() * image.height(); ++at)
    if (qAbs(qGray(image.pixel(at % image.width(), at / image.width())) - qGray(page.rgb())) > 25) ++count;
  return count;
}

TEST(Art, EveryDrawingIsEmbeddedAtBothSizesAndNoPictureOutlivesItsDrawing) {
  const auto pictures = ExpectedPictures();
  ASSERT_GT(pictures.size(), 80u);
  for (const auto& [name, size] : pictures) {
    EXPECT_EQ(Art(name).size(), size) << name.toStdString();
    EXPECT_EQ(Art(name + u"@2x"_qs).size(), 2 * size) << name.toStdString();
  }
  for (QString name : QDir(u":/art"_qs).entryList(QDir::Files)) {
    name.remove(u".png"_qs).remove(u"@2x"_qs);
    EXPECT_TRUE(pictures.contains(name)) << name.toStdString();
  }
}

TEST(Art, TheIconOfTheWindowsProgramsHoldsThePicturesOfToday) {
  const QByteArray icon = ReadFile(DataFolder() + u"/windows/tallyscope.ico"_qs);
  for (const int size : {16, 32, 48, 64, 128, 256}) {
    const QByteArray picture = ReadFile(DataFolder() + u"/art/png/tallyscope%1.png"_qs.arg(size));
    EXPECT_TRUE(!picture.isEmpty() && icon.contains(picture)) << size << ": call tools/render-art";
  }
}

// The tracks of the progress bar, the bands and the header's sheen are faint or page-coloured on purpose.
TEST(Art, PicturesShowOnLightAndDarkPages) {
  for (const auto& [name, size] : ExpectedPictures()) {
    if (name.startsWith("bg_"_L1) || name.startsWith("band"_L1) || name == "HeaderBackGround"_L1) continue;
    for (const QColor page : {QColor(Qt::white), QColor(0x20, 0x23, 0x27)}) {
      EXPECT_GT(VisiblePixels(Art(name), page), size.width() * size.height() / 10)
          << name.toStdString() << " on " << page.name().toStdString();
    }
  }
}

// A desktop without a theme takes ours as its theme; behind a theme that lacks an icon it is the fallback.
TEST(Art, ThemeServesEveryNameAloneAndAsFallback) {
  QIcon::setFallbackThemeName(u"tallyscope"_qs);
  int served = 0;
  for (const QString& theme : {u"tallyscope"_qs, u"no-such-theme"_qs}) {
    QIcon::setThemeName(theme);
    for (const QByteArray& line : ReadFile(DataFolder() + u"/icons/theme.txt"_qs).split('\n')) {
      const QStringList words = QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
      if (words.size() != 3) continue;  // an icon, and its pictures of 16 and of 32 pixels
      for (const auto& [size, scale] : {std::pair(16, 1), {16, 2}, {32, 1}, {32, 2}}) {
        const QImage shown = QIcon::fromTheme(words[0]).pixmap(QSize(size, size), scale).toImage();
        const QImage drawn = Art(words[size / 16] + (scale == 2 ? u"@2x"_qs : QString()));
        EXPECT_EQ(shown.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                  drawn.convertToFormat(QImage::Format_ARGB32_Premultiplied))
            << line.constData() << " at " << size << " x " << scale;
        served += shown.isNull() ? 0 : 1;
      }
    }
  }
  EXPECT_GT(served, 2 * 4 * 20);
}

TEST(ProgressPieces, CapsAreRoundAndJoinTheMiddle) {
  for (const QString& parts : {u"bg|"_qs, u"fg|"_qs, u"bg|@2x"_qs, u"fg|@2x"_qs}) {
    const auto art = [&](const QString& piece) { return Art(QString(parts).replace(u"|"_qs, piece)); };
    const QImage left = art(u"_l"_qs), middle = art(u"_mid"_qs), right = art(u"_r"_qs);
    ASSERT_FALSE(left.isNull() || middle.isNull() || right.isNull());
    const int last = right.width() - 1, bottom = left.height() - 1;
    const auto column = [](const QImage& image, int x) {
      return image.convertToFormat(QImage::Format_ARGB32).copy(x, 0, 1, image.height());
    };
    EXPECT_TRUE(qAlpha(left.pixel(0, 0)) < 40 && qAlpha(left.pixel(0, bottom)) < 40);
    EXPECT_EQ(left.pixel(0, 0), right.pixel(last, 0));
    EXPECT_GT(qAlpha(middle.pixel(0, 0)), 40);
    for (int x = 0; x < middle.width(); ++x)
      EXPECT_EQ(column(middle, x), column(middle, 0)) << x;
    EXPECT_EQ(column(left, left.width() - 1), column(middle, 0));
    EXPECT_EQ(column(right, 0), column(middle, 0));
  }
}

// What is drawn in the place of another has its size, in both skins and at both densities.
TEST(SampleSkins, AreAlikeAndWhole) {
  const QStringList names = QDir(u":/art/skins/light"_qs).entryList({u"*.png"_qs});
  EXPECT_EQ(names, QDir(u":/art/skins/dark"_qs).entryList({u"*.png"_qs}));
  ASSERT_GT(names.size(), 80);
  for (const QString& file : names) {
    if (file.contains(u'@')) continue;
    const QString name = file.chopped(4);
    const QSize size = QImage(u":/art/skins/light/"_qs + file).size();
    EXPECT_EQ(QImage(u":/art/skins/dark/"_qs + file).size(), size) << name.toStdString();
    for (const QString& skin : {u"light"_qs, u"dark"_qs})
      EXPECT_EQ(QImage(u":/art/skins/%1/%2@2x.png"_qs.arg(skin, name)).size(), 2 * size)
          << name.toStdString();
    const int thickness = name.startsWith(u"Vert_"_qs)   ? size.width()
                          : name.startsWith(u"Horz_"_qs) ? size.height()
                                                         : 14;
    EXPECT_EQ(thickness, 14) << name.toStdString();
  }
}

}  // namespace
