#include "controls/list/rd/painter/RdDrawing.h"

#include "controls/skin/Colors.h"

#include <QLinearGradient>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QWidget>

namespace {

// Between the middles of the first and the last pixel.
QLinearGradient GradientOver(const QRectF& rect, bool vertical) {
  const QPointF half(0.5, 0.5);
  return vertical ? QLinearGradient(rect.topLeft() + half, rect.bottomLeft() + QPointF(0.5, -0.5))
                  : QLinearGradient(rect.topLeft() + half, rect.topRight() + QPointF(-0.5, 0.5));
}

constexpr int kDark = 128;  // of 255
constexpr int kArrowInset = 3;

template <class TOption>
TOption OptionFor(const QWidget& widget, const QRect& rect, TPartState state, bool enabled) {
  TOption option;
  option.initFrom(&widget);
  option.styleObject = nullptr;  // else a style that animates would take all cells for one thing
  option.rect = rect;
  option.state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver);
  option.state.setFlag(QStyle::State_Enabled, enabled);
  option.state.setFlag(QStyle::State_MouseOver, enabled && state == TPartState::Hot);
  option.state |= enabled && state == TPartState::Pressed ? QStyle::State_Sunken : QStyle::State_Raised;
  if (!enabled) option.palette.setCurrentColorGroup(QPalette::Disabled);
  return option;
}

void DrawArrow(QPainter& painter, const QStyleOption& option, bool up, const QWidget& widget) {
  QStyleOption arrow = option;
  arrow.rect = option.rect.adjusted(kArrowInset, kArrowInset, -kArrowInset, -kArrowInset);
  widget.style()->drawPrimitive(up ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown, &arrow,
                                &painter, &widget);
}

}  // namespace

// Other pixels are made for another size only: the rows of one paint share the same.
TRowCanvas::TRowCanvas(QPainter& target, TRdBitmap& bitmap, const QRect& area)
    : FTarget(target), FBitmap(bitmap), FArea(area) {
  if (!FBitmap.SetSize(area.size(), target.device()->devicePixelRatioF())) return;
  FPainter.begin(&FBitmap.Image());
  FPainter.translate(-area.topLeft());
}

void TRowCanvas::Blit() {
  FPainter.end();
  FBitmap.Blit(FTarget, FArea.topLeft(), QRect(QPoint(), FArea.size()));
}

void FillGradient(QPainter& painter, const QRect& rect, const QColor& from, const QColor& to, bool vertical) {
  if (rect.isEmpty()) return;
  if (!from.isValid() && !to.isValid()) return;
  QLinearGradient gradient = GradientOver(rect, vertical);
  gradient.setColorAt(0, from.isValid() ? from : to);
  gradient.setColorAt(1, to.isValid() ? to : from);
  painter.fillRect(rect, gradient);
}

void FillTwoPartGradient(QPainter& painter, const QRect& rect, const QColor& from, const QColor& middle,
                         const QColor& to) {
  const int half = rect.width() / 2;
  FillGradient(painter, rect.adjusted(0, 0, half - rect.width(), 0), from, middle, false);
  FillGradient(painter, rect.adjusted(half, 0, 0, 0), middle, to, false);
}

void DrawThemeCheckBox(QPainter& painter, const QRect& rect, bool checked, bool enabled,
                       const QWidget& widget) {
  auto option = OptionFor<QStyleOptionButton>(widget, rect, TPartState::Normal, enabled);
  option.state |= checked ? QStyle::State_On : QStyle::State_Off;
  // Styles draw the frame darker than the window, which would not show on a dark list.
  if (option.palette.color(QPalette::Base).lightness() < kDark)
    option.palette.setColor(QPalette::Window, option.palette.color(QPalette::Text).darker());
  widget.style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, &widget);
}

void DrawThemeButton(QPainter& painter, const QRect& rect, TPartState state, bool enabled,
                     const QWidget& widget) {
  const auto option = OptionFor<QStyleOptionButton>(widget, rect, state, enabled);
  widget.style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, &widget);
}

void DrawThemeDropButton(QPainter& painter, const QRect& rect, TPartState state, bool enabled,
                         const QWidget& widget) {
  const auto option = OptionFor<QStyleOptionButton>(widget, rect, state, enabled);
  widget.style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, &widget);
  DrawArrow(painter, option, false, widget);
}

void DrawThemeExpandButton(QPainter& painter, const QRect& rect, bool up, TPartState state,
                           const QWidget& widget) {
  auto option = OptionFor<QStyleOptionButton>(widget, rect, state, true);
  option.features |= QStyleOptionButton::Flat;
  if (state != TPartState::Normal)
    widget.style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter, &widget);
  DrawArrow(painter, option, up, widget);
}

void DrawTextBlock(QPainter& painter, const TTextBlock& block, TAlignment alignment, const TTextLook& look,
                   const QRect& behind) {
  if (block.Rect.isEmpty()) return;
  const Qt::AlignmentFlag horizontal = alignment == TAlignment::RightJustify ? Qt::AlignRight
                                       : alignment == TAlignment::Center     ? Qt::AlignHCenter
                                                                             : Qt::AlignLeft;
  painter.setFont(look.Font);
  // A sample of a few pixels per block of text; only an image can be asked, which is why rows are composed in
  // one.
  const QColor background = BackgroundBehind(painter, behind.isEmpty() ? block.Rect : behind);
  painter.setPen(ReadableOn(background, look.Color, look.Pale));
  QRect line = block.Rect;
  line.setHeight(block.LineHeight);
  for (const QString& text : block.Lines) {
    // The room is the text's own, rounded: it must not cut.
    painter.drawText(line, horizontal | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, text);
    line.translate(0, block.LineHeight);
  }
}
