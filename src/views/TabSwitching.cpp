#include "views/TabSwitching.h"

#include <initializer_list>

#include "views/Commands.h"
#include "views/OverviewTab.h"
#include "views/TopFilesTab.h"

namespace {

enum class TSet { Keep, Off, On };

struct TStateRow {
  std::initializer_list<const char*> Commands;
  TSet OnTab[kTabCount];
};

constexpr std::initializer_list<const char*> kCheckCommands = {"btnSelAll", "btnDeSelAll", "btnInverSel"};
constexpr std::initializer_list<const char*> kRowCommands = {
    "btnOpen",    "btnOFF",       "btnPPT",   "btnDelete", "btnMove",     "lbtnOpen",
    "lbtnDelete", "lbtnProperty", "lbtnMove", "lbtnBack",  "lbtnForward", "lbtnUp"};

const TStateRow kStates[] = {
    {kCheckCommands, {TSet::Off, TSet::On, TSet::On, TSet::Keep}},
    {kRowCommands, {TSet::Off, TSet::Off, TSet::Off, TSet::Keep}},
};

}  // namespace

void TTabSwitching::Activated(int index) {
  if (index < 0 || index >= kTabCount) return;
  SetCommands(index);
  if (index == kOverviewTab) FOverview.Activate();
  if (index == kTopFilesTab) FTopFiles.Activate();
}

void TTabSwitching::SetCommands(int index) {
  for (const TStateRow& row : kStates)
    if (const TSet state = row.OnTab[index]; state != TSet::Keep)
      FCommands.SetEnabled(row.Commands, state == TSet::On);
}
