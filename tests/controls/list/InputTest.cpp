// Keys and presses on a list of letters, without a window.
#include "PlainList.h"

#include "controls/list/input/RowInput.h"

#include <gtest/gtest.h>

namespace {

// Ten rows "a" to "j", four to a page.
class TPlainHost : public TRowInputHost {
 public:
  explicit TPlainHost(const TListViewOptions& options) : FOptions(options), Input(*this) {
    List.States.SetSingleSelect(!options.MultiSelect);
    for (char letter = 'a'; letter <= 'j'; ++letter)
      List.Add(QString(QChar::fromLatin1(letter)));
    List.Log.clear();
  }

  const TListViewOptions& Options() const override { return FOptions; }
  TListItems& InputItems() override { return List.Items; }
  int TopIndex() const override { return FTop; }
  void SetTopIndex(int row) override { FTop = row; }
  int RowsPerPage() const override { return 4; }
  void MakeRowVisible(int row, bool) override { FTop = std::max(std::min(FTop, row), row - 3); }
  void ScrollHorz(int steps) override { FHorz += steps; }
  QString RowText(int row) const override { return List.Items[row]->Caption(); }

  // "selected|focused", then what is checked.
  QString State() const {
    const QString checked = List.Having(kRowChecked);
    return List.Having(kRowSelected).remove(u' ') + u'|' + List.Having(kRowFocused) +
           (checked.isEmpty() ? QString() : u'|' + checked);
  }

  TListViewOptions FOptions;
  TPlainList List;
  TRowInput Input;
  int FTop = 0;
  int FHorz = 0;
};

constexpr auto kCtrl = Qt::ControlModifier;
constexpr auto kShift = Qt::ShiftModifier;
const Qt::KeyboardModifiers kNone = Qt::NoModifier;
const Qt::KeyboardModifiers kBoth = Qt::ControlModifier | Qt::ShiftModifier;

struct TKeyStep {
  int Key;
  Qt::KeyboardModifiers Shift;
  const char16_t* State;
};

void ExpectKeys(TPlainHost& host, const std::vector<TKeyStep>& steps) {
  int number = 0;
  for (const TKeyStep& step : steps) {
    EXPECT_TRUE(host.Input.Key(step.Key, step.Shift)) << number;
    EXPECT_EQ(host.State().toStdU16String(), step.State) << "step " << number;
    ++number;
  }
}

struct TPressStep {
  int Row;
  Qt::KeyboardModifiers Shift;
  const char16_t* Pressed;
  const char16_t* Released;
};

void ExpectPresses(TPlainHost& host, const std::vector<TPressStep>& steps,
                   Qt::MouseButton button = Qt::LeftButton) {
  int number = 0;
  for (const TPressStep& step : steps) {
    host.Input.Press({step.Row, 0, step.Row < 0 ? htNowhere : htOnLabel}, button, step.Shift);
    EXPECT_EQ(host.State().toStdU16String(), step.Pressed) << "press " << number;
    host.Input.Release();
    EXPECT_EQ(host.State().toStdU16String(), step.Released) << "release " << number;
    ++number;
  }
}

}  // namespace

TEST(RowInputKeys, MultipleSelection) {
  TPlainHost host({.MultiSelect = true});
  ExpectKeys(host, {
                       {Qt::Key_Down, kNone, u"a|a"},    {Qt::Key_Down, kNone, u"b|b"},
                       {Qt::Key_Down, kShift, u"bc|c"},  {Qt::Key_Down, kShift, u"bcd|d"},
                       {Qt::Key_Up, kShift, u"bc|c"},    {Qt::Key_Home, kShift, u"ab|a"},
                       {Qt::Key_Down, kCtrl, u"ab|b"},   {Qt::Key_Down, kCtrl, u"ab|c"},
                       {Qt::Key_Down, kCtrl, u"ab|d"},   {Qt::Key_Space, kCtrl, u"abd|d"},
                       {Qt::Key_Down, kBoth, u"abde|e"}, {Qt::Key_Space, kCtrl, u"abd|e"},
                       {Qt::Key_Up, kNone, u"d|d"},      {Qt::Key_Up, kCtrl, u"d|c"},
                       {Qt::Key_Space, kNone, u"c|c"},   {Qt::Key_End, kNone, u"j|j"},
                       {Qt::Key_Down, kNone, u"j|j"},    {Qt::Key_A, kCtrl, u"abcdefghij|j"},
                       {Qt::Key_Home, kNone, u"a|a"},    {Qt::Key_Up, kNone, u"a|a"},
                   });
}

TEST(RowInputKeys, SingleSelectionNeverSelectsTwo) {
  TPlainHost host({});
  ExpectKeys(host, {
                       {Qt::Key_Up, kNone, u"a|a"},
                       {Qt::Key_Down, kShift, u"b|b"},
                       {Qt::Key_Down, kCtrl, u"b|c"},
                       {Qt::Key_Space, kNone, u"c|c"},
                       {Qt::Key_End, kBoth, u"c|j"},
                   });
  EXPECT_FALSE(host.Input.Key(Qt::Key_A, kCtrl));
  EXPECT_FALSE(host.Input.Key(Qt::Key_F2, kNone));
}

TEST(RowInputKeys, PagesGoToTheEdgeFirstAndThenFurther) {
  TPlainHost host({});
  ExpectKeys(host, {
                       {Qt::Key_PageDown, kNone, u"d|d"},
                       {Qt::Key_PageDown, kNone, u"g|g"},
                       {Qt::Key_PageDown, kNone, u"j|j"},
                       {Qt::Key_PageDown, kNone, u"j|j"},
                       {Qt::Key_PageUp, kNone, u"g|g"},
                       {Qt::Key_PageUp, kNone, u"d|d"},
                       {Qt::Key_PageUp, kNone, u"a|a"},
                   });
}

TEST(RowInputKeys, SpaceSwitchesTheCheckOfAllSelectedRows) {
  TPlainHost host({.MultiSelect = true, .CheckBoxes = true});
  ExpectKeys(host, {
                       {Qt::Key_Home, kNone, u"a|a"},
                       {Qt::Key_Space, kNone, u"a|a|a"},
                       {Qt::Key_Down, kShift, u"ab|b|a"},
                       {Qt::Key_Space, kNone, u"ab|b|a b"},
                       {Qt::Key_Space, kNone, u"ab|b"},
                       {Qt::Key_Down, kCtrl, u"ab|c"},
                       {Qt::Key_Space, kNone, u"ab|c|c"},
                   });
}

TEST(RowInputKeys, WithoutAFocusTheFirstRowIsMeantIfThereIsOne) {
  TPlainHost host({.CheckBoxes = true});
  ExpectKeys(host, {{Qt::Key_Space, kNone, u"||a"}, {Qt::Key_Down, kNone, u"a|a|a"}});
  host.List.Items.Clear();
  for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home, Qt::Key_Space})
    ExpectKeys(host, {{key, kNone, u"|"}, {key, kShift, u"|"}});
}

TEST(RowInputMouse, MultipleSelection) {
  TPlainHost host({.MultiSelect = true});
  ExpectPresses(host, {
                          {2, kNone, u"c|c", u"c|c"},
                          {5, kShift, u"cdef|f", u"cdef|f"},
                          {1, kShift, u"bc|b", u"bc|b"},
                          {8, kCtrl, u"bci|i", u"bci|i"},
                          {9, kBoth, u"bcij|j", u"bcij|j"},
                          {2, kCtrl, u"bij|c", u"bij|c"},
                          {8, kNone, u"bij|i", u"i|i"},
                          {-1, kCtrl, u"i|i", u"i|i"},
                          {-1, kNone, u"|i", u"|i"},
                          {2, kNone, u"c|c", u"c|c"},
                      });
  host.List.Items.Delete(0);  // the anchor moves with its row
  ExpectPresses(host, {{3, kShift, u"cde|e", u"cde|e"}});
}

TEST(RowInputMouse, RightButtonKeepsASelectionItLandsOn) {
  TPlainHost host({.MultiSelect = true});
  ExpectPresses(host, {{1, kNone, u"b|b", u"b|b"}, {2, kCtrl, u"bc|c", u"bc|c"}});
  ExpectPresses(host, {{1, kNone, u"bc|b", u"bc|b"}, {4, kNone, u"e|e", u"e|e"}, {-1, kNone, u"|e", u"|e"}},
                Qt::RightButton);
}

TEST(RowInputMouse, ABoxSwitchesAlone) {
  TPlainHost host({.CheckBoxes = true});
  ExpectPresses(host, {{2, kNone, u"c|c", u"c|c"}});
  EXPECT_TRUE(host.Input.Press({4, 0, htOnStateIcon}, Qt::LeftButton, kNone));
  EXPECT_EQ(host.State(), u"c|c|e");
  EXPECT_FALSE(host.Input.Press({4, 0, htOnStateIcon}, Qt::RightButton, kNone));
  EXPECT_EQ(host.State(), u"e|e|e") << "the right button selects and leaves the box";
}

TEST(TypeAhead, LettersLeadToTheNextRowThatBeginsWithThem) {
  const QStringList rows{u"alpha"_qs, u"beta"_qs, u"Bravo"_qs, u"berlin"_qs};
  const auto find = [&rows](const QString& letters, int current) {
    TTypeAhead typed;
    for (const QChar letter : letters)
      typed.Add(letter, 0, 1000);
    return typed.Find(static_cast<int>(rows.size()), current, [&rows](int row) { return rows[row]; });
  };
  EXPECT_EQ(find(u"b"_qs, -1), 1);
  EXPECT_EQ(find(u"b"_qs, 1), 2) << "one letter goes on from the current row";
  EXPECT_EQ(find(u"bb"_qs, 2), 3) << "so does a repeated one";
  EXPECT_EQ(find(u"b"_qs, 3), 1) << "the search goes round";
  EXPECT_EQ(find(u"be"_qs, 1), 1) << "more letters may stay";
  EXPECT_EQ(find(u"ber"_qs, 1), 3);
  EXPECT_EQ(find(u"x"_qs, 0), -1);
}

TEST(TypeAhead, APauseBeginsANewWord) {
  TPlainHost host({});
  EXPECT_TRUE(host.Input.Type(u"c"_qs, 100));
  EXPECT_TRUE(host.Input.Type(u"d"_qs, 600));
  EXPECT_EQ(host.State(), u"c|c") << "no row begins with \"cd\"";
  EXPECT_TRUE(host.Input.Type(u"d"_qs, 1700));
  EXPECT_EQ(host.State(), u"d|d");
  EXPECT_FALSE(host.Input.Type(u"\x1b"_qs, 5000));
}
