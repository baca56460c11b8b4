// What skins read from the pixels of a picture. Any thread.
#pragma once

#include "controls/picture/Picture.h"

#include <QImage>

// The pixels at one device pixel per pixel; null for an empty picture.
[[nodiscard]] QImage PicturePixels(const TPicture& picture, int density = 1);

// Top and bottom edge are of one colour and the middle of another, as judged by the first column.
[[nodiscard]] bool LooksFramed(const TPicture& picture);

// The picture in shades of grey, by luminance, in both densities.
[[nodiscard]] TPicture GrayPicture(const TPicture& picture);
