// The rows of a list as the file commands see them. Main thread.
#pragma once

#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/FileActions.h"

class TCustomListView;
class TListItem;

// What a row stands for, as it was listed.
struct TFileRow {
  QString Path;  // whole
  QString Name;
  bool IsFolder = false;
};

// Rows are 0-based indexes. Lists that follow the disk lose and gain rows whenever waiting input is handled.
class TFileRows {
 public:
  virtual ~TFileRows() = default;

  [[nodiscard]] virtual int Count() const = 0;
  // The selected row, -1 for none.
  [[nodiscard]] virtual int Selected() const = 0;
  // False for a row that is not there any more.
  [[nodiscard]] virtual bool Checked(int row) const = 0;

  // Of a row that is there.
  [[nodiscard]] virtual TFileRow Row(int row) const = 0;
  // The folder that holds what the row stands for; not open where the way to it is not the one that was
  // listed.
  [[nodiscard]] virtual TOpenFolder OpenParent(int row) const = 0;
  virtual void Remove(int row) = 0;
  // The row's entry was moved into this folder, whose text ends in the delimiter.
  virtual void SetLocation(int row, const QString& folder) = 0;
  // Writes the program's cells of all rows anew.
  virtual void Refill() = 0;
};

// Result rows: the path is location followed by name. The folder of a row is reached from a scanned root
// without any link, since the scan has entered none; that of a row which was moved is the folder that the
// user chose for it, as it lay then.
class TResultFileRows : public TFileRows {
 public:
  // Rows with the folder image are folders. The list outlives this.
  explicit TResultFileRows(TCustomListView& list, std::optional<int> folderImage = std::nullopt)
      : FList(list), FFolderImage(folderImage) {}

  // The scanned paths that the rows come from.
  void SetRoots(const QStringList& roots) { FRoots = {roots.begin(), roots.end()}; }

  // What the list's deletion handler does here; may be called after this has gone.
  [[nodiscard]] auto Forgetter() const {
    return [moved = FMoved](const TListItem& item) { moved->erase(&item); };
  }

  [[nodiscard]] int Count() const override;
  [[nodiscard]] int Selected() const override;
  [[nodiscard]] bool Checked(int row) const override;
  [[nodiscard]] TFileRow Row(int row) const override;
  [[nodiscard]] TOpenFolder OpenParent(int row) const override;
  void Remove(int row) override;
  void SetLocation(int row, const QString& folder) override;
  void Refill() override {}  // all cells are the result's

 private:
  TCustomListView& FList;
  const std::optional<int> FFolderImage;
  std::vector<TKnownRoot> FRoots;
  using TMoved = std::map<const TListItem*, TKnownRoot>;
  // Shared with the deletion handler of the list, which outlives this. Keyed by address, so a row that goes
  // must be forgotten, or a new one at its address would be taken for it.
  const std::shared_ptr<TMoved> FMoved = std::make_shared<TMoved>();
};

class TRzShellList;

// What is acted on lies in the folder that was shown when its rows were listed, held open since. Rows of the
// computer level lie in none: nothing deletes or moves them.
class TShellFileRows : public TFileRows {
 public:
  // The list outlives this.
  explicit TShellFileRows(TRzShellList& list) : FList(list) {}

  // Writes the program's cells of all rows anew.
  std::function<void()> OnRefill;

  [[nodiscard]] int Count() const override;
  [[nodiscard]] int Selected() const override;
  [[nodiscard]] bool Checked(int row) const override;
  [[nodiscard]] TFileRow Row(int row) const override;
  [[nodiscard]] TOpenFolder OpenParent(int row) const override;
  void Remove(int row) override;
  void SetLocation(int, const QString&) override {}  // a moved row goes when the list follows the disk
  void Refill() override;

 private:
  TRzShellList& FList;
};
