// One published value of a skin: reads and writes a field of the list's TListSkin and tells the list.
#pragma once

#include "controls/picture/Picture.h"

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
