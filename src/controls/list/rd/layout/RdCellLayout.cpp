#include "controls/list/rd/layout/RdCellLayout.h"

#include <QFontMetrics>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Device-independent pixels, as all lengths here: what a text keeps from the edges of its room.
constexpr int kMargin = 5;

QStringList Paragraphs(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.replace(u'\r', u'\n');
  return text.split(u'\n');
}

// By the layout engine of the toolkit, so that a line that fits here fits as it is drawn.
QStringList BrokenAtWords(const QString& paragraph, const QFont& font, int width) {
  QTextLayout layout(paragraph, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WordWrap);
  layout.setTextOption(option);
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(std::max(1, width));
    QString text = paragraph.mid(line.textStart(), line.textLength());
    while (text.endsWith(u' '))
      text.chop(1);
    lines << text;
  }
  layout.endLayout();
  return lines.isEmpty() ? QStringList{QString()} : lines;
}

QStringList LinesOf(const QString& text, const QFont& font, int width, bool wordBreak) {
  const QStringList paragraphs = Paragraphs(text);
  if (!wordBreak) return paragraphs;
  QStringList lines;
  for (const QString& paragraph : paragraphs)
    lines << BrokenAtWords(paragraph, font, width);
  return lines;
}

int WidestOf(const QStringList& lines, const QFontMetrics& metrics) {
  int widest = 0;
  for (const QString& line : lines)
    widest = std::max(widest, metrics.horizontalAdvance(line));
  return widest;
}

int PlacedLeft(const QRect& room, int width, TAlignment alignment) {
  switch (alignment) {
    case TAlignment::RightJustify:
      return room.left() + room.width() - width;
    case TAlignment::Center:
      return room.left() + (room.width() - width) / 2;
    case TAlignment::LeftJustify:
      break;
  }
  return room.left();
}

}  // namespace

QRect CentredIn(const QRect& outer, QSize size) {
  return CentredInHeight(outer, outer.left() + (outer.width() - size.width()) / 2, size);
}

QRect CentredInHeight(const QRect& outer, int x, QSize size) {
  return {QPoint(x, outer.top() + (outer.height() - size.height()) / 2), size};
}

QRect TextRoom(const QRect& rect, TAlignment alignment) {
  return rect.adjusted(alignment == TAlignment::Center ? kMargin : 0, 0, -kMargin, 0);
}

QSize MeasureText(const QString& text, const QFont& font, int width, bool wordBreak) {
  const QFontMetrics metrics(font);
  const QStringList lines = LinesOf(text, font, width, wordBreak);
  return {WidestOf(lines, metrics), metrics.height() * static_cast<int>(lines.size())};
}

TTextBlock LayoutText(const QString& text, const QFont& font, const QRect& rect, TAlignment alignment,
                      bool wordBreak) {
  const QRect room = TextRoom(rect, alignment);
  if (room.width() <= 0) return {{}, 0, {}, !text.isEmpty()};
  const QFontMetrics metrics(font);
  TTextBlock block{LinesOf(text, font, room.width(), wordBreak), metrics.height(), {}, false};
  const int widest = WidestOf(block.Lines, metrics);
  block.Cut = widest > room.width();
  if (block.Cut)
    for (QString& line : block.Lines)
      line = metrics.elidedText(line, Qt::ElideRight, room.width());
  const QSize size(std::min(widest, room.width()), block.LineHeight * static_cast<int>(block.Lines.size()));
  block.Rect = CentredInHeight(room, PlacedLeft(room, size.width(), alignment), size);
  return block;
}

namespace {

// Behind a check box, and the widest row that a bitmap is made for.
constexpr int kBoxGap = 5;
constexpr int kWidestRow = 60000;

// A push button without a picture, and the least cell that has a button at all.
constexpr int kWidestButton = 150;
constexpr int kLeastButton = 15;
constexpr int kLeastButtonCell = 5;

constexpr int kStarSide = 16;
constexpr int kStarDrop = 2;           // stars stand this much below the middle
constexpr int kStarCaptionGap = 15;    // from the last star to the caption's room
constexpr int kStarCaptionStart = 84;  // from the cell's left to where the caption is hot
constexpr double kHalfStar = 0.6;      // up to this a rest is half a star
constexpr double kRounding = 1e-9;     // what decimals lose in binary

// The bar in its cell: from the sides, half its height, and the frame around it.
constexpr int kProgressInset = 5;
constexpr int kProgressHalfHeight = 5;
constexpr int kProgressFrameGap = 2;

// The box of an edit cell. A cell that is narrower than the height of the box and the rest together gets no
// inside.
constexpr int kEditFrameInset = 9;
constexpr int kEditTextInset = 2;
constexpr int kLeastEditRest = 10;

// A finite number; 0 for anything else.
double NumberOf(const QString& text) {
  const double value = text.trimmed().toDouble();
  return std::isfinite(value) ? value : 0.0;
}

QRect Shrunk(const QRect& rect, int dx, int dy) {
  return rect.adjusted(dx, dy, -dx, -dy);
}

constexpr int kIconGap = 5;

// The label state that a prefix gives, which is taken off; `other` without one.
bool TakePrefix(QString& line, bool other) {
  const bool plain = line.startsWith(QLatin1String("//"));
  const bool label = line.startsWith(QLatin1String("@@"));
  if (plain || label) line.remove(0, 2);
  return label || (other && !plain);
}

int BlockHeight(const std::vector<TIconTextLine>& lines, const std::vector<int>& heights, int gap) {
  int height = gap * (static_cast<int>(lines.size()) - 1);
  for (const int line : heights)
    height += line;
  return height;
}

}  // namespace

QSize CheckBoxSize(const TItemSkin& skin) {
  return skin.ItemPic_CheckBox.Size().expandedTo({kLeastBox, kLeastBox});
}

int CheckBoxRoom(const TItemSkin& skin) {
  return CheckBoxSize(skin).width() + kBoxGap;
}

QRect RowCheckBoxRect(const QRect& row, const TItemSkin& skin) {
  return CentredInHeight(row, row.left() + skin.ItemCheckBoxLeftOffset, CheckBoxSize(skin));
}

QRect FirstCellRect(const QRect& cell, bool hasCheckBox, const TItemSkin& skin) {
  return hasCheckBox ? cell.adjusted(CheckBoxRoom(skin), 0, 0, 0) : cell;
}

QRect PaintedRow(const QRect& row, int clientWidth, int itemHeight) {
  const int left = std::max(0, row.left());
  const int right = std::min(clientWidth, row.left() + row.width());
  return {left, row.top(), std::clamp(right - left, 0, kWidestRow), std::min(row.height(), 2 * itemHeight)};
}

// A step of n gives one row of the first look and then n of the second. Below 0, the rows whose number it
// divides have the second.
bool HasSecondLook(int row, int itemDrawStep) {
  return itemDrawStep >= 0 ? row % (itemDrawStep + 1) != 0 : row % itemDrawStep == 0;
}

QRect CrossClip(const QRect& row, bool hovered, TNeighbours neighbours) {
  return row.adjusted(0, neighbours.AboveSelected ? 1 : 0, 0, hovered && neighbours.BelowSelected ? -1 : 0);
}

QRect ContentRect(const QRect& cell, int column, const TItemSkin& skin) {
  return cell.adjusted(skin.TextOffset + (column == 0 ? skin.ItemLeftOffset : 0), 0, 0, 0);
}

TTextBlock LayoutCellText(const QString& text, const QFont& font, const QRect& cell, int column,
                          TAlignment alignment, const TItemSkin& skin) {
  return LayoutText(text, font, ContentRect(cell, column, skin), alignment);
}

QRect CellCheckBoxRect(const QRect& cell, const TItemSkin& skin) {
  return CentredInHeight(cell, cell.left() + skin.TextOffset, CheckBoxSize(skin));
}

QRect ButtonRect(const QRect& cell, int column, QSize picture, const TItemSkin& skin) {
  if (cell.width() < kLeastButtonCell) return {};
  QSize size = picture;
  if (picture.isEmpty()) {
    size = QSize(std::min(cell.width() - 2 * skin.TextOffset, kWidestButton), skin.EditHeight);
    if (size.width() < kLeastButton) return {};
  }
  return CentredInHeight(cell, ContentRect(cell, column, skin).left(), size);
}

std::array<TStar, kStarCount> StarsOf(const QString& text, int maxCount) {
  std::array<TStar, kStarCount> stars{};
  if (maxCount <= 0) return stars;
  double rest = std::clamp(NumberOf(text), 0.0, static_cast<double>(maxCount)) / (maxCount / 5.0);
  for (TStar& star : stars) {
    if (rest <= kRounding) break;
    star = rest > kHalfStar + kRounding ? TStar::Light : TStar::Half;
    rest -= 1.0;
  }
  return stars;
}

QRect StarRect(const QRect& cell, int star) {
  return CentredInHeight(cell, cell.left() + star * kStarSide, {kStarSide, kStarSide})
      .translated(0, kStarDrop);
}

QRect StarCaptionRect(const QRect& cell) {
  return cell.adjusted(kStarCount * kStarSide + kStarCaptionGap, 0, 0, 0);
}

QRect StarCaptionArea(const QRect& cell) {
  return cell.adjusted(kStarCaptionStart, 0, 0, 0);
}

// The bar stops at its ends, the number does not: a text of 140 fills the bar and says "140 %".
TProgressParts LayoutProgress(const QRect& cell, const QString& text) {
  const double value = NumberOf(text);
  TProgressParts parts;
  parts.Bar = Shrunk(cell, kProgressInset, cell.height() / 2 - kProgressHalfHeight);
  if (parts.Bar.width() <= 0) return {};
  const double fraction = std::clamp(value / 100.0, 0.0, 1.0);
  parts.Filled = parts.Bar;
  parts.Filled.setWidth(static_cast<int>(parts.Bar.width() * fraction));
  parts.Frame = Shrunk(parts.Bar, -kProgressFrameGap, -kProgressFrameGap);
  // Adding 0 turns the -0 of a small negative number into 0.
  parts.Text = QString::number(std::trunc(value) + 0.0, 'f', 0) + u" %"_qs;
  return parts;
}

TEditParts LayoutEdit(const QRect& cell, int height, bool comboBox) {
  const int offset = (cell.height() - height) / 2;
  TEditParts parts;
  parts.Frame = Shrunk(cell, kEditFrameInset, offset + 1);
  if (cell.width() < height + kLeastEditRest) {
    parts.Frame.setWidth(1);
    return parts;
  }
  parts.Band = Shrunk(parts.Frame, 1, 1);
  parts.Text = Shrunk(parts.Band, kEditTextInset, kEditTextInset);
  const int side = parts.Band.height();
  if (comboBox && side < parts.Band.width()) {
    parts.Button = QRect(parts.Band.right() + 1 - side, parts.Band.top(), side, side);
    parts.Text.setRight(parts.Button.left() - 1);
  }
  return parts;
}

std::vector<TIconTextLine> SplitIconText(const QString& text, TIconTextKind kind, const QFont& font,
                                         const TItemSkin& skin) {
  std::vector<TIconTextLine> lines;
  if (text.isEmpty()) return lines;
  const bool labels = kind == TIconTextKind::IconCaption;
  for (const QString& part : text.split(QLatin1String("\r\r"))) {
    TIconTextLine line{part, false, font, {}};
    line.Label = TakePrefix(line.Text, labels && lines.empty());
    if (line.Label && labels && !skin.LabelFontParent) line.Font = skin.LabelFont;
    lines.push_back(std::move(line));
  }
  return lines;
}

TIconTextParts LayoutIconText(const QRect& cell, int column, QSize icon, std::vector<TIconTextLine> lines,
                              const TItemSkin& skin) {
  TIconTextParts parts;
  QRect room = ContentRect(cell, column, skin);
  if (!icon.isEmpty()) {
    parts.Icon = CentredInHeight(cell, room.left(), icon);
    room.setLeft(room.left() + icon.width() + kIconGap);
  }
  const int width = TextRoom(room, skin.LabelAlignment).width();
  std::vector<int> heights;
  for (const TIconTextLine& line : lines)
    heights.push_back(MeasureText(line.Text, line.Font, width, skin.IconCommentWordBreak).height());

  // Each line has half of LabelLineHeight above and below it, so that the outer halves keep the middle.
  int top = CentredIn(room, {0, BlockHeight(lines, heights, skin.LabelLineHeight)}).top();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const QRect place(room.left(), top, room.width(), heights[i]);
    lines[i].Block =
        LayoutText(lines[i].Text, lines[i].Font, place, skin.LabelAlignment, skin.IconCommentWordBreak);
    top += heights[i] + skin.LabelLineHeight;
  }
  parts.Lines = std::move(lines);
  return parts;
}

int HitIconText(const TIconTextParts& parts, QPoint pos) {
  if (parts.Icon.contains(pos)) return kIconHit;
  for (std::size_t i = 0; i < parts.Lines.size(); ++i)
    if (parts.Lines[i].Label && parts.Lines[i].Block.Rect.contains(pos)) return static_cast<int>(i);
  return kNoIconTextHit;
}
