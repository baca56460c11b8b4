// The rows of a folder's content as the file commands see them. Main thread.
#pragma once

#include <functional>

#include "views/files/FileRows.h"

class TRzShellList;

// What is acted on lies in the folder that was shown when its rows were listed, held open since. Rows of the
// computer level lie in none: nothing deletes or moves them.
class TShellFileRows : public TFileRows {
 public:
  // The list outlives this.
  explicit TShellFileRows(TRzShellList& list) : FList(list) {}

  // Writes the program's cells of all rows anew.
  std::function<void()> OnRefill;

  [[nodiscard]] int Count() const override;
  [[nodiscard]] int Selected() const override;
  [[nodiscard]] bool Checked(int row) const override;
  [[nodiscard]] TFileRow Row(int row) const override;
  [[nodiscard]] TOpenFolder OpenParent(int row) const override;
  void Remove(int row) override;
  void SetLocation(int, const QString&) override {}  // a moved row goes when the list follows the disk
  void Refill() override;

 private:
  TRzShellList& FList;
};
