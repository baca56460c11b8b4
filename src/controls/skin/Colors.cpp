#include "controls/skin/Colors.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

namespace {

constexpr int kFrameStrength = 102;  // of 255: how much of the text's colour a window frame has

struct TRoleOf {
  QPalette::ColorRole Role;
  QPalette::ColorGroup Group = QPalette::Current;
};

// By index of the system colour.
constexpr std::array<TRoleOf, 31> kSystemColors{{
    {QPalette::Mid},                             // scroll bar
    {QPalette::Window},                          // desktop
    {QPalette::Highlight},                       // active caption
    {QPalette::Mid},                             // inactive caption
    {QPalette::Window},                          // menu
    {QPalette::Base},                            // window
    {QPalette::WindowText},                      // window frame, see FrameColor
    {QPalette::WindowText},                      // menu text
    {QPalette::Text},                            // window text
    {QPalette::HighlightedText},                 // caption text
    {QPalette::Button},                          // active border
    {QPalette::Button},                          // inactive border
    {QPalette::Dark},                            // application work space
    {QPalette::Highlight},                       // highlight
    {QPalette::HighlightedText},                 // highlight text
    {QPalette::Button},                          // button face
    {QPalette::Dark},                            // button shadow
    {QPalette::WindowText, QPalette::Disabled},  // gray text
    {QPalette::ButtonText},                      // button text
    {QPalette::WindowText},                      // inactive caption text
    {QPalette::Light},                           // button highlight
    {QPalette::Shadow},                          // 3D dark shadow
    {QPalette::Midlight},                        // 3D light
    {QPalette::ToolTipText},                     // tip text
    {QPalette::ToolTipBase},                     // tip background
    {QPalette::Window},                          // not in use
    {QPalette::Link},                            // hot light
    {QPalette::Highlight},                       // active caption's gradient
    {QPalette::Mid},                             // inactive caption's gradient
    {QPalette::Highlight},                       // menu highlight
    {QPalette::Window},                          // menu bar
}};

// Between text and background, so that a frame shows on light and dark ones alike.
QColor FrameColor(const QPalette& palette) {
  return Mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText), kFrameStrength);
}

QColor SystemColor(int index, const QPalette& palette) {
  if (index == clWindowFrame - kFirstSystemColor) return FrameColor(palette);
  if (index >= static_cast<int>(kSystemColors.size())) return palette.color(QPalette::Window);
  const TRoleOf& role = kSystemColors[static_cast<std::size_t>(index)];
  return palette.color(role.Group, role.Role);
}

}  // namespace

QColor ToQColor(TColor color, const QPalette& palette) {
  if (color == clNone || color == clDefault) return {};
  constexpr TColor kIndexMask = 0x00FFFFFF;
  if (color < 0) return SystemColor(color & kIndexMask, palette);
  return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

TColor ToTColor(const QColor& color) {
  return color.red() | color.green() << 8 | color.blue() << 16;
}

QColor Shaded(const QColor& color, int amount) {
  const auto shaded = [amount](int part) { return std::clamp(part + amount, 0, 255); };
  return QColor(shaded(color.red()), shaded(color.green()), shaded(color.blue()), color.alpha());
}

QColor Mixed(const QColor& color, const QColor& other, int factor) {
  if (factor < 0 || factor > 255) throw std::invalid_argument("mix factor outside 0..255");
  const auto mixed = [factor](int from, int to) { return from + (to - from) * factor / 255; };
  return QColor(mixed(color.red(), other.red()), mixed(color.green(), other.green()),
                mixed(color.blue(), other.blue()), mixed(color.alpha(), other.alpha()));
}

namespace {

// Contrasts of light to dark, 1 to 21. A text with less than Least is brought to Good.
//
// Contrast is the ratio of luminances as guidelines for readable text define it; they ask 3 of large text and
// 7 of small text at their strictest.
struct TContrastRule {
  double Least;
  double Good;
};
constexpr TContrastRule kNormalText{3.0, 7.0};
constexpr TContrastRule kPaleText{1.5, 3.0};
constexpr int kMixSteps = 8;

// Pixels that are looked at behind a text, whatever its size: a paint looks behind each text.
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
  // Device pixels of the image, in the part that the area covers.
  const QRect pixels = painter.deviceTransform().mapRect(area).intersected(image->rect());
  return pixels.isEmpty() ? QColor() : MeanColor(*image, pixels);
}

QColor ReadableOn(const QColor& background, const QColor& text, bool pale) {
  const TContrastRule rule = pale ? kPaleText : kNormalText;
  if (!background.isValid() || Contrast(background, text) >= rule.Least) return text;
  const QColor end =
      Contrast(background, Qt::black) >= Contrast(background, Qt::white) ? Qt::black : Qt::white;
  // The first shade that is good enough, so that a colour keeps as much of itself as can be.
  for (int step = 1; step < kMixSteps; ++step) {
    const QColor mixed = MixedTowards(text, end, step);
    if (Contrast(background, mixed) >= rule.Good) return mixed;
  }
  return end;
}
