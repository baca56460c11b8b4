// Check boxes, buttons and arrows as the window style draws them, for skins without pictures.
#pragma once

#include "controls/list/rd/layout/PartState.h"

#include <QRect>

class QPainter;
class QWidget;

void DrawThemeCheckBox(QPainter& painter, const QRect& rect, bool checked, bool enabled,
                       const QWidget& widget);
void DrawThemeButton(QPainter& painter, const QRect& rect, TPartState state, bool enabled,
                     const QWidget& widget);
// The button at the right end of a combo box.
void DrawThemeDropButton(QPainter& painter, const QRect& rect, TPartState state, bool enabled,
                         const QWidget& widget);
// A flat button with an arrow; up or down.
void DrawThemeExpandButton(QPainter& painter, const QRect& rect, bool up, TPartState state,
                           const QWidget& widget);
