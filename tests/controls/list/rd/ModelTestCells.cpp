// Cell types, check box cells, columns and the stored forms of the TRdListView model.
#include "PlainRdList.h"

#include "controls/list/rd/model/RdListColumn.h"
#include "controls/list/rd/model/StoredRows.h"

#include <gtest/gtest.h>

TEST(RdCells, TheTypeIsTheTextsElseTheRowsElseTheColumns) {
  TPlainRdList list;
  TkListColumns columns;
  for (int column = 0; column < 3; ++column)
    columns.Add().SetColumnType(ltStar);
  TkListItem& row = *list.Add(u"a"_qs);
  row.SubItems().Add(u"x"_qs);
  const struct {
    QString RowTypes, Text;
    TListColumnType Type;
    QString Shown;
  } cases[] = {{u""_qs, u"x"_qs, ltStar, u"x"_qs},
               {u"1=7"_qs, u"x"_qs, ltEdit, u"x"_qs},
               {u"1=no"_qs, u"x"_qs, ltStar, u"x"_qs},
               {u"1=12"_qs, u"x"_qs, ltStar, u"x"_qs},
               {u"2=7"_qs, u"x"_qs, ltStar, u"x"_qs},
               {u"1=7"_qs,
                u"\x05"
                u"x"_qs,
                ltLabel, u"x"_qs},
               {u"1=7"_qs, u"\x01"_qs, ltNone, u""_qs},
               {u"1=7"_qs,
                u"\x0c"
                u"x"_qs,
                ltDefault, u"x"_qs},
               {u"1=7"_qs, u"\x0d"_qs, ltEdit, u"\x0d"_qs},
               {u"1=7"_qs, u""_qs, ltEdit, u""_qs}};
  for (const auto& one : cases) {
    row.MakeColumnTypes().SetText(one.RowTypes);
    row.SubItems().Put(0, one.Text);
    const TkCell cell = CellOf(row, columns[1]);
    EXPECT_EQ(cell.Type, one.Type) << one.Text.toStdString();
    EXPECT_EQ(cell.Text, one.Shown);
  }
  EXPECT_FALSE(HasCell(row, 2));
  EXPECT_EQ(CellText(row, 2), u"");
}

TEST(RdCells, TheLinesOfARowAreKeptByName) {
  TStringValueList lines;
  lines.SetText(u"b=1,,A=2,a=3"_qs);
  EXPECT_EQ(lines.Text(), u"A=2,b=1");
  EXPECT_EQ(lines.Value(u"B"_qs), u"1");
  lines.SetValue(u"a"_qs, u"x=y"_qs);
  EXPECT_EQ(lines.Value(u"A"_qs), u"x=y");
  EXPECT_EQ(lines.IndexOfName(u"c"_qs), -1);
}

TEST(RdCells, ACheckBoxCellKeepsItsPrefixAndAsksFirst) {
  TPlainRdList list;
  TkListItem& row = *list.Add(u"a"_qs);
  row.SubItems().Add(u"\x0a"_qs);
  list.Log.clear();
  EXPECT_FALSE(row.SubItemChecked(1));
  row.SetSubItemChecked(1, true);
  EXPECT_EQ(row.SubItems()[0],
            u"\x0a"
            u"1");
  EXPECT_TRUE(row.SubItemChecked(1));
  EXPECT_EQ(list.Log, (QStringList{u"checking a1"_qs, u"show a"_qs, u"checked a1"_qs}));
  row.SetSubItemChecked(1, false);
  list.Log.clear();
  list.RefuseSubItem = true;
  row.SetSubItemChecked(1, true);
  EXPECT_FALSE(row.SubItemChecked(1));
  for (const int column : {-1, 0, 2})
    row.SetSubItemChecked(column, true);
  EXPECT_EQ(list.Log, QStringList(u"checking a1"_qs));
}

TEST(RdColumns, FontsFollowTheListUntilOneIsSet) {
  TkListColumns columns;
  TkListColumn& column = columns.Add();
  QFont font;
  font.setPointSize(23);
  columns.SetListFont(font);
  EXPECT_EQ(column.ColumnFont(), font);
  EXPECT_EQ(columns.Add().ColumnHeaderFont(), font);
  QFont own;
  own.setPointSize(31);
  column.SetColumnFont(own);
  EXPECT_FALSE(column.ParentFont());
  columns.SetListFont(QFont());
  EXPECT_EQ(column.ColumnFont(), own);
  column.SetParentFont(true);
  EXPECT_EQ(column.ColumnFont(), QFont());
}

TEST(RdStoredRows, CellTypesOfRows) {
  TPlainRdList list;
  list.Fill(u"abc"_qs);
  list.Items[2]->MakeColumnTypes().SetText(u"2=5,1=3"_qs);
  TkStoredRows stored(list.Model);
  EXPECT_EQ(stored.ItemColumn(), QStringList(u"2:1=3,2=5"_qs));
  stored.SetItemColumn({u"x:1=1"_qs, u"3:1=1"_qs, u"-1:1=1"_qs, u"0:2=1,1=4"_qs});
  EXPECT_EQ(stored.ItemColumn(), QStringList(u"0:1=4,2=1"_qs));
}

TEST(RdStoredRows, HiddenRowsOfAGroup) {
  TPlainRdList list;
  list.State.OpenGroupDraw = true;
  list.AddGroups(2);
  TkListItem& row = *list.Add(u"a,b"_qs, 1);
  row.SubItems().Assign({u"x"_qs, u"y"_qs});
  row.SubItems().SetImageIndex(1, 4);
  row.SetImageIndex(3);
  row.SetData(reinterpret_cast<void*>(quintptr{255}));
  row.SetChecked(true);
  list.Add(u"c"_qs, 1);
  list.Group(1).SetGroupExpand(false);
  TkStoredRows stored(list.Model);
  const QStringList data = stored.HideItemData(list.Group(1));
  EXPECT_EQ(data, (QStringList{u"Cap=a,b"_qs, u"Sub=x\r\ny\r\n"_qs, u"-1,4"_qs, u"Sig=3,-1,-1,$ff,1,True"_qs,
                               u"Cap=c"_qs, u"Sig=-1,-1,-1,$0,1,False"_qs}));
  stored.SetHideItemData(list.Group(1),
                         QStringList{u"Sig=1"_qs, u"stray"_qs} + data + QStringList{u"Cap=d"_qs});
  EXPECT_EQ(stored.HideItemData(list.Group(1)).mid(0, 6), data);
  EXPECT_EQ(list.Group(1).HiddenItems()[2]->Caption(), u"d");
  EXPECT_EQ(list.Group(1).CheckedCount(), 1);
  EXPECT_EQ(list.RowsGone, 2);
}
