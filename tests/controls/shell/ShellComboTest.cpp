// The box of the folder: its rows, typed paths and its link with the list.
#include "ShownFolder.h"
#include "controls/shell/RzShellCombo.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/Variables.h"
#include "platform/KnownFolders.h"
#include "platform/Volumes.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>

namespace {

class TShellComboTest : public testing::Test, protected TShownFolder {
 protected:
  TShellComboTest() {
    Tree.MakeFile("a/b/file", 1);
    FCombo.SetShellList(&List);
    FCombo.OnChange = [this] { FChanges << List.Path(); };
    FCombo.show();
  }
  ~TShellComboTest() override { FCombo.hidePopup(); }

  // Whether the list, or the box itself, has answered to it.
  [[nodiscard]] bool Type(const QString& text, const QString& expected) {
    FCombo.lineEdit()->selectAll();
    QTest::keyClicks(FCombo.lineEdit(), text);
    QTest::keyClick(FCombo.lineEdit(), Qt::Key_Return);
    return WaitUntil([&] { return List.Path() == expected && !FCombo.NotFound(); });
  }
  [[nodiscard]] bool TypeInVain(const QString& text) {
    (void)Type(text, List.Path());
    return WaitUntil([this] { return FCombo.NotFound(); });
  }
  [[nodiscard]] QStringList RowPaths() const {
    QStringList paths;
    for (int row = 0; row < FCombo.count(); ++row)
      paths << FCombo.itemData(row).toString();
    return paths;
  }

  TRzShellCombo FCombo;
  QStringList FChanges;
};

}  // namespace

TEST_F(TShellComboTest, FollowsTheListInSilence) {
  const QAccessibleInterface& heard = *QAccessible::queryAccessibleInterface(&FCombo);
  EXPECT_EQ(heard.role(), QAccessible::ComboBox);
  EXPECT_EQ(heard.text(QAccessible::Name), u"Folder"_qs);
  EXPECT_EQ(heard.text(QAccessible::Description), u"My Computer"_qs);
  EXPECT_EQ(FCombo.currentText(), u"My Computer"_qs);
  List.SetPath(Tree.Path("a"));
  EXPECT_EQ(FCombo.currentText(), Tree.Path("a"));
  EXPECT_EQ(FCombo.Path(), Tree.Path("a"));
  FCombo.SetPath(Tree.Path("a/b"));
  EXPECT_EQ(List.Path(), Tree.Path("a/b"));
  FCombo.SetTexts(u"This one"_qs, u"not there"_qs);
  List.SetPath(QString());
  EXPECT_EQ(FCombo.currentText(), u"This one"_qs);
  EXPECT_TRUE(FChanges.isEmpty());
}

TEST_F(TShellComboTest, DropsDownTheWaysToOtherFolders) {
  List.SetPath(Tree.Path("a/b"));
  FCombo.showPopup();
  const QString home = GetKnownFolder(TSpecialFolder::Profile);
  ASSERT_TRUE(WaitUntil([&] { return RowPaths().contains(home); }));
  QStringList rows = RowPaths();
  EXPECT_EQ(rows.takeFirst(), QString());
  const qsizetype here = rows.indexOf(Tree.Path("a/b"));
  ASSERT_GE(here, 2);
  EXPECT_EQ(FCombo.currentIndex(), here + 1);
  EXPECT_EQ(rows[here - 1], Tree.Path("a"));
  EXPECT_EQ(rows[here - 2], Tree.Path());
  EXPECT_TRUE(IsVolumeRoot(rows[0])) << qPrintable(rows[0]);
  QStringList behind = rows.mid(here + 1);
  for (const TVolume& volume : ListFixedVolumes())
    EXPECT_EQ(behind.removeAll(volume.Root), 1) << qPrintable(volume.Root);
  EXPECT_EQ(behind.removeAll(home), 1);
}

TEST_F(TShellComboTest, APickGoesThereAndTellsOnceAndEnterOnTheFolderShownChangesNothing) {
  List.SetPath(Tree.Path("a/b"));
  FCombo.showPopup();
  const int row = static_cast<int>(RowPaths().indexOf(Tree.Path("a")));
  FCombo.hidePopup();
  FCombo.setFocus();
  QTest::keyClick(&FCombo, Qt::Key_Up);
  EXPECT_EQ(FChanges, QStringList{Tree.Path("a")});
  EXPECT_EQ(FCombo.currentIndex(), row);
  EXPECT_EQ(FCombo.currentText(), Tree.Path("a"));
  FChanges.clear();
  EXPECT_TRUE(Type(Tree.Path("a") + PathDelim, Tree.Path("a")));
  EXPECT_TRUE(WaitUntil([this] { return FCombo.currentText() == Tree.Path("a"); }) && FChanges.isEmpty());
}

TEST_F(TShellComboTest, ATypedPathIsGoneTo) {
  const QByteArray homeFolder = NameToBytes(Tree.Path("a"));
  const TVariables home{{"HOME", homeFolder.constData()}};
  const std::tuple<QString, QString, QString> cases[] = {
      {Tree.Path("a"), QString(), Tree.Path("a")},
      {u"  "_qs + Tree.Path("a/b") + PathDelim, QString(), Tree.Path("a/b")},
      {u"a"_qs, Tree.Path(), Tree.Path("a")},
      {NativePath(u"a/b"_qs), Tree.Path(), Tree.Path("a/b")},
      {u"My Computer"_qs, Tree.Path(), QString()},
      {QString(), Tree.Path("a"), QString()}};
  for (const auto& [typed, from, expected] : cases) {
    List.SetPath(from);
    FChanges.clear();
    if (typed.isEmpty()) FCombo.lineEdit()->clear();
    EXPECT_TRUE(Type(typed, expected)) << qPrintable(typed);
    EXPECT_EQ(FChanges, QStringList{expected}) << qPrintable(typed);
  }
  if (HasDrives()) return;
  EXPECT_TRUE(Type(u"~/b"_qs, Tree.Path("a/b")) && Type(u"~"_qs, Tree.Path("a")));
}

TEST_F(TShellComboTest, APathThatIsNoFolderStaysAsTyped) {
  List.SetPath(Tree.Path("a"));
  const QColor normal = FCombo.lineEdit()->palette().color(QPalette::Text);
  for (const QByteArray name : {"missing", "a/b/file"}) {
    EXPECT_TRUE(TypeInVain(Tree.Path(name)));
    EXPECT_EQ(FCombo.currentText(), Tree.Path(name));
    EXPECT_EQ(FCombo.accessibleDescription(), u"Folder not found"_qs);
    EXPECT_NE(FCombo.lineEdit()->palette().color(QPalette::Text), normal);
    EXPECT_EQ(List.Path(), Tree.Path("a"));
  }
  EXPECT_TRUE(FChanges.isEmpty());
  QTest::keyClicks(FCombo.lineEdit(), u"x"_qs);
  EXPECT_TRUE(!FCombo.NotFound() && TypeInVain(Tree.Path("missing")));
  QTest::keyClick(&FCombo, Qt::Key_Escape);
  EXPECT_FALSE(FCombo.NotFound());
  EXPECT_EQ(FCombo.currentText(), Tree.Path("a"));
  EXPECT_EQ(FCombo.lineEdit()->palette().color(QPalette::Text), normal);
  EXPECT_TRUE(FCombo.accessibleDescription().isEmpty());
  FCombo.setEditText(Tree.Path("missing"));
  QTest::keyClick(FCombo.lineEdit(), Qt::Key_Return);
  QTest::keyClick(&FCombo, Qt::Key_Escape);
  QTest::qWait(50);
  EXPECT_FALSE(FCombo.NotFound()) << "called off before it was answered";
}
