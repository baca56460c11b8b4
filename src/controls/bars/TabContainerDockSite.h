// Panels under tabs. Main thread.
#pragma once

#include <QWidget>

#include <functional>

class QTabWidget;
class TPicture;
class TdxTabContainerDockSite;

// What lies under one tab; made with its container, which owns it, behind the panels that are there. Fill it
// with controls and a layout as any widget.
class TdxDockPanel : public QWidget {
 public:
  explicit TdxDockPanel(TdxTabContainerDockSite& site);

  // The text of the tab; '&' stands before the letter that reaches the tab with Alt.
  [[nodiscard]] const QString& Caption() const { return FCaption; }
  void SetCaption(const QString& caption);

  // The picture of the tab; tabs draw theirs in the size of the last one set.
  void SetPicture(const TPicture& picture);

  // A tab that is off shows greyed and can't become active.
  void SetTabEnabled(bool enabled);

 private:
  TdxTabContainerDockSite& FSite;
  QString FCaption;
};

// Ctrl+Tab and Ctrl+PgDn go to the next tab from anywhere in the window, with Shift or Ctrl+PgUp to the one
// before, round the ends and past tabs that are off.
class TdxTabContainerDockSite : public QWidget {
 public:
  explicit TdxTabContainerDockSite(QWidget* parent = nullptr);
  ~TdxTabContainerDockSite() override;

  // Runs after the active index has changed, whoever changed it; the first panel's coming counts.
  std::function<void()> OnActiveChildChanged;

  [[nodiscard]] int ChildCount() const;

  // 0-based, -1 without panels. Setting the present index or one out of range does nothing.
  [[nodiscard]] int ActiveChildIndex() const;
  void SetActiveChildIndex(int index);

  // The container's own caption is told to assistive tools only.
  [[nodiscard]] QString Caption() const { return accessibleName(); }
  void SetCaption(const QString& caption);

 private:
  friend class TdxDockPanel;

  void AddCycleKeys(const QList<QKeySequence>& keys, int step);
  void Cycle(int step);

  QTabWidget* FTabs;
};
