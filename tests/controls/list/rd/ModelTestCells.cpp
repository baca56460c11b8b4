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
    const char* RowTypes;
    int Prefix;  // 0: none
    TListColumnType Type;
    QString Shown;
  } cases[] = {
      {"", 0, ltStar, u"x"_qs},     {"1=7", 0, ltEdit, u"x"_qs},     {"1=no", 0, ltStar, u"x"_qs},
      {"1=12", 0, ltStar, u"x"_qs}, {"2=7", 0, ltStar, u"x"_qs},     {"1=7", 5, ltLabel, u"x"_qs},
      {"1=7", 1, ltNone, u"x"_qs},  {"1=7", 12, ltDefault, u"x"_qs}, {"1=7", 13, ltEdit, u"\x0dx"_qs}};
  for (const auto& one : cases) {
    row.DropColumnTypes();
    row.MakeColumnTypes().Add(QString::fromLatin1(one.RowTypes));
    row.SubItems().Put(0, one.Prefix != 0 ? QChar(one.Prefix) + u"x"_qs : u"x"_qs);
    const TkCell cell = CellOf(row, columns[1]);
    EXPECT_EQ(cell.Type, one.Type) << one.RowTypes << ", " << one.Prefix;
    EXPECT_EQ(cell.Text, one.Shown);
  }
  EXPECT_FALSE(HasCell(row, 2));
  row.SubItems().Put(0, {});
  EXPECT_EQ(CellOf(row, columns[1]).Type, ltEdit) << "an empty text has no prefix";
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
