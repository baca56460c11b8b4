#include "controls/picture/PngDecoder.h"

#include <png.h>

#include <bit>
#include <memory>

namespace {

// QImage keeps a pixel as one 32-bit number, alpha highest; libpng names the order of its bytes.
constexpr png_uint_32 kPixelFormat =
    std::endian::native == std::endian::little ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;

struct TPngFree {
  void operator()(png_image* image) const { png_image_free(image); }
};

bool IsSizeAccepted(const png_image& image) {
  return image.width > 0 && image.height > 0 && image.width <= kMaxPngSide && image.height <= kMaxPngSide &&
         image.width <= kMaxPngPixels / image.height;
}

}  // namespace

QImage DecodePng(const QByteArray& bytes) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  const std::unique_ptr<png_image, TPngFree> owner(&png);

  if (png_image_begin_read_from_memory(&png, bytes.constData(), static_cast<std::size_t>(bytes.size())) == 0)
    return {};
  if (!IsSizeAccepted(png)) return {};

  // Without this a 16-bit picture that names no gamma would be taken as linear light and come out pale.
  png.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
  png.format = kPixelFormat;
  QImage image(static_cast<int>(png.width), static_cast<int>(png.height), QImage::Format_ARGB32);
  if (image.isNull()) return {};
  // Broken data may have filled part of the image; none of it is given out.
  if (png_image_finish_read(&png, nullptr, image.bits(), static_cast<png_int_32>(image.bytesPerLine()),
                            nullptr) == 0)
    return {};
  return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}
