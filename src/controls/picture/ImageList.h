// The pictures that list controls draw by index. Main thread.
#pragma once

#include <QIcon>
#include <QRect>
#include <QSize>

#include <functional>
#include <map>
#include <vector>

#include "controls/picture/Picture.h"

class QPainter;

// Pictures of one size (device-independent pixels), by 0-based index. The controls that use a list hold a
// reference; the form owns it and it outlives them, or they remove their change links first.
class TImageList {
 public:
  explicit TImageList(QSize size) : FSize(size) {}
  TImageList(const TImageList&) = delete;
  TImageList& operator=(const TImageList&) = delete;

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

  // The callback runs after each change of the list. Gives the number by which the link is removed.
  int AddChangeLink(std::function<void()> onChange);
  void RemoveChangeLink(int link) { FLinks.erase(link); }

 private:
  [[nodiscard]] bool IsIndex(int index) const { return index >= 0 && index < Count(); }
  void Changed() const;

  QSize FSize;
  std::vector<QIcon> FIcons;
  std::map<int, std::function<void()>> FLinks;
  int FNextLink = 1;
};
