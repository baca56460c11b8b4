// The commands of the main form at work: their actions, their enabled states, and which tab's handler a
// global command runs. Main thread.
#pragma once

#include <QString>

#include <array>
#include <functional>
#include <initializer_list>
#include <span>

#include "controls/bars/BarManager.h"
#include "views/main/ResultTab.h"

// The two tables behind the commands: every menu, bar, popup and item with its stored caption and enabled
// state, and who shows what.
[[nodiscard]] std::span<const TBarItemRow> CommandItems();
[[nodiscard]] std::span<const TBarLinkRow> CommandLinks();

// Owned by the main form, whose children the components are.
class TMainCommands {
 public:
  explicit TMainCommands(QWidget& form);

  [[nodiscard]] TdxBarManager& Bars() { return FBars; }
  [[nodiscard]] TdxBarButton& Button(const char* name);
  void OnClick(const char* name, std::function<void()> handler);
  void SetEnabled(std::initializer_list<const char*> names, bool enabled);

  // Gives the items of the download list's popup the captions of their namesakes of the largest files.
  void CopyCaptions();

  // While held, no command runs: a click on one is lost, whatever way it came. This is how nothing meets a
  // list on which a delete or move is at work.
  void SetHeld(bool held) { FHeld = held; }

  // Global commands run the handler of the active tab, the items of a tab's own popup always that tab's.
  void DispatchTo(const std::array<TResultTab*, kTabCount>& tabs, std::function<int()> activeIndex);

 private:
  TdxBarManager FBars;
  // Asked at each click and not put into the enabled states, which stay as the rules have set them.
  bool FHeld = false;
};

// The commands of the Help menu.
//
// The library behind the about box and the homepage: one of this name beside the program. One that is missing
// makes both commands do nothing.
void btnAboutClick(const QString& library);
void btnHomeClick(const QString& library);
[[nodiscard]] QString ColophonLibrary();

// Opens the support forum in the browser.
void btnHelpClick();

// Which commands go on and off when something happens on a tab: one table over all tabs and events, uneven
// between them on purpose. Main thread.

// What happened, and what its flag tells.
enum class TTabEvent {
  Activated,     // the tab became active; it shows a folder with one above
  RowSelected,   // a row was selected, or deselected
  MouseUp,       // a mouse button went up over the list; no flag
  BoxesCounted,  // check marks were clicked; some row is checked
  HeaderBox,     // the box in the header was clicked; it is checked now
  DeleteStarts,  // rows are about to be deleted; no flag
  Reset,         // the form went back to its state before any result; no flag
};

// Sets the commands of the event's rows. Commands that no row names stay as they are.
void ApplyEnableRules(TMainCommands& commands, TTabIndex tab, TTabEvent event, bool flag = false);
