// The items of menus and tool bars. A component's name is its objectName. Main thread.
#pragma once

#include <QAction>
#include <QMenu>

#include <functional>

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
