#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include "controls/notes/EllipsisLabel.h"
#include "controls/notes/PaintCounter.h"
#include "controls/notes/TLabel_Transparent.h"

namespace {

QString LongPath(int last = 0) {
  return QString(300, u'x') + u"/end "_qs + QString::number(last);
}

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
  EXPECT_EQ(label.Caption(), LongPath(99'999));
  const int before = paints.Count;
  ASSERT_TRUE(QTest::qWaitFor([&] { return paints.Count > before; })) << "the last text is never painted";
  EXPECT_EQ(label.accessibleName(), LongPath(99'999));
}

TEST(EllipsisLabel, IsElidedWhenPaintedAndAsksForNoWidth) {
  TEllipsisLabel label;
  TEllipsisLabel elided;
  for (TEllipsisLabel* each : {&label, &elided})
    each->resize(120, 20);
  const QSize hint = label.sizeHint();
  label.SetCaption(LongPath());
  elided.SetCaption(label.fontMetrics().elidedText(LongPath(), Qt::ElideRight, 120));
  EXPECT_EQ(label.grab().toImage(), elided.grab().toImage());
  EXPECT_NE(label.grab().toImage(), TEllipsisLabel().grab().toImage());
  EXPECT_EQ(label.sizeHint(), hint);
  EXPECT_EQ(label.sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);

  label.SetElideMode(Qt::ElideMiddle);
  EXPECT_NE(label.grab().toImage(), elided.grab().toImage());
}

TEST(EllipsisLabel, MarksInATextAreText) {
  TEllipsisLabel label;
  TEllipsisLabel plain;
  for (TEllipsisLabel* each : {&label, &plain})
    each->resize(120, 20);
  label.SetCaption(u"A&B"_qs);
  plain.SetCaption(u"AB"_qs);
  EXPECT_NE(label.grab().toImage(), plain.grab().toImage()) << "the & of a path was taken for a mark";
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
