// The report as one page for any browser, with a map of the folders.
#pragma once

#include "report/ReportOutput.h"

#include <QByteArray>

// The two pictures of the page, of which the browser shows the one that suits its window.
struct TMapShape {
  const char* Name;
  int Width;  // pixels
  int Height;
  int MostTiles;
};
inline constexpr TMapShape kMapShapes[] = {{"wide", 1200, 660, 1500}, {"narrow", 358, 560, 500}};

// Valid HTML in UTF-8 without scripts and without anything from elsewhere; the browser is told to refuse
// both. At most a MiB, whatever the names of files are, which mean nothing to the browser (HtmlText). Every
// tile of a map has a title with its path, its size, "(N bytes)" and its share. Lengths have three decimals,
// so that a tile's area is right within a square pixel.
[[nodiscard]] QByteArray ReportAsHtml(const TReport& report);
