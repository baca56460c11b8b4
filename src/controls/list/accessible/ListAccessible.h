// A list as assistive technology sees it: a table of cells with column headers, states and actions, and the
// notices of what changes. Rows are addressed by index and never copied.
#pragma once

#include <QKeyCombination>
#include <QString>

enum class TCellKind { Text, Button, Link, CheckBox, Edit, ComboBox, Progress, Rating, GroupHeader };

// What a list tells about one of its cells, or about a header cell.
struct TCellFacts {
  TCellKind Kind = TCellKind::Text;
  QString Text;
  QString Value;  // of progress and rating; how a header cell sorts, empty unless it does
  QKeyCombination PressKey =
      Qt::Key_unknown;  // the key that presses it when it has the focus, or at any time
  bool Enabled = true;
  bool HasCheckBox = false;
  bool Checked = false;
  bool Expandable = false;
  bool Expanded = false;
};

enum class TCellAct { Press, Toggle, Expand, Collapse };

class QAccessibleEvent;
class TCustomListView;

// Makes lists known to the accessibility service; once per process is enough, more often does no harm.
void InstallListAccessibility();

// Row state bits have changed: which ones, and what they are now.
void TellRowState(TCustomListView& list, int row, unsigned changed, unsigned state);

// Rows or columns were added, removed or moved.
void TellRowsChanged(TCustomListView& list);

// Notices go to the accessibility service while it listens, or to a sink of one's own; null gives up the
// sink.
using TListNoticeSink = void (*)(QAccessibleEvent& event);
void SetListNoticeSink(TListNoticeSink sink);
