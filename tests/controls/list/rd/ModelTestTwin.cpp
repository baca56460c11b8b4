// Random acts on a grouped list, each compared with the twin that does the same the slow way.
#include "ModelTwin.h"
#include "PlainRdList.h"

#include <gtest/gtest.h>

#include <random>

namespace {

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
  [[nodiscard]] std::string RowDifference(int index);
  [[nodiscard]] std::string GroupDifference(int id);

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

std::string TTwinRun::RowDifference(int index) {
  const TTwinRow& row = FTwin.Row(index);
  const TkListItem& item = *FList.Items[index];
  const std::pair<const char*, bool> same[] = {
      {"kind", item.IsGroupHeader() == row.Header},
      {"group", item.GroupID() == row.Group},
      {"item", &item == &ItemOf(row)},
      {"index", item.Index() == index && !item.Hidden()},
      {"selected", item.Selected() == row.Selected},
      {"focused", item.Focused() == row.Focused},
      {"checked", item.Checked() == row.Checked && item.HasState(kRowChecked) == row.Checked}};
  for (const auto& [what, is] : same)
    if (!is) return "row " + std::to_string(index) + ": " + what;
  return {};
}

std::string TTwinRun::GroupDifference(int id) {
  const TkListGroup& group = FList.Group(id);
  const TTwinGroup& twin = FTwin.Group(id);
  const std::vector<TTwinRow*> members = FTwin.Members(id);
  const auto rows = [](const TkItemQuickList& items, const std::vector<TTwinRow*>& wanted) {
    return std::ranges::equal(items, wanted, {}, {}, [](const TTwinRow* row) { return row->Item; });
  };
  const std::pair<const char*, bool> same[] = {
      {"members", rows(group.Items(), members)},
      {"hidden", rows(group.HiddenItems(), twin.Hidden)},
      {"checked count", group.CheckedCount() == std::ranges::count_if(members, &TTwinRow::Checked)},
      {"checked", group.GroupChecked() == twin.Checked},
      {"collapsed", group.Collapsed() == twin.Collapsed},
      {"header", (group.HeaderItem() != nullptr) == (FTwin.HeaderOf(id) >= 0)}};
  for (const auto& [what, is] : same)
    if (!is) return "group " + std::to_string(id) + ": " + what;
  return {};
}

std::string TTwinRun::Difference() {
  if (FList.Items.Count() != FTwin.Count()) return "count";
  std::string found;
  for (int row = 0; row < FTwin.Count() && found.empty(); ++row)
    found = RowDifference(row);
  for (int group = 0; group < kGroups && found.empty(); ++group)
    found = GroupDifference(group);
  const auto all = static_cast<int>(FTwin.All.size());
  const auto checked = std::ranges::count_if(FTwin.All, &TTwinRow::Checked);
  if (!found.empty()) return found;
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
