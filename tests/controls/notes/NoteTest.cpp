#include <gtest/gtest.h>

#include "controls/notes/PImageNote.h"
#include "controls/notes/PLabelNote.h"
#include "controls/picture/Pictures.h"

namespace {

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

}  // namespace

TEST(ImageNote, ShowsThePictureOfItsIndexAndIgnoresBadOnes) {
  TImageNote note;
  AddTwoPictures(note);
  EXPECT_EQ(note.Items()[1].Name, u"TPictureItem2");
  EXPECT_TRUE(note.Picture().Empty());
  const struct {
    int Set, Index;
    QSize Shown;
  } steps[] = {{1, 1, {4, 4}}, {2, 1, {4, 4}},   {-2, 1, {4, 4}},
               {0, 0, {8, 8}}, {-1, -1, {0, 0}}, {5, -1, {0, 0}}};
  for (const auto& step : steps) {
    note.SetImageIndex(step.Set);
    EXPECT_EQ(note.ImageIndex(), step.Index) << "set " << step.Set;
    EXPECT_EQ(note.Picture().Size(), step.Shown) << "set " << step.Set;
  }
}

TEST(ImageNote, PaintsItsPicture) {
  TImageNote note;
  note.resize(20, 20);
  AddTwoPictures(note);
  note.SetImageIndex(0);
  EXPECT_EQ(note.grab().toImage().pixelColor(7, 7), QColor(Qt::red));
  EXPECT_NE(note.grab().toImage().pixelColor(8, 7), QColor(Qt::red));
  note.SetStretch(true);
  EXPECT_EQ(note.grab().toImage().pixelColor(19, 19), QColor(Qt::red));
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

TEST(LabelNote, ShowsTheTextOfItsIndexAndIgnoresBadOnes) {
  TLabelNote note;
  AddTwoTexts(note);
  EXPECT_EQ(note.TextIndex(), -1);
  EXPECT_EQ(note.NameIndex(), QString());
  note.SetTextIndex(0);
  for (const int bad : {2, -1, 100}) {
    note.SetTextIndex(bad);
    EXPECT_EQ(note.TextIndex(), 0) << bad;
    EXPECT_EQ(note.Caption(), u"first") << bad;
  }
}

TEST(LabelNote, IsChosenByNameToo) {
  TLabelNote note;
  AddTwoTexts(note);
  note.SetNameIndex(u"other"_qs);
  EXPECT_EQ(note.TextIndex(), 1);
  EXPECT_EQ(note.Caption(), u"<b>second</b>");
  EXPECT_EQ(note.textFormat(), Qt::PlainText);
  note.SetNameIndex(u"unknown"_qs);
  EXPECT_EQ(note.NameIndex(), u"other");
  note.SetNameIndex(u"TLabelItem1"_qs);
  EXPECT_EQ(note.Caption(), u"first");
}

TEST(Notes, WhileLoadingTheIndexIsOnlyStored) {
  TImageNote image;
  image.SetLoading(true);
  image.SetImageIndex(1);
  EXPECT_EQ(image.ImageIndex(), 1) << "its items may come later";
  EXPECT_TRUE(image.Picture().Empty());

  TLabelNote label;
  AddTwoTexts(label);
  label.SetLoading(true);
  label.SetTextIndex(1);
  EXPECT_EQ(label.TextIndex(), 1);
  EXPECT_EQ(label.Caption(), QString());
}
