#include "controls/list/rd/model/RdListGroup.h"

#include "controls/list/ListTypes.h"
#include "controls/list/rd/model/RdListModel.h"

TkListModel& TkListGroup::Model() const {
  return FOwner.Model();
}

void TkListGroup::Redraw() {
  if (FHeaderItem != nullptr && Model().ItemShows(*FHeaderItem)) Model().ListView().RedrawRow(*FHeaderItem);
}

void TkListGroup::Forget() {
  FHeaderItem = nullptr;
  FItems.Clear();
  FHiddenItems.Clear();
  FShownCount = 0;
}

void TkListGroup::SetGroupCheckboxes(bool boxes) {
  if (boxes == FGroupCheckboxes) return;
  FGroupCheckboxes = boxes;
  if (!Model().Items().Updating()) Model().ListView().RedrawList();
}

void TkListGroup::SetGroupExpand(bool expand) {
  const TkListState& state = Model().State();
  if (!expand && !state.GroupCanExpand) return;
  if (expand == FGroupExpand && !Collapsed()) return;
  if (!state.HandleAllocated || state.Reading) {
    FGroupExpand = expand;
    return;
  }
  const bool before = Collapsed();
  if (expand)
    Model().Placing().Expand(*this, false, false);
  else
    Model().Placing().Collapse(*this, false);
  if (Collapsed() != before) Redraw();
}

void TkListGroup::SetGroupChecked(bool checked) {
  Model().Checks().SetGroup(*this, checked);
}

TkListGroup& TkListGroups::Add(const QString& header) {
  FGroups.push_back(std::make_unique<TkListGroup>(*this, Count()));
  FGroups.back()->FHeader = header;
  return *FGroups.back();
}

void TkListGroups::Delete(int index) {
  FModel.Placing().Dissolve((*this)[index]);
  FGroups.erase(FGroups.begin() + index);
  for (int id = index; id < Count(); ++id)
    FModel.Placing().Renumber(*FGroups[static_cast<size_t>(id)], id);
}

void TkListGroups::Clear() {
  const TListUpdate update(FModel.Items());
  while (Count() > 0)
    Delete(Count() - 1);
}

TkListGroup& TkListGroups::operator[](int index) const {
  if (TkListGroup* const group = Find(index)) return *group;
  throw EListError("TkListGroups: index out of range");
}

TkListGroup* TkListGroups::Find(int groupID) const {
  return groupID >= 0 && groupID < Count() ? FGroups[static_cast<size_t>(groupID)].get() : nullptr;
}
