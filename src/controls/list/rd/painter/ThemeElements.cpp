#include "controls/list/rd/painter/ThemeElements.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QWidget>

namespace {

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
