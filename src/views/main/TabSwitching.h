// The row of tabs: which there are, and what happens when another one becomes active. Main thread.
#pragma once

#include <array>
#include <span>

#include "views/main/ResultTab.h"

class TdxDockPanel;
class TdxTabContainerDockSite;

// What the status bar tells of an active tab.
enum class TTabStatus {
  Computer,  // panel 1: the whole computer
  Subject,   // panel 1: what the tab names
  RowCount,  // panel 0: the number of rows
};

// One tab beside its siblings.
struct TTabRow {
  const char* Panel;    // component name
  const char* Caption;  // English
  const char* Picture;
  bool NeedsScanForm;  // without the wizard the first tab becomes active in its place
  TTabStatus Status;
  TResultTab* (*Make)(const TTabParts& parts, QWidget& panel);
};

[[nodiscard]] std::span<const TTabRow, kTabCount> TabRows();

// The container belongs to the form.
class TTabSwitching {
 public:
  TTabSwitching(const TTabParts& parts, TdxTabContainerDockSite& site);

  // In the order of their indexes, each owned by its panel.
  [[nodiscard]] const std::array<TResultTab*, kTabCount>& Tabs() const { return FTabs; }
  [[nodiscard]] TdxDockPanel& Panel(TTabIndex index) const { return *FPanels[static_cast<size_t>(index)]; }

  // From the form's first activation on; before it, Activated does nothing.
  void Start() { FStarted = true; }

  // What the active tab's coming to the front does: its selection ends, its commands go on and off, its panel
  // of the status bar shows. Ending a selection may call this again; the outer call has the last word.
  void Activated();

  // Makes this tab active; Activated runs even where it was so before.
  void Activate(TTabIndex index);

 private:
  void ShowStatus(TTabStatus status, const TResultTab& tab);

  TTabParts FParts;
  TdxTabContainerDockSite& FSite;
  std::array<TdxDockPanel*, kTabCount> FPanels{};
  std::array<TResultTab*, kTabCount> FTabs{};
  bool FStarted = false;
};
