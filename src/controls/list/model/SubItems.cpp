#include "controls/list/model/SubItems.h"

#include "controls/list/model/ListItem.h"

int TSubItems::Checked(int index) const {
  if (index < 0 || index >= Count()) throw EListError("TSubItems: index out of range");
  return index;
}

int TSubItems::Add(const QString& text) {
  FTexts.append(text);
  Changed();
  return Count() - 1;
}

void TSubItems::Insert(int index, const QString& text) {
  if (index != Count()) index = Checked(index);
  FTexts.insert(index, text);
  if (index < FImages.size()) FImages.insert(index, -1);
  Changed();
}

void TSubItems::Put(int index, const QString& text) {
  QString& place = FTexts[Checked(index)];
  if (place == text) return;
  place = text;
  Changed();
}

void TSubItems::Delete(int index) {
  FTexts.removeAt(Checked(index));
  if (index < FImages.size()) FImages.removeAt(index);
  Changed();
}

void TSubItems::Clear() {
  Assign({});
}

void TSubItems::Assign(const QStringList& texts) {
  FTexts = texts;
  FImages.clear();
  Changed();
}

void TSubItems::SetImageIndex(int index, int image) {
  if (ImageIndex(Checked(index)) == image) return;
  while (FImages.size() <= index)
    FImages.append(-1);
  FImages[index] = image;
  FItem.Notify(TItemChange::Image);
}

void TSubItems::Changed() {
  FItem.Notify(TItemChange::Text);
}
