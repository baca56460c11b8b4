// A list as assistive technology sees it: a table of cells with column headers, states and actions, and the
// notices of what changes. Rows are addressed by index and never copied.
#pragma once

class QAccessibleEvent;
class TCustomListView;

// Makes lists known to the accessibility service; once per process is enough, more often does no harm.
void InstallListAccessibility();

// Row state bits have changed: which ones, and what they are now.
void TellRowState(TCustomListView& list, int row, unsigned changed, unsigned state);

// Rows were added, removed or moved.
void TellRowsChanged(TCustomListView& list);

// Notices go to the accessibility service while it listens, or to a sink of one's own; null gives up the
// sink.
using TListNoticeSink = void (*)(QAccessibleEvent& event);
void SetListNoticeSink(TListNoticeSink sink);
