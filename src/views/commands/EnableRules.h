// Which commands go on and off when something happens on a tab: one table over all tabs and events, uneven
// between them on purpose. Main thread.
#pragma once

#include "views/main/ResultTab.h"

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
