#include "controls/list/rd/model/StoredRows.h"

#include "controls/list/rd/model/RdListModel.h"

namespace {

const QString kCaption = QStringLiteral("Cap=");
const QString kSubItems = QStringLiteral("Sub=");
const QString kSignature = QStringLiteral("Sig=");
const QString kLineEnd = QStringLiteral("\r\n");

QString TextOf(const TSubItems& subItems) {
  QString text;
  for (int sub = 0; sub < subItems.Count(); ++sub)
    text += subItems[sub] + kLineEnd;
  return text;
}

QString ImagesOf(const TSubItems& subItems) {
  QStringList images;
  for (int sub = 0; sub < subItems.Count(); ++sub)
    images << QString::number(subItems.ImageIndex(sub));
  return images.join(u',');
}

QString SignatureOf(const TkListItem& item) {
  const auto data = reinterpret_cast<quintptr>(item.Data());
  return QStringLiteral("%1,%2,%3,$%4,%5,%6")
      .arg(item.ImageIndex())
      .arg(item.StateIndex())
      .arg(item.OverlayIndex())
      .arg(data, 0, 16)
      .arg(item.GroupID())
      .arg(item.Checked() ? QStringLiteral("True") : QStringLiteral("False"));
}

void ReadSubItems(TSubItems& subItems, const QString& text, const QString& images) {
  QStringList lines = text.split(kLineEnd);
  if (lines.back().isEmpty()) lines.removeLast();
  subItems.Assign(lines);
  const QStringList indexes = images.split(u',');
  for (int sub = 0; sub < subItems.Count() && sub < indexes.size(); ++sub)
    subItems.SetImageIndex(sub, indexes[sub].toInt());
}

// The group is the one that the data belongs to. Missing parts leave the row as it is.
void ReadSignature(TkListItem& item, const QString& text) {
  const QStringList parts = text.split(u',');
  if (parts.size() != 6) return;
  item.SetImageIndex(parts[0].toInt());
  item.SetStateIndex(parts[1].toInt());
  item.SetOverlayIndex(parts[2].toInt());
  item.SetData(reinterpret_cast<void*>(static_cast<quintptr>(parts[3].mid(1).toULongLong(nullptr, 16))));
  item.SetChecked(parts[5].compare(u"True", Qt::CaseInsensitive) == 0);
}

}  // namespace

QStringList TkStoredRows::ItemColumn() const {
  QStringList data;
  for (int row = 0; row < FModel.AllItems().Count(); ++row) {
    if (const TStringValueList* const types = FModel.AllItems()[row]->ColumnTypes())
      data << QString::number(row) + u':' + types->Text().trimmed();
  }
  return data;
}

void TkStoredRows::SetItemColumn(const QStringList& data) {
  const TkItemQuickList& items = FModel.AllItems();
  for (TkListItem* item : items)
    item->DropColumnTypes();
  for (const QString& entry : data) {
    bool isNumber = false;
    const int row = entry.section(u':', 0, 0).toInt(&isNumber);
    if (isNumber && row >= 0 && row < items.Count())
      items[row]->MakeColumnTypes().SetText(entry.section(u':', 1));
  }
}

QStringList TkStoredRows::HideItemData(const TkListGroup& group) {
  QStringList data;
  for (const TkListItem* item : group.HiddenItems()) {
    data << kCaption + item->Caption();
    if (item->SubItems().Count() > 0)
      data << kSubItems + TextOf(item->SubItems()) << ImagesOf(item->SubItems());
    data << kSignature + SignatureOf(*item);
  }
  return data;
}

void TkStoredRows::SetHideItemData(TkListGroup& group, const QStringList& data) {
  while (group.HiddenItems().Count() > 0)
    FModel.DestroyHidden(*group.HiddenItems()[0]);
  TkListItem* item = nullptr;
  for (qsizetype line = 0; line < data.size(); ++line) {
    const QString& text = data[line];
    if (text.startsWith(kCaption)) {
      item = &AddHidden(group, text.mid(kCaption.size()));
    } else if (item != nullptr && text.startsWith(kSubItems)) {
      ReadSubItems(item->SubItems(), text.mid(kSubItems.size()), data.value(++line));
    } else if (item != nullptr && text.startsWith(kSignature)) {
      ReadSignature(*item, text.mid(kSignature.size()));
      item = nullptr;
    }
  }
}

TkListItem& TkStoredRows::AddHidden(TkListGroup& group, const QString& caption) {
  TkListItem* const item = FModel.Enter(FModel.Items().Owner().CreateListItem(FModel.Items()));
  item->SetCaption(caption);
  item->FHidden = true;
  item->FGroupID = group.GroupID();
  FModel.Placing().Join(*item, group);
  group.FHiddenItems.Add(*item);
  return *item;
}
