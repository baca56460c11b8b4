// Our own window of properties, for desktops that have none.
#include "views/files/PropertiesDialog.h"

#include <filesystem>

#include "fixtures/FormTest.h"
#include "support/PLanguage.h"

namespace {

class Properties : public testing::Test {
 protected:
  // Shows the window and waits for what the thread tells.
  QDialog& Show(const QByteArray& name) {
    ShowOwnProperties(FOwner, FTree.Path(name), FLanguage);
    FDialog = FOwner.findChildren<QDialog*>().last();
    EXPECT_TRUE(QTest::qWaitFor([this] { return Line("lblKind") != u"..."_qs; }, 10000));
    return *FDialog;
  }
  [[nodiscard]] QString Line(const char* name) const {
    const auto* label = FDialog->findChild<QLabel*>(QLatin1String(name));
    return label == nullptr ? u"none"_qs : label->text();
  }

  TTempTree FTree;
  QWidget FOwner;
  TLanguage FLanguage{u"Tallyscope"_qs, QString()};
  QDialog* FDialog = nullptr;
};

}  // namespace

TEST_F(Properties, TellOfAFileAndItsChecksumOnDemand) {
  FTree.WriteFile("folder/note.qqq", "abc");
  FTree.MakeHardLink("folder/other name", "folder/note.qqq");
  std::filesystem::permissions(FTree.Path("folder/note.qqq").toStdString(), std::filesystem::perms(04640));
  QDialog& dialog = Show("folder/note.qqq");
  EXPECT_EQ(Line("lblName"), u"note.qqq"_qs);
  EXPECT_EQ(Line("lblLocation"), FTree.Path("folder") + PathDelim);
  EXPECT_EQ(Line("lblKind"), u"QQQ FILE"_qs);
  EXPECT_EQ(Line("lblSize"), u"3 Byte"_qs);
  EXPECT_EQ(Line("lblRights"), u"rwSr----- (4640)"_qs);
  EXPECT_EQ(Line("lblLinks"), u"2"_qs);
  EXPECT_NE(Line("lblModified"), u"none"_qs);
  auto& sum = *dialog.findChild<QPushButton*>(u"btnChecksum"_qs);
  EXPECT_TRUE(sum.isEnabled());
  sum.click();
  EXPECT_TRUE(QTest::qWaitFor([&] { return sum.isEnabled(); }, 10000));
  EXPECT_EQ(Line("lblChecksum").remove(u' '),
            u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"_qs);
}

TEST_F(Properties, TellOfAFolderALinkAndOfNothing) {
  FTree.MakeFolder("folder");
  FTree.MakeLink("link", "folder");
  EXPECT_FALSE(Show("folder").findChild<QPushButton*>(u"btnChecksum"_qs)->isEnabled());
  EXPECT_EQ(Line("lblKind"), u"File Folder"_qs);
  EXPECT_EQ(Line("lblSize"), u"none"_qs) << "nobody has summed it";
  EXPECT_FALSE(Show("link").findChild<QPushButton*>(u"btnChecksum"_qs)->isEnabled());
  EXPECT_EQ(Line("lblKind"), u"Link"_qs);
  EXPECT_EQ(Line("lblLeadsTo"), u"folder"_qs);
  EXPECT_FALSE(Show("missing").findChild<QPushButton*>(u"btnChecksum"_qs)->isEnabled());
  EXPECT_EQ(Line("lblKind"), u"There is nothing here any more."_qs);
}
