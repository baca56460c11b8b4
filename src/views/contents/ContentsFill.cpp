#include "views/contents/ContentsFill.h"

#include <array>
#include <utility>

#include "platform/Paths.h"
#include "support/Korvel_Routine_New.h"
#include "views/main/ResultTab.h"

namespace {

// The sub-items that the program writes: in a folder, and at the computer level.
constexpr int kSizeCell = 0;
constexpr int kTotalCell = 1;
constexpr int kFreeCell = 2;

struct TCaption {
  const char16_t* Key;
  const char16_t* Default;
};
using TCaptions = std::array<TCaption, 4>;
constexpr TCaptions kComputerCaptions = {{{u"M_Name", u"Name"},
                                          {u"M_Type", u"Type"},
                                          {u"M_Total_Size", u"Total Size"},
                                          {u"M_Free_Space", u"Free Space"}}};
constexpr TCaptions kFolderCaptions = {
    {{u"M_Name", u"Name"}, {u"M_Size", u"Size"}, {u"M_Type", u"Type"}, {u"M_Date", u"Date Modified"}}};

qint64* CellOf(const TRzShellListData& row) {
  return static_cast<qint64*>(row.Data);
}

}  // namespace

// What SameFolder takes for one folder must have one hash: it forgives delimiters at the end and, on Windows,
// case.
size_t TFolderHash::operator()(const QString& folder) const {
  return qHash(WithoutDelimitersAtEnd(folder).toLower());
}

bool TSameFolder::operator()(const QString& a, const QString& b) const {
  return SameFolder(a, b);
}

std::optional<qint64> TFolderSizes::Find(const QString& folder) const {
  const auto found = FSizes.find(folder);
  return found != FSizes.end() ? std::optional(found->second) : std::nullopt;
}

// The record of a size is the size thread's own, which waits in its Send until the handler has read it.
TContentsFill::TContentsFill(TRzShellList& list, const TMainState& state)
    : FList(list),
      FState(state),
      FWindow({{WM_FOLDERSIZE,
                [this](const TMessage& message) {
                  FolderSize(*reinterpret_cast<const TFolderSizeInfo*>(message.LParam));
                }},
               {WM_RESTOREFOLDER, [this](const TMessage& message) { RestoreFolder(message); }}}),
      FFolderSizeThread(&FWindow) {}

// The size thread goes on with folders that were asked for before: what it tells of them is kept for a later
// visit.
void TContentsFill::Begin() {
  FFilling = true;
  FAllowFill = true;
  SetCaptions();
}

void TContentsFill::SetCaptions() {
  const TCaptions& captions = FList.Path().isEmpty() ? kComputerCaptions : kFolderCaptions;
  int column = 0;
  for (const TCaption& caption : captions)
    FList.Columns()[column++].SetCaption(
        FState.FLanguage.GetMessage(QString::fromUtf16(caption.Key), QString::fromUtf16(caption.Default)));
}

void TContentsFill::FillItem(TListItem& item) {
  if (!FAllowFill) return;
  if (FList.Path().isEmpty())
    FillDrive(item);
  else
    FillSize(item);
}

void TContentsFill::FillDrive(TListItem& item) {
  const int index = FState.FDrives.IndexOf(TRzShellList::ShellData(item).Path());
  if (index < 0) return;
  const TDriveInfo& drive = FState.FDrives.Drives()[static_cast<size_t>(index)];
  item.SubItems().Put(kTotalCell, SizeToText(drive.Size));
  item.SubItems().Put(kFreeCell, SizeToText(drive.Free));
}

// A folder that changes while it is shown keeps what its row says. A file's text is the list's own. Each path
// leads to the row that was filled last, which is the one that gets the answer of the size thread.
void TContentsFill::FillSize(TListItem& item) {
  TRzShellListData& row = TRzShellList::ShellData(item);
  if (row.Data == nullptr) row.Data = new qint64(0);
  if (!row.IsFolder()) {
    *CellOf(row) = static_cast<qint64>(row.Size());
    return;
  }
  TListItem*& known = FFolderRows[row.Path()];
  if (std::exchange(known, &item) == &item) return;
  if (const auto size = FFolderSizes.Find(row.Path())) return ShowSize(item, *size);
  FFolderSizeThread.AddFolder(row.Path());
  *CellOf(row) = 0;
  item.SubItems().Put(kSizeCell, u"..."_qs);
}

void TContentsFill::ShowSize(TListItem& item, qint64 size) {
  *CellOf(TRzShellList::ShellData(item)) = size;
  item.SubItems().Put(kSizeCell, SizeToText(size));
}

// A fill that was stopped has left rows without cells. Unless another folder was gone to by then, this one is
// opened again: by a message, as the list is still within its own event.
void TContentsFill::End() {
  FFilling = false;
  FCurrentFolder = FList.Path();
  if (!FAllowFill) PostMessage(&FWindow, WM_RESTOREFOLDER, kRestoreWord, kRestoreMore);
}

// Paths lead to rows anew, as all cells are written; sizes that are known cost no new sum.
void TContentsFill::Repeat() {
  FFolderRows.clear();
  const TListUpdate update(FList.Items());
  for (TListItem* item : FList.Items())
    FillItem(*item);
}

void TContentsFill::Stop() {
  if (FFilling) FAllowFill = false;
}

// By now the path may lead to a newer row, which keeps it.
void TContentsFill::Forget(TListItem& item) {
  TRzShellListData& row = TRzShellList::ShellData(item);
  const auto known = FFolderRows.empty() ? FFolderRows.end() : FFolderRows.find(row.Path());
  if (known != FFolderRows.end() && known->second == &item) FFolderRows.erase(known);
  delete CellOf(row);
  row.Data = nullptr;
}

const qint64* TContentsFill::SizeOf(const TListItem& item) {
  return CellOf(TRzShellList::ShellData(item));
}

// The folder may no longer be shown; its size is kept then for the next time.
void TContentsFill::FolderSize(const TFolderSizeInfo& info) {
  const auto size = static_cast<qint64>(info.Size);
  FFolderSizes.Add(info.Path, size);
  const auto row = FFolderRows.find(info.Path);
  if (row == FFolderRows.end()) return;
  ShowSize(*row->second, size);
  if (OnSized) OnSized(*row->second);
}

void TContentsFill::RestoreFolder(const TMessage& message) {
  // A copy, as what the list tells meanwhile may set the very path that it is given.
  if (message.WParam == kRestoreWord && message.LParam == kRestoreMore)
    FList.SetPath(QString(FCurrentFolder));
}
