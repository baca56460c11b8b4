// Editing in cells, by mouse and keys.
#include "GalleryRig.h"

#include <QApplication>

using TRdEditing = TGalleryRig;

TEST_F(TRdEditing, EnterWritesAndEscapeDrops) {
  Click(Hot(1, kEditColumn));
  EXPECT_EQ(TakeLog(), u"enter Picture 5, +Picture, up");
  ASSERT_TRUE(List.Editors().Edit().isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &List.Editors().Edit());
  QTest::keyClicks(&List.Editors().Edit(), u"Ab"_qs);
  QTest::keyClick(&List.Editors().Edit(), Qt::Key_Return);
  EXPECT_EQ(TakeLog(), u"change Picture 5, change Picture 5, exit Picture 5");
  EXPECT_EQ(List.Items()[1]->SubItems()[kEditColumn - 1], u"Ab");
  EXPECT_FALSE(List.Editors().Shown());
  EXPECT_EQ(QApplication::focusWidget(), &List);

  Click(Hot(1, kEditColumn));
  QTest::keyClicks(&List.Editors().Edit(), u"x"_qs);
  QTest::keyClick(&List.Editors().Edit(), Qt::Key_Escape);
  EXPECT_EQ(List.Items()[1]->SubItems()[kEditColumn - 1], u"Ab");
}

TEST_F(TRdEditing, WhatLeavesTheEditorWrites) {
  const struct {
    const char* What;
    std::function<void()> Act;
  } cases[] = {
      {"a press on a row", [this] { Click(Hot(3, kLabelColumn)); }},
      {"a press on the header", [this] { ClickHeader(Middle(kTextColumn)); }},
      {"a scroll", [this] { List.SetTopIndex(1); }},
      {"another focus", [this] { List.setFocus(); }},
      {"the program", [this] { List.HideEditors(); }},
  };
  List.resize(1300, 400);
  int number = 0;
  for (const auto& one : cases) {
    List.SetTopIndex(0);
    List.Editors().Open(*List.Items()[1], kEditColumn, std::nullopt, false);
    List.Editors().Edit().setText(QString::number(++number));
    one.Act();
    EXPECT_FALSE(List.Editors().Shown()) << one.What;
    EXPECT_EQ(List.Items()[1]->SubItems()[kEditColumn - 1], QString::number(number)) << one.What;
  }
}

TEST_F(TRdEditing, ThePrefixOfACellSurvives) {
  List.Items()[1]->SubItems().Put(kTextColumn - 1, QChar(ltEdit + 1) + u"big"_qs);
  List.Editors().Open(*List.Items()[1], kTextColumn, std::nullopt, false);
  EXPECT_EQ(List.Editors().Edit().text(), u"big");
  List.Editors().Edit().setText(u"small"_qs);
  List.HideEditors();
  EXPECT_EQ(List.Items()[1]->SubItems()[kTextColumn - 1], QChar(ltEdit + 1) + u"small"_qs);
}

TEST_F(TRdEditing, ARowWithTooFewSubItemsFailsOnlyAtTheEnd) {
  TkListItem* const bare = List.Items().Insert(1);
  bare->SetCaption(u"Bare"_qs);
  ASSERT_TRUE(List.Editors().Open(*bare, kEditColumn, std::nullopt, false));
  EXPECT_THROW(List.HideEditors(), EListError);
  EXPECT_FALSE(List.Editors().Shown());
  List.Editors().Open(*bare, kEditColumn, std::nullopt, false);
  TakeLog();
  QTest::keyClick(&List.Editors().Edit(), Qt::Key_Return);
  EXPECT_EQ(TakeLog(), u"exit Bare 5, LV\\Edit\\: You Must set SubItems.Count = ColumnCount-1");
}

TEST_F(TRdEditing, ADeletedRowEndsItsEditor) {
  List.Editors().Open(*List.Items()[1], kEditColumn, std::nullopt, false);
  List.Items()[1]->Delete();
  EXPECT_FALSE(List.Editors().Shown());
  EXPECT_EQ(List.MouseState().EditItem, nullptr);
  List.EditOnExit = [](TListItem* item, int) { item->Delete(); };
  List.Editors().Open(*List.Items()[1], kEditColumn, std::nullopt, false);
  List.HideEditors();
  EXPECT_EQ(Name(List.Items()[1]), u"Film");
}

TEST_F(TRdEditing, ALineIsChosenByMouse) {
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, Hot(1, kComboColumn));
  EXPECT_EQ(TakeLog(), u"drop Picture 2, +Picture");
  TkInplaceComboBox& box = List.Editors().ComboBox();
  ASSERT_TRUE(box.isVisible());
  EXPECT_EQ(box.currentRow(), 2);
  QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, box.visualItemRect(box.item(3)).center());
  EXPECT_EQ(TakeLog(), u"choose Picture 3");
  EXPECT_EQ(List.Items()[1]->SubItems()[kComboColumn - 1], u"Monthly");
  EXPECT_FALSE(List.Editors().Shown());
}

TEST_F(TRdEditing, APressElsewhereClosesTheLines) {
  List.Editors().Open(*List.Items()[1], kComboColumn, std::nullopt, false);
  TakeLog();
  QTest::mousePress(&List.Editors().ComboBox(), Qt::LeftButton, {}, QPoint(-40, -40));
  EXPECT_FALSE(List.Editors().Shown());
  EXPECT_EQ(TakeLog(), u"");
}

TEST_F(TRdEditing, ALineIsChosenByKeys) {
  const struct {
    Qt::Key Last;
    const char16_t* Events;
    const char16_t* Text;
  } cases[] = {
      {Qt::Key_Escape, u"", u"Weekly"},
      {Qt::Key_Return, u"choose Picture 3", u"Monthly"},
  };
  for (const auto& one : cases) {
    List.Editors().Open(*List.Items()[1], kComboColumn, std::nullopt, false);
    TakeLog();
    QTest::keyClick(&List.Editors().ComboBox(), Qt::Key_Down);
    QTest::keyClick(&List.Editors().ComboBox(), one.Last);
    EXPECT_EQ(TakeLog(), one.Events);
    EXPECT_EQ(List.Items()[1]->SubItems()[kComboColumn - 1].toStdU16String(), one.Text);
  }
}
