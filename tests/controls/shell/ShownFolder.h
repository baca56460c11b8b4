// A shell list in a window over a real tree, and what can be asked of it.
#pragma once

#include "controls/shell/RzShellList.h"
#include "fixtures/TempTree.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <functional>

class TShownFolder {
 public:
  TShownFolder() {
    List.resize(600, 300);
    List.show();
    (void)QTest::qWaitForWindowExposed(&List);
  }

  [[nodiscard]] static bool WaitUntil(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 30'000);
  }

  [[nodiscard]] bool GoTo(const QString& path) {
    List.SetPath(path);
    return WaitUntil([this] { return List.State() != TRzShellList::TState::Filling; });
  }

  // The names of the rows, one blank between them.
  [[nodiscard]] QString Names() const {
    QStringList names;
    for (const TListItem* item : List.Items())
      names << item->Caption();
    return names.join(u' ');
  }
  [[nodiscard]] bool WaitForNames(const QString& names) {
    return WaitUntil([&] { return Names() == names; });
  }

  [[nodiscard]] TListItem* Row(const QString& name) const {
    for (TListItem* item : List.Items())
      if (item->Caption() == name) return item;
    return nullptr;
  }

  TTempTree Tree;
  TRzShellList List;
};
