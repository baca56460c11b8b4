#include "views/files/ShellFileRows.h"

#include "controls/shell/RzShellList.h"
#include "platform/Paths.h"

int TShellFileRows::Count() const {
  return FList.Items().Count();
}

int TShellFileRows::Selected() const {
  return FList.ItemIndex();
}

bool TShellFileRows::Checked(int row) const {
  const TListItem* item = FList.Items().Item(row);
  return item != nullptr && item->Checked();
}

TFileRow TShellFileRows::Row(int row) const {
  const TRzShellListData& data = TRzShellList::ShellData(*FList.Items()[row]);
  return {data.Path(), ExtractFileName(data.Path()), data.IsFolder()};
}

TOpenFolder TShellFileRows::OpenParent(int row) const {
  const TShellKind kind = TRzShellList::ShellData(*FList.Items()[row]).Kind();
  return kind == TShellKind::Folder || kind == TShellKind::File ? FList.Folder() : TOpenFolder();
}

void TShellFileRows::Remove(int row) {
  FList.Items().Delete(row);
}

void TShellFileRows::Refill() {
  if (OnRefill) OnRefill();
}
