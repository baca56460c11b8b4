#pragma once

#include <QColor>
#include <QRect>

class QPainter;

// Fills from one colour to another: the first line (or, if not vertical, the first column) has the one, the
// last the other. A colour that is not valid, as for clNone, counts as the other one.
void FillGradient(QPainter& painter, const QRect& rect, const QColor& from, const QColor& to, bool vertical);

// From left to right in two halves, 50 per cent each.
void FillTwoPartGradient(QPainter& painter, const QRect& rect, const QColor& from, const QColor& middle,
                         const QColor& to);
