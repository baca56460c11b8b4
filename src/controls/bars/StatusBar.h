// A status bar of panels in one row. Main thread.
#pragma once

#include <QStatusBar>

#include <memory>
#include <vector>

class QHBoxLayout;
class QLabel;

// One panel of a status bar, which owns it: a text, or a container of other controls. Its first width is
// what its content asks for.
class TdxStatusBarPanel {
 public:
  // A container keeps its text for whoever asks and shows nothing of it.
  [[nodiscard]] const QString& Text() const { return FText; }
  void SetText(const QString& text);

  [[nodiscard]] bool Visible() const { return FVisible; }
  void SetVisible(bool visible);

  // Device-independent pixels that the panel takes at least.
  [[nodiscard]] int Width() const;
  void SetWidth(int width);

  // Where a container's controls go, nullptr for a text panel.
  [[nodiscard]] QWidget* Container() const;

 private:
  friend class TdxStatusBar;

  explicit TdxStatusBarPanel(QLabel& label);
  explicit TdxStatusBarPanel(QWidget& container);

  QWidget* FWidget;
  QLabel* FLabel = nullptr;
  QString FText;
  bool FVisible = true;
};

// As high as its highest panel, shown or hidden, so that it does not jump when they change places.
class TdxStatusBar : public QStatusBar {
 public:
  explicit TdxStatusBar(QWidget* parent = nullptr);
  ~TdxStatusBar() override;

  // Panels follow each other from the left; a container takes the width that is left over.
  TdxStatusBarPanel& AddTextPanel(int width);
  TdxStatusBarPanel& AddContainerPanel();

  [[nodiscard]] int PanelCount() const { return static_cast<int>(FPanels.size()); }

  // The index must be good.
  [[nodiscard]] TdxStatusBarPanel& Panels(int index) const {
    return *FPanels[static_cast<std::size_t>(index)];
  }

 private:
  TdxStatusBarPanel& Add(TdxStatusBarPanel* panel, int stretch);

  // The status bar of the toolkit knows this one widget. Order, stretch and hidden panels within it are ours.
  QWidget* FRow;
  QHBoxLayout* FRowLayout;
  // They go before the widgets of the row and touch none of these as they go.
  std::vector<std::unique_ptr<TdxStatusBarPanel>> FPanels;
};
