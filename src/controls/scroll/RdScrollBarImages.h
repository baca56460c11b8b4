// The pictures and looks of one skinned scroll bar. Main thread.
#pragma once

#include "controls/picture/Picture.h"
#include "controls/skin/Colors.h"

#include <array>
#include <functional>

// For a vertical bar "left" is top and "right" is bottom.
enum TScrollPicture {
  BtnLeft,
  BtnLeftHot,
  BtnRight,
  BtnRightHot,
  ScrollBgTop,
  ScrollBg,
  ScrollBgBottom,
  TrackTop,
  TrackTopHot,
  TrackCenter,
  TrackCenterHot,
  TrackBottom,
  TrackBottomHot,
  kScrollPictureCount
};

// All looks as a value.
struct TScrollSkin {
  std::array<TPicture, kScrollPictureCount> Pictures;
  bool AutoArrow = true;     // arrows show only if both have pictures
  bool AllowArrow = true;    // there are arrows at all
  bool AutoSize = true;      // the bar is as thick as its pictures
  bool AutoHide = false;     // the bar hides when there is nothing to scroll
  bool AutoCenter = true;    // pictures thinner than the bar are centred across it
  TColor Color = clDefault;  // clDefault: the parent's; clNone: the parent shows through

  [[nodiscard]] const TPicture& operator[](TScrollPicture picture) const {
    return Pictures[static_cast<std::size_t>(picture)];
  }
};

// The properties of the bar that make its look. The bar owns it.
class TRdScrollBarImages {
 public:
  // Runs after each change.
  explicit TRdScrollBarImages(std::function<void()> onChange) : OnChange(std::move(onChange)) {}
  TRdScrollBarImages(const TRdScrollBarImages&) = delete;
  TRdScrollBarImages& operator=(const TRdScrollBarImages&) = delete;

  [[nodiscard]] const TScrollSkin& Skin() const { return FSkin; }

  [[nodiscard]] const TPicture& Picture(TScrollPicture which) const { return FSkin[which]; }
  void SetPicture(TScrollPicture which, const TPicture& picture);

  void SetAutoArrow(bool on) { Set(&TScrollSkin::AutoArrow, on); }
  void SetAllowArrow(bool on) { Set(&TScrollSkin::AllowArrow, on); }
  void SetAutoSize(bool on) { Set(&TScrollSkin::AutoSize, on); }
  void SetAutoHide(bool on) { Set(&TScrollSkin::AutoHide, on); }
  void SetAutoCenter(bool on) { Set(&TScrollSkin::AutoCenter, on); }
  void SetColor(TColor color) { Set(&TScrollSkin::Color, color); }

  // Takes the pictures that `other` has, its flags and its colour. Null clears all pictures and takes the
  // parent's colour.
  void Assign(const TRdScrollBarImages* other);

  // For tools that edit skins: naming another bar's looks here takes them over, or hands ours to it. Null
  // does nothing, and nothing is kept.
  void SetPropertyCopy(const TRdScrollBarImages* from);
  void SetPropertyPaste(TRdScrollBarImages* to) const;

 private:
  template <class T>
  void Set(T TScrollSkin::*field, T value) {
    if (FSkin.*field == value) return;
    FSkin.*field = value;
    OnChange();
  }

  std::function<void()> OnChange;
  TScrollSkin FSkin;
};
