#include "controls/list/rd/skin/RdSkins.h"

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

// Only ever sets it: a mode that the program has chosen is not taken back by a new picture.
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

bool LooksFramed(const TPicture& picture) {
  const QImage image = PicturePixels(picture);
  if (image.isNull()) return false;
  const QRgb top = image.pixel(0, 0);
  return Difference(top, image.pixel(0, image.height() - 1)) < 2 &&
         Difference(top, image.pixel(0, image.height() / 2)) > 2;
}
