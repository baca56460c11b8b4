#include "GallerySkins.h"

#include "controls/list/rd/RdListView.h"

#include <QApplication>
#include <QPalette>

namespace {

struct TItemPicture {
  const char* Name;
  TLVPicture TkLVSkinItem::*Slot;
};
constexpr TItemPicture kItemPictures[] = {
    {"ItemPic_BgSelect", &TkLVSkinItem::ItemPic_BgSelect},
    {"ItemPic_BgHover", &TkLVSkinItem::ItemPic_BgHover},
    {"ItemPic_CheckBox", &TkLVSkinItem::ItemPic_CheckBox},
    {"ItemPic_UnCheckBox", &TkLVSkinItem::ItemPic_UnCheckBox},
    {"ButtonNormalImage", &TkLVSkinItem::ButtonNormalImage},
    {"ButtonHoverImage", &TkLVSkinItem::ButtonHoverImage},
    {"ButtonDownImage", &TkLVSkinItem::ButtonDownImage},
    {"ComboBoxBtnNormalImage", &TkLVSkinItem::ComboBoxBtnNormalImage},
    {"ComboBoxBtnHoverImage", &TkLVSkinItem::ComboBoxBtnHoverImage},
    {"ComboBoxBtnDownImage", &TkLVSkinItem::ComboBoxBtnDownImage},
    {"ProgressImage", &TkLVSkinItem::ProgressImage},
};

// The list has no stars of its own: these stay in every look.
constexpr TItemPicture kStars[] = {
    {"StarLight", &TkLVSkinItem::StarLight},
    {"StarHalf", &TkLVSkinItem::StarHalf},
    {"StarGray", &TkLVSkinItem::StarGray},
};

struct TGroupPicture {
  const char* Name;
  TLVPicture TkLVSkinGroup::*Slot;
};
constexpr TGroupPicture kGroupPictures[] = {
    {"GroupUpImage", &TkLVSkinGroup::GroupUpImage},
    {"GroupUpHoverImage", &TkLVSkinGroup::GroupUpHoverImage},
    {"GroupUpPressImage", &TkLVSkinGroup::GroupUpPressImage},
    {"GroupDownImage", &TkLVSkinGroup::GroupDownImage},
    {"GroupDownHoverImage", &TkLVSkinGroup::GroupDownHoverImage},
    {"GroupDownPressImage", &TkLVSkinGroup::GroupDownPressImage},
    {"GroupPic_Bg", &TkLVSkinGroup::GroupPic_Bg},
    {"GroupPic_BgHover", &TkLVSkinGroup::GroupPic_BgHover},
    {"GroupPic_BgSelect", &TkLVSkinGroup::GroupPic_BgSelect},
};

struct THeaderPicture {
  const char* Name;
  TLVPicture TkLVSkinHeader::*Slot;
};
constexpr THeaderPicture kHeaderPictures[] = {
    {"HeaderBackGround", &TkLVSkinHeader::HeaderBackGround},
    {"HeaderHoverImage", &TkLVSkinHeader::HeaderHoverImage},
    {"HeaderPressImage", &TkLVSkinHeader::HeaderPressImage},
    {"HeaderDividingPic", &TkLVSkinHeader::HeaderDividingPic},
};

// The order of TScrollPicture.
constexpr const char* kScrollPictures[kScrollPictureCount] = {
    "BtnLeft",        "BtnLeftHot",     "BtnRight",      "BtnRightHot", "ScrollBgTop",
    "ScrollBg",       "ScrollBgBottom", "TrackTop",      "TrackTopHot", "TrackCenter",
    "TrackCenterHot", "TrackBottom",    "TrackBottomHot"};

template <typename Skin, typename Table>
void SetPictures(Skin& target, const Table& table, TGallerySkin skin) {
  for (const auto& row : table)
    target.*row.Slot = SkinPicture(skin, QLatin1String(row.Name));
}

void SetScrollPictures(TRdScrollBarImages& images, const QString& kind, TGallerySkin skin) {
  for (int picture = 0; picture < kScrollPictureCount; ++picture)
    images.SetPicture(static_cast<TScrollPicture>(picture),
                      SkinPicture(skin, kind + QLatin1String(kScrollPictures[picture])));
  images.SetAutoHide(true);
}

void SetColors(TRdListView& list, TGallerySkin skin) {
  const TListSkin defaults;
  const bool none = skin == TGallerySkin::None;
  const bool dark = skin == TGallerySkin::Dark;
  const auto pick = [&](TColor byDefault, int light, int darkColor) {
    return none ? byDefault : ToTColor(QColor::fromRgb(static_cast<QRgb>(dark ? darkColor : light)));
  };
  TkLVSkinItem& item = list.AllSkinItem();
  item.ItemGridColor = pick(clNone, 0xE6E9EE, 0x2F3238);
  item.EditBorderColor = pick(defaults.Item.EditBorderColor, 0xB9C3D2, 0x4A505B);
  item.ComboBoxBorderColor = pick(defaults.Item.ComboBoxBorderColor, 0xB9C3D2, 0x4A505B);
  item.ProgressBorderColor = pick(defaults.Item.ProgressBorderColor, 0xB9C3D2, 0x4A505B);
  item.LabelHoverColor = pick(defaults.Item.LabelHoverColor, 0x1F66C1, 0x8CBBF5);
  list.AllSkinGroup().GroupLineStartColor = pick(defaults.Group.GroupLineStartColor, 0xC9D2DF, 0x454B56);
  list.AllSkinGroup().GroupLineEndColor = pick(defaults.Group.GroupLineEndColor, 0xEEF1F5, 0x33373E);
}

QPalette DarkPalette() {
  QPalette palette(QColor(62, 63, 68), QColor(53, 54, 58));
  palette.setColor(QPalette::Base, QColor(35, 36, 40));
  palette.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
  palette.setColor(QPalette::Highlight, QColor(53, 116, 190));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(60, 61, 66));
  palette.setColor(QPalette::ToolTipText, Qt::white);
  return palette;
}

QPalette LightPalette() {
  QPalette palette(QColor(239, 240, 242), QColor(239, 240, 242));
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Highlight, QColor(53, 116, 190));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

}  // namespace

TPicture SkinPicture(TGallerySkin skin, const QString& name) {
  if (skin == TGallerySkin::None) return {};
  const QString folder = skin == TGallerySkin::Light ? u"skins/light/"_qs : u"skins/dark/"_qs;
  return TPicture::FromResource(folder + name);
}

void ApplySkin(TRdListView& list, TGallerySkin skin) {
  SetPictures(list.AllSkinItem(), kItemPictures, skin);
  SetPictures(list.AllSkinItem(), kStars, skin == TGallerySkin::None ? TGallerySkin::Light : skin);
  SetPictures(list.AllSkinGroup(), kGroupPictures, skin);
  SetPictures(list.AllSkinHeader(), kHeaderPictures, skin);
  list.AllSkinHeader().HeaderChecked = SkinPicture(skin, u"ItemPic_CheckBox"_qs);
  list.AllSkinHeader().HeaderUnChecked = SkinPicture(skin, u"ItemPic_UnCheckBox"_qs);
  SetScrollPictures(list.AllSkinVertScroll(), u"Vert_"_qs, skin);
  SetScrollPictures(list.AllSkinHorzScroll(), u"Horz_"_qs, skin);
  SetColors(list, skin);
  list.AllSkinItem().ItemPic_BgOption.SetEmpty(skin == TGallerySkin::None);
  list.AllSkinGroup().GroupPic_BgOption.SetEmpty(skin == TGallerySkin::None);
}

void ApplyPalette(TGallerySkin skin) {
  if (skin != TGallerySkin::None)
    QApplication::setPalette(skin == TGallerySkin::Dark ? DarkPalette() : LightPalette());
}
