// Thousands of random gestures while handlers delete rows and groups move: nothing may dangle.
#include "GalleryRig.h"

#include <algorithm>
#include <random>

namespace {

constexpr int kSteps = 4000;
constexpr Qt::Key kKeys[] = {Qt::Key_Down, Qt::Key_Up,    Qt::Key_Home,     Qt::Key_End,   Qt::Key_Space,
                             Qt::Key_F2,   Qt::Key_Right, Qt::Key_PageDown, Qt::Key_Minus, Qt::Key_Plus,
                             Qt::Key_0,    Qt::Key_Left,  Qt::Key_Return,   Qt::Key_A,     Qt::Key_Escape};
constexpr Qt::KeyboardModifier kShifts[] = {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier};

}  // namespace

class TRdMonkey : public TGalleryRig {
 protected:
  int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(Random); }
  QPoint Somewhere(const QWidget& widget) { return {Below(widget.width()), Below(widget.height())}; }

  void Gesture() {
    QWidget& rows = *List.viewport();
    const Qt::KeyboardModifier shift = kShifts[Below(3)];
    switch (Below(9)) {
      case 0:
        return QTest::mousePress(&rows, Qt::LeftButton, shift, Somewhere(rows));
      case 1:
        return QTest::mouseRelease(&rows, Qt::LeftButton, shift, Somewhere(rows));
      case 2:
        return QTest::mouseDClick(&rows, Qt::LeftButton, shift, Somewhere(rows));
      case 3:
        return Click(Somewhere(rows), shift);
      case 4:
        return MoveTo(Somewhere(rows));
      case 5:
        return ClickHeader(Below(List.HeaderRect().width()));
      case 6:
        return List.SetTopIndex(Below(12));
      default:
        return QTest::keyClick(&List, kKeys[Below(std::size(kKeys))], shift);
    }
  }

  void MakeHandlersDelete() {
    const auto sometimes = [this](TListItem* item) {
      if (Below(8) == 0) item->Delete();
    };
    List.OnButtonClick = [=](TListItem* item, int) { sometimes(item); };
    List.OnItemCheckBoxClick = sometimes;
    List.OnItemChecked = [=, this](TListItem*) {
      if (Below(40) == 0 && List.Items().Count() > 0) List.Items().Delete(Below(List.Items().Count()));
    };
    List.EditOnExit = [=](TListItem* item, int) { sometimes(item); };
    List.EditOnEnter = List.EditOnExit;
    List.OnSelectItem = [=, this](TListItem*, bool) {
      if (Below(60) == 0) List.Groups()[Below(3)].SetGroupExpand(Below(2) == 0);
    };
    List.OnColumnComboBoxDropDown = [=](TListItem* item, int, int) { sometimes(item); };
  }

  void Refill() {
    for (int row = 0; row < 6; ++row) {
      TkListItem* const item = List.Items().Add(Below(4) - 1);
      item->SetCaption(u"new %1"_qs.arg(row));
      for (int column = 1; column < List.Columns().Count(); ++column)
        item->SubItems().Add(QString::number(column));
    }
  }

  std::mt19937 Random{7};
};

TEST_F(TRdMonkey, NoGestureLeavesAnythingBehind) {
  MakeHandlersDelete();
  for (int step = 0; step < kSteps; ++step) {
    if (List.Items().Count() < 6) Refill();
    Gesture();
    if (step % 50 == 0) QTest::qWait(0);
    const auto& all = List.Model().AllItems();
    const auto checked =
        std::count_if(all.begin(), all.end(), [](const TkListItem* row) { return row->Checked(); });
    ASSERT_EQ(List.Model().Checks().CheckedTotal(), checked) << step;
    const TkListItem* const edited = List.MouseState().EditItem;
    ASSERT_TRUE(edited == nullptr || std::find(all.begin(), all.end(), edited) != all.end()) << step;
    ASSERT_EQ(edited != nullptr, List.Editors().Shown()) << step;
  }
}
