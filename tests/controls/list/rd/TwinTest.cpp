// Random acts on a grouped list, each compared with a twin that does the same the slow way: the rules of its
// rows in plain loops over one vector, without brackets, numbers, stamps or counts.
#include "PlainRdList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <random>
#include <vector>

namespace {

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

constexpr int kGroups = 4;
constexpr int kMostRows = 25;

class TTwinRun {
 public:
  explicit TTwinRun(unsigned seed) : FRandom(seed), FTwin(kGroups) {
    FList.State.OpenGroupDraw = true;
    FList.AddGroups(kGroups);
    FList.States.SetSingleSelect(false);
  }

  void Act();
  // The first difference, empty if there is none.
  [[nodiscard]] std::string Difference();

 private:
  [[nodiscard]] int Below(int end) { return std::uniform_int_distribution(0, end - 1)(FRandom); }
  [[nodiscard]] bool Coin() { return Below(2) == 0; }
  [[nodiscard]] TkListItem& ItemOf(const TTwinRow& row) {
    return row.Header ? *FList.Group(row.Group).HeaderItem() : *row.Item;
  }
  [[nodiscard]] TTwinRow& AnyRow() {
    return *std::next(FTwin.All.begin(), Below(static_cast<int>(FTwin.All.size())));
  }

  void Bracket();
  void Add();
  void ChangeRow(TTwinRow& row);
  void MoveRow(TTwinRow& row);
  void ChangeState(TTwinRow& row);
  void ChangeGroup(int id);
  void ChangeAll();
  [[nodiscard]] bool SameRow(int index);
  [[nodiscard]] bool SameGroup(int id);

  std::mt19937 FRandom;
  TPlainRdList FList;
  TModelTwin FTwin;
  int FDepth = 0;
  int FKeys = 0;
};

void TTwinRun::Act() {
  const int act = Below(100);
  if (act < 12) return Bracket();
  if (FTwin.All.empty() || (act < 30 && static_cast<int>(FTwin.All.size()) < kMostRows)) return Add();
  if (act < 50) return ChangeRow(AnyRow());
  if (act < 65) return MoveRow(AnyRow());
  if (act < 85) return ChangeState(AnyRow());
  if (act < 96) return ChangeGroup(Below(kGroups));
  ChangeAll();
}

void TTwinRun::Bracket() {
  const bool open = FDepth == 0 || (FDepth < 3 && Coin());
  FDepth += open ? 1 : -1;
  if (open)
    FList.Items.BeginUpdate(Below(3) == 0 ? 0 : Below(20) - 6);
  else
    EXPECT_EQ(FList.Items.EndUpdate(), FDepth == 0);
}

void TTwinRun::Add() {
  const int group = Below(kGroups + 1) - 1;
  FKeys = (FKeys + 7919) % 1000003;
  TkListItem* const item = FList.Add(QString::number(FKeys), Coin() ? group : -1);
  FTwin.All.push_back({.Item = item, .Key = FKeys});
  if (item->GroupID() < 0)
    FTwin.Rows.push_back(&FTwin.All.back());
  else
    FTwin.SetGroup(FTwin.All.back(), item->GroupID());
}

void TTwinRun::ChangeRow(TTwinRow& row) {
  if (row.Header) return;
  const int group = Below(kGroups + 1) - 1;
  switch (Below(3)) {
    case 0:
      ItemOf(row).Delete();
      return FTwin.Delete(row);
    case 1:
      ItemOf(row).SetGroupID(group);
      return FTwin.SetGroup(row, group);
    default:
      if (FTwin.Find(row) >= 0) {
        ItemOf(row).Hide();
        return FTwin.Hide(row);
      }
      const int index = Coin() ? -1 : Below(kMostRows);
      ItemOf(row).Show(index);
      FTwin.Show(row, index);
  }
}

void TTwinRun::MoveRow(TTwinRow& row) {
  const int from = FTwin.Find(row);
  const int to = Below(FTwin.Count() + 1);
  const bool move = Coin();
  if (move)
    ItemOf(row).MoveTo(to);
  else
    ItemOf(row).ExchangeWith(to);
  if (from < 0) return;
  if (move)
    FTwin.Move(from, std::min(to, FTwin.Count() - 1));
  else if (to < FTwin.Count())
    std::swap(FTwin.Rows[static_cast<size_t>(from)], FTwin.Rows[static_cast<size_t>(to)]);
}

void TTwinRun::ChangeState(TTwinRow& row) {
  const bool on = Coin();
  const int what = Below(5);
  if (what == 0 && FTwin.Find(row) >= 0) {
    ItemOf(row).SetFocused(true);
    for (TTwinRow& other : FTwin.All)
      other.Focused = &other == &row;
  } else if (what < 3) {
    ItemOf(row).SetSelected(on);
    row.Selected = on && FTwin.Find(row) >= 0;
  } else {
    ItemOf(row).SetChecked(on);
    FTwin.Check(row, on);
  }
}

void TTwinRun::ChangeGroup(int id) {
  const bool expand = Coin();
  const bool collapsed = FList.Group(id).Collapsed();
  FList.Group(id).SetGroupExpand(expand);
  if (expand && collapsed) FTwin.Expand(id);
  if (!expand) FTwin.Collapse(id);
}

void TTwinRun::ChangeAll() {
  const int what = Below(10);
  if (what < 4) {
    FList.Items.Sort([](TListItem& a, TListItem& b) { return a.Caption().toInt() - b.Caption().toInt(); });
    FTwin.Sort();
  } else if (what < 6) {
    FList.State.OpenGroupDraw = !FTwin.Draws;
    FList.Model.Placing().GroupDrawChanged();
    FTwin.SetDraws(!FTwin.Draws);
  } else if (what < 8) {
    const bool checked = Coin();
    FList.Model.Checks().SetAll(checked);
    FTwin.CheckAll(checked);
  } else if (what == 8) {
    FList.Model.DeleteSelected();
    FTwin.DeleteSelected();
  } else {
    FList.Items.Clear();
    FTwin.Clear();
  }
}

bool TTwinRun::SameRow(int index) {
  const TTwinRow& row = FTwin.Row(index);
  const TkListItem& item = *FList.Items[index];
  return item.IsGroupHeader() == row.Header && item.GroupID() == row.Group && &item == &ItemOf(row) &&
         item.Index() == index && !item.Hidden() && item.Selected() == row.Selected &&
         item.Focused() == row.Focused && item.Checked() == row.Checked &&
         item.HasState(kRowChecked) == row.Checked;
}

bool TTwinRun::SameGroup(int id) {
  const TkListGroup& group = FList.Group(id);
  const TTwinGroup& twin = FTwin.Group(id);
  const std::vector<TTwinRow*> members = FTwin.Members(id);
  const auto rows = [](const TkItemQuickList& items, const std::vector<TTwinRow*>& wanted) {
    return std::ranges::equal(items, wanted, {}, {}, [](const TTwinRow* row) { return row->Item; });
  };
  return rows(group.Items(), members) && rows(group.HiddenItems(), twin.Hidden) &&
         group.CheckedCount() == std::ranges::count_if(members, &TTwinRow::Checked) &&
         group.GroupChecked() == twin.Checked && group.Collapsed() == twin.Collapsed &&
         (group.HeaderItem() != nullptr) == (FTwin.HeaderOf(id) >= 0);
}

std::string TTwinRun::Difference() {
  if (FList.Items.Count() != FTwin.Count()) return "count";
  for (int row = 0; row < FTwin.Count(); ++row)
    if (!SameRow(row)) return "row " + std::to_string(row);
  for (int group = 0; group < kGroups; ++group)
    if (!SameGroup(group)) return "group " + std::to_string(group);
  const auto all = static_cast<int>(FTwin.All.size());
  const auto checked = std::ranges::count_if(FTwin.All, &TTwinRow::Checked);
  if (FDepth == 0 && FList.States.Count() != FTwin.Count()) return "count of the host";
  if (FList.Model.AllItems().Count() != all) return "all items";
  if (FList.Model.Checks().CheckedTotal() != checked) return "checked total";
  return FList.Model.Checks().CheckAll() == (all > 0 && checked == all) ? "" : "check all";
}

}  // namespace

TEST(RdModelTwin, RandomActsLeaveTheListAsTheRulesHaveIt) {
  for (unsigned seed = 1; seed <= 70; ++seed) {
    TTwinRun run(seed);
    for (int act = 0; act < 3000; ++act) {
      run.Act();
      ASSERT_EQ(run.Difference(), "") << "seed " << seed << ", act " << act;
    }
  }
}
