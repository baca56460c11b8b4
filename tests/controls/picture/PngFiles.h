// PNG data for tests.
#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

// As Qt writes the picture: the format of the image decides the colour type and the depth.
QByteArray PngOf(const QImage& image);

// What Qt does not write: 8 bits of gray or RGB per channel, of one colour, with that colour or another
// transparent by a key, interlaced or not.
struct TRawPng {
  int Side = 9;
  bool Gray = false;
  int Level = 0;  // of every channel
  std::optional<int> TransparentLevel = {};
  bool Interlaced = false;
};
QByteArray PngOf(const TRawPng& raw);
