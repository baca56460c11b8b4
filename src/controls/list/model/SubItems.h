// The texts of a row's columns 1 and up, with one image index per text.
#pragma once

#include <QStringList>

#include <span>
#include <vector>

class TListItem;

// Part of its row. An index out of range throws EListError, but for Text and ImageIndex, which painters ask
// for columns that a row may not have.
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
