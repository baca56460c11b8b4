// The columns of a list, in display order. Plain objects that need no window; main thread.
#pragma once

#include "controls/list/ListTypes.h"
#include "controls/list/model/EventScope.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

class TListColumns;

enum class TAlignment { LeftJustify, RightJustify, Center };

// Owned by its TListColumns.
class TListColumn {
 public:
  explicit TListColumn(TListColumns& owner) : FOwner(owner) {}
  TListColumn(const TListColumn&) = delete;
  TListColumn& operator=(const TListColumn&) = delete;
  virtual ~TListColumn() = default;

  // -1 for a column that is gone.
  [[nodiscard]] int Index() const;
  // The column has left its list and is kept only until the event at hand has been told.
  [[nodiscard]] bool Gone() const { return FGone; }

  [[nodiscard]] const QString& Caption() const { return FCaption; }
  void SetCaption(const QString& caption) { Set(FCaption, caption); }

  // Pixels. MinWidth and MaxWidth bound every width from then on; 0 is no bound.
  [[nodiscard]] int Width() const { return FWidth; }
  void SetWidth(int width);
  [[nodiscard]] int MinWidth() const { return FMinWidth; }
  void SetMinWidth(int width);
  [[nodiscard]] int MaxWidth() const { return FMaxWidth; }
  void SetMaxWidth(int width);

  [[nodiscard]] TAlignment Alignment() const { return FAlignment; }
  void SetAlignment(TAlignment alignment) { Set(FAlignment, alignment); }

  // The sort mark: a place in the list's SmallImages, drawn at the right of the caption; -1 is none.
  [[nodiscard]] int ImageIndex() const { return FImageIndex; }
  void SetImageIndex(int index) { Set(FImageIndex, index); }

  // How the rows are sorted by this column, for a screen reader and for headers that draw an arrow of their
  // own. The list sorts nothing by it.
  [[nodiscard]] TSortState SortState() const { return FSortState; }
  void SetSortState(TSortState state) { Set(FSortState, state); }

  // Where a text that is too long is cut. Paths read best with the cut in the middle.
  [[nodiscard]] Qt::TextElideMode Elide() const { return FElide; }
  void SetElide(Qt::TextElideMode elide) { Set(FElide, elide); }

  // False keeps the user from dragging the divider.
  [[nodiscard]] virtual bool Resizable() const { return true; }

 protected:
  [[nodiscard]] TListColumns& Owner() const { return FOwner; }
  void Changed();

 private:
  template <typename T>
  void Set(T& field, const T& value) {
    if (field == value) return;
    field = value;
    Changed();
  }

  friend class TListColumns;

  TListColumns& FOwner;
  QString FCaption;
  int FWidth = 50;
  int FMinWidth = 0;
  int FMaxWidth = 0;
  TAlignment FAlignment = TAlignment::LeftJustify;
  int FImageIndex = -1;
  TSortState FSortState = ssNone;
  Qt::TextElideMode FElide = Qt::ElideRight;
  bool FGone = false;
};

// Owns its columns. An index out of range throws EListError.
class TListColumns {
 public:
  TListColumns() = default;
  TListColumns(const TListColumns&) = delete;
  TListColumns& operator=(const TListColumns&) = delete;
  virtual ~TListColumns() = default;

  // Called after any change of a column or of their number.
  // It is the host that listens, not the program, so this is called plainly and not told as an event.
  std::function<void()> OnChange;

  // Set once, by the list that the columns belong to, before there are any.
  void SetLife(const TListLifePtr& life) { FLife = life; }

  TListColumn& Add();
  TListColumn& Add(const QString& caption, int width, TAlignment alignment = TAlignment::LeftJustify);
  void Delete(int index);
  void Clear();

  // The rows are sorted by this column, and by no other; -1 is none.
  void SetSorted(int index, TSortState state);

  [[nodiscard]] int Count() const { return static_cast<int>(FColumns.size()); }
  [[nodiscard]] TListColumn& operator[](int index) const;
  [[nodiscard]] int IndexOf(const TListColumn& column) const;

 protected:
  // The column factory; a list with columns of its own class overrides it.
  [[nodiscard]] virtual std::unique_ptr<TListColumn> CreateColumn();

 private:
  friend class TListColumn;
  void Changed() const;
  void Bury(std::unique_ptr<TListColumn> column);

  // A life of its own until the list gives its own: columns without a list can be deleted too.
  TListLifePtr FLife = std::make_shared<TListLife>();
  std::vector<std::unique_ptr<TListColumn>> FColumns;
};
