// The texts of a row's columns 1 and up, with one image index per text.
#pragma once

#include <QList>
#include <QStringList>

class TListItem;

// Part of its row. An index out of range throws EListError, but for Text and ImageIndex, which painters ask
// for columns that a row may not have.
class TSubItems {
 public:
  explicit TSubItems(TListItem& item) : FItem(item) {}
  TSubItems(const TSubItems&) = delete;
  TSubItems& operator=(const TSubItems&) = delete;

  [[nodiscard]] int Count() const { return static_cast<int>(FTexts.size()); }
  [[nodiscard]] const QString& operator[](int index) const { return FTexts.at(Checked(index)); }

  // The text, empty beyond the last one.
  [[nodiscard]] QString Text(int index) const { return FTexts.value(index); }

  int Add(const QString& text);
  void Insert(int index, const QString& text);
  void Put(int index, const QString& text);
  void Delete(int index);
  void Clear();
  void Assign(const QStringList& texts);

  // -1 is none.
  [[nodiscard]] int ImageIndex(int index) const { return FImages.value(index, -1); }
  void SetImageIndex(int index, int image);

 private:
  [[nodiscard]] int Checked(int index) const;
  void Changed();

  TListItem& FItem;
  QStringList FTexts;
  QList<int> FImages;
};
