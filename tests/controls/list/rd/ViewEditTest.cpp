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

TEST_F(TRdEditing, ALineIsChosenByMouseOrKeysOrNot) {
  QTest::mousePress(List.viewport(), Qt::LeftButton, {}, Hot(1, kComboColumn));
  EXPECT_EQ(TakeLog(), u"drop Picture 2, +Picture");
  TkInplaceComboBox& box = List.Editors().ComboBox();
  ASSERT_TRUE(box.isVisible());
  EXPECT_EQ(box.currentRow(), 2);
  const auto key = [&box](Qt::Key last) {
    QTest::keyClick(&box, Qt::Key_Up);
    QTest::keyClick(&box, last);
  };
  const struct {
    std::function<void()> Act;
    const char16_t* Events;
    QString Text;
  } cases[] = {
      {[&] { key(Qt::Key_Escape); }, u"", u"Weekly"_qs},
      {[&] { QTest::mousePress(&box, Qt::LeftButton, {}, QPoint(-40, -40)); }, u"", u"Weekly"_qs},
      {[&] {
         QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, box.visualItemRect(box.item(3)).center());
       },
       u"choose Picture 3", u"Monthly"_qs},
      {[&] { key(Qt::Key_Return); }, u"choose Picture 2", u"Weekly"_qs},
  };
  for (const auto& one : cases) {
    if (!box.isVisible()) List.Editors().Open(*List.Items()[1], kComboColumn, std::nullopt, false);
    TakeLog();
    one.Act();
    EXPECT_FALSE(List.Editors().Shown());
    EXPECT_EQ(TakeLog(), one.Events);
    EXPECT_EQ(List.Items()[1]->SubItems()[kComboColumn - 1], one.Text);
  }
}
