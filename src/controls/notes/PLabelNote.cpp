#include "controls/notes/PLabelNote.h"

TLabelNote::TLabelNote(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void TLabelNote::SetTextIndex(int index) {
  if (FLoading) {
    FTextIndex = index;
    return;
  }
  if (!FItems.IsIndex(index)) return;
  FTextIndex = index;
  setText(FItems[index].Text);
}

QString TLabelNote::NameIndex() const {
  return FItems.IsIndex(FTextIndex) ? FItems[FTextIndex].Name : QString();
}

void TLabelNote::SetNameIndex(const QString& name) {
  const int index = FItems.IndexOf(name);
  if (index >= 0) SetTextIndex(index);
}
