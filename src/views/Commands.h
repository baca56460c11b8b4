// The commands of the main form at work: their actions, their enabled states, and which tab's handler a
// global command runs. Main thread.
#pragma once

#include <array>
#include <functional>
#include <initializer_list>

#include "controls/bars/BarManager.h"

class TResultTab;

inline constexpr int kTabCount = 4;

// Child indexes of the tab container.
enum TTabIndex : int { kOverviewTab = 0, kContentsTab = 1, kTopFilesTab = 2, kDownloadsTab = 3 };

// Owned by the main form, whose children the components are.
class TMainCommands {
 public:
  explicit TMainCommands(QWidget& form);

  [[nodiscard]] TdxBarManager& Bars() { return FBars; }
  [[nodiscard]] TdxBarButton& Button(const char* name);
  void OnClick(const char* name, std::function<void()> handler);
  void SetEnabled(std::initializer_list<const char*> names, bool enabled);

  // Global commands run the handler of the active tab; a tab without an object does nothing.
  void DispatchTo(const std::array<TResultTab*, kTabCount>& tabs, std::function<int()> activeIndex);

  // The popup's own items run the tab's handlers.
  void BindTab(int index, TResultTab& tab);

 private:
  TdxBarManager FBars;
};
