// Cell types, check box cells and columns of the TRdListView model.
#include "PlainRdList.h"

#include "controls/list/rd/model/RdListColumn.h"

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
    row.DropColumnTypes();
    row.MakeColumnTypes().Add(one.RowTypes);
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
  for (const char* const line : {"b=1", "A=2", "a=3"})
    lines.Add(QString::fromLatin1(line));
  EXPECT_EQ(lines.Count(), 2);
  EXPECT_EQ(lines[0], u"A=2");
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
