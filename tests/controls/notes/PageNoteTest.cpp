#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "controls/notes/PPageNote.h"

namespace {

class PageNoteTest : public ::testing::Test {
 protected:
  TPageTab* Add() { return new TPageTab(Note); }

  // Exactly the active page is shown and enabled.
  void ExpectShown(const TPageTab* active, std::initializer_list<TPageTab*> pages) {
    EXPECT_EQ(Note.ActivePage(), active);
    for (TPageTab* page : pages) {
      EXPECT_EQ(page->isVisibleTo(&Note), page == active);
      EXPECT_EQ(page->isEnabled(), page == active);
    }
  }

  TPageNote Note;
};

}  // namespace

TEST_F(PageNoteTest, ANewPageStandsBehindTheActiveOneAndIsSelected) {
  EXPECT_EQ(Note.TabIndex(), -1);
  EXPECT_EQ(Note.ActivePage(), nullptr);
  TPageTab* first = Add();
  EXPECT_EQ(Note.TabIndex(), 0);
  TPageTab* last = Add();
  ExpectShown(last, {first, last});
  Note.SetTabIndex(0);
  TPageTab* middle = Add();
  EXPECT_EQ(Note.TabCount(), 3);
  EXPECT_EQ(Note.IndexOf(*middle), 1);
  EXPECT_EQ(Note.IndexOf(*last), 2);
  ExpectShown(middle, {first, middle, last});
}

TEST_F(PageNoteTest, OnlyAGoodAndNewIndexChangesThePage) {
  TPageTab* first = Add();
  TPageTab* second = Add();
  Note.SetTabIndex(0);
  ExpectShown(first, {first, second});
  for (const int bad : {-1, 2, 99})
    Note.SetTabIndex(bad);
  ExpectShown(first, {first, second});

  first->setEnabled(false);
  Note.SetTabIndex(0);
  EXPECT_FALSE(first->isEnabled()) << "the present index must not touch the page";

  TPageNote other;
  TPageTab foreign(other);
  Note.SetActivePage(foreign);
  EXPECT_EQ(Note.TabIndex(), 0);
  Note.SetActivePage(*second);
  ExpectShown(second, {first, second});
}

TEST_F(PageNoteTest, RemovingReappliesTheIndex) {
  TPageTab* pages[] = {Add(), Add(), Add()};
  delete pages[2];
  EXPECT_EQ(Note.TabIndex(), 1) << "the active page was the last";
  ExpectShown(pages[1], {pages[0], pages[1]});
  Note.SetTabIndex(0);
  delete pages[0];
  EXPECT_EQ(Note.TabIndex(), 0);
  ExpectShown(pages[1], {pages[1]});
  delete pages[1];
  EXPECT_EQ(Note.TabIndex(), -1);
  EXPECT_EQ(Note.TabCount(), 0);
  EXPECT_EQ(Note.ActivePage(), nullptr);
}

TEST_F(PageNoteTest, PagesFillTheControlAndHoldItsSize) {
  TPageTab* large = Add();
  large->setMinimumSize(300, 200);
  TPageTab* small = Add();
  Note.resize(400, 250);
  Note.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&Note));
  EXPECT_EQ(small->geometry(), Note.rect());
  EXPECT_EQ(Note.minimumSizeHint(), QSize(300, 200)) << "the hidden page's need was forgotten";
}

TEST(PageNote, DestructionFreesThePagesLastToFirst) {
  QStringList freed;
  {
    TPageNote note;
    for (const QString& name : {u"a"_qs, u"b"_qs, u"c"_qs}) {
      auto* page = new TPageTab(note);
      QObject::connect(page, &QObject::destroyed, [&freed, name] { freed.append(name); });
    }
    note.SetTabIndex(0);
  }
  EXPECT_EQ(freed, (QStringList{u"c"_qs, u"b"_qs, u"a"_qs}));
}

TEST(PageNote, AMouseClickOnAPagePassesThroughUnlessTabsAreEdited) {
  class TForm : public QWidget {
   public:
    void mousePressEvent(QMouseEvent*) override { ++Clicks; }
    int Clicks = 0;
  } form;
  TPageNote note(&form);
  TPageTab page(note);
  note.resize(100, 100);
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  QTest::mouseClick(&page, Qt::LeftButton);
  EXPECT_EQ(form.Clicks, 1);
  note.SetEditTabs(true);
  QTest::mouseClick(&page, Qt::LeftButton);
  EXPECT_EQ(form.Clicks, 1);
}
