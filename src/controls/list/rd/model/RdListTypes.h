// Words that the model of a TRdListView shares with layout and painters.
#pragma once

// How a cell is drawn and hit. A cell text that begins with the character of code N+1 makes its cell of
// type N.
enum TListColumnType {
  ltNone,
  ltIconCaption,
  ltNormalIconCaption,
  ltButton,
  ltLabel,
  ltProgress,
  ltStar,
  ltEdit,
  ltComboBox,
  ltCheckbox,
  ltEmpty,
  ltDefault
};

// Where a group row has its expand button.
enum TkGroupBtnAlign { tkgNone, tkgLeft, tkgRight };
