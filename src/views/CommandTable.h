// The commands of the main form as two tables: every menu, bar, popup and item with its stored caption and
// enabled state, and who shows what.
#pragma once

#include <span>

#include "controls/bars/BarManager.h"

[[nodiscard]] std::span<const TBarItemRow> CommandItems();
[[nodiscard]] std::span<const TBarLinkRow> CommandLinks();
