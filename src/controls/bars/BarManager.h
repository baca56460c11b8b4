// The items of menus and tool bars, and what makes the bars and popup menus of a form out of two tables. A
// component's name is its objectName. Main thread.
//
// How the bars of a form come about: the form hands Build two tables, what there is (TBarItemRow) and where
// it is shown (TBarLinkRow). All items are made before any is placed, so the rows of the first may stand in
// any order; the rows of the second are the order on the screen. Whoever owns the tables then takes each
// command by its name and gives it its OnClick. The main form's are in views/commands/Commands.cpp, and a new
// command is a row in each.
#pragma once

#include <QAction>
#include <QMenu>
#include <QString>

#include <functional>
#include <span>
#include <vector>

// One command. Every menu, tool bar and popup that links it shows the same caption and enabled state. In
// captions '&' stands before the letter that reaches the command by keyboard.
class TdxBarButton : public QAction {
 public:
  explicit TdxBarButton(QObject* parent);

  // Runs when the user picks the command or Click is called, only while it is enabled.
  std::function<void()> OnClick;

  [[nodiscard]] QString Caption() const { return text(); }
  void SetCaption(const QString& caption);

  [[nodiscard]] bool Enabled() const { return isEnabled(); }
  void SetEnabled(bool enabled) { setEnabled(enabled); }

  // The tool tip; the caption until one is set.
  [[nodiscard]] QString Hint() const { return toolTip(); }
  void SetHint(const QString& hint) { setToolTip(hint); }

  void Click() { trigger(); }
};

// A command that a tool bar shows with its picture above its caption.
class TdxBarLargeButton : public TdxBarButton {
 public:
  using TdxBarButton::TdxBarButton;
};

// A menu below an item of the menu bar.
class TdxBarSubItem : public QMenu {
 public:
  using QMenu::QMenu;

  [[nodiscard]] QString Caption() const { return title(); }
  void SetCaption(const QString& caption) { setTitle(caption); }
};

// A menu of its own.
class TdxBarPopupMenu : public QMenu {
 public:
  using QMenu::QMenu;

  // Shows the menu where the mouse is and returns at once.
  void PopupFromCursorPos();
};

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

  // A look-up walks the components and compares names: for the making of a form and its changes, not for a
  // paint.
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
  // The form's children, so they live as long as it does; nothing here takes one away.
  std::vector<QObject*> FComponents;
};
