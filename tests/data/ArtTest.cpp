// The pictures as the program finds them: every drawing is embedded at both sizes, the icon theme
// serves every name, and the pieces of the progress bar fit together.

#include <gtest/gtest.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QTextStream>
#include <QXmlStreamReader>
#include <map>
#include <vector>

namespace {

using namespace Qt::StringLiterals;

QString DataFolder() {
  return qEnvironmentVariable("TALLYSCOPE_SOURCE_DIR") + u"/data"_qs;
}

QByteArray ReadFile(const QString& name) {
  QFile file(DataFolder() + name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage Art(const QString& name) {
  return QImage(u":/art/%1.png"_qs.arg(name));
}

QSize DrawnSize(const QString& svgPath) {
  QFile file(svgPath);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QXmlStreamReader reader(&file);
  reader.readNextStartElement();
  return {reader.attributes().value("width"_L1).toInt(), reader.attributes().value("height"_L1).toInt()};
}

// Each picture's name and its size in device-independent pixels, from the drawings.
std::map<QString, QSize> ExpectedPictures() {
  std::map<QString, QSize> pictures;
  const QFileInfoList drawings = QDir(DataFolder() + u"/art"_qs).entryInfoList({u"*.svg"_qs});
  for (const QFileInfo& drawing : drawings) {
    const QString name = drawing.completeBaseName();
    if (name != "tallyscope"_L1) pictures[name] = DrawnSize(drawing.filePath());
  }
  for (int size : {48, 64, 128, 256})
    pictures[u"tallyscope%1"_qs.arg(size)] = QSize(size, size);
  return pictures;
}

struct ThemeRow {
  QString Icon;
  QString Picture16;
  QString Picture32;
};

std::vector<ThemeRow> ThemeRows() {
  std::vector<ThemeRow> rows;
  QFile file(DataFolder() + u"/icons/theme.txt"_qs);
  if (!file.open(QIODevice::ReadOnly)) return rows;
  for (QTextStream text(&file); !text.atEnd();) {
    const QStringList words = text.readLine().split(u' ', Qt::SkipEmptyParts);
    if (words.size() == 3) rows.push_back({words[0], words[1], words[2]});
  }
  return rows;
}

QImage On(const QImage& picture, const QColor& page) {
  QImage image(picture.size(), QImage::Format_RGB32);
  image.fill(page);
  QPainter(&image).drawImage(0, 0, picture);
  return image;
}

// How many pixels stand out from the page by at least a tenth of the full range.
int VisiblePixels(const QImage& picture, const QColor& page) {
  const QImage image = On(picture, page);
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (qAbs(qGray(image.pixel(x, y)) - qGray(page.rgb())) > 25) ++count;
    }
  }
  return count;
}

bool SameColumn(const QImage& left, int leftX, const QImage& right, int rightX) {
  for (int y = 0; y < left.height(); ++y) {
    if (left.pixel(leftX, y) != right.pixel(rightX, y)) return false;
  }
  return true;
}

TEST(Art, EveryDrawingIsEmbeddedAtBothSizes) {
  const auto pictures = ExpectedPictures();
  ASSERT_GT(pictures.size(), 80u);
  for (const auto& [name, size] : pictures) {
    EXPECT_EQ(Art(name).size(), size) << name.toStdString();
    EXPECT_EQ(Art(name + u"@2x"_qs).size(), 2 * size) << name.toStdString();
  }
}

TEST(Art, NoPictureOutlivesItsDrawing) {
  const auto pictures = ExpectedPictures();
  for (QString name : QDir(u":/art"_qs).entryList(QDir::Files)) {
    name.remove(u".png"_qs).remove(u"@2x"_qs);
    EXPECT_TRUE(pictures.contains(name)) << name.toStdString();
  }
}

TEST(Art, TheIconOfTheWindowsProgramsHoldsThePicturesOfToday) {
  const QByteArray icon = ReadFile(u"/windows/tallyscope.ico"_qs);
  for (const int size : {16, 32, 48, 64, 128, 256}) {
    const QByteArray picture = ReadFile(u"/art/png/tallyscope%1.png"_qs.arg(size));
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

void ExpectThemeServes(const ThemeRow& row) {
  const QIcon icon = QIcon::fromTheme(row.Icon);
  ASSERT_FALSE(icon.isNull()) << row.Icon.toStdString();
  for (const auto& [size, picture] : {std::pair(16, row.Picture16), std::pair(32, row.Picture32)}) {
    for (int scale : {1, 2}) {
      const QImage shown = icon.pixmap(QSize(size, size), scale).toImage();
      const QImage drawn = Art(scale == 2 ? picture + u"@2x"_qs : picture);
      EXPECT_EQ(shown.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                drawn.convertToFormat(QImage::Format_ARGB32_Premultiplied))
          << row.Icon.toStdString() << " at " << size << " x " << scale;
    }
  }
}

// A desktop without a theme takes ours as its theme; behind a theme that lacks an icon it is the fallback.
TEST(Art, ThemeServesEveryNameAloneAndAsFallback) {
  const auto rows = ThemeRows();
  ASSERT_GT(rows.size(), 20u);
  QIcon::setFallbackThemeName(u"tallyscope"_qs);
  for (const QString& theme : {u"tallyscope"_qs, u"no-such-theme"_qs}) {
    QIcon::setThemeName(theme);
    for (const ThemeRow& row : rows)
      ExpectThemeServes(row);
  }
}

class ProgressPieces : public ::testing::TestWithParam<const char*> {};

TEST_P(ProgressPieces, CapsAreRoundAndJoinTheMiddle) {
  const QStringList parts = QString::fromLatin1(GetParam()).split(u'|');
  const QImage left = Art(parts[0] + u"_l"_qs + parts[1]);
  const QImage middle = Art(parts[0] + u"_mid"_qs + parts[1]);
  const QImage right = Art(parts[0] + u"_r"_qs + parts[1]);
  ASSERT_FALSE(left.isNull() || middle.isNull() || right.isNull());
  const int last = right.width() - 1;
  const int bottom = left.height() - 1;
  EXPECT_LT(qAlpha(left.pixel(0, 0)), 40);
  EXPECT_LT(qAlpha(left.pixel(0, bottom)), 40);
  EXPECT_EQ(left.pixel(0, 0), right.pixel(last, 0));
  EXPECT_GT(qAlpha(middle.pixel(0, 0)), 40);
  for (int x = 0; x < middle.width(); ++x)
    EXPECT_TRUE(SameColumn(middle, 0, middle, x)) << x;
  EXPECT_TRUE(SameColumn(left, last, middle, 0));
  EXPECT_TRUE(SameColumn(right, 0, middle, 0));
}

INSTANTIATE_TEST_SUITE_P(Sizes, ProgressPieces, ::testing::Values("bg|", "fg|", "bg|@2x", "fg|@2x"));

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
