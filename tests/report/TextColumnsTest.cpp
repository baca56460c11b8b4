#include "report/TextColumns.h"

#include <gtest/gtest.h>

TEST(TextColumns, CountsWhatATerminalShows) {
  const std::pair<QString, int> cases[] = {{u""_qs, 0},        {u"abc"_qs, 3},    {u"é"_qs, 1},
                                           {u"e\u0301"_qs, 1}, {u"資料集"_qs, 6}, {u"\U0001F3B5 a"_qs, 4},
                                           {u"한"_qs, 2}};
  for (const auto& [text, columns] : cases)
    EXPECT_EQ(TextColumns(text), columns) << qPrintable(text);
}

TEST(TextColumns, ALongTextKeepsItsEndWithinTheColumns) {
  const std::tuple<QString, int, QString> cases[] = {{u"/usr/share"_qs, 10, u"/usr/share"_qs},
                                                     {u"/usr/share"_qs, 9, u".../share"_qs},
                                                     {u"資料集"_qs, 5, u"...集"_qs},
                                                     {u"資料集"_qs, 4, u"..."_qs},
                                                     {u"abcde\u0301f"_qs, 4, u"...f"_qs},
                                                     {u"abcdef"_qs, 3, u"..."_qs},
                                                     {u"abcdef"_qs, 2, u".."_qs},
                                                     {u"abcdef"_qs, 0, u""_qs},
                                                     {u"abcdef"_qs, -5, u""_qs}};
  for (const auto& [text, columns, result] : cases) {
    EXPECT_EQ(FitToColumns(text, columns), result) << columns;
    EXPECT_LE(TextColumns(FitToColumns(text, columns)), std::max(columns, 0));
  }
}
