// What a stored form keeps of a list beside its shown rows, as lists of strings. Main thread.
#pragma once

#include <QStringList>

class TkListGroup;
class TkListItem;
class TkListModel;

class TkStoredRows {
 public:
  explicit TkStoredRows(TkListModel& model) : FModel(model) {}

  // "ItemColumn": the cell types of each row that has any, as "row:column=type,...", the row as an index into
  // AllItems. Reading drops all types first and skips an entry whose row is no number or out of range.
  [[nodiscard]] QStringList ItemColumn() const;
  void SetItemColumn(const QStringList& data);

  // "HideItemData": the hidden rows of a group. Each is a run of strings: "Cap=" and the caption; if the row
  // has sub-items, "Sub=" and their texts, a line each, and then their images, joined by ","; at last "Sig="
  // and image, state image, overlay, data as hexadecimal, group id and checked. Reading deletes the present
  // hidden rows first; what belongs to no run is skipped.
  [[nodiscard]] static QStringList HideItemData(const TkListGroup& group);
  void SetHideItemData(TkListGroup& group, const QStringList& data);

 private:
  TkListItem& AddHidden(TkListGroup& group, const QString& caption);

  TkListModel& FModel;
};
