// The published skins of a list: views on the list's TListSkin, one property each by name.
//
//   list.AllSkinItem().ItemHeight = 32;
//   list.AllSkinItem().StarLight = TPicture::FromResource(u"star"_qs);
//
// Main thread. The list makes and owns them.
#pragma once

#include "controls/list/rd/skin/RdSkinValues.h"
#include "controls/picture/Picture.h"
#include "controls/skin/RdBitmap.h"

#include <functional>
#include <utility>

// What a list has to do about a change of its looks.
enum class TSkinChange {
  Repaint,      // rows and header
  RowHeight,    // rows have another height
  Header,       // the header's font or look
  GroupExpand,  // GroupCanExpand: false opens all groups
  ScrollBars,   // where the bars stand
};

// The list, as its skins know it. It outlives them.
class TSkinOwner {
 public:
  virtual ~TSkinOwner() = default;
  // Called after the value has changed, also while the list is being read: then it does not repaint.
  virtual void SkinChanged(TSkinChange change) = 0;
  [[nodiscard]] virtual int HeaderHeight() const = 0;
};

// One published value of a skin: reads and writes a field of the list's TListSkin and tells the list.
template <class T>
class TSkinProperty {
 public:
  // Turns what is set into what is kept.
  using TAccept = T (*)(const T&);

  TSkinProperty(TSkinOwner& owner, T& value, TSkinChange change = TSkinChange::Repaint,
                TAccept accept = nullptr)
      : FOwner(owner), FValue(value), FChange(change), FAccept(accept) {}
  TSkinProperty(const TSkinProperty&) = delete;
  TSkinProperty& operator=(const TSkinProperty&) = delete;

  [[nodiscard]] const T& Get() const { return FValue; }
  operator const T&() const { return FValue; }  // NOLINT: stands for its value

  TSkinProperty& operator=(const T& value) {
    const T accepted = FAccept != nullptr ? FAccept(value) : value;
    if (FValue == accepted) return *this;
    FValue = accepted;
    FOwner.SkinChanged(FChange);
    return *this;
  }

 private:
  TSkinOwner& FOwner;
  T& FValue;
  TSkinChange FChange;
  TAccept FAccept;
};

// A picture of the skin: each time it is set, the list repaints.
class TLVPicture {
 public:
  // onSet: what else follows from a new picture, before the list hears of it.
  TLVPicture(TSkinOwner& owner, TPicture& value, TSkinChange change = TSkinChange::Repaint,
             std::function<void()> onSet = {})
      : FOwner(owner), FValue(value), FChange(change), FOnSet(std::move(onSet)) {}
  TLVPicture(const TLVPicture&) = delete;
  TLVPicture& operator=(const TLVPicture&) = delete;

  [[nodiscard]] const TPicture& Get() const { return FValue; }
  operator const TPicture&() const { return FValue; }  // NOLINT: stands for its value
  [[nodiscard]] bool Empty() const { return FValue.Empty(); }
  [[nodiscard]] QSize Size() const { return FValue.Size(); }

  TLVPicture& operator=(const TPicture& picture) {
    FValue = picture;
    if (FOnSet) FOnSet();
    FOwner.SkinChanged(FChange);
    return *this;
  }

 private:
  TSkinOwner& FOwner;
  TPicture& FValue;
  TSkinChange FChange;
  std::function<void()> FOnSet;
};

// The values stand in the list; skins are made of references to these, so neither is ever copied or moved.
class TkLVSkinBase {
 public:
  explicit TkLVSkinBase(TSkinOwner& owner) : FOwner(owner) {}
  TkLVSkinBase(const TkLVSkinBase&) = delete;
  TkLVSkinBase& operator=(const TkLVSkinBase&) = delete;

 protected:
  TSkinOwner& FOwner;
};

class TkLVSkinItem : public TkLVSkinBase {
  TItemSkin& FValues;

 public:
  TkLVSkinItem(TSkinOwner& owner, TItemSkin& values);

  TSkinProperty<bool> IconCommentWordBreak{FOwner, FValues.IconCommentWordBreak};
  TSkinProperty<int> EditHeight{FOwner, FValues.EditHeight};
  TSkinProperty<int> TextOffset{FOwner, FValues.TextOffset};
  TSkinProperty<int> ItemLeftOffset{FOwner, FValues.ItemLeftOffset};
  TSkinProperty<int> ItemCheckBoxLeftOffset{FOwner, FValues.ItemCheckBoxLeftOffset};
  TSkinProperty<int> StarMaxCount{FOwner, FValues.StarMaxCount};
  TSkinProperty<QString> StarCaption{FOwner, FValues.StarCaption};
  TSkinProperty<QFont> LabelFont{FOwner, FValues.LabelFont};
  TSkinProperty<bool> LabelFontParent{FOwner, FValues.LabelFontParent};
  TSkinProperty<int> ItemHeight{FOwner, FValues.ItemHeight, TSkinChange::RowHeight};
  TSkinProperty<int> ItemDrawStep{FOwner, FValues.ItemDrawStep};
  TSkinProperty<int> LabelLineHeight{FOwner, FValues.LabelLineHeight};
  TSkinProperty<TColor> ItemGridColor{FOwner, FValues.ItemGridColor};
  TSkinProperty<TColor> ComboBoxBorderColor{FOwner, FValues.ComboBoxBorderColor};
  TSkinProperty<TColor> ProgressStartColor{FOwner, FValues.ProgressStartColor};
  TSkinProperty<TColor> ProgressCenterColor{FOwner, FValues.ProgressCenterColor};
  TSkinProperty<TColor> ProgressEndColor{FOwner, FValues.ProgressEndColor};
  TSkinProperty<TColor> EditBorderColor{FOwner, FValues.EditBorderColor};
  TSkinProperty<TColor> ProgressBorderColor{FOwner, FValues.ProgressBorderColor};
  TSkinProperty<TColor> ItemDrawStepColor{FOwner, FValues.ItemDrawStepColor};
  TSkinProperty<TColor> ItemHoverColor{FOwner, FValues.ItemHoverColor, TSkinChange::Repaint, HoverColorOf};
  TSkinProperty<TColor> ItemSelectColor{FOwner, FValues.ItemSelectColor, TSkinChange::Repaint, SelectColorOf};
  TSkinProperty<TColor> ComboBoxItemHotBgColor{FOwner, FValues.ComboBoxItemHotBgColor};
  TSkinProperty<TColor> ComboBoxItemHotColor{FOwner, FValues.ComboBoxItemHotColor};
  TSkinProperty<TColor> ComboBoxItemBgColor{FOwner, FValues.ComboBoxItemBgColor};
  TSkinProperty<TColor> ComboBoxListFrameColor{FOwner, FValues.ComboBoxListFrameColor};
  TSkinProperty<TColor> ComboBoxItemColor{FOwner, FValues.ComboBoxItemColor};
  TSkinProperty<bool> ButtonDownTextOffset{FOwner, FValues.ButtonDownTextOffset};
  TSkinProperty<TColor> ButtonDisableColor{FOwner, FValues.ButtonDisableColor};
  TSkinProperty<bool> ItemPic_BgFillBlank{FOwner, FValues.ItemPic_BgFillBlank};
  TSkinProperty<bool> ItemPic_BgCrossMode{FOwner, FValues.ItemPic_BgCrossMode};
  TSkinProperty<bool> LabelHoverUnderline{FOwner, FValues.LabelHoverUnderline};
  TSkinProperty<TAlignment> LabelAlignment{FOwner, FValues.LabelAlignment};
  TSkinProperty<TColor> LabelHoverColor{FOwner, FValues.LabelHoverColor};

  // Slices that are set to be not empty, but have no size, take a third of the first picture among hover,
  // normal and select.
  TDesignRect ItemPic_BgOption;

  TLVPicture ComboBoxBtnNormalImage{FOwner, FValues.ComboBoxBtnNormalImage};
  TLVPicture ComboBoxBtnHoverImage{FOwner, FValues.ComboBoxBtnHoverImage};
  TLVPicture ComboBoxBtnDownImage{FOwner, FValues.ComboBoxBtnDownImage};
  TLVPicture ItemPic_BgSelect{FOwner, FValues.ItemPic_BgSelect};
  TLVPicture ItemPic_BgNormal{FOwner, FValues.ItemPic_BgNormal};
  // A new one that looks like a frame also sets ItemPic_BgCrossMode, in rows of at least 30.
  TLVPicture ItemPic_BgHover{FOwner, FValues.ItemPic_BgHover, TSkinChange::Repaint,
                             [this] { GuessCrossMode(); }};
  TLVPicture ButtonNormalImage{FOwner, FValues.ButtonNormalImage, TSkinChange::Repaint,
                               [this] { GrayButton(); }};
  TLVPicture ButtonHoverImage{FOwner, FValues.ButtonHoverImage};
  TLVPicture ButtonDownImage{FOwner, FValues.ButtonDownImage};
  TLVPicture StarLight{FOwner, FValues.StarLight};
  TLVPicture StarGray{FOwner, FValues.StarGray};
  TLVPicture StarHalf{FOwner, FValues.StarHalf};
  TLVPicture ProgressImage{FOwner, FValues.ProgressImage};
  TLVPicture ItemPic_CheckBox{FOwner, FValues.ItemPic_CheckBox};
  TLVPicture ItemPic_UnCheckBox{FOwner, FValues.ItemPic_UnCheckBox};
  TLVPicture ItemPic_BgNormal2{FOwner, FValues.ItemPic_BgNormal2};
  TLVPicture ButtonDisableImage{FOwner, FValues.ButtonDisableImage};

 private:
  // The default colours stand in for clDefault.
  [[nodiscard]] static TColor HoverColorOf(const TColor& color);
  [[nodiscard]] static TColor SelectColorOf(const TColor& color);
  void GuessCrossMode();
  void GrayButton();
};

class TkLVSkinGroup : public TkLVSkinBase {
  TGroupSkin& FValues;

 public:
  TkLVSkinGroup(TSkinOwner& owner, TGroupSkin& values);

  TSkinProperty<bool> GroupClickExpand{FOwner, FValues.GroupClickExpand};
  TSkinProperty<bool> GroupCanExpand{FOwner, FValues.GroupCanExpand, TSkinChange::GroupExpand};
  TSkinProperty<int> GroupLeftOffSet{FOwner, FValues.GroupLeftOffSet};
  TSkinProperty<int> GroupCheckboxLeftOffset{FOwner, FValues.GroupCheckboxLeftOffset};
  TSkinProperty<int> GroupLineHeight{FOwner, FValues.GroupLineHeight};
  TSkinProperty<int> GroupLineRightPer{FOwner, FValues.GroupLineRightPer, TSkinChange::Repaint, PercentOf};
  TSkinProperty<TColor> GroupLineStartColor{FOwner, FValues.GroupLineStartColor};
  TSkinProperty<TColor> GroupLineEndColor{FOwner, FValues.GroupLineEndColor};
  TSkinProperty<bool> GroupLineColorVertical{FOwner, FValues.GroupLineColorVertical};
  TSkinProperty<QFont> GroupFont{FOwner, FValues.GroupFont};

  TLVPicture GroupUpImage{FOwner, FValues.GroupUpImage};
  TLVPicture GroupUpHoverImage{FOwner, FValues.GroupUpHoverImage};
  TLVPicture GroupUpPressImage{FOwner, FValues.GroupUpPressImage};
  TLVPicture GroupDownImage{FOwner, FValues.GroupDownImage};
  TLVPicture GroupDownHoverImage{FOwner, FValues.GroupDownHoverImage};
  TLVPicture GroupDownPressImage{FOwner, FValues.GroupDownPressImage};
  TLVPicture GroupPic_Bg{FOwner, FValues.GroupPic_Bg};
  TLVPicture GroupPic_BgHover{FOwner, FValues.GroupPic_BgHover};
  TLVPicture GroupPic_BgSelect{FOwner, FValues.GroupPic_BgSelect};

  // As ItemPic_BgOption, for the group's hover picture, normal and select.
  TDesignRect GroupPic_BgOption;

 private:
  [[nodiscard]] static int PercentOf(const int& percent);
};

class TkLVSkinHeader : public TkLVSkinBase {
  THeaderSkin& FValues;

 public:
  TkLVSkinHeader(TSkinOwner& owner, THeaderSkin& values) : TkLVSkinBase(owner), FValues(values) {}

  // Read only.
  [[nodiscard]] int HeaderHeight() const { return FOwner.HeaderHeight(); }

  TSkinProperty<bool> VertScrollBarCross{FOwner, FValues.VertScrollBarCross, TSkinChange::ScrollBars};
  TSkinProperty<QFont> HeaderFont{FOwner, FValues.HeaderFont, TSkinChange::Header};
  TSkinProperty<TColor> GradientColorStart{FOwner, FValues.GradientColorStart, TSkinChange::Header};
  TSkinProperty<TColor> GradientColorStop{FOwner, FValues.GradientColorStop, TSkinChange::Header};
  TSkinProperty<TColor> HeaderDividingColor{FOwner, FValues.HeaderDividingColor, TSkinChange::Header};
  TSkinProperty<int> HeaderCheckboxLeftOffset{FOwner, FValues.HeaderCheckboxLeftOffset, TSkinChange::Header};
  TSkinProperty<int> HeaderLeftOffSet{FOwner, FValues.HeaderLeftOffSet, TSkinChange::Header};

  TLVPicture HeaderHoverImage{FOwner, FValues.HeaderHoverImage, TSkinChange::Header};
  TLVPicture HeaderPressImage{FOwner, FValues.HeaderPressImage, TSkinChange::Header};
  TLVPicture HeaderBackGround{FOwner, FValues.HeaderBackGround, TSkinChange::Header};
  TLVPicture HeaderChecked{FOwner, FValues.HeaderChecked, TSkinChange::Header};
  TLVPicture HeaderUnChecked{FOwner, FValues.HeaderUnChecked, TSkinChange::Header};
  TLVPicture HeaderDividingPic{FOwner, FValues.HeaderDividingPic, TSkinChange::Header};
};

// Top and bottom edge are of one colour and the middle of another, as judged by the first column.
[[nodiscard]] bool LooksFramed(const TPicture& picture);
