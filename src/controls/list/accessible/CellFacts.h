// What a list tells assistive technology about one of its cells.
#pragma once

#include <QString>

enum class TCellKind { Text, Button, Link, CheckBox, Edit, ComboBox, Progress, Rating, GroupHeader };

struct TCellFacts {
  TCellKind Kind = TCellKind::Text;
  QString Text;
  QString Value;  // of progress and rating
  bool Enabled = true;
  bool HasCheckBox = false;
  bool Checked = false;
  bool Expandable = false;
  bool Expanded = false;
};

enum class TCellAct { Press, Toggle, Expand, Collapse };
