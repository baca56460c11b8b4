// A picture of the interface with the sizes that it is drawn for. Main thread.
//
// The program's own pictures are rendered from SVGs, most in two densities (tools/render-art); a name in the
// resource is the name of that file. A caller gives sizes and places in device-independent pixels and leaves
// the choice of the density to Draw.
#pragma once

#include <QIcon>
#include <QImage>
#include <QRect>
#include <QSize>
#include <QString>

class QPainter;

// A value; copies share their pixels. Sizes are device-independent pixels.
class TPicture {
 public:
  TPicture() = default;

  // The picture at one device pixel per pixel and, if there is one, at two.
  explicit TPicture(const QImage& oneX, const QImage& twoX = {});

  // The program's own picture ":/art/<name>.png", with ":/art/<name>@2x.png" where that exists. Empty if
  // neither can be decoded.
  [[nodiscard]] static TPicture FromResource(const QString& name);

  // The icon rendered at that size, in both densities. Empty for a null icon.
  [[nodiscard]] static TPicture FromIcon(const QIcon& icon, QSize size);

  [[nodiscard]] bool Empty() const { return FOneX.isNull() && FTwoX.isNull(); }

  // 0 by 0 if empty.
  [[nodiscard]] QSize Size() const;

  // Draws at the corner of `target` in its own size, or stretched over all of it. Takes the denser image on
  // a device of more than one pixel per pixel.
  void Draw(QPainter& painter, const QRect& target, bool stretch = false) const;

  // The pixels for a device of that density; a null image if empty.
  [[nodiscard]] const QImage& ImageFor(qreal devicePixelRatio) const;

  [[nodiscard]] QIcon ToIcon() const;

 private:
  QImage FOneX;
  QImage FTwoX;
};
