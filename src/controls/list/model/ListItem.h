// One row of a list and its texts. Owned by its TListItems; main thread.
#pragma once

#include "controls/list/ListTypes.h"

#include <QStringList>

#include <span>
#include <vector>

class TListItem;
class TListItems;

// The texts of a row's columns 1 and up, with one image index per text. Part of its row. An index out of
// range throws EListError, but for Text and ImageIndex, which painters ask for columns that a row may not
// have.
class TSubItems {
 public:
  explicit TSubItems(TListItem& item) : FItem(item) {}
  TSubItems(const TSubItems&) = delete;
  TSubItems& operator=(const TSubItems&) = delete;
  ~TSubItems();

  [[nodiscard]] int Count() const { return FBlock != nullptr ? FBlock->Count : 0; }
  [[nodiscard]] const QString& operator[](int index) const { return Texts()[Checked(index)]; }

  // The text, empty beyond the last one.
  [[nodiscard]] QString Text(int index) const;

  int Add(const QString& text);
  void Insert(int index, const QString& text);
  void Put(int index, const QString& text);
  void Delete(int index);
  void Clear();
  void Assign(const QStringList& texts);

  // -1 is none.
  [[nodiscard]] int ImageIndex(int index) const;
  void SetImageIndex(int index, int image);

 private:
  // One block of memory with head and texts; the images apart, as few rows have any. A list has very many of
  // these, nearly all with a text for each column and never changed again.
  struct TBlock {
    int Count;
    int Room;
    std::vector<int>* Images;  // one per text, or null if no text has one
    // the texts follow
  };

  [[nodiscard]] std::span<QString> Texts() const {
    if (FBlock == nullptr) return {};
    return {reinterpret_cast<QString*>(FBlock + 1), static_cast<size_t>(FBlock->Count)};
  }
  [[nodiscard]] size_t Checked(int index) const {
    if (index < 0 || index >= Count()) ThrowRange();
    return static_cast<size_t>(index);
  }
  [[noreturn]] static void ThrowRange();
  void Reserve(int room);
  void DropTexts();
  void InsertText(int index, const QString& text);
  void Changed();

  TListItem& FItem;
  TBlock* FBlock = nullptr;
};

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
  // A hint: the row was there once (TListItems::IndexOf).
  mutable int FIndex = -1;
  TLife FLife = TLife::Staying;
};
