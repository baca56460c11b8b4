#include "controls/picture/PngDecoder.h"

#include <gtest/gtest.h>

#include <png.h>

#include <QBuffer>

#include <cstdlib>
#include <optional>
#include <vector>

namespace {

// As Qt writes the picture: the format of the image decides the colour type and the depth.
QByteArray PngOf(const QImage& image) {
  QBuffer buffer;
  if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) return {};
  return buffer.data();
}

// What Qt does not write: 8 bits of gray or RGB per channel, of one colour, with that colour or another
// transparent by a key, interlaced or not.
struct TRawPng {
  int Side = 9;
  bool Gray = false;
  int Level = 0;  // of every channel
  std::optional<int> TransparentLevel = {};
  bool Interlaced = false;
};

QByteArray PngOf(const TRawPng& raw) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  QByteArray bytes;
  png_set_write_fn(
      png, &bytes,
      [](png_structp self, png_bytep data, std::size_t size) {
        static_cast<QByteArray*>(png_get_io_ptr(self))
            ->append(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
      },
      nullptr);
  const auto side = static_cast<png_uint_32>(raw.Side);
  png_set_IHDR(png, info, side, side, 8, raw.Gray ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB,
               raw.Interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  if (raw.TransparentLevel) {
    const auto level = static_cast<png_uint_16>(*raw.TransparentLevel);
    const png_color_16 key{0, level, level, level, level};
    png_set_tRNS(png, info, nullptr, 0, &key);
  }
  png_write_info(png, info);
  std::vector<png_byte> row(static_cast<std::size_t>(raw.Side) * 3, static_cast<png_byte>(raw.Level));
  std::vector<png_bytep> rows(static_cast<std::size_t>(raw.Side), row.data());
  png_write_image(png, rows.data());
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return bytes;
}

QRgb Middle(const QImage& image) {
  return image.pixel(image.width() / 2, image.height() / 2);
}

int Distance(QRgb a, QRgb b) {
  return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b)) +
         std::abs(qAlpha(a) - qAlpha(b));
}

// Different in every pixel, with every alpha.
QImage Ramp() {
  QImage image(16, 16, QImage::Format_ARGB32);
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x)
      image.setPixel(x, y, qRgba(x * 17, y * 17, 255 - x * 17, y * 16 + x));
  return image;
}

}  // namespace

TEST(PngDecoder, EveryPixelComesOutPremultipliedAndInItsPlace) {
  const QImage decoded = DecodePng(PngOf(Ramp()));
  EXPECT_EQ(decoded.format(), QImage::Format_ARGB32_Premultiplied);
  EXPECT_EQ(decoded, Ramp().convertToFormat(QImage::Format_ARGB32_Premultiplied));
  const auto* row = reinterpret_cast<const QRgb*>(decoded.constScanLine(8));
  EXPECT_EQ(row[0], qRgba(0, 68, 128, 128)) << "stored value of (0, 136, 255) at half opacity";
}

TEST(PngDecoder, EveryKindOfPixelComesOutRight) {
  const QRgb color = qRgb(102, 51, 204);  // one that Qt has in its palette
  const QRgb gray = qRgb(89, 89, 89);
  const std::pair<QImage::Format, QRgb> cases[] = {{QImage::Format_RGB32, color},
                                                   {QImage::Format_ARGB32, color},
                                                   {QImage::Format_Indexed8, color},
                                                   {QImage::Format_RGBA64, color},
                                                   {QImage::Format_Grayscale8, gray},
                                                   {QImage::Format_Grayscale16, gray},
                                                   {QImage::Format_Mono, qRgb(255, 255, 255)}};
  for (const auto& [format, fill] : cases) {
    QImage image(5, 3, QImage::Format_ARGB32);
    image.fill(fill);
    const QRgb got = Middle(DecodePng(PngOf(image.convertToFormat(format))));
    EXPECT_LE(Distance(got, fill), 2) << "format " << format << " gave " << std::hex << got;
  }
}

TEST(PngDecoder, TransparencyIsKeptAndInterlacedPicturesAreWhole) {
  EXPECT_EQ(qAlpha(Middle(DecodePng(PngOf({.Gray = true, .Level = 70, .TransparentLevel = 70})))), 0);
  EXPECT_EQ(Middle(DecodePng(PngOf({.Gray = true, .Level = 70, .TransparentLevel = 71}))), qRgb(70, 70, 70));
  EXPECT_EQ(qAlpha(Middle(DecodePng(PngOf({.Gray = false, .Level = 9, .TransparentLevel = 9})))), 0);
  QImage palette(4, 4, QImage::Format_Indexed8);
  palette.setColorTable({qRgba(200, 100, 0, 51)});
  palette.fill(0);
  EXPECT_EQ(Middle(DecodePng(PngOf(palette)).convertToFormat(QImage::Format_ARGB32)), qRgba(200, 100, 0, 51));

  const QImage decoded = DecodePng(PngOf({.Side = 21, .Level = 123, .Interlaced = true}));
  QImage expected(21, 21, QImage::Format_ARGB32_Premultiplied);
  expected.fill(qRgb(123, 123, 123));
  EXPECT_EQ(decoded, expected);
}

TEST(PngDecoder, ACutPictureIsNullOrWholeButNeverHalf) {
  const QByteArray bytes = PngOf(Ramp());
  const QImage whole = DecodePng(bytes);
  constexpr int kEndChunk = 12;  // neither carries a pixel
  constexpr int kChecksums = 8;
  for (int size = 0; size < bytes.size(); ++size) {
    const QImage cut = DecodePng(bytes.left(size));
    const bool hasAllPixels = size >= bytes.size() - kEndChunk - kChecksums;
    EXPECT_TRUE(cut.isNull() || (hasAllPixels && cut == whole)) << size;
  }
  for (const QByteArray& none : {QByteArray("GIF89a and more of it"), QByteArray(5000, '\0')})
    EXPECT_TRUE(DecodePng(none).isNull()) << none.left(9).data();
}

TEST(PngDecoder, AFlippedBitNeverHarms) {
  const QByteArray bytes = PngOf(Ramp());
  int refused = 0;
  for (int bit = 0; bit < bytes.size() * 8; ++bit) {
    QByteArray broken = bytes;
    broken[bit / 8] = static_cast<char>(broken[bit / 8] ^ (1 << bit % 8));
    refused += DecodePng(broken).isNull() ? 1 : 0;
  }
  EXPECT_GT(refused, bytes.size() * 8 / 2) << "the checksums are not looked at";
}

TEST(PngDecoder, SizesAreBounded) {
  const auto isDecoded = [](int width, int height) {
    QImage image(width, height, QImage::Format_Mono);
    image.fill(0);
    return !DecodePng(PngOf(image)).isNull();
  };
  EXPECT_TRUE(isDecoded(kMaxPngSide, 1) && isDecoded(1, kMaxPngSide));
  EXPECT_FALSE(isDecoded(kMaxPngSide + 1, 1) || isDecoded(1, kMaxPngSide + 1));
  EXPECT_TRUE(isDecoded(kMaxPngSide, kMaxPngPixels / kMaxPngSide));
  EXPECT_FALSE(isDecoded(kMaxPngSide, kMaxPngPixels / kMaxPngSide + 1));
}
