#include "controls/picture/PngFiles.h"

#include <png.h>

#include <QBuffer>

#include <vector>

QByteArray PngOf(const QImage& image) {
  QBuffer buffer;
  if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) return {};
  return buffer.data();
}

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
