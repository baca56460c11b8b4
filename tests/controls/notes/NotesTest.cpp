// Labels and pictures that show one of several things, and pages of which one shows.
#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include "controls/notes/Image.h"
#include "controls/notes/Labels.h"
#include "controls/notes/PPageNote.h"
#include "controls/notes/PaintCounter.h"
#include "controls/picture/Pictures.h"

namespace {

QString LongPath(int last = 0) {
  return QString(300, u'x') + u"/end "_qs + QString::number(last);
}

void AddTwoPictures(TImageNote& note) {
  note.Items().Add().Picture = PictureOf({8, 8}, Qt::red);
  note.Items().Add().Picture = PictureOf({4, 4}, Qt::blue);
}

void AddTwoTexts(TLabelNote& note) {
  note.Items().Add().Text = u"first"_qs;
  TLabelItem& second = note.Items().Add();
  second.Name = u"other"_qs;
  second.Text = u"<b>second</b>"_qs;
}

class PageNoteTest : public ::testing::Test {
 protected:
  TPageTab* Add() { return new TPageTab(Note); }

  // Exactly the page of that index is shown and enabled, none for -1.
  void ExpectShown(int active, const std::vector<TPageTab*>& pages) {
    EXPECT_EQ(Note.TabIndex(), active);
    EXPECT_EQ(Note.TabCount(), static_cast<int>(pages.size()));
    EXPECT_EQ(Note.ActivePage(), active < 0 ? nullptr : pages[static_cast<std::size_t>(active)]);
    for (TPageTab* page : pages) {
      EXPECT_EQ(page->isVisibleTo(&Note), page == Note.ActivePage());
      EXPECT_EQ(page->isEnabled(), page == Note.ActivePage());
    }
  }

  TPageNote Note;
};

}  // namespace

TEST(EllipsisLabel, ManyCaptionsGiveFewPaintsAndTheLastStays) {
  TEllipsisLabel label;
  label.resize(200, 20);
  label.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&label));
  TPaintCounter paints(label);
  QElapsedTimer time;
  time.start();
  for (int call = 0; call < 100'000; ++call) {
    label.SetCaption(LongPath(call));
    if (call % 10 == 0) QApplication::processEvents();
  }
  EXPECT_LE(paints.Count, time.elapsed() / TEllipsisLabel::kRepaintInterval + 2);
  const int before = paints.Count;
  ASSERT_TRUE(QTest::qWaitFor([&] { return paints.Count > before; })) << "the last text is never painted";
  EXPECT_EQ(label.accessibleName(), LongPath(99'999));
}

TEST(EllipsisLabel, IsElidedWhenPaintedAndAsksForNoWidth) {
  TEllipsisLabel label;
  TEllipsisLabel other;
  for (TEllipsisLabel* each : {&label, &other})
    each->resize(120, 20);
  const QSize hint = label.sizeHint();
  label.SetCaption(LongPath());
  other.SetCaption(label.fontMetrics().elidedText(LongPath(), Qt::ElideRight, 120));
  EXPECT_EQ(label.grab().toImage(), other.grab().toImage());
  EXPECT_EQ(label.sizeHint(), hint);
  EXPECT_EQ(label.sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
  label.SetElideMode(Qt::ElideMiddle);
  EXPECT_NE(label.grab().toImage(), other.grab().toImage());
  label.SetCaption(u"A&B"_qs);
  other.SetCaption(u"AB"_qs);
  EXPECT_NE(label.grab().toImage(), other.grab().toImage()) << "the & of a path was taken for a mark";
}

TEST(TransparentLabel, TheSwitchDecidesWhatLiesBehindTheText) {
  QWidget form;
  form.resize(60, 20);
  QPalette palette = form.palette();
  palette.setColor(QPalette::Base, Qt::yellow);
  form.setPalette(palette);
  form.setBackgroundRole(QPalette::Base);
  form.setAutoFillBackground(true);
  TLabel label(&form);
  label.setBackgroundRole(QPalette::Window);
  label.resize(60, 20);
  label.SetTransparent(true);
  EXPECT_EQ(form.grab().toImage().pixelColor(30, 10), QColor(Qt::yellow));
  label.SetTransparent(false);
  EXPECT_EQ(form.grab().toImage().pixelColor(30, 10), palette.color(QPalette::Window));
  EXPECT_EQ(label.textFormat(), Qt::PlainText);
}

TEST(ImageNote, PaintsThePictureOfItsIndexAndIgnoresBadOnes) {
  TImageNote note;
  note.resize(20, 20);
  AddTwoPictures(note);
  EXPECT_EQ(note.Items()[1].Name, u"TPictureItem2");
  const std::tuple<int, int, QSize> steps[] = {{1, 1, {4, 4}},   {2, 1, {4, 4}},  {-2, 1, {4, 4}},
                                               {-1, -1, {0, 0}}, {5, -1, {0, 0}}, {0, 0, {8, 8}}};
  for (const auto& [set, index, shown] : steps) {
    note.SetImageIndex(set);
    EXPECT_EQ(note.ImageIndex(), index) << "set " << set;
    EXPECT_EQ(note.Picture().Size(), shown) << "set " << set;
  }
  EXPECT_EQ(note.grab().toImage().pixelColor(7, 7), QColor(Qt::red));
  EXPECT_NE(note.grab().toImage().pixelColor(8, 7), QColor(Qt::red));
  note.SetStretch(true);
  EXPECT_EQ(note.grab().toImage().pixelColor(19, 19), QColor(Qt::red));
  note.SetLoading(true);
  note.SetImageIndex(7);
  EXPECT_EQ(note.ImageIndex(), 7) << "while the form is loading its items may come later";
}

TEST(ImageNote, LockedBoundsComeBack) {
  QWidget form;
  TImageNote note(&form);
  form.show();
  note.setGeometry(3, 4, 64, 64);
  note.SetLocked(true);
  note.setGeometry(10, 10, 30, 30);
  EXPECT_EQ(note.geometry(), QRect(3, 4, 64, 64));
  note.SetLocked(false);
  note.resize(30, 30);
  EXPECT_EQ(note.size(), QSize(30, 30));
}

TEST(LabelNote, ShowsTheTextOfItsIndexOrNameAndIgnoresBadOnes) {
  TLabelNote note;
  AddTwoTexts(note);
  for (const int index : {0, 2, -1, 100})
    note.SetTextIndex(index);
  EXPECT_EQ(note.TextIndex(), 0);
  EXPECT_EQ(note.Caption(), u"first");
  for (const QString& name : {u"other"_qs, u"unknown"_qs})
    note.SetNameIndex(name);
  EXPECT_EQ(note.NameIndex(), u"other");
  EXPECT_EQ(note.Caption(), u"<b>second</b>");
  EXPECT_EQ(note.textFormat(), Qt::PlainText);
  note.SetLoading(true);
  note.SetTextIndex(0);
  EXPECT_EQ(note.TextIndex(), 0);
  EXPECT_EQ(note.Caption(), u"<b>second</b>") << "only stored";
}

TEST_F(PageNoteTest, ANewPageStandsBehindTheActiveOneAndARemovedOneReappliesTheIndex) {
  ExpectShown(-1, {});
  TPageTab* const first = Add();
  TPageTab* const last = Add();
  ExpectShown(1, {first, last});
  Note.SetTabIndex(0);
  TPageTab* const middle = Add();
  ExpectShown(1, {first, middle, last});
  Note.SetTabIndex(2);
  delete last;
  ExpectShown(1, {first, middle});
  Note.SetTabIndex(0);
  delete first;
  ExpectShown(0, {middle});
  delete middle;
  ExpectShown(-1, {});
}

TEST_F(PageNoteTest, OnlyAGoodAndNewIndexChangesThePage) {
  TPageTab* first = Add();
  TPageTab* second = Add();
  for (const int index : {0, -1, 2, 99})
    Note.SetTabIndex(index);
  ExpectShown(0, {first, second});
  first->setEnabled(false);
  Note.SetTabIndex(0);
  EXPECT_FALSE(first->isEnabled()) << "the present index must not touch the page";
  TPageNote other;
  TPageTab foreign(other);
  Note.SetActivePage(foreign);
  EXPECT_EQ(Note.TabIndex(), 0);
  Note.SetActivePage(*second);
  ExpectShown(1, {first, second});
}

TEST_F(PageNoteTest, PagesFillTheControlHoldItsSizeAndAreFreedLastToFirst) {
  TPageTab* const pages[] = {Add(), Add()};
  pages[0]->setMinimumSize(300, 200);
  Note.resize(400, 250);
  Note.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&Note));
  EXPECT_EQ(pages[1]->geometry(), Note.rect());
  EXPECT_EQ(Note.minimumSizeHint(), QSize(300, 200)) << "the hidden page's need was forgotten";
  auto doomed = std::make_unique<TPageNote>();
  std::vector<int> freed;
  for (const int page : {0, 1, 2})
    QObject::connect(new TPageTab(*doomed), &QObject::destroyed, [&freed, page] { freed.push_back(page); });
  doomed->SetTabIndex(0);
  doomed.reset();
  EXPECT_EQ(freed, (std::vector{2, 1, 0}));
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
  for (const bool edited : {false, true}) {
    note.SetEditTabs(edited);
    QTest::mouseClick(&page, Qt::LeftButton);
    EXPECT_EQ(form.Clicks, 1);
  }
}
