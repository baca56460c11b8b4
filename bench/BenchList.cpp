// Times the skinned list beside QTreeWidget and beside QTreeView over a minimal model, in one run:
// bench-list. Prints each figure with the bar that it has to hold; the exit code is 1 if one does not.
#include <malloc.h>

#include <QAbstractItemModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTreeView>
#include <QTreeWidget>

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>
#include <vector>

#include "controls/list/rd/RdListView.h"

namespace {

constexpr int kColumns = 4;
constexpr int kSortRows = 100'000;
constexpr int kGroupRows = 100'000;

using TRow = std::array<QString, kColumns>;
using TRows = std::vector<TRow>;

// Rows as the program shows them: name, folder, size, type. Seeded, so every run has the same ones.
TRows MakeRows(int count) {
  std::mt19937 random(1);
  TRows rows(static_cast<size_t>(count));
  for (TRow& row : rows) {
    const auto number = static_cast<unsigned>(random());
    row = {u"file %1.dat"_qs.arg(number), u"/home/user/folder %1/"_qs.arg(number % 997),
           u"%1 KB"_qs.arg(number % 100'000), u"Type %1"_qs.arg(number % 31)};
  }
  return rows;
}

class TPlainModel : public QAbstractItemModel {
 public:
  void Fill(const TRows& rows) {
    beginResetModel();
    FRows = rows;
    endResetModel();
  }
  QModelIndex index(int row, int column, const QModelIndex& parent) const override {
    return parent.isValid() ? QModelIndex() : createIndex(row, column);
  }
  QModelIndex parent(const QModelIndex&) const override { return {}; }
  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(FRows.size());
  }
  int columnCount(const QModelIndex&) const override { return kColumns; }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole) return {};
    return FRows[static_cast<size_t>(index.row())][static_cast<size_t>(index.column())];
  }

 private:
  TRows FRows;
};

class TVerdicts {
 public:
  void Say(const char* what, double value, const char* unit, double bar) {
    const bool holds = value <= bar;
    std::printf("%-58s %10.2f %-10s at most %8.2f  %s\n", what, value, unit, bar, holds ? "holds" : "MISSED");
    FMissed = FMissed || !holds;
  }
  [[nodiscard]] bool Missed() const { return FMissed; }

 private:
  bool FMissed = false;
};

template <typename Step>
double Milliseconds(Step step) {
  QElapsedTimer timer;
  timer.start();
  step();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

template <typename Step>
double MedianMs(int runs, Step step) {
  std::vector<double> times;
  for (int run = 0; run < runs; ++run)
    times.push_back(Milliseconds(step));
  std::ranges::nth_element(times, times.begin() + runs / 2);
  return times[static_cast<size_t>(runs / 2)];
}

size_t HeapBytes() {
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

struct TFill {
  double Ms = 0;
  double BytesPerRow = 0;
};

template <typename Step>
TFill Measure(int rows, Step step) {
  const size_t before = HeapBytes();
  const double ms = Milliseconds(step);
  return {ms, static_cast<double>(HeapBytes() - before) / rows};
}

void AddColumns(TRdListView& list) {
  for (int column = 0; column < kColumns; ++column)
    list.Columns().TListColumns::Add(u"Column %1"_qs.arg(column), 180);
}

void Fill(TRdListView& list, const TRows& rows, int group = -1) {
  list.Items().BeginUpdate(static_cast<int>(rows.size()));
  for (const TRow& row : rows) {
    TkListItem* const item = list.Items().Add(group);
    item->SetCaption(row[0]);
    for (size_t column = 1; column < kColumns; ++column)
      item->SubItems().Add(row[column]);
  }
  list.Items().EndUpdate();
}

void Fill(QTreeWidget& tree, const TRows& rows) {
  QList<QTreeWidgetItem*> items;
  items.reserve(static_cast<qsizetype>(rows.size()));
  for (const TRow& row : rows) {
    auto* const item = new QTreeWidgetItem;
    for (int column = 0; column < kColumns; ++column)
      item->setText(column, row[static_cast<size_t>(column)]);
    items.append(item);
  }
  tree.addTopLevelItems(items);
}

void CompareFills(const TRows& all, int count, TVerdicts& verdicts) {
  const TRows rows(all.begin(), all.begin() + count);
  TRdListView list;
  AddColumns(list);
  const TFill own = Measure(count, [&] { Fill(list, rows); });
  QTreeWidget tree;
  tree.setColumnCount(kColumns);
  const TFill widget = Measure(count, [&] { Fill(tree, rows); });
  TPlainModel model;
  QTreeView view;
  view.setModel(&model);
  const TFill plain = Measure(count, [&] { model.Fill(rows); });
  std::printf(
      "%9d rows: list %8.1f ms %5.0f bytes, QTreeWidget %8.1f ms %5.0f bytes, QTreeView %7.1f ms %5.0f "
      "bytes\n",
      count, own.Ms, own.BytesPerRow, widget.Ms, widget.BytesPerRow, plain.Ms, plain.BytesPerRow);
  verdicts.Say("  filling, part of QTreeWidget's time", own.Ms / widget.Ms * 100, "per cent", 50);
  verdicts.Say("  memory per row, part of QTreeWidget's", own.BytesPerRow / widget.BytesPerRow * 100,
               "per cent", 60);
}

void CompareSorts(const TRows& all, TVerdicts& verdicts) {
  const TRows rows(all.begin(), all.begin() + kSortRows);
  const auto compare = [](QStringView a, QStringView b) { return QStringView(a).compare(b); };
  std::vector<double> own;
  std::vector<double> standard;
  for (int run = 0; run < 5; ++run) {
    std::vector<QString> keys;
    for (const TRow& row : rows)
      keys.push_back(row[0]);
    standard.push_back(Milliseconds([&] {
      std::ranges::stable_sort(keys, [&](const QString& a, const QString& b) { return compare(a, b) < 0; });
    }));
    TRdListView list;
    AddColumns(list);
    Fill(list, rows);
    own.push_back(Milliseconds([&] { list.Items().SortByText(0, compare); }));
  }
  std::ranges::sort(own);
  std::ranges::sort(standard);
  std::printf("sort of %d rows by text: list %.1f ms, std::stable_sort of the keys %.1f ms\n", kSortRows,
              own[2], standard[2]);
  verdicts.Say("  sort, part of std::stable_sort's time", own[2] / standard[2] * 100, "per cent", 150);
}

void TimeGroups(const TRows& all, TVerdicts& verdicts) {
  const TRows rows(all.begin(), all.begin() + kGroupRows);
  TRdListView list;
  list.SetOptions({.CheckBoxes = true});
  AddColumns(list);
  list.SetOpenOwnerDraw(true);
  list.SetOpenGroupDraw(true);
  TkListGroup& group = list.Groups().Add(u"Group"_qs);
  Fill(list, rows, 0);
  list.resize(800, 600);
  list.show();
  QApplication::processEvents();
  bool checked = false;
  bool expanded = true;
  verdicts.Say("checking all of 100,000 rows",
               MedianMs(7,
                        [&] {
                          checked = !checked;
                          list.Model().Checks().SetAll(checked);
                        }),
               "ms", 50);
  const auto toggle = [&] {
    expanded = !expanded;
    group.SetGroupExpand(expanded);
  };
  std::vector<double> collapse;
  std::vector<double> expand;
  for (int run = 0; run < 7; ++run) {
    collapse.push_back(Milliseconds(toggle));
    expand.push_back(Milliseconds(toggle));
  }
  std::ranges::sort(collapse);
  std::ranges::sort(expand);
  verdicts.Say("collapsing a group of 100,000 rows", collapse[3], "ms", 50);
  verdicts.Say("expanding it", expand[3], "ms", 50);
}

// A shown list that is scrolled by pages. The focus is at the last row, so that looking for it would show.
class TScrolledList {
 public:
  TScrolledList(const TRows& all, int count) {
    AddColumns(FList);
    FList.SetOpenOwnerDraw(true);
    Fill(FList, TRows(all.begin(), all.begin() + count));
    FList.resize(800, 600);
    FList.show();
    FList.Items()[count - 1]->SetFocused(true);
    QApplication::processEvents();
  }

  double PageMs() {
    const int page = FList.Layout().RowsPerPage();
    FAt = (FAt + 1) % 20;
    return Milliseconds([&] {
      FList.SetTopIndex(FAt * page);
      FList.viewport()->repaint();
    });
  }

 private:
  TRdListView FList;
  int FAt = 0;
};

// In turns, so that what else the machine does hits both alike.
void CompareRepaints(const TRows& all, TVerdicts& verdicts) {
  constexpr int kRuns = 401;
  TScrolledList few(all, 1000);
  TScrolledList many(all, static_cast<int>(all.size()));
  std::vector<double> fewMs;
  std::vector<double> manyMs;
  for (int run = 0; run < kRuns; ++run) {
    fewMs.push_back(few.PageMs());
    manyMs.push_back(many.PageMs());
  }
  std::ranges::sort(fewMs);
  std::ranges::sort(manyMs);
  const double least = fewMs[kRuns / 2];
  const double most = manyMs[kRuns / 2];
  std::printf("repaint after a scroll by a page: %.3f ms at 1,000 rows, %.3f ms at %zu\n", least, most,
              all.size());
  verdicts.Say("  repaint at many rows, part of that at 1,000", most / least * 100, "per cent", 110);
}

// Every other row, so that no two that go are neighbours, and all.
void TimeDeletions(const TRows& all, TVerdicts& verdicts) {
  for (const int step : {1, 2}) {
    TRdListView list;
    list.SetOptions({.MultiSelect = true});
    AddColumns(list);
    Fill(list, TRows(all.begin(), all.begin() + step * kGroupRows));
    for (int row = 0; row < list.Items().Count(); row += step)
      list.Items()[row]->SetSelected(true);
    verdicts.Say(
        step == 1 ? "DeleteSelected of 100,000 rows" : "DeleteSelected of every other of 200,000 rows",
        Milliseconds([&] { list.DeleteSelected(); }), "ms", 50);
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  TVerdicts verdicts;
  const TRows rows = MakeRows(1'000'000);
  for (const int count : {10'000, 100'000, 1'000'000})
    CompareFills(rows, count, verdicts);
  CompareSorts(rows, verdicts);
  TimeGroups(rows, verdicts);
  TimeDeletions(rows, verdicts);
  CompareRepaints(rows, verdicts);
  return verdicts.Missed() ? 1 : 0;
}
