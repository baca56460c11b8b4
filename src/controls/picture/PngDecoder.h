// Decoding of PNG data by libpng. Any thread.
#pragma once

#include <QByteArray>
#include <QImage>

// No picture of the program comes near these; they bound what a forged header can make us allocate.
inline constexpr int kMaxPngSide = 8192;
inline constexpr int kMaxPngPixels = 16 * 1024 * 1024;

// The picture as 32 bits per pixel, premultiplied, at a device pixel ratio of 1. Every colour type, depth,
// interlacing and transparency of the format is accepted. Null if the data is broken, cut short or too large.
[[nodiscard]] QImage DecodePng(const QByteArray& bytes);
