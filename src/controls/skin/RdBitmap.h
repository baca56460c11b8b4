// An off-screen bitmap that can be given any size, and the pixels of pictures. Main thread.
#pragma once

#include <QImage>
#include <QSize>

#include <optional>

class QPainter;
class TPicture;

// Copies share their pixels until one of them is painted on.
class TRdBitmap {
 public:
  TRdBitmap() = default;
  explicit TRdBitmap(QImage image) : FImage(std::move(image)) {}

  // In device-independent pixels; `density` is the device's pixels per one of them. A size of 0 or less in
  // either axis frees the pixels. Says whether there are pixels now: none for such a size, or if memory
  // lacks. Keeps the content if the size is the present one; after a change it is undefined.
  bool SetSize(QSize size, qreal density = 1.0);

  [[nodiscard]] bool Empty() const { return FImage.isNull(); }
  // Device-independent; 0 by 0 if empty.
  [[nodiscard]] QSize Size() const { return FImage.deviceIndependentSize().toSize(); }

  // To paint on: 32 bits, premultiplied alpha.
  [[nodiscard]] QImage& Image() { return FImage; }
  [[nodiscard]] const QImage& Image() const { return FImage; }

  // Copies the part `area` of the bitmap to `at`. Both are device-independent.
  void Blit(QPainter& painter, QPoint at, const QRect& area) const;

  // Pixels of that colour are left out when the bitmap is drawn as a picture.
  void SetTransparentColor(std::optional<QColor> color) { FTransparentColor = color; }
  // The image to draw it by as a picture, with the transparent colour cut out.
  [[nodiscard]] QImage Picture() const;

 private:
  QImage FImage;
  std::optional<QColor> FTransparentColor;
};

// The pixels at one device pixel per pixel; null for an empty picture.
[[nodiscard]] QImage PicturePixels(const TPicture& picture, int density = 1);

// The picture in shades of grey, by luminance, in both densities.
[[nodiscard]] TPicture GrayPicture(const TPicture& picture);
