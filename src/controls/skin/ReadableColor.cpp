#include "controls/skin/ReadableColor.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// Contrasts of light to dark, 1 to 21. A text with less than Least is brought to Good.
struct TContrastRule {
  double Least;
  double Good;
};
constexpr TContrastRule kNormalText{3.0, 7.0};
constexpr TContrastRule kPaleText{1.5, 3.0};
constexpr int kMixSteps = 8;

constexpr int kSampleColumns = 8;
constexpr int kSampleRows = 3;

double Linear(double part) {
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
  return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

QColor MixedTowards(const QColor& color, const QColor& end, int step) {
  const auto part = [step](int from, int to) { return from + (to - from) * step / kMixSteps; };
  return {part(color.red(), end.red()), part(color.green(), end.green()), part(color.blue(), end.blue())};
}

// The mean of pixels spread evenly over the area, which lies in the image.
QColor MeanColor(const QImage& image, const QRect& area) {
  int red = 0;
  int green = 0;
  int blue = 0;
  for (int row = 0; row < kSampleRows; ++row) {
    for (int column = 0; column < kSampleColumns; ++column) {
      const QRgb pixel = image.pixel(area.left() + area.width() * (2 * column + 1) / (2 * kSampleColumns),
                                     area.top() + area.height() * (2 * row + 1) / (2 * kSampleRows));
      red += qRed(pixel);
      green += qGreen(pixel);
      blue += qBlue(pixel);
    }
  }
  constexpr int kSamples = kSampleColumns * kSampleRows;
  return {red / kSamples, green / kSamples, blue / kSamples};
}

}  // namespace

QColor BackgroundBehind(const QPainter& painter, const QRect& area) {
  const auto* const image = dynamic_cast<const QImage*>(painter.device());
  if (image == nullptr) return {};
  const QRect pixels = painter.deviceTransform().mapRect(area).intersected(image->rect());
  return pixels.isEmpty() ? QColor() : MeanColor(*image, pixels);
}

QColor ReadableOn(const QColor& background, const QColor& text, bool pale) {
  const TContrastRule rule = pale ? kPaleText : kNormalText;
  if (!background.isValid() || Contrast(background, text) >= rule.Least) return text;
  const QColor end =
      Contrast(background, Qt::black) >= Contrast(background, Qt::white) ? Qt::black : Qt::white;
  for (int step = 1; step < kMixSteps; ++step) {
    const QColor mixed = MixedTowards(text, end, step);
    if (Contrast(background, mixed) >= rule.Good) return mixed;
  }
  return end;
}
