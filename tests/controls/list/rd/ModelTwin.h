// What a grouped list ought to be: the rules of its rows in plain loops over one vector, without brackets,
// numbers, stamps or counts.
#pragma once

#include "controls/list/rd/model/RdListModel.h"

#include <algorithm>
#include <limits>
#include <list>
#include <vector>

struct TTwinRow {
  TkListItem* Item = nullptr;  // not of a header row
  int Key = 0;
  int Group = -1;
  bool Header = false;
  bool Checked = false;
  bool Selected = false;
  bool Focused = false;
  int HiddenIndex = -1;
};

struct TTwinGroup {
  std::vector<TTwinRow*> Hidden = {};
  bool Collapsed = false;
  bool Checked = false;
};

class TModelTwin {
 public:
  explicit TModelTwin(int groups) : Groups(static_cast<size_t>(groups)) {}

  std::list<TTwinRow> All;
  std::vector<TTwinRow*> Rows;
  std::vector<TTwinGroup> Groups;
  bool Draws = true;

  [[nodiscard]] int Count() const { return static_cast<int>(Rows.size()); }
  [[nodiscard]] TTwinRow& Row(int index) const { return *Rows[static_cast<size_t>(index)]; }
  [[nodiscard]] TTwinGroup& Group(int id) { return Groups[static_cast<size_t>(id)]; }
  [[nodiscard]] int GroupCount() const { return static_cast<int>(Groups.size()); }

  [[nodiscard]] int Find(const TTwinRow& row) const {
    const auto found = std::find(Rows.begin(), Rows.end(), &row);
    return found == Rows.end() ? -1 : static_cast<int>(found - Rows.begin());
  }
  [[nodiscard]] int HeaderOf(int id) const {
    return Last([id](const TTwinRow& row) { return row.Header && row.Group == id; });
  }
  [[nodiscard]] std::vector<TTwinRow*> Members(int id) {
    std::vector<TTwinRow*> members;
    for (TTwinRow& row : All) {
      if (!row.Header && row.Group == id && &row != FMoving) members.push_back(&row);
    }
    return members;
  }

  void Clear() {
    All.clear();
    Rows.clear();
    for (TTwinGroup& group : Groups)
      group = {.Collapsed = group.Collapsed};
  }

  void Delete(TTwinRow& row) {
    if (row.Header) return RemoveHeader(row.Group);
    TakeOut(row);
    const int group = row.Group;
    All.remove_if([&row](const TTwinRow& one) { return &one == &row; });
    if (group >= 0) Left(group);
  }

  // A header row that has rows is left out.
  void DeleteSelected() {
    const std::vector<TTwinRow*> rows(Rows.rbegin(), Rows.rend());
    for (TTwinRow* row : rows) {
      if (Find(*row) < 0 || !row->Selected) continue;
      if (!row->Header || Members(row->Group).empty()) Delete(*row);
    }
  }

  void SetGroup(TTwinRow& row, int id) {
    if (id == row.Group) return;
    const bool hidden = row.Group >= 0 && std::erase(Group(row.Group).Hidden, &row) > 0;
    FMoving = &row;
    if (row.Group >= 0) Left(row.Group);
    if (id >= 0)
      GoTo(row, id);
    else if (hidden)
      Rows.push_back(&row);
    row.Group = id;
    FMoving = nullptr;
    if (id >= 0) FollowMembers(id);
  }

  void Hide(TTwinRow& row) {
    row.HiddenIndex = Find(row);
    TakeOut(row);
  }

  void Move(int from, int to) {
    TTwinRow* const row = Rows[static_cast<size_t>(from)];
    Rows.erase(Rows.begin() + from);
    Rows.insert(Rows.begin() + to, row);
  }

  void Show(TTwinRow& row, int index) {
    if (row.Group >= 0) std::erase(Group(row.Group).Hidden, &row);
    if (index < 0) index = row.Group >= 0 ? LastRowOf(row.Group) + 1 : row.HiddenIndex;
    Rows.insert(Rows.begin() + (index <= Count() ? index : Count()), &row);
  }

  // The focus goes to the next row, else to the last.
  void TakeOut(TTwinRow& row) {
    const int index = Find(row);
    if (row.Group >= 0) std::erase(Group(row.Group).Hidden, &row);
    if (index < 0) return;
    Rows.erase(Rows.begin() + index);
    row.Selected = false;
    if (std::exchange(row.Focused, false) && !Rows.empty()) Row(std::min(index, Count() - 1)).Focused = true;
  }

  void Collapse(int id) {
    const int header = HeaderOf(id);
    int next = id + 1;
    while (next < GroupCount() && HeaderOf(next) < 0)
      ++next;
    int first = header < 0 ? 0 : header + 1;
    int end = header < 0 || next >= GroupCount() ? Count() : HeaderOf(next);
    if (first >= end) {
      first = 0;
      end = Count();
    }
    Group(id).Collapsed = true;
    std::vector<TTwinRow*> gone;
    std::copy_if(Rows.begin() + first, Rows.begin() + end, std::back_inserter(gone),
                 [id](const TTwinRow* row) { return row->Group == id && !row->Header; });
    for (auto row = gone.rbegin(); row != gone.rend(); ++row)
      TakeOut(**row);
    Group(id).Hidden.insert(Group(id).Hidden.end(), gone.begin(), gone.end());
  }

  void Expand(int id) {
    Group(id).Collapsed = false;
    const int header = HeaderOf(id);
    const int place = header >= 0 ? header + 1 : HeaderPlace(id);
    Rows.insert(Rows.begin() + place, Group(id).Hidden.begin(), Group(id).Hidden.end());
    Group(id).Hidden.clear();
  }

  void SetDraws(bool draws) {
    Draws = draws;
    for (int id = 0; id < GroupCount(); ++id)
      RemoveHeader(id);
    for (int id = 0; id < GroupCount(); ++id) {
      if (Draws) EnsureHeader(id);
      if (Draws) Gather(id);
      if (!Draws && Group(id).Collapsed) Expand(id);
    }
  }

  // A header row takes its group along.
  void Check(TTwinRow& row, bool checked) {
    if (row.Checked == checked) return;
    row.Checked = checked;
    if (row.Header) Group(row.Group).Checked = checked;
    for (TTwinRow& member : All) {
      if (row.Header && member.Group == row.Group) member.Checked = checked;
    }
    if (row.Group >= 0 && !row.Header) FollowMembers(row.Group);
  }

  void CheckAll(bool checked) {
    for (TTwinRow& row : All)
      row.Checked = checked;
    for (int id = 0; id < GroupCount(); ++id) {
      if (HeaderOf(id) >= 0 || !Members(id).empty()) Group(id).Checked = checked;
    }
  }

  void Sort() {
    const auto before = [](const TTwinRow* a, const TTwinRow* b) {
      return std::make_tuple(a->Group, !a->Header, a->Key) < std::make_tuple(b->Group, !b->Header, b->Key);
    };
    std::stable_sort(Rows.begin(), Rows.end(), before);
    for (TTwinGroup& group : Groups) {
      if (group.Collapsed) std::stable_sort(group.Hidden.begin(), group.Hidden.end(), before);
    }
  }

 private:
  template <typename Is>
  [[nodiscard]] int Last(const Is& is) const {
    for (int row = Count() - 1; row >= 0; --row) {
      if (is(Row(row))) return row;
    }
    return -1;
  }

  [[nodiscard]] int LastRowOf(int id) const {
    for (int later = id + 1; later < static_cast<int>(Groups.size()); ++later) {
      if (HeaderOf(later) >= 0) return HeaderOf(later) - 1;
    }
    const int last = Last([id](const TTwinRow& row) { return row.Group == id; });
    return last >= 0 ? last : Last([id](const TTwinRow& row) { return row.Group >= 0 && row.Group <= id; });
  }

  [[nodiscard]] int HeaderPlace(int id) const {
    for (int earlier = id - 1; earlier >= 0; --earlier) {
      const auto in = [&](const TTwinRow& row) { return row.Group == earlier && &row != FMoving; };
      if (Last(in) >= 0) return LastRowOf(earlier) + 1;
    }
    for (int row = 0; row < Count(); ++row) {
      if (Row(row).Group == id) return row;
    }
    return 0;
  }

  void GoTo(TTwinRow& row, int id) {
    EnsureHeader(id);
    const int last = LastRowOf(id);
    const int from = Find(row);
    if (Draws && Group(id).Collapsed) {
      TakeOut(row);
      Group(id).Hidden.push_back(&row);
    } else if (from >= 0) {
      Move(from, from <= last ? last : last + 1);
    } else {
      Show(row, last + 1);
    }
  }

  void FollowMembers(int id) {
    const std::vector<TTwinRow*> members = Members(id);
    const auto checked = [](const TTwinRow* row) { return row->Checked; };
    Group(id).Checked = !members.empty() && std::all_of(members.begin(), members.end(), checked);
    if (const int header = HeaderOf(id); header >= 0) Row(header).Checked = Group(id).Checked;
  }

  void Left(int id) {
    FollowMembers(id);
    if (Members(id).empty()) RemoveHeader(id);
  }

  void EnsureHeader(int id) {
    if (!Draws) return RemoveHeader(id);
    if (HeaderOf(id) >= 0) return;
    const int place = HeaderPlace(id);
    All.push_back({.Group = id, .Header = true, .Checked = Group(id).Checked});
    Rows.insert(Rows.begin() + place, &All.back());
  }

  void RemoveHeader(int id) {
    if (const int header = HeaderOf(id); header >= 0) {
      TTwinRow& row = Row(header);
      TakeOut(row);
      All.remove_if([&row](const TTwinRow& one) { return &one == &row; });
    }
  }

  void Gather(int id) {
    const auto mine = [&](int row) { return Row(row).Group == id && !Row(row).Header; };
    for (int row = HeaderOf(id) - 1; row >= 0; --row) {
      if (mine(row)) Move(row, HeaderOf(id));
    }
    for (int row = LastRowOf(id) + 1; row < Count(); ++row) {
      if (mine(row)) Move(row, LastRowOf(id) + 1);
    }
  }

  const TTwinRow* FMoving = nullptr;  // on its way between two groups, it counts for none
};
