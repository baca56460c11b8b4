// A page control without tabs on the screen: one of its pages is shown, the form says which. Main thread.
#pragma once

#include <QWidget>

#include <vector>

class TPageNote;

// One page, made with its page control, which then owns it and shows it at once. Fill it with controls and a
// layout as any widget. Deleting it takes it out of the control.
class TPageTab : public QWidget {
 public:
  explicit TPageTab(TPageNote& note);
  ~TPageTab() override;

  [[nodiscard]] const QString& TabName() const { return FTabName; }
  void SetTabName(const QString& name) { FTabName = name; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;

 private:
  TPageNote& FNote;
  QString FTabName;
};

class TPageNote : public QWidget {
 public:
  explicit TPageNote(QWidget* parent = nullptr);
  ~TPageNote() override;

  [[nodiscard]] int TabCount() const { return static_cast<int>(FPages.size()); }

  // The page shown, -1 without pages. Setting an index out of range, or the present one, does nothing.
  [[nodiscard]] int TabIndex() const { return FTabIndex; }
  void SetTabIndex(int index);

  // The same as a page; nullptr without pages. Setting a page of another control does nothing.
  [[nodiscard]] TPageTab* ActivePage() const;
  void SetActivePage(TPageTab& page) { SetTabIndex(IndexOf(page)); }

  // The page's place, -1 if it is none of this control.
  [[nodiscard]] int IndexOf(const TPageTab& page) const;

  // Whether the bare area of a page takes the mouse; else it passes to what lies under the page.
  [[nodiscard]] bool EditTabs() const { return FEditTabs; }
  void SetEditTabs(bool edit) { FEditTabs = edit; }

 private:
  friend class TPageTab;

  void Insert(TPageTab& page);
  void Remove(const TPageTab& page);
  void Apply(int index);

  std::vector<TPageTab*> FPages;
  int FTabIndex = -1;
  bool FEditTabs = false;
};
