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
  const std::tuple<int, int, QSize> steps[] = {{1, 1, {4, 4}}, {2, 1, {4, 4}},   {-2, 1, {4, 4}},
                                               {0, 0, {8, 8}}, {-1, -1, {0, 0}}, {5, -1, {0, 0}}};
  for (const auto& [set, index, shown] : steps) {
    note.SetImageIndex(set);
    EXPECT_EQ(note.ImageIndex(), index) << "set " << set;
    EXPECT_EQ(note.Picture().Size(), shown) << "set " << set;
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

TEST(LabelNote, ShowsTheTextOfItsIndexOrNameAndIgnoresBadOnes) {
  TLabelNote note;
  AddTwoTexts(note);
  EXPECT_EQ(note.TextIndex(), -1);
  for (const int index : {0, 2, -1, 100})
    note.SetTextIndex(index);
  EXPECT_EQ(note.TextIndex(), 0);
  EXPECT_EQ(note.Caption(), u"first");
  for (const QString& name : {u"other"_qs, u"unknown"_qs})
    note.SetNameIndex(name);
  EXPECT_EQ(note.NameIndex(), u"other");
  EXPECT_EQ(note.Caption(), u"<b>second</b>");
  EXPECT_EQ(note.textFormat(), Qt::PlainText);
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
