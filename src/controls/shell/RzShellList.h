// The list of a folder's content, or at the computer level of volumes and the home folder.
//
//   TRzShellList list;
//   list.OnFillItem = [](TListItem* item) { ... };  // the cells that the program writes
//   list.SetPath(folder);
//
// SetPath shows the folder at once without rows; they come from a thread, some at first and then all, in
// slices between which the window answers. The rows of the folder before are gone at once, and OnDeletion
// tells of them in slices too; they have no index then. The main thread never touches a folder. Subfolders
// stand above files, both by name, until the program sorts. Changes on disk are followed: rows come, go and
// get new texts, and all others keep selection, check marks and their place on the screen. A list that was
// sorted gets new rows at its end.
//
// Columns, from 0: at the computer level name, type and two that the program writes; in a folder name, size,
// type and date. A folder's size is the program's to write. The columns are made once and keep their widths.
// Types and icons are fetched as rows come into view, and for the others when there is nothing else to do.
#pragma once

#include "controls/list/ListView.h"
#include "controls/picture/ImageList.h"
#include "controls/shell/ShellListing.h"
#include "platform/FolderWatch.h"

#include <QElapsedTimer>
#include <QHash>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <vector>

class QLabel;

// What a row of the list stands for.
class TRzShellListData {
 public:
  explicit TRzShellListData(TShellEntry entry) : FEntry(std::move(entry)) {}

  [[nodiscard]] bool IsFolder() const { return FEntry.IsFolder(); }
  [[nodiscard]] TShellKind Kind() const { return FEntry.Kind; }
  [[nodiscard]] const QString& Path() const { return FEntry.Path; }
  [[nodiscard]] quint64 Size() const { return FEntry.Size; }
  [[nodiscard]] const QString& SizeText() const { return FEntry.SizeText; }

  // The program's slot. Whoever fills it frees it, in OnDeletion at the latest.
  void* Data = nullptr;

 private:
  friend class TRzShellList;

  TShellEntry FEntry;
  bool FTyped = false;  // type text and icon are there
};

// The texts that a user sees, in the user's language.
struct TRzShellTexts {
  QString FixedVolume = QStringLiteral("Local Disk");
  QString RemovableVolume = QStringLiteral("Removable Disk");
  QString NetworkVolume = QStringLiteral("Network Drive");
  QString Home = QStringLiteral("Home Folder");
  QString Unreadable = QStringLiteral("This folder can't be read.");
};

class TRzShellList : public TListView {
 public:
  enum class TState { Filling, Complete, Unreadable };

  explicit TRzShellList(QWidget* parent = nullptr);
  ~TRzShellList() override;

  // The folder shown, without a delimiter at its end unless it is a volume root; empty for the computer
  // level.
  [[nodiscard]] const QString& Path() const { return FPath; }
  // Goes there, also where there is nothing that can be read. A fill under way ends.
  void SetPath(const QString& path);
  // Lists the same folder again, as a change on disk does.
  void Refresh();
  [[nodiscard]] TState State() const { return FState; }

  // The folder shown as its rows were listed, held open since; not open before there are any, nor at the
  // computer level.
  [[nodiscard]] const TOpenFolder& Folder() const { return FFolder; }

  void SetTexts(const TRzShellTexts& texts) { FTexts = texts; }

  // The data of a row, which goes with it.
  [[nodiscard]] static TRzShellListData& ShellData(const TListItem& item);
  // The type of what the row stands for, fetched if it was not yet.
  [[nodiscard]] QString TypeText(TListItem& item);

  // The same as OnPathChanged and before it, for the combo that is linked with the list.
  std::function<void()> OnLink;
  // The path is another one; the rows of the former are gone, though not all have been told of.
  std::function<void()> OnPathChanged;
  // A row has its texts and needs the program's; it is not in the list yet. Comes again, for the row in the
  // list, when its file has changed.
  std::function<void(TListItem* item)> OnFillItem;
  // All rows are there, for the first time since the path changed.
  std::function<void()> OnFolderChanged;
  // Rows came, went or changed after that.
  std::function<void()> OnRefreshed;
  // A double click, or Enter, before the list goes into the folder of the row. In the place of the event of
  // the same name of other lists.
  std::function<void()> OnDblClick;

  void AlphaSort() override;

 protected:
  void ItemGone(TListItem& item) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class TItem;
  class TRows;

  void List();
  void Listed(TShellListed listed);
  void FreeLeftRows();
  void Merge();
  void Step();
  void StepMerge();
  void BeginMerge();
  [[nodiscard]] bool MergeInOrder();
  [[nodiscard]] bool MergeByName();
  void UncheckRows();
  void EndMerge();
  void Insert(int row, const TShellEntry& entry);
  void Update(TItem& item, const TShellEntry& entry);
  void DeleteRow(int row);
  void ShowUnreadable(bool unreadable);
  void OpenSelected();
  void TypeVisible();
  [[nodiscard]] bool TypeNext();
  void Type(TItem& item);
  [[nodiscard]] TItem* ItemAt(int row) const;
  [[nodiscard]] int TypeColumn() const { return FPath.isEmpty() ? 0 : 1; }

  struct TType {
    QString Text;
    int Image = -1;
  };
  const TType& TypeOf(const TShellEntry& entry);
  [[nodiscard]] QString TypeNameOf(const TShellEntry& entry) const;

  QString FPath;
  TState FState = TState::Complete;
  TRzShellTexts FTexts;
  TImageList FImages;
  std::map<QString, TType> FTypes;
  std::map<QString, int> FImageOf;  // by the icon's name
  TRows* const FRows;               // the list's
  // A task that is given up is left to itself: what it tells afterwards is dropped.
  TDetachedTask FListing;
  TFolderWatch FWatch;
  TOpenFolder FFolder;
  QLabel* const FNotice;  // owned as a child of the viewport
  QTimer FStep;
  QTimer FLeaving;       // rows of former folders are still to be told of and freed
  QTimer FRest;          // between two refreshes
  QElapsedTimer FClock;  // since the listing under way began
  bool FIsListing = false;
  bool FStale = false;      // a change came that the listing under way may have missed
  bool FAnnounced = false;  // OnFolderChanged has come for this path

  // The rows are brought to what was listed, and if that is all, those that were not go. In their order of
  // origin both are gone through side by side, row FRow and entry FNext being the next ones; rows that were
  // sorted are found by their paths. Handlers may change the rows between two slices, after which it begins
  // anew: what is right already stays.
  TShellListed FListed;
  size_t FNext = 0;
  int FRow = 0;
  TItem* FTop = nullptr;  // the row at the top of a scrolled list, within a slice
  int FCount = 0;         // of rows as the last slice left them
  bool FMerging = false;
  bool FSorted = false;            // rows stand in another order than that of origin
  bool FChanged = false;           // by this merge
  QHash<QString, TItem*> FByName;  // rows not met yet; filled only while sorted rows are merged
  int FTypedRows = 0;              // rows above that have been given their types in the quiet
};
