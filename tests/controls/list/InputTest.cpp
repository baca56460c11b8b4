// Keys and presses on a list of letters, without a window.
#include "PlainList.h"

#include "controls/list/input/RowInput.h"

#include <gtest/gtest.h>

#include <QKeySequence>

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

// Steps as "Shift+Down bc|c": a key, and the state after it.
void ExpectKeys(TPlainHost& host, const QString& steps) {
  for (const QString& step : steps.split(u", "_qs)) {
    const QKeyCombination key = QKeySequence(step.section(u' ', 0, 0))[0];
    EXPECT_TRUE(host.Input.Key(key.key(), key.keyboardModifiers())) << qPrintable(step);
    EXPECT_EQ(host.State(), step.section(u' ', 1)) << qPrintable(step);
  }
}

// A row, the modifiers, and the state after the press and after the release.
using TPressStep = std::tuple<int, Qt::KeyboardModifiers, const char16_t*, const char16_t*>;

void ExpectPresses(TPlainHost& host, const std::vector<TPressStep>& steps,
                   Qt::MouseButton button = Qt::LeftButton) {
  for (const auto& [row, shift, pressed, released] : steps) {
    host.Input.Press({row, 0, row < 0 ? htNowhere : htOnLabel}, button, shift);
    EXPECT_EQ(host.State().toStdU16String(), pressed) << "press " << row;
    host.Input.Release();
    EXPECT_EQ(host.State().toStdU16String(), released) << "release " << row;
  }
}

}  // namespace

TEST(RowInputKeys, MultipleSelection) {
  TPlainHost host({.MultiSelect = true});
  ExpectKeys(host, u"Down a|a, Down b|b, Shift+Down bc|c, Shift+Down bcd|d, Shift+Up bc|c"_qs);
  ExpectKeys(host, u"Shift+Home ab|a, Ctrl+Down ab|b, Ctrl+Down ab|c, Ctrl+Down ab|d, Ctrl+Space abd|d"_qs);
  ExpectKeys(host, u"Ctrl+Shift+Down abde|e, Ctrl+Space abd|e, Up d|d, Ctrl+Up d|c, Space c|c"_qs);
  ExpectKeys(host, u"End j|j, Down j|j, Ctrl+A abcdefghij|j, Home a|a, Up a|a"_qs);
}

TEST(RowInputKeys, SingleSelectionNeverSelectsTwo) {
  TPlainHost host({});
  ExpectKeys(host, u"Up a|a, Shift+Down b|b, Ctrl+Down b|c, Space c|c, Ctrl+Shift+End c|j"_qs);
  EXPECT_FALSE(host.Input.Key(Qt::Key_A, kCtrl) || host.Input.Key(Qt::Key_F2, kNone));
  TPlainHost pages({});  // to the edge first, and then further
  ExpectKeys(pages, u"PgDown d|d, PgDown g|g, PgDown j|j, PgDown j|j, PgUp g|g, PgUp d|d, PgUp a|a"_qs);
}

TEST(RowInputKeys, SpaceSwitchesTheCheckOfAllSelectedRows) {
  TPlainHost host({.MultiSelect = true, .CheckBoxes = true});
  ExpectKeys(host, u"Home a|a, Space a|a|a, Shift+Down ab|b|a, Space ab|b|a b, Space ab|b"_qs);
  ExpectKeys(host, u"Ctrl+Down ab|c, Space ab|c|c"_qs);
}

TEST(RowInputKeys, WithoutAFocusTheFirstRowIsMeantIfThereIsOne) {
  TPlainHost host({.CheckBoxes = true});
  ExpectKeys(host, u"Space ||a, Down a|a|a"_qs);
  host.List.Items.Clear();
  for (const QString& key : {u"Up"_qs, u"Down"_qs, u"PgDown"_qs, u"End"_qs, u"Home"_qs, u"Space"_qs})
    ExpectKeys(host, key + u" |, Shift+"_qs + key + u" |"_qs);
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
  EXPECT_TRUE(host.Input.Type(u"c"_qs, 100) && host.Input.Type(u"d"_qs, 600));
  EXPECT_EQ(host.State(), u"c|c") << "no row begins with \"cd\"";
  EXPECT_TRUE(host.Input.Type(u"d"_qs, 1700));
  EXPECT_EQ(host.State(), u"d|d");
  EXPECT_FALSE(host.Input.Type(u"\x1b"_qs, 5000));
}
