// One row of a list. Owned by its TListItems; main thread.
#pragma once

#include "controls/list/ListTypes.h"
#include "controls/list/model/SubItems.h"

#include <QString>

class TListItems;

class TListItem {
 public:
  explicit TListItem(TListItems& owner);
  TListItem(const TListItem&) = delete;
  TListItem& operator=(const TListItem&) = delete;
  virtual ~TListItem();

  [[nodiscard]] TListItems& Owner() const { return FOwner; }

  // The row has left its list and is kept only until the event at hand has been told.
  [[nodiscard]] bool Gone() const { return FLife == TLife::Gone; }

  // The present row, -1 for an item that is in no list.
  [[nodiscard]] virtual int Index() const;

  [[nodiscard]] const QString& Caption() const { return FCaption; }
  void SetCaption(const QString& caption);

  [[nodiscard]] TSubItems& SubItems() { return FSubItems; }
  [[nodiscard]] const TSubItems& SubItems() const { return FSubItems; }

  // Places in the list's SmallImages and StateImages; -1 is none.
  [[nodiscard]] int ImageIndex() const { return FImageIndex; }
  void SetImageIndex(int index) { SetImage(FImageIndex, index); }
  [[nodiscard]] int StateIndex() const { return FStateIndex; }
  void SetStateIndex(int index) { SetImage(FStateIndex, index); }

  // The user's own block. The list never touches it: OnDeletion is where it is freed.
  [[nodiscard]] void* Data() const { return FData; }
  void SetData(void* data) { FData = data; }

  // State bits, kept by the row host. Setting fires the list's events as a user's act would.
  [[nodiscard]] virtual bool Checked() const { return HasState(kRowChecked); }
  virtual void SetChecked(bool checked) { SetState(kRowChecked, checked); }
  [[nodiscard]] bool Selected() const { return HasState(kRowSelected); }
  void SetSelected(bool selected) { SetState(kRowSelected, selected); }
  [[nodiscard]] bool Focused() const { return HasState(kRowFocused); }
  void SetFocused(bool focused) { SetState(kRowFocused, focused); }

  // Any of the row state bits, kRowCut and kRowDropHilited among them.
  [[nodiscard]] bool HasState(unsigned bit) const;
  void SetState(unsigned bit, bool on);

  // Takes the row out of the list and destroys it.
  virtual void Delete();

  // Scrolls the row into view: wholly, or with partialOk only if nothing of it shows.
  void MakeVisible(bool partialOk);

  // Asks for a redraw of the row.
  void Update();

 protected:
  // Where the row was last seen; right only if the list agrees.
  [[nodiscard]] int CachedIndex() const { return FIndex; }
  void CacheIndex(int index) { FIndex = index; }

  void SetImage(int& field, int index);
  void Notify(TItemChange change);

 private:
  friend class TListItems;
  friend class TSubItems;

  // The small fields stand last: a derived row goes on right behind them.
  // Leaving: its deletion is being told or was told; it is still in the list and nothing deletes it again.
  enum class TLife : unsigned char { Staying, Leaving, Gone };

  TListItems& FOwner;
  void* FData = nullptr;
  QString FCaption;
  TSubItems FSubItems;
  int FImageIndex = -1;
  int FStateIndex = -1;
  mutable int FIndex = -1;
  TLife FLife = TLife::Staying;
};
