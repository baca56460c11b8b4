// Makes the menu bar, the tool bar and the popup menus of a form out of two tables. Main thread.
#pragma once

#include <QString>

#include <span>
#include <vector>

#include "controls/bars/BarItems.h"

class QMenuBar;
class QToolBar;

enum class TBarItemKind { MenuBar, ToolBar, SubItem, Popup, Button, LargeButton };

// A component. Bars and popups have no caption on the screen; theirs is told to assistive tools.
struct TBarItemRow {
  const char* Name;
  TBarItemKind Kind;
  const char* Caption = "";
  bool Enabled = true;
  const char* Picture = nullptr;  // a name as TPicture::FromResource takes it
};

// In TBarLinkRow::Item: a line between items that stands by itself, and one before the next group.
inline constexpr const char* kBarSeparator = "-";
inline constexpr const char* kBarGroupBreak = "|";

// A place: the bar, sub-item or popup of that name shows the item at its end. An item may have many places,
// a sub-item has one, in a menu bar, sub-item or popup.
struct TBarLinkRow {
  const char* Bar;
  const char* Item;
};

// The components belong to the form, as children of it. Every item is always shown: none hides for being
// seldom used. An unknown or unfitting name in the tables or in a look-up is a mistake in the program and
// ends it with a message.
class TdxBarManager {
 public:
  explicit TdxBarManager(QWidget& form) : FForm(form) {}

  // Makes the components and puts them in their places. Call once.
  void Build(std::span<const TBarItemRow> items, std::span<const TBarLinkRow> links);

  // All components, in the order of their rows.
  [[nodiscard]] const std::vector<QObject*>& Components() const { return FComponents; }

  [[nodiscard]] TdxBarButton& Button(const QString& name) const { return Get<TdxBarButton>(name); }
  [[nodiscard]] TdxBarSubItem& SubItem(const QString& name) const { return Get<TdxBarSubItem>(name); }
  [[nodiscard]] TdxBarPopupMenu& Popup(const QString& name) const { return Get<TdxBarPopupMenu>(name); }
  [[nodiscard]] QMenuBar& MenuBar(const QString& name) const;
  [[nodiscard]] QToolBar& ToolBar(const QString& name) const;

 private:
  template <class TComponent>
  [[nodiscard]] TComponent& Get(const QString& name) const {
    if (auto* found = dynamic_cast<TComponent*>(Find(name))) return *found;
    FailOn(name);
  }

  [[nodiscard]] QObject* Find(const QString& name) const;
  [[noreturn]] static void FailOn(const QString& name);
  [[nodiscard]] QObject* Make(const TBarItemRow& row);
  void Place(const TBarLinkRow& link);

  QWidget& FForm;
  std::vector<QObject*> FComponents;
};
