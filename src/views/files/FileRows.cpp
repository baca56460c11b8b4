#include "views/files/FileRows.h"

#include "controls/list/ListView.h"
#include "controls/shell/RzShellList.h"
#include "platform/Paths.h"
#include "views/rows/ResultRows.h"

int TResultFileRows::Count() const {
  return FList.Items().Count();
}

int TResultFileRows::Selected() const {
  return FList.ItemIndex();
}

bool TResultFileRows::Checked(int row) const {
  const TListItem* item = FList.Items().Item(row);
  return item != nullptr && item->Checked();
}

TFileRow TResultFileRows::Row(int row) const {
  const TListItem& item = *FList.Items()[row];
  return {ResultPath(item), item.Caption(), FFolderImage && item.ImageIndex() == *FFolderImage};
}

TOpenFolder TResultFileRows::OpenParent(int row) const {
  const TListItem* item = FList.Items()[row];
  const QString location = item->SubItems().Text(kLocationColumn - 1);
  if (const auto moved = FMoved->find(item); moved != FMoved->end()) return moved->second.Open(location);
  // Roots may lie within each other; the first that leads there without a link is as good as any.
  for (const TKnownRoot& root : FRoots)
    if (TOpenFolder folder = root.Open(location); folder.IsOpen()) return folder;
  return {};
}

void TResultFileRows::Remove(int row) {
  FList.Items().Delete(row);
}

void TResultFileRows::SetLocation(int row, const QString& folder) {
  TListItem* item = FList.Items()[row];
  item->SubItems().Put(kLocationColumn - 1, folder);
  FMoved->insert_or_assign(item, TKnownRoot(folder));
}

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
