#include "controls/skin/Colors.h"

#include <algorithm>
#include <array>
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
