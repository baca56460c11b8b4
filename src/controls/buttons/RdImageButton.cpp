#include "controls/buttons/RdImageButton.h"

#include <QApplication>
#include <QLayout>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

#include "controls/skin/RdBitmap.h"

namespace {

constexpr int kLeastSeed = 15;  // pixels of a picture that is worth slicing by itself

bool IsMouse(const QEvent& event) {
  return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick ||
         event.type() == QEvent::MouseButtonRelease || event.type() == QEvent::MouseMove;
}

// Walks every pixel: once, as the picture is set.
bool AllTransparent(const QImage& image) {
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) != 0) return false;
  return true;
}

}  // namespace

TRdImageButton::TRdImageButton(QWidget* parent) : TCustomImageButton(parent) {
  ImageOption.OnChange = [this](TDesignRect&) { FollowSlices(); };
}

void TRdImageButton::SeedSlices() {
  const QSize size = FPictures.ImageNormal.Size();
  const bool square = size.width() == size.height() && size.width() >= kLeastSeed;
  if (square && ImageOption.Empty() && !Reading()) ImageOption.SetEmpty(false);
}

void TRdImageButton::FollowSlices() {
  if (ImageOption.AutoFill() && !FPictures.ImageNormal.Empty())
    ImageOption.SetSlices(TDesignSlices::ThirdsOf(FPictures.ImageNormal.Size(), ImageOption.StretchMode()));
  FPictures.ImageOption = ImageOption.Slices();
  PictureSet(true);
}

void TRdImageButton::ReadRange() {
  FRange = PicturePixels(FImageRange);
  if (AllTransparent(FRange)) FRange = {};
}

bool TRdImageButton::Hit(QPoint point) const {
  if (FRange.isNull()) return true;
  constexpr QRgb kColorBits = 0x00FFFFFF;
  return FRange.valid(point) && (FRange.pixel(point) & kColorBits) != 0;
}

bool TRdImageButton::PaintsPicture(const TPicture& picture) const {
  return &picture == &ImageOf(FPictures, FLook, Mood());
}

void TRdImageButton::PaintPicture(QPainter& painter) const {
  DrawDesignRect(painter, rect(), ImageOf(FPictures, FLook, Mood()), FPictures.ImageOption);
}

void TRdImageButton::PictureWasPainted(QPainter& painter) {
  if (OnPaintImage) OnPaintImage(painter);
}

QRect TRdImageButton::CaptionRect() const {
  return TextRect(FLook, size(), ShownIconRect(), fontMetrics());
}

void TRdImageButton::CaptionChanged() {
  static_cast<void>(TellEvent(this, OnCaptionChanged));
}

// The caption with what alignment, icon and margin take beside it.
QSize TRdImageButton::TextSize() const {
  const QRect room = TextRoom(FLook, size(), ShownIconRect());
  const QRect text = TextRect(FLook, size(), ShownIconRect(), fontMetrics());
  const int captionWidth = fontMetrics().horizontalAdvance(FLook.Caption);
  const int textWidth = FLook.WordWrap ? text.width() : captionWidth;
  return {textWidth + width() - room.width() + FLook.TextLeftMargin,
          std::max(text.height(), CheckBoxImageOf(FLook).Size().height())};
}

QSize TRdImageButton::sizeHint() const {
  const TPicture& picture = ImageOf(FPictures, FLook, Mood());
  if (FAutoSize && !picture.Empty()) return picture.Size();
  return FAutoSizeByText ? TextSize() : TCustomImageButton::sizeHint();
}

void TRdImageButton::ApplyAutoSize() {
  if (!FAutoSize && !FAutoSizeByText) return;
  const QLayout* const layout = parentWidget() == nullptr ? nullptr : parentWidget()->layout();
  // A layout would undo a size that is set here.
  if (layout != nullptr && layout->indexOf(this) >= 0) return updateGeometry();
  resize(sizeHint());
}

bool TRdImageButton::event(QEvent* event) {
  if (isEnabled() && IsMouse(*event) && PassBeneath(*static_cast<QMouseEvent*>(event))) return true;
  return TCustomImageButton::event(event);
}

// The press decides whose the mouse is until the last button is up.
bool TRdImageButton::PassBeneath(QMouseEvent& event) {
  const QPoint point = event.position().toPoint();
  const bool press = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
  if (press && event.buttons() == event.button()) {
    FBeneath.clear();
    if (!Hit(point)) FBeneath = WidgetBeneath(event.globalPosition().toPoint());
  }
  // Moves without a button belong to nobody: each is passed on for itself, after this button has seen the
  // mouse leave it.
  QPointer<QWidget> target = FBeneath;
  if (event.type() == QEvent::MouseMove && event.buttons() == Qt::NoButton && !Hit(point)) {
    const QPointer<QWidget> alive(this);
    MouseAt(point);
    if (alive.isNull()) return true;
    target = WidgetBeneath(event.globalPosition().toPoint());
  }
  if (target.isNull()) return false;
  if (event.buttons() == Qt::NoButton) FBeneath.clear();
  const QPointF global = event.globalPosition();
  QMouseEvent passed(event.type(), target->mapFromGlobal(global), target->window()->mapFromGlobal(global),
                     global, event.button(), event.buttons(), event.modifiers());
  QApplication::sendEvent(target, &passed);
  return true;
}

// For the time of the question the button is transparent for the mouse, as it would be the answer otherwise.
QWidget* TRdImageButton::WidgetBeneath(QPoint global) {
  QWidget* const form = window();
  if (form == this) return nullptr;
  setAttribute(Qt::WA_TransparentForMouseEvents, true);
  QWidget* const beneath = form->childAt(form->mapFromGlobal(global));
  setAttribute(Qt::WA_TransparentForMouseEvents, false);
  return beneath != nullptr ? beneath : form;
}

// An ExpandImage takes the place of all slices.
void TRdImageButtonEx::PaintPicture(QPainter& painter) const {
  if (FLook.Expand && !FLook.ExpandImage.Empty()) return FLook.ExpandImage.Draw(painter, rect(), true);
  PaintSlices(painter, SlicesOf(FPictures, FLook, Mood()), size());
}

QRect TRdImageButtonEx::CaptionRect() const {
  return SlicedTextRect(FLook, size(), fontMetrics());
}

bool TRdImageButtonEx::PaintsPicture(const TPicture& picture) const {
  if (FLook.Expand && !FLook.ExpandImage.Empty()) return &picture == &FLook.ExpandImage;
  const TShownSlices shown = SlicesOf(FPictures, FLook, Mood());
  return &picture == &shown.Left || &picture == &shown.Middle || &picture == &shown.Right;
}
