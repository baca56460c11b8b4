#include "controls/list/rd/skin/RdSkins.h"

#include <QPainter>

#include <algorithm>
#include <initializer_list>

namespace {

constexpr int kCrossModeHeight = 30;  // lower rows and pictures have no frame worth guarding

// Keeps a skin's slices in step with their property, and seeds them when they are asked to be not empty.
void FollowSlices(TDesignRect& rect, TDesignSlices& kept, std::initializer_list<const TPicture*> pictures) {
  const auto seed =
      std::find_if(pictures.begin(), pictures.end(), [](const TPicture* p) { return !p->Empty(); });
  if (rect.AutoFill() && rect.Empty() && seed != pictures.end())
    rect.SetSlices(TDesignSlices::ThirdsOf((*seed)->Size(), rect.StretchMode()));
  kept = rect.Slices();
}

// The largest difference of red, green and blue.
int Difference(QRgb a, QRgb b) {
  return std::max({qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b)), qAbs(qBlue(a) - qBlue(b))});
}

QImage Gray(QImage image) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb color = image.pixel(x, y);
      const int light = (28 * qBlue(color) + 151 * qGreen(color) + 77 * qRed(color)) / 256;
      image.setPixel(x, y, qRgba(light, light, light, qAlpha(color)));
    }
  }
  return image;
}

}  // namespace

TkLVSkinItem::TkLVSkinItem(TSkinOwner& owner, TItemSkin& values) : TkLVSkinBase(owner), FValues(values) {
  ItemPic_BgOption.OnChange = [this](TDesignRect& rect) {
    FollowSlices(rect, FValues.ItemPic_BgOption,
                 {&FValues.ItemPic_BgHover, &FValues.ItemPic_BgNormal, &FValues.ItemPic_BgSelect});
    FOwner.SkinChanged(TSkinChange::Repaint);
  };
}

TColor TkLVSkinItem::HoverColorOf(const TColor& color) {
  return color == clDefault ? kDefaultItemHoverColor : color;
}

TColor TkLVSkinItem::SelectColorOf(const TColor& color) {
  return color == clDefault ? kDefaultItemSelectColor : color;
}

void TkLVSkinItem::GuessCrossMode() {
  const TPicture& hover = FValues.ItemPic_BgHover;
  if (FValues.ItemPic_BgCrossMode || hover.Size().height() < kCrossModeHeight ||
      FValues.ItemHeight < kCrossModeHeight)
    return;
  FValues.ItemPic_BgCrossMode = LooksFramed(hover);
}

void TkLVSkinItem::GrayButton() {
  FValues.ButtonGrayImage = GrayPicture(FValues.ButtonNormalImage);
}

TkLVSkinGroup::TkLVSkinGroup(TSkinOwner& owner, TGroupSkin& values) : TkLVSkinBase(owner), FValues(values) {
  GroupPic_BgOption.OnChange = [this](TDesignRect& rect) {
    FollowSlices(rect, FValues.GroupPic_BgOption,
                 {&FValues.GroupPic_BgHover, &FValues.GroupPic_Bg, &FValues.GroupPic_BgSelect});
    FOwner.SkinChanged(TSkinChange::Repaint);
  };
}

int TkLVSkinGroup::PercentOf(const int& percent) {
  return std::clamp(percent, 0, 100);
}

QImage PicturePixels(const TPicture& picture, int density) {
  if (picture.Empty()) return {};
  QImage image(picture.Size() * density, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return {};
  image.setDevicePixelRatio(density);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  picture.Draw(painter, QRect(QPoint(), picture.Size()));
  painter.end();
  image.setDevicePixelRatio(1);
  return image.convertToFormat(QImage::Format_ARGB32);
}

bool LooksFramed(const TPicture& picture) {
  const QImage image = PicturePixels(picture);
  if (image.isNull()) return false;
  const QRgb top = image.pixel(0, 0);
  return Difference(top, image.pixel(0, image.height() - 1)) < 2 &&
         Difference(top, image.pixel(0, image.height() / 2)) > 2;
}

TPicture GrayPicture(const TPicture& picture) {
  if (picture.Empty()) return {};
  return TPicture(Gray(PicturePixels(picture)), Gray(PicturePixels(picture, 2)));
}
