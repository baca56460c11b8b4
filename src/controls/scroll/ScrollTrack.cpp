#include "controls/scroll/ScrollTrack.h"

#include <algorithm>
#include <cmath>

#include "controls/scroll/RdScrollBarImages.h"

namespace {

int Along(TScrollBarKind kind, QSize size) {
  return kind == TScrollBarKind::Vertical ? size.height() : size.width();
}

int Across(TScrollBarKind kind, QSize size) {
  return Along(kind, size.transposed());
}

// A rectangle from `start` on along the bar, centred across it if it is thinner; 0 is as thick as the bar.
QRect Slice(const TScrollRoom& room, int start, int length, int thickness = 0) {
  const int bar = Across(room.Kind, room.Bar);
  const int thick = thickness == 0 ? bar : std::min(thickness, bar);
  const int offset = (bar - thick) / 2;
  return room.Kind == TScrollBarKind::Vertical ? QRect(offset, start, thick, length)
                                               : QRect(start, offset, length, thick);
}

// Length of an arrow; 0 for one that is not there. `other` is the picture of the other arrow.
int ArrowLength(const TScrollSkin& skin, const TPicture& own, const TPicture& other, TScrollBarKind kind,
                int byDefault) {
  if (!skin.AllowArrow) return 0;
  if (skin.AutoSize && !own.Empty()) return Along(kind, own.Size());
  // An arrow of the default size stands only beside one like it.
  const bool missing = own.Empty() || (!skin.AutoSize && other.Empty());
  return skin.AutoArrow && missing ? 0 : byDefault;
}

int ThickestOf(const TScrollSkin& skin, std::initializer_list<TScrollPicture> pictures, TScrollBarKind kind) {
  int thickest = 0;
  for (const TScrollPicture picture : pictures)
    thickest = std::max(thickest, Across(kind, skin[picture].Size()));
  return thickest;
}

QSize LimitedSize(const TScrollRoom& room) {
  const auto limited = [](int size, int screen) { return size < 0 || size > 2 * screen ? 0 : size; };
  return {limited(room.Bar.width(), room.Screen.width()), limited(room.Bar.height(), room.Screen.height())};
}

int End(TScrollBarKind kind, const QRect& rect) {
  return kind == TScrollBarKind::Vertical ? rect.y() + rect.height() : rect.x() + rect.width();
}

void PlaceThumb(TScrollLayout& layout, const TScrollRoom& room, int start, int size) {
  layout.ThumbRect = Slice(room, start, size, room.Sizes.ThumbThickness);
  layout.PageUpRect = Slice(room, layout.TrackStart, start - layout.TrackStart);
  const int thumbEnd = start + size;
  layout.PageDownRect = Slice(room, thumbEnd, layout.TrackStart + layout.TrackLength - thumbEnd);
}

}  // namespace

void TScrollRange::SetMin(int min) {
  Min = std::min(min, Max);
  Revalidate();
}

void TScrollRange::SetMax(int max) {
  Max = std::max(max, Min);
  Revalidate();
}

void TScrollRange::SetPageSize(int pageSize) {
  if (pageSize < 0) return;
  PageSize = pageSize;
  Revalidate();
}

// May lie beyond the last page, as SetParams hands it over; steps and drags lead back.
void TScrollRange::SetPosition(qint64 position) {
  Position = static_cast<int>(std::clamp<qint64>(position, Min, Max));
}

void TScrollRange::SetParams(int min, int max, int pageSize, int position) {
  Min = min;
  Max = std::max(min, max);
  PageSize = std::max(0, pageSize);
  SetPosition(position);
}

void TScrollRange::Revalidate() {
  SetPosition(std::min<qint64>(Position, LargestPosition()));
}

// Where the last page begins; below Min if a page is more than all. In 64 bits, as Max may be the largest
// int.
qint64 TScrollRange::LargestPosition() const {
  return std::min<qint64>(Max, qint64{Max} - PageSize + 1);
}

qint64 TScrollRange::ScaleLength() const {
  return LargestPosition() - Min;
}

double TScrollRange::Fraction() const {
  const qint64 scale = ScaleLength();
  if (scale <= 0) return 0;
  return std::clamp(static_cast<double>(qint64{Position} - Min) / static_cast<double>(scale), 0.0, 1.0);
}

// A tenth of a page step, or a thirtieth of the way.
int TScrollRange::SmallStep() const {
  if (SmallChange > 0) return SmallChange;
  const qint64 computed = PageSize > 0 ? qint64{PageSize} * 9 / 10 / 10 : (qint64{Max} - Min) / 30;
  return static_cast<int>(std::max<qint64>(1, computed));
}

// Nine tenths of a page, so that something of the page before still shows; without a page a tenth of the way.
int TScrollRange::LargeStep() const {
  if (LargeChange > 0) return LargeChange;
  if (PageSize > 0) return static_cast<int>(std::max<qint64>(4, qint64{PageSize} * 9 / 10));
  return static_cast<int>(std::max<qint64>(1, (qint64{Max} - Min) / 10));
}

bool TScrollRange::CanScroll() const {
  return qint64{Max} - Min >= PageSize;
}

qint64 TScrollRange::StepTarget(qint64 amount) const {
  return std::min(std::max<qint64>(Position + amount, Min), LargestPosition());
}

bool TScrollRange::SameScale(const TScrollRange& other) const {
  return Min == other.Min && Max == other.Max && PageSize == other.PageSize;
}

// The least thumb has room for its pictures; a bar of AutoSize is as thick as its thickest picture.
TScrollSizes ScrollSizes(const TScrollSkin& skin, TScrollBarKind kind, const TScrollDefaults& defaults) {
  TScrollSizes sizes;
  sizes.TopArrow = ArrowLength(skin, skin[BtnLeft], skin[BtnRight], kind, defaults.Arrow);
  sizes.BottomArrow = ArrowLength(skin, skin[BtnRight], skin[BtnLeft], kind, defaults.Arrow);

  int thumbPictures = 0;
  for (const TScrollPicture part : {TrackTop, TrackCenter, TrackBottom})
    thumbPictures += Along(kind, skin[part].Size());
  sizes.MinThumb = std::max(thumbPictures, defaults.MinThumb);

  const int thumbThickness = ThickestOf(skin, {TrackTop, TrackCenter, TrackBottom}, kind);
  if (skin.AutoCenter) {
    sizes.TopArrowThickness = Across(kind, skin[BtnLeft].Size());
    sizes.BottomArrowThickness = Across(kind, skin[BtnRight].Size());
    sizes.ThumbThickness = thumbThickness;
  }
  if (skin.AutoSize) {
    const int others = ThickestOf(skin, {ScrollBgTop, ScrollBg, ScrollBgBottom, BtnLeft, BtnRight}, kind);
    sizes.Thickness = std::max(thumbThickness, others);
    if (sizes.Thickness < 1) sizes.Thickness = defaults.Thickness;
  }
  return sizes;
}

const QRect& TScrollLayout::RectOf(TScrollBarPos part) const {
  static const QRect nowhere;
  switch (part) {
    case TScrollBarPos::TopButton:
      return TopButtonRect;
    case TScrollBarPos::BottomButton:
      return BottomButtonRect;
    case TScrollBarPos::Thumb:
      return ThumbRect;
    case TScrollBarPos::PageUp:
      return PageUpRect;
    case TScrollBarPos::PageDown:
      return PageDownRect;
    case TScrollBarPos::None:
      break;
  }
  return nowhere;
}

// Without a thumb the track is no part: a press on it does nothing.
TScrollBarPos TScrollLayout::PartAt(QPoint point) const {
  for (const auto button : {TScrollBarPos::TopButton, TScrollBarPos::BottomButton})
    if (RectOf(button).contains(point)) return button;
  if (!HasThumb()) return TScrollBarPos::None;
  for (const auto part : {TScrollBarPos::Thumb, TScrollBarPos::PageUp, TScrollBarPos::PageDown})
    if (RectOf(part).contains(point)) return part;
  return TScrollBarPos::None;
}

int ThumbSize(const TScrollRange& range, const TScrollRoom& room, int trackLength) {
  if (range.PageSize == 0) return room.Sizes.MinThumb;
  const qint64 values = qint64{range.Max} - range.Min + 1;
  if (!room.Enabled || values <= range.PageSize) return 0;
  const double share = static_cast<double>(range.PageSize) / static_cast<double>(values);
  return std::max(room.Sizes.MinThumb, static_cast<int>(std::lround(trackLength * share)));
}

TScrollLayout ScrollLayout(const TScrollRange& range, const TScrollRoom& given) {
  TScrollRoom room = given;
  room.Bar = LimitedSize(given);
  TScrollSizes& sizes = room.Sizes;
  const int length = Along(room.Kind, room.Bar);
  const int arrows = sizes.TopArrow + sizes.BottomArrow;
  // `arrows` stays the sum that was wanted: a bar that has no room for them has none for a track either.
  if (arrows > length) sizes.TopArrow = sizes.BottomArrow = length / 2;

  TScrollLayout layout;
  layout.TopButtonRect = Slice(room, 0, sizes.TopArrow, sizes.TopArrowThickness);
  layout.BottomButtonRect =
      Slice(room, length - sizes.BottomArrow, sizes.BottomArrow, sizes.BottomArrowThickness);
  layout.TrackStart = sizes.TopArrow;
  layout.TrackLength = std::max(0, length - arrows);

  const int thumb = ThumbSize(range, room, layout.TrackLength);
  if (thumb > 0 && thumb + arrows < length) {
    const double way = (layout.TrackLength - thumb) * range.Fraction();
    PlaceThumb(layout, room, layout.TrackStart + static_cast<int>(std::lround(way)), thumb);
  } else if (layout.TrackLength > 0) {
    layout.PageUpRect = layout.PageDownRect = Slice(room, layout.TrackStart, layout.TrackLength);
  }
  return layout;
}

bool TScrollTrack::SetRange(const TScrollRange& range) {
  if (range == FRange) return false;
  FRange = range;
  return true;
}

void TScrollTrack::Arrange(const TScrollRoom& room) {
  FRoom = room;
  FLayout = ScrollLayout(FRange, FRoom);
}

int TScrollTrack::ThumbStart() const {
  return FRoom.Kind == TScrollBarKind::Vertical ? FLayout.ThumbRect.y() : FLayout.ThumbRect.x();
}

bool TScrollTrack::DragThumb(int start) {
  const int before = FRange.Position;
  FRange.SetPosition(FRange.Min + WayOfDrag(start));
  return FRange.Position != before;
}

// Moves the thumb in the layout only: it stays under the mouse, between the places that positions have, until
// the release arranges the bar anew.
qint64 TScrollTrack::WayOfDrag(int start) {
  if (!FLayout.HasThumb()) return 0;
  const int size = End(FRoom.Kind, FLayout.ThumbRect) - ThumbStart();
  const int room = FLayout.TrackLength - size;  // above 0, or there were no thumb
  const int moved = std::clamp(start - FLayout.TrackStart, 0, room);
  PlaceThumb(FLayout, FRoom, FLayout.TrackStart + moved, size);
  const double scale = static_cast<double>(std::max<qint64>(0, FRange.ScaleLength()));
  return std::llround(moved * scale / room);
}
