// Small routines that several forms share about their lists. Main thread.
#pragma once

class TListView;

// Gives the last column the width that the other columns leave, at least 5 pixels; nothing if they leave
// none. A list without rows keeps the width of a vertical scroll bar free, one with rows does not.
void FitLastColumn(TListView& list);
