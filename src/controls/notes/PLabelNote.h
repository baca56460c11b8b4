// A label that shows one of the texts it holds. Main thread.
#pragma once

#include <QLabel>

#include "controls/notes/Collection.h"

struct TLabelItem {
  static constexpr const char* kClassName = "TLabelItem";

  QString Name;
  QString Text;
};

using TLabelCollection = TCollection<TLabelItem>;

class TLabelNote : public QLabel {
 public:
  explicit TLabelNote(QWidget* parent = nullptr);

  [[nodiscard]] TLabelCollection& Items() { return FItems; }
  [[nodiscard]] const TLabelCollection& Items() const { return FItems; }

  // The item whose text is the caption, -1 before any. Setting an index out of range is ignored, -1 too.
  [[nodiscard]] int TextIndex() const { return FTextIndex; }
  void SetTextIndex(int index);

  // The same by the item's name: empty before any; setting an unknown name is ignored.
  [[nodiscard]] QString NameIndex() const;
  void SetNameIndex(const QString& name);

  [[nodiscard]] QString Caption() const { return text(); }

  // While the form is loading, TextIndex is stored and shows nothing yet.
  void SetLoading(bool loading) { FLoading = loading; }

 private:
  TLabelCollection FItems;
  int FTextIndex = -1;
  bool FLoading = false;
};
