// The pictures that list controls draw by index. Main thread.
#pragma once

#include <QIcon>
#include <QRect>
#include <QSize>

#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "controls/picture/Picture.h"

class QPainter;

// Pictures of one size (device-independent pixels), by 0-based index. The form owns it; the controls that use
// a list hold a TImageListLink, so either may go first.
class TImageList {
 public:
  explicit TImageList(QSize size) : FSize(size) {}
  TImageList(const TImageList&) = delete;
  TImageList& operator=(const TImageList&) = delete;
  ~TImageList();

  // Both give the index of the new picture. An empty one takes an index too and draws nothing.
  int Add(const TPicture& picture) { return AddIcon(picture.ToIcon()); }
  int AddIcon(const QIcon& icon);

  [[nodiscard]] int Count() const { return static_cast<int>(FIcons.size()); }
  [[nodiscard]] QSize Size() const { return FSize; }

  // Moves the later pictures down by one. An index out of range is ignored.
  void Delete(int index);
  void Clear();

  // Centred in the rectangle, at most in the list's size, pale if not enabled. An index out of range draws
  // nothing.
  void Draw(QPainter& painter, const QRect& rect, int index, bool enabled = true) const;

  // The one callback runs after each change of the list, the other as the list goes, and its links with it.
  // Gives the number by which the link is removed.
  int AddChangeLink(std::function<void()> onChange, std::function<void()> onGone = {});
  void RemoveChangeLink(int link) { FLinks.erase(link); }

 private:
  [[nodiscard]] bool IsIndex(int index) const { return index >= 0 && index < Count(); }
  void Changed() const;

  struct TLink {
    std::function<void()> OnChange;
    std::function<void()> OnGone;
  };

  QSize FSize;
  std::vector<QIcon> FIcons;
  // By number, which is never given twice, so that removing an old link can't hit a newer one.
  std::map<int, TLink> FLinks;
  int FNextLink = 1;
};

// A control's use of an image list: null as soon as the list is gone.
class TImageListLink {
 public:
  // Called after each change of the images and after their end.
  explicit TImageListLink(std::function<void()> onChange) : FOnChange(std::move(onChange)) {}
  ~TImageListLink() { Drop(); }
  TImageListLink(const TImageListLink&) = delete;
  TImageListLink& operator=(const TImageListLink&) = delete;

  [[nodiscard]] TImageList* Images() const { return FImages; }
  void SetImages(TImageList* images);

 private:
  void Drop();

  std::function<void()> FOnChange;
  TImageList* FImages = nullptr;
  int FLink = 0;
};
