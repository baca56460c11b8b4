// The Contents tab of the real form, over the small tree and whatever a test puts into it.
#pragma once

#include "FormsFixture.h"
#include "controls/shell/RzShellCombo.h"
#include "controls/shell/RzShellList.h"

class TContentsTest : public TFormsTest {
 protected:
  // The tab is active and shows the computer level.
  void Enter() {
    Open();
    FForm->show();
    Join();
    FForm->activateWindow();
    ActivateTab(kContentsTab);
    ASSERT_TRUE(WaitForFill());
  }

  [[nodiscard]] TRzShellList& Shown() {
    return *dynamic_cast<TRzShellList*>(FForm->findChild<QWidget*>(u"ShellListContent"_qs));
  }
  [[nodiscard]] TRzShellCombo& Combo() {
    return *dynamic_cast<TRzShellCombo*>(FForm->findChild<QWidget*>(u"RzShellCombo1"_qs));
  }
  [[nodiscard]] bool WaitForFill() {
    return WaitFor([this] { return Shown().State() != TRzShellList::TState::Filling; });
  }
  // Goes to a folder of the tree by the combo, as a user does.
  [[nodiscard]] bool Pick(const QByteArray& folder) {
    return Type(folder.isEmpty() ? FTree.Path() : FTree.Path(folder));
  }
  [[nodiscard]] bool Type(const QString& path) {
    Combo().setEditText(path);
    QTest::keyClick(&Combo(), Qt::Key_Return);
    return WaitFor([&] { return Shown().Path() == path; }) && WaitForFill();
  }
  // Into a folder of the list, as a double click or Enter does.
  [[nodiscard]] bool EnterRow(const char* name) {
    Select(name);
    QTest::keyClick(&Shown(), Qt::Key_Return);
    return WaitForFill();
  }
  [[nodiscard]] bool Press(const char* command) {
    Command(command).Click();
    return WaitForFill();
  }

  [[nodiscard]] TListItem* Row(const QString& name) {
    for (TListItem* item : Shown().Items())
      if (item->Caption() == name) return item;
    return nullptr;
  }
  void Select(const char* name) { Shown().SetSelected(Row(QLatin1String(name))); }
  [[nodiscard]] QString Cell(const char* name, int subItem) {
    return Row(QLatin1String(name))->SubItems().Text(subItem);
  }
  [[nodiscard]] bool WaitForSizes() {
    return WaitFor([this] {
      for (const TListItem* item : Shown().Items())
        if (item->SubItems().Text(0) == u"..."_qs) return false;
      return true;
    });
  }
  [[nodiscard]] QString Names() {
    QStringList names;
    for (const TListItem* item : Shown().Items())
      names << item->Caption();
    return names.join(u' ');
  }

  // The folder shown as the tests call it: what stands behind the tree's own path, "computer" for none.
  [[nodiscard]] QString Here() {
    const QString path = Shown().Path();
    if (path.isEmpty()) return u"computer"_qs;
    return path.startsWith(FTree.Path()) ? u"tree"_qs + path.mid(FTree.Path().size()) : path;
  }

  // Which of Back, Forward and Up are on.
  [[nodiscard]] QString Ways() {
    return QString(Enabled("lbtnBack") ? u'B' : u'-') + (Enabled("lbtnForward") ? u'F' : u'-') +
           (Enabled("lbtnUp") ? u'U' : u'-');
  }
};
