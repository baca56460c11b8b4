// The numbered items that a control holds. Main thread.
#pragma once

#include <QString>

#include <deque>

// Items by 0-based index, owned here; a reference stays good until Clear. TItem has a `Name` and a class
// name `kClassName`. Changing an item does not repaint the control.
template <class TItem>
class TCollection {
 public:
  // The new item is named after its class, with the number of items behind it.
  TItem& Add() {
    TItem& item = FItems.emplace_back();
    item.Name = QLatin1String(TItem::kClassName) + QString::number(Count());
    return item;
  }

  [[nodiscard]] int Count() const { return static_cast<int>(FItems.size()); }
  [[nodiscard]] bool IsIndex(int index) const { return index >= 0 && index < Count(); }
  void Clear() { FItems.clear(); }

  // The index must be good.
  [[nodiscard]] TItem& operator[](int index) { return FItems[static_cast<std::size_t>(index)]; }
  [[nodiscard]] const TItem& operator[](int index) const { return FItems[static_cast<std::size_t>(index)]; }

  // The first item of that name, -1 if there is none.
  [[nodiscard]] int IndexOf(const QString& name) const {
    for (int i = 0; i < Count(); ++i)
      if ((*this)[i].Name == name) return i;
    return -1;
  }

 private:
  // A deque, as adding behind the last moves none of those that references were given of.
  std::deque<TItem> FItems;
};
