#include "controls/list/rd/editors/RdEditors.h"

#include "controls/list/painter/RowPainter.h"
#include "controls/list/rd/RdListView.h"

#include <QKeyEvent>
#include <QScopeGuard>
#include <QSignalBlocker>

#include <algorithm>
#include <initializer_list>

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
  FEdit->OnExit = [this] { Guarded([this] { ExitEdit(); }); };
  FEdit->OnKey = [this](QKeyEvent& event) { return EditKey(event); };
  QObject::connect(FEdit.get(), &QLineEdit::textChanged, FEdit.get(), [this] { EditChanged(); });
  FComboBox->OnCloseUp = [this] { Guarded([this] { CloseUp(); }); };
}

// An editor that is telling of itself is up the stack: it goes when the program comes back to its event loop.
TRdEditors::~TRdEditors() {
  FEdit->OnExit = FComboBox->OnCloseUp = nullptr;
  FEdit->OnKey = nullptr;
  QObject::disconnect(FEdit.get(), &QLineEdit::textChanged, nullptr, nullptr);
  FEdit->hide();
  FComboBox->hide();
  if (!FList.EventLife()->Telling()) return;
  for (QWidget* const editor : std::initializer_list<QWidget*>{FEdit.release(), FComboBox.release()}) {
    editor->setParent(nullptr);
    editor->deleteLater();
  }
}

// Entered from Qt, through which no exception may pass: a mistake of the program in its cells goes to
// OnWriteLog.
template <typename Step>
void TRdEditors::Guarded(Step step) {
  const TEventScope scope(FList.EventLife());
  try {
    step();
  } catch (const EListError& error) {
    if (!scope.ListGone()) FList.WriteLog(QString::fromLatin1(error.what()));
  }
}

// Closing the editor that is open, scrolling and each event may change the list, so row and cell are looked
// up after these, and EditItem says afterwards whether the row is still the edited one.
bool TRdEditors::Open(TkListItem& item, int column, std::optional<QPoint> pos, bool bothButtons) {
  if (FExiting) return false;
  const TEventScope scope(FList.EventLife());
  FList.CloseEditors();
  if (scope.ListGone()) return true;
  if (!pos && item.Index() >= 0) FList.MakeRowVisible(item.Index(), false);
  if (scope.ListGone()) return true;
  const int row = item.Index();
  if (row < 0 || item.IsGroupHeader() || column < 0 || column >= FList.Columns().Count()) return false;
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
  FState.EditItem = &item;
  FState.EditActive = true;
  if (cell.Type == ltEdit)
    OpenEdit(band, cell.Text, static_cast<int>(CellAlignment(FList.Columns()[column])));
  else
    OpenComboBox(band, cell.Text);
  if (scope.ListGone() || FState.EditItem != &item) return true;
  FList.SelectRow(item.Index());
  if (!scope.ListGone() && selected && FState.EditItem == &item) FList.RepaintCell(item, column);
  return true;
}

void TRdEditors::OpenAtRelease(TkListItem& item, int column, const QPoint& pos) {
  const TEventScope scope(FList.EventLife());
  if (Open(item, column, pos, false) && !scope.ListGone()) FState.EditStarted = true;
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
  if (TkListItem* const item = FState.EditItem)
    (void)Tell(FList.EventLife(), FList.EditOnEnter, item, FColumn);
}

bool TRdEditors::OpenComboBox(const QRect& band, const QString& text) {
  const TEventScope scope(FList.EventLife());
  TkListColumn& column = FList.Columns()[FColumn];
  TkListItem* const item = FState.EditItem;
  FComboBox->SetItems(column.ComboBoxItems);
  FComboBox->SetItemIndex(static_cast<int>(column.ComboBoxItems.indexOf(text)));
  FComboBox->setAccessibleName(column.Caption().trimmed());
  FSavedIndex = FComboBox->ItemIndex();
  for (const TOnComboBoxChange* const event :
       {&FList.OnColumnComboBoxDropDown, &column.OnColumnComboBoxDropDown}) {
    if (!Tell(FList.EventLife(), *event, item, FColumn, FSavedIndex) || column.Gone()) return false;
    if (FState.EditItem != item) return false;
  }
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
  return true;
}

bool TRdEditors::EditKey(QKeyEvent& event) {
  int key = event.key();
  const TEventScope scope(FList.EventLife());
  if (!Tell(FList.EventLife(), FList.EditOnKeyPress, key, event.modifiers()) || key == 0) return true;
  if (key == Qt::Key_Escape) {
    Drop();
    return true;
  }
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  Guarded([this] { Hide(); });
  return true;
}

void TRdEditors::EditChanged() {
  const TEventScope scope(FList.EventLife());
  TkListItem* const item = FState.EditItem;
  if (item == nullptr) return;
  if (!Tell(FList.EventLife(), FList.EditOnChange, item, FColumn) || FState.EditItem != item) return;
  (void)Tell(FList.EventLife(), FList.Columns()[FColumn].OnColumnEditChange, item, FColumn);
}

void TRdEditors::Hide() {
  const TEventScope scope(FList.EventLife());
  FState.EditActive = false;
  ExitEdit();
  if (!scope.ListGone()) FComboBox->CloseUp();
}

void TRdEditors::Drop() {
  FForgotten = false;
  FState.EditItem = nullptr;
  Guarded([this] { Hide(); });
}

// The row goes, in the middle of whatever removes it: the editor is hidden by DropForgotten, once that has
// ended.
void TRdEditors::Forget(const TkListItem& item) {
  if (FState.EditItem != &item) return;
  FState.EditItem = nullptr;
  FForgotten = true;
}

void TRdEditors::DropForgotten() {
  if (FForgotten) Drop();
}

// Leaving the focus, Enter and Hide all end here, and each may cause the other.
void TRdEditors::ExitEdit() {
  if (FExiting || FEdit->isHidden()) return;
  const TEventScope scope(FList.EventLife());
  FExiting = true;
  const auto end = qScopeGuard([this, &scope] {
    if (!scope.ListGone()) EndEdit();
  });
  TkListItem* const item = FState.EditItem;
  if (item == nullptr || !Tell(FList.EventLife(), FList.EditOnExit, item, FColumn)) return;
  if (FState.EditItem == item) Write(FEdit->text(), kEditError);
}

void TRdEditors::EndEdit() {
  // Before it hides, else Qt would give the focus to any other control of the form.
  const bool focused = FEdit->hasFocus();
  FState.EditItem = nullptr;
  FState.EditActive = false;
  if (focused) FList.setFocus(Qt::OtherFocusReason);
  FEdit->hide();
  FExiting = false;
  Repaint(FColumn);
}

void TRdEditors::CloseUp() {
  if (FExiting) return;
  const TEventScope scope(FList.EventLife());
  FExiting = true;
  const auto end = qScopeGuard([this, &scope] {
    if (scope.ListGone()) return;
    FState.EditItem = nullptr;
    FState.EditActive = false;
    FExiting = false;
    Repaint(FColumn);
  });
  FList.FMouse.EndPress();
  FList.setFocus(Qt::PopupFocusReason);
  TkListItem* const item = FState.EditItem;
  if (item == nullptr || FComboBox->ItemIndex() == FSavedIndex) return;
  const QString text = FComboBox->Items().value(FComboBox->ItemIndex());
  ComboBoxChanged(*item);
  if (!scope.ListGone() && FState.EditItem == item) Write(text, kComboBoxError);
}

void TRdEditors::ComboBoxChanged(TkListItem& item) {
  const int index = FComboBox->ItemIndex();
  FSavedIndex = index;
  if (!Tell(FList.EventLife(), FList.OnColumnComboBoxChange, &item, FColumn, index)) return;
  if (FState.EditItem != &item) return;
  (void)Tell(FList.EventLife(), FList.Columns()[FColumn].OnColumnComboBoxChange, &item, FColumn, index);
}

void TRdEditors::Write(const QString& text, const char* error) {
  if (!SetShownText(*FState.EditItem, FColumn, text)) throw EListError(error);
}

void TRdEditors::Repaint(int column) {
  for (int row = FList.TopIndex(); row < FList.Layout().EndOfVisibleRows(); ++row)
    if (TkListItem* const item = FList.Items().Item(row)) FList.RepaintCell(*item, column);
}
