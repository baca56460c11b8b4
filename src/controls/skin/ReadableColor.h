// Colours of text that can be read on whatever was painted before it.
//
// Skins and styles draw backgrounds in colours and pictures of their own, most of them light, while text has
// the palette's colour, which is light on a dark desktop. So the pixels behind a text are looked at: if its
// own colour stands out too little there, it is mixed with black or white, whichever is farther from the
// background, just as much as it takes. On the palettes that a background was drawn for nothing changes.
#pragma once

#include <QColor>

class QPainter;
class QRect;

// The colour behind that area, from a sample of its pixels. Invalid unless the painter paints on an image.
[[nodiscard]] QColor BackgroundBehind(const QPainter& painter, const QRect& area);

// The colour itself, or one of its shades with enough contrast. Pale: disabled text, which may be faint, as
// long as it shows.
[[nodiscard]] QColor ReadableOn(const QColor& background, const QColor& text, bool pale = false);
