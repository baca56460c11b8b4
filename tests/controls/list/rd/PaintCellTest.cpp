// Pixels of cells and group rows against what skin and layout say.

#include "controls/list/rd/painter/RdCellPainter.h"
#include "controls/list/rd/painter/RdGroupPainter.h"
#include "controls/picture/ImageList.h"
#include "controls/skin/Colors.h"

#include <QFontMetrics>

#include "PaintSurface.h"

namespace {

const QRect kCell(0, 0, 140, 26);

class PaintCell : public TPaintSurface {
 protected:
  TRdCell Cell(TListColumnType type, const QString& text) {
    TRdCell cell;
    cell.Cell = kCell;
    cell.Column = 1;
    cell.Type = type;
    cell.Text = text;
    return cell;
  }
  void Paint(const TRdCell& cell, const QColor& page = Qt::white) {
    Start(kCell.size());
    Painter.fillRect(kCell, page);
    TRdCellPainter(Painter, Widget, Skin).Paint(cell);
  }
};

TEST_F(PaintCell, ProgressHasAGradientAndAFrameOrAPictureThatIsTiledAndCut) {
  Skin.Item.ProgressStartColor = 0x0000FF;
  Skin.Item.ProgressCenterColor = 0x00FF00;
  Skin.Item.ProgressEndColor = 0xFF0000;
  Skin.Item.ProgressBorderColor = 0x00FFFF;
  Paint(Cell(ltProgress, u"100"_qs));
  EXPECT_EQ(At(5, 8), Qt::red);
  EXPECT_EQ(At(134, 8), Qt::blue);
  EXPECT_NEAR(At(37, 8).red(), 128, 2) << "a quarter: half of the first and half of the middle colour";
  EXPECT_NEAR(At(37, 8).green(), 127, 2);
  EXPECT_EQ(Count(kCell, Qt::yellow), 2 * 134 + 2 * 12) << "the frame";
  Paint(Cell(ltProgress, u"50"_qs));
  EXPECT_EQ(At(69, 8), Qt::blue) << "the last filled column";
  EXPECT_EQ(At(70, 8), Qt::white);

  QImage picture = Filled({10, 4}, Qt::green);
  QPainter(&picture).fillRect(0, 0, 1, 4, Qt::red);
  Skin.Item.ProgressImage = TPicture(picture);
  Paint(Cell(ltProgress, u"20"_qs));
  EXPECT_TRUE(IsAll({5, 8, 1, 10}, Qt::red) && IsAll({15, 8, 1, 10}, Qt::red) &&
              IsAll({25, 8, 1, 10}, Qt::red));
  EXPECT_TRUE(IsAll({26, 8, 5, 10}, Qt::green)) << "26 wide";
  EXPECT_EQ(At(31, 8), Qt::white);
}

TEST_F(PaintCell, StarsAreCutAtTheCell) {
  Skin.Item.StarLight = PictureOf({16, 16}, Qt::yellow);
  Skin.Item.StarHalf = PictureOf({16, 16}, Qt::cyan);
  Skin.Item.StarGray = PictureOf({16, 16}, Qt::gray);
  TRdCell cell = Cell(ltStar, u"2.5"_qs);
  cell.Cell.setWidth(72);
  Paint(cell);
  EXPECT_TRUE(IsAll({0, 7, 32, 16}, Qt::yellow) && IsAll({32, 7, 16, 16}, Qt::cyan) &&
              IsAll({48, 7, 24, 16}, Qt::gray));
  EXPECT_EQ(Count(kCell, Qt::white), 140 * 26 - 72 * 16);
}

TEST_F(PaintCell, EditBandHasItsFrameAndColor) {
  Skin.Item.EditBorderColor = 0x0000FF;
  Skin.Item.ComboBoxBorderColor = 0xFF0000;
  Skin.Item.ComboBoxBtnHoverImage = PictureOf({8, 8}, Qt::green);
  TRdCell cell = Cell(ltEdit, {});
  cell.EditColor = 0x00FFFF;
  Paint(cell, Qt::gray);
  EXPECT_EQ(Count(kCell, Qt::red), 2 * (122 + 16));
  EXPECT_TRUE(IsAll({10, 5, 120, 16}, Qt::yellow));
  cell.Type = ltComboBox;
  cell.EditColor = clNone;
  cell.State = TPartState::Hot;
  Paint(cell, Qt::gray);
  EXPECT_EQ(Count(kCell, Qt::blue), 2 * (122 + 16));
  EXPECT_TRUE(IsAll({10, 5, 104, 16}, Qt::gray));
  EXPECT_TRUE(IsAll({114, 5, 16, 16}, Qt::green)) << "the button";
}

TEST_F(PaintCell, PicturesFollowTheTextAndTheState) {
  Skin.Item.ItemPic_CheckBox = PictureOf({16, 16}, Qt::green);
  Skin.Item.ItemPic_UnCheckBox = PictureOf({16, 16}, Qt::red);
  for (const bool checked : {false, true}) {
    Paint(Cell(ltCheckbox, checked ? u"1"_qs : QString()));
    EXPECT_TRUE(IsAll({10, 5, 16, 16}, checked ? Qt::green : Qt::red));
  }

  Skin.Item.ButtonNormalImage = PictureOf({40, 20}, Qt::yellow);
  Skin.Item.ButtonDownImage = PictureOf({40, 20}, Qt::red);
  Skin.Item.ButtonGrayImage = PictureOf({40, 20}, Qt::gray);
  const std::tuple<TPartState, bool, QColor> buttons[] = {{TPartState::Normal, true, Qt::yellow},
                                                          {TPartState::Hot, true, Qt::yellow},  // has none
                                                          {TPartState::Pressed, true, Qt::red},
                                                          {TPartState::Pressed, false, Qt::gray}};
  TRdCell cell = Cell(ltButton, {});
  for (const auto& [state, enabled, color] : buttons) {
    cell.State = state;
    cell.Enabled = enabled;
    Paint(cell);
    EXPECT_EQ(At(12, 4), color);
  }
}

TEST_F(PaintCell, StylesDrawWhatHasNoPicture) {
  for (const TListColumnType type : {ltButton, ltCheckbox, ltComboBox}) {
    Paint(Cell(type, {}), Qt::magenta);
    EXPECT_LT(Count(kCell, Qt::magenta), 140 * 26 - 100) << type;
  }
  for (const TListColumnType type : {ltEmpty, ltDefault, ltNone, ltStar}) {
    Paint(Cell(type, {}), Qt::magenta);
    EXPECT_TRUE(IsAll(kCell, Qt::magenta)) << type;
  }
}

TEST_F(PaintCell, HotLabelsHaveTheirColorAndDisabledOnesNot) {
  Skin.Item.LabelHoverColor = 0x0000FF;
  Skin.Item.ButtonDisableColor = 0xFF0000;
  const auto shows = [this](TRdCell cell, bool hovered, bool enabled, const QColor& color) {
    cell.Hovered = hovered;
    cell.HotLine = hovered ? 0 : kNoIconTextHit;
    cell.Enabled = enabled;
    cell.Font.setStyleStrategy(QFont::NoAntialias);
    Paint(cell);
    return Count(kCell, color) > 0;
  };
  for (const TListColumnType type : {ltLabel, ltIconCaption}) {
    const TRdCell cell = Cell(type, u"Open"_qs);
    EXPECT_TRUE(shows(cell, false, true, Qt::black) && !shows(cell, false, true, Qt::red));
    EXPECT_TRUE(shows(cell, true, true, Qt::red) && !shows(cell, true, true, Qt::black));
    EXPECT_TRUE(shows(cell, true, false, Qt::blue) && !shows(cell, true, false, Qt::red));
  }
}

// Selected rows keep their light colour on a dark desktop, whose text is white.
TEST_F(PaintCell, TextIsReadableOnWhateverIsBehind) {
  UseDarkPalette();
  Paint(Cell(ltNone, u"text"_qs), QColor(0xFF, 0xB5, 0xDA));
  EXPECT_LT(Darkest(kCell), 80);
  Paint(Cell(ltNone, u"text"_qs), QColor(0x20, 0x23, 0x27));
  EXPECT_GT(Lightest(kCell), 200);
  EXPECT_EQ(ReadableOn(Qt::white, Qt::blue), QColor(Qt::blue)) << "enough contrast is left alone";
  const QColor faint(0xA0, 0xA0, 0xA0);
  EXPECT_NE(ReadableOn(Qt::white, faint), faint);
  EXPECT_EQ(ReadableOn(Qt::white, faint, true), faint) << "disabled text is faint on purpose";
  EXPECT_EQ(ReadableOn(QColor(), Qt::white), QColor(Qt::white)) << "nothing known, nothing changed";
}

TEST_F(PaintCell, BackgroundIsSampledWhereTheTextStands) {
  for (const qreal density : {1.0, 2.0}) {
    Start({40, 10}, density).translate(-100, -50);
    Painter.fillRect(100, 50, 20, 10, Qt::red);
    Painter.fillRect(120, 50, 20, 10, Qt::blue);
    EXPECT_EQ(BackgroundBehind(Painter, {100, 50, 20, 10}), QColor(Qt::red));
    EXPECT_EQ(BackgroundBehind(Painter, {120, 50, 90, 90}), QColor(Qt::blue)) << "cut at the surface";
    EXPECT_FALSE(BackgroundBehind(Painter, {0, 0, 20, 10}).isValid());
  }
}

TEST_F(PaintCell, ProgressTextIsReadableOnBothParts) {
  UseDarkPalette();
  Skin.Item.ProgressCenterColor = 0xFFFFFF;
  Paint(Cell(ltProgress, u"50"_qs), QColor(0x20, 0x23, 0x27));
  const int width = QFontMetrics(QFont()).horizontalAdvance(u"50 %"_qs);
  EXPECT_LT(Darkest({70 - width / 2, 9, width / 2, 8}), 100) << "dark on the white part";
  EXPECT_GT(Lightest({71, 9, width / 2, 8}), 150) << "light on the empty part";
}

TEST_F(PaintCell, GroupLineColorsRunFromTheText) {
  const QRect row(0, 0, 300, 30);
  Skin.Group.GroupLineStartColor = 0x0000FF;
  Skin.Group.GroupLineEndColor = 0xFF0000;
  for (const bool vertical : {true, false}) {
    Skin.Group.GroupLineColorVertical = vertical;
    TRdGroupRow group{row, {}, false, false, nullptr, -1, TPartState::Normal};
    group.Content.Header = u"Videos"_qs;
    group.Content.HeaderAlign = TAlignment::Center;
    group.Content.ButtonAlign = tkgNone;
    Start(row.size());
    TRdGroupPainter painter(Painter, Widget, Skin, group);
    painter.PaintHeader();
    const QRect before = painter.Parts().LineBefore;
    const QRect after = painter.Parts().LineAfter;
    EXPECT_EQ(At(after.left(), after.top()), Qt::red);
    EXPECT_EQ(At(after.right(), after.bottom()), Qt::blue);
    EXPECT_EQ(At(before.left(), before.top()), vertical ? Qt::red : Qt::blue);
    EXPECT_EQ(At(before.right(), before.bottom()), vertical ? Qt::blue : Qt::red);
    EXPECT_EQ(At(after.left(), after.bottom()), vertical ? Qt::blue : Qt::red);
  }
}

}  // namespace
