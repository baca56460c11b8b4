#include "controls/list/rd/editors/RdEditors.h"

#include "controls/list/painter/RowPainter.h"
#include "controls/list/rd/RdListView.h"

#include <QKeyEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace {
constexpr char kEditError[] = "LV\\Edit\\: You Must set SubItems.Count = ColumnCount-1";
constexpr char kComboBoxError[] = "LV\\CBox\\: You Must set SubItems.Count = ColumnCount-1";
constexpr int kEditSide = 2;  // pixels of the band at both sides of the editor
}  // namespace

TRdEditors::TRdEditors(TRdListView& list)
    : FList(list),
      FEdit(std::make_unique<TkInplaceEdit>(list.viewport())),
      FComboBox(std::make_unique<TkInplaceComboBox>(&list)) {
  FEdit->setObjectName(u"InplaceEdit"_qs);
  FComboBox->setObjectName(u"InplaceComboBox"_qs);
  FEdit->OnEnter = [this] {
    if (FList.EditOnEnter) FList.EditOnEnter(FList.FState.EditItem, FColumn);
  };
  FEdit->OnExit = [this] { Guarded([this] { ExitEdit(); }); };
  FEdit->OnKey = [this](QKeyEvent& event) { return EditKey(event); };
  QObject::connect(FEdit.get(), &QLineEdit::textChanged, FEdit.get(), [this] { EditChanged(); });
  FComboBox->OnCloseUp = [this] { Guarded([this] { CloseUp(); }); };
}

TRdEditors::~TRdEditors() {
  FEdit->OnExit = nullptr;
  FComboBox->OnCloseUp = nullptr;
}

template <typename Step>
void TRdEditors::Guarded(Step step) {
  try {
    step();
  } catch (const EListError& error) {
    FList.WriteLog(QString::fromLatin1(error.what()));
  }
}

bool TRdEditors::Open(TkListItem& item, int column, std::optional<QPoint> pos, bool bothButtons) {
  const int row = item.Index();
  if (row < 0 || column < 0 || column >= FList.Columns().Count()) return false;
  if (!pos) FList.MakeRowVisible(row, false);
  const TRdCellReader reader(FList);
  const TRdCell cell = reader.Cell(item, row, column);
  if (cell.Type != ltEdit && cell.Type != ltComboBox) return false;
  const QRect band = reader.EditBand(cell);
  if (band.isEmpty() || (pos && !band.contains(*pos))) {
    Drop();
    return false;
  }
  if (bothButtons) return true;
  const bool selected = item.Selected();
  FColumn = column;
  FList.FState.EditItem = &item;
  FList.FState.EditActive = true;
  if (cell.Type == ltEdit)
    OpenEdit(band, cell.Text, static_cast<int>(CellAlignment(FList.Columns()[column])));
  else
    OpenComboBox(band, cell.Text);
  // A handler may have deleted the row.
  if (FList.FState.EditItem != &item) return true;
  FList.SelectRow(item.Index());
  if (selected && FList.FState.EditItem == &item) FList.RepaintCell(item, column);
  return true;
}

void TRdEditors::OpenEdit(const QRect& band, const QString& text, int alignment) {
  FEdit->setFont(FList.font());
  const int height = std::min(band.height(), FEdit->fontMetrics().height());
  FEdit->setGeometry(band.left() + kEditSide, band.top() + (band.height() - height) / 2,
                     band.width() - 2 * kEditSide, height);
  FEdit->setAlignment(Qt::Alignment(alignment));
  FEdit->setAccessibleName(FList.Columns()[FColumn].Caption().trimmed());
  {
    const QSignalBlocker quiet(FEdit.get());
    FEdit->setText(text);
  }
  FEdit->selectAll();
  FEdit->show();
  FEdit->setFocus(Qt::OtherFocusReason);
}

void TRdEditors::OpenComboBox(const QRect& band, const QString& text) {
  TkListColumn& column = FList.Columns()[FColumn];
  TkListItem* const item = FList.FState.EditItem;
  FComboBox->SetItems(column.ComboBoxItems);
  FComboBox->SetItemIndex(static_cast<int>(column.ComboBoxItems.indexOf(text)));
  FComboBox->setAccessibleName(column.Caption().trimmed());
  FSavedIndex = FComboBox->ItemIndex();
  if (FList.OnColumnComboBoxDropDown) FList.OnColumnComboBoxDropDown(item, FColumn, FSavedIndex);
  if (FList.FState.EditItem == item && column.OnColumnComboBoxDropDown)
    column.OnColumnComboBoxDropDown(item, FColumn, FSavedIndex);
  if (FList.FState.EditItem != item) return;
  // The handlers may have filled the choices.
  FComboBox->SetItems(column.ComboBoxItems);
  FSavedIndex = static_cast<int>(column.ComboBoxItems.indexOf(text));
  FComboBox->SetItemIndex(FSavedIndex);
  const TItemSkin& skin = FList.Skin().Item;
  FComboBox->SetColors({skin.ComboBoxListFrameColor, skin.ComboBoxItemHotBgColor, skin.ComboBoxItemHotColor,
                        skin.ComboBoxItemBgColor, skin.ComboBoxItemColor});
  FComboBox->setFont(FList.font());
  const QRect box = band.adjusted(-1, 0, 1, 0);
  FComboBox->DropDown({FList.viewport()->mapToGlobal(box.topLeft()), box.size()});
}

bool TRdEditors::EditKey(QKeyEvent& event) {
  int key = event.key();
  if (FList.EditOnKeyPress) FList.EditOnKeyPress(key, event.modifiers());
  if (key == 0) return true;
  if (key == Qt::Key_Escape) {
    Drop();
    return true;
  }
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  Guarded([this] { Hide(); });
  return true;
}

void TRdEditors::EditChanged() {
  TkListItem* const item = FList.FState.EditItem;
  if (item == nullptr) return;
  if (FList.EditOnChange) FList.EditOnChange(item, FColumn);
  if (FList.FState.EditItem != item) return;
  const TOnEditChange& change = FList.Columns()[FColumn].OnColumnEditChange;
  if (change) change(item, FColumn);
}

void TRdEditors::Hide() {
  FList.FState.EditActive = false;
  ExitEdit();
  FComboBox->CloseUp();
}

void TRdEditors::Drop() {
  FList.FState.EditItem = nullptr;
  Guarded([this] { Hide(); });
}

// Leaving the focus, Enter and Hide all end here, and each may cause the other.
void TRdEditors::ExitEdit() {
  if (FExiting || FEdit->isHidden()) return;
  const QScopedValueRollback guard(FExiting, true);
  const auto hide = qScopeGuard([this] {
    const bool focused = FEdit->hasFocus();
    FList.FState.EditItem = nullptr;
    FList.FState.EditActive = false;
    if (focused) FList.setFocus(Qt::OtherFocusReason);
    FEdit->hide();
    Repaint(FColumn);
  });
  TkListItem* const item = FList.FState.EditItem;
  if (item == nullptr) return;
  if (FList.EditOnExit) FList.EditOnExit(item, FColumn);
  if (FList.FState.EditItem == item) Write(FEdit->text(), kEditError);
}

void TRdEditors::CloseUp() {
  if (FExiting) return;
  const QScopedValueRollback guard(FExiting, true);
  TRdListState& state = FList.FState;
  state.CellHotState = kCellNormal;
  const auto end = qScopeGuard([&] {
    state.EditItem = nullptr;
    state.EditActive = false;
    state.PressedRow = -1;
    Repaint(FColumn);
  });
  FList.setFocus(Qt::PopupFocusReason);
  TkListItem* const item = state.EditItem;
  if (item == nullptr || FComboBox->ItemIndex() == FSavedIndex) return;
  ComboBoxChanged(*item);
  if (state.EditItem == item) Write(FComboBox->Items().value(FSavedIndex), kComboBoxError);
}

void TRdEditors::ComboBoxChanged(TkListItem& item) {
  const int index = FComboBox->ItemIndex();
  FSavedIndex = index;
  if (FList.OnColumnComboBoxChange) FList.OnColumnComboBoxChange(&item, FColumn, index);
  if (FList.FState.EditItem != &item) return;
  const TOnComboBoxChange& change = FList.Columns()[FColumn].OnColumnComboBoxChange;
  if (change) change(&item, FColumn, index);
}

void TRdEditors::Write(const QString& text, const char* error) {
  if (!SetShownText(*FList.FState.EditItem, FColumn, text)) throw EListError(error);
}

void TRdEditors::Repaint(int column) {
  for (int row = FList.TopIndex(); row < FList.Layout().EndOfVisibleRows(); ++row)
    if (TkListItem* const item = FList.Items().Item(row)) FList.RepaintCell(*item, column);
}
