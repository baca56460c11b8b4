// Platform colour values, as skins and rows hold them, what they look like in a palette, and colours of text
// that can be read. Main thread.
#pragma once

#include <QColor>
#include <QPalette>

#include <cstdint>

// 0x00BBGGRR, or a system colour: kFirstSystemColor plus its index, or clNone or clDefault.
using TColor = std::int32_t;

// Neither a colour of 24 bits nor a system colour.
inline constexpr TColor clNone = 536870911;
inline constexpr TColor clDefault = 536870912;
inline constexpr TColor clSilver = 12632256;
inline constexpr TColor clCream = 15793151;

inline constexpr TColor kFirstSystemColor = -16777216;
inline constexpr TColor clScrollBar = kFirstSystemColor;
inline constexpr TColor clBackground = kFirstSystemColor + 1;
inline constexpr TColor clWindow = kFirstSystemColor + 5;
inline constexpr TColor clWindowFrame = kFirstSystemColor + 6;
inline constexpr TColor clWindowText = kFirstSystemColor + 8;
inline constexpr TColor clHighlight = kFirstSystemColor + 13;
inline constexpr TColor clHighlightText = kFirstSystemColor + 14;
inline constexpr TColor clBtnFace = kFirstSystemColor + 15;
inline constexpr TColor clBtnShadow = kFirstSystemColor + 16;
inline constexpr TColor clGrayText = kFirstSystemColor + 17;
inline constexpr TColor clBtnText = kFirstSystemColor + 18;
inline constexpr TColor clBtnHighlight = kFirstSystemColor + 20;
inline constexpr TColor cl3DDkShadow = kFirstSystemColor + 21;
inline constexpr TColor cl3DLight = kFirstSystemColor + 22;
inline constexpr TColor clInfoText = kFirstSystemColor + 23;
inline constexpr TColor clInfoBk = kFirstSystemColor + 24;

// System colours come from the palette, so they follow a dark one. Invalid for clNone and clDefault, whose
// meaning is the caller's; the window's colour for an index that no system has.
[[nodiscard]] QColor ToQColor(TColor color, const QPalette& palette);
[[nodiscard]] TColor ToTColor(const QColor& color);

// Adds to each of red, green and blue and clamps to 0..255.
[[nodiscard]] QColor Shaded(const QColor& color, int amount);

// The part `factor` of 255 of `other` in `color`: 0 gives `color`, 255 gives `other`. Throws
// std::invalid_argument for a factor outside 0..255.
[[nodiscard]] QColor Mixed(const QColor& color, const QColor& other, int factor);

class QPainter;
class QRect;

// Colours of text that can be read on whatever was painted before it.
//
// Skins and styles draw backgrounds in colours and pictures of their own, most of them light, while text has
// the palette's colour, which is light on a dark desktop. So the pixels behind a text are looked at: if its
// own colour stands out too little there, it is mixed with black or white, whichever is farther from the
// background, just as much as it takes. On the palettes that a background was drawn for nothing changes.

// The colour behind that area, from a sample of its pixels. Invalid unless the painter paints on an image.
[[nodiscard]] QColor BackgroundBehind(const QPainter& painter, const QRect& area);

// The colour itself, or one of its shades with enough contrast. Pale: disabled text, which may be faint, as
// long as it shows.
[[nodiscard]] QColor ReadableOn(const QColor& background, const QColor& text, bool pale = false);
