#include "views/rows/ResultRows.h"

#include "controls/list/ListView.h"
#include "platform/Paths.h"
#include "support/Korvel_Routine_New.h"
#include "support/PLanguage.h"
#include "support/ShellRoutines.h"

namespace {

constexpr const char16_t* kCaptions[kResultColumns] = {u"Name", u"Location", u"Size", u"Type"};

// The growth that each column takes, in tenths; the size column keeps its width.
constexpr std::array<int, kResultColumns> kShares = {2, 7, 0, 1};

const qint64* SizeOf(const TListItem& item) {
  return static_cast<const qint64*>(item.Data());
}

// A list has sizes on all of its rows or on none. The sort may move rows that compare equal; without sizes
// they are to stay.
bool HasSizes(const TCustomListView& list) {
  return list.Items().Count() > 0 && SizeOf(*list.Items()[0]) != nullptr;
}

// A row without a size compares equal to every other.
int CompareSizes(const TListItem& item1, const TListItem& item2, int largerIs) {
  const qint64* size1 = SizeOf(item1);
  const qint64* size2 = SizeOf(item2);
  if (size1 == nullptr || size2 == nullptr) return 0;
  return *size1 > *size2 ? largerIs : *size1 < *size2 ? -largerIs : 0;
}

}  // namespace

void AddResultColumns(TCustomListView& list, const TResultRules& rules) {
  for (int index = 0; index < kResultColumns; ++index)
    list.Columns().Add(QString::fromUtf16(kCaptions[index]), rules.Widths[static_cast<size_t>(index)]);
  TListColumn& name = list.Columns()[kNameColumn];
  name.SetCaption(QLatin1String(rules.Indent) + name.Caption());
  list.Columns()[kLocationColumn].SetElide(Qt::ElideMiddle);
}

void NameSortDirections(TCustomListView& list, const TLanguage& language) {
  list.SetSortTexts({language.GetMessage(u"M_Sorted_Up"_qs, u"ascending"_qs),
                     language.GetMessage(u"M_Sorted_Down"_qs, u"descending"_qs)});
}

void SpreadResultColumns(TCustomListView& list, const TResultRules& rules, int growth) {
  for (int index = 0; index < kResultColumns; ++index) {
    const auto at = static_cast<size_t>(index);
    if (kShares[at] != 0) list.Columns()[index].SetWidth(rules.Widths[at] + growth * kShares[at] / 10);
  }
}

TListItem* AddResultRow(TCustomListView& list, const TFileInfoEx& record, const QString& type, int image) {
  TListItem* item = list.Items().Add();
  item->SetCaption(record.Name);
  item->SubItems().Assign({record.Path, SizeToText(static_cast<qint64>(record.Size)), type});
  item->SetImageIndex(image);
  return item;
}

TListItem* AddFileRow(TCustomListView& list, TImageList& images, const TFileInfoEx& record) {
  const int image = images.AddIcon(GetFileIconHandle(record.Path + record.Name));
  return AddResultRow(list, record, GetFileTypeName(ExtractFileExt(record.Name)), image);
}

void KeepSize(TListItem& item, const TFileInfoEx& record) {
  item.SetData(new qint64(static_cast<qint64>(record.Size)));
}

void FreeResultRow(TListItem& item) {
  delete static_cast<qint64*>(item.Data());
  item.SetData(nullptr);
}

QString ResultPath(const TListItem& item) {
  return item.SubItems().Text(0) + item.Caption();
}

void TResultSort::ColumnClick(TCustomListView& list, TListColumn& column) {
  const int clicked = column.Index();
  FSortColumn = clicked;
  // At most one other column has a mark.
  if (column.ImageIndex() == -1) {
    for (int index = 0; index < list.Columns().Count(); ++index) {
      TListColumn& other = list.Columns()[index];
      if (index == clicked || other.ImageIndex() == -1) continue;
      other.SetImageIndex(-1);
      break;
    }
  }
  bool& kept = FSortDir[static_cast<size_t>(clicked)];
  kept = !kept;
  column.SetImageIndex(kept ? FRules.KeptImage : FRules.NegatedImage);
  list.Columns().SetSorted(clicked, kept ? ssUp : ssDown);
  if (clicked != kSizeColumn || HasSizes(list)) list.AlphaSort();
}

int TResultSort::Compare(const TListItem& item1, const TListItem& item2) const {
  int result = 0;
  if (FSortColumn == kNameColumn)
    result = CompareText(item1.Caption(), item2.Caption());
  else if (FSortColumn == kSizeColumn)
    result = CompareSizes(item1, item2, FRules.LargerIs);
  else
    result = CompareText(item1.SubItems().Text(FSortColumn - 1), item2.SubItems().Text(FSortColumn - 1));
  return FSortDir[static_cast<size_t>(FSortColumn)] ? result : -result;
}
