// The looks of a list as plain values: what layout and painters are given. The list owns one TListSkin; the
// objects of Skins.h are its published face. Lengths are device-independent pixels.
//
// Colours are TColor, 0x00BBGGRR, written as decimal numbers: 16711680 is blue. A new value is a field here,
// a property of the same name in RdSkins.h, and whoever paints or lays out by it.
#pragma once

#include "controls/list/model/ListColumns.h"
#include "controls/picture/Picture.h"
#include "controls/skin/Colors.h"
#include "controls/skin/DesignRect.h"

#include <QFont>
#include <QString>

inline constexpr TColor kDefaultItemHoverColor = 16777110;
inline constexpr TColor kDefaultItemSelectColor = 14333439;
// As ItemDrawStepColor: the list's colour, lighter.
inline constexpr TColor kAutoRowColor = -16777215;
// As ItemHoverColor: none, like clNone.
inline constexpr TColor kNoStateColor = 1;

// Rows and cells.
struct TItemSkin {
  bool IconCommentWordBreak = false;
  int EditHeight = 20;
  int TextOffset = 10;  // of header captions too
  int ItemLeftOffset = 0;
  int ItemCheckBoxLeftOffset = 10;
  int StarMaxCount = 5;
  QString StarCaption;
  QFont LabelFont;              // at first the list's, as the other fonts here
  bool LabelFontParent = true;  // labels have the cell's font
  int ItemHeight = 26;
  int ItemDrawStep = 0;
  int LabelLineHeight = 8;  // between the lines of an icon cell
  TColor ItemGridColor = clNone;
  TColor ComboBoxBorderColor = 15780518;
  TColor ProgressStartColor = 16777215;
  TColor ProgressCenterColor = 32768;
  TColor ProgressEndColor = 16777215;
  TColor EditBorderColor = 15780518;
  TColor ProgressBorderColor = 10551200;
  TColor ItemDrawStepColor = kAutoRowColor;
  TColor ItemHoverColor = kDefaultItemHoverColor;
  TColor ItemSelectColor = kDefaultItemSelectColor;
  TColor ComboBoxItemHotBgColor = clHighlight;
  TColor ComboBoxItemHotColor = clHighlightText;
  TColor ComboBoxItemBgColor = clWindow;
  TColor ComboBoxListFrameColor = clWindowFrame;
  TColor ComboBoxItemColor = clDefault;
  bool ButtonDownTextOffset = true;
  TColor ButtonDisableColor = clGrayText;
  bool ItemPic_BgFillBlank = true;
  bool ItemPic_BgCrossMode = false;
  bool LabelHoverUnderline = false;
  TAlignment LabelAlignment = TAlignment::LeftJustify;  // of the lines of an icon cell
  TDesignSlices ItemPic_BgOption;
  TColor LabelHoverColor = 16711680;

  TPicture ComboBoxBtnNormalImage;
  TPicture ComboBoxBtnHoverImage;
  TPicture ComboBoxBtnDownImage;
  TPicture ItemPic_BgSelect;
  TPicture ItemPic_BgNormal;
  TPicture ItemPic_BgHover;
  TPicture ButtonNormalImage;
  TPicture ButtonHoverImage;
  TPicture ButtonDownImage;
  TPicture StarLight;
  TPicture StarGray;
  TPicture StarHalf;
  TPicture ProgressImage;
  TPicture ItemPic_CheckBox;
  TPicture ItemPic_UnCheckBox;
  TPicture ItemPic_BgNormal2;
  TPicture ButtonDisableImage;

  // ButtonNormalImage without its colours, for want of a ButtonDisableImage.
  TPicture ButtonGrayImage;
};

// Group rows.
struct TGroupSkin {
  bool GroupClickExpand = false;  // a click anywhere on the group row expands and collapses
  bool GroupCanExpand = true;     // false: groups stay open
  int GroupLeftOffSet = 0;
  int GroupCheckboxLeftOffset = 5;
  int GroupLineHeight = 2;
  int GroupLineRightPer = 100;  // how much of its room the line takes, 0 to 100
  TColor GroupLineStartColor = 1579032;
  TColor GroupLineEndColor = 10526880;
  bool GroupLineColorVertical = true;

  TPicture GroupUpImage;  // of an expanded group
  TPicture GroupUpHoverImage;
  TPicture GroupUpPressImage;
  TPicture GroupDownImage;  // of a collapsed one
  TPicture GroupDownHoverImage;
  TPicture GroupDownPressImage;
  TPicture GroupPic_Bg;
  TPicture GroupPic_BgHover;
  TPicture GroupPic_BgSelect;
  TDesignSlices GroupPic_BgOption;
  QFont GroupFont;
};

struct THeaderSkin {
  bool VertScrollBarCross = false;  // the skinned vertical bar also stands beside the header
  QFont HeaderFont;
  TColor GradientColorStart = clSilver;
  TColor GradientColorStop = clBtnFace;
  TColor HeaderDividingColor = 16777215;

  TPicture HeaderHoverImage;
  TPicture HeaderPressImage;
  TPicture HeaderBackGround;
  TPicture HeaderChecked;
  TPicture HeaderUnChecked;
  TPicture HeaderDividingPic;
  int HeaderCheckboxLeftOffset = 5;
  int HeaderLeftOffSet = 0;
};

struct TListSkin {
  TItemSkin Item;
  TGroupSkin Group;
  THeaderSkin Header;
  TColor Color = clWindow;  // the control's own
};
