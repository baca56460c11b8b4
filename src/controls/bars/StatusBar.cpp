#include "controls/bars/StatusBar.h"

#include <QHBoxLayout>
#include <QLabel>

#include <algorithm>

namespace {

// Device-independent pixels from the left edge of a panel to its text.
constexpr int kTextIndent = 6;

// The row that holds the panels, with room in its height for the hidden ones too.
class TPanelRow : public QWidget {
 public:
  using QWidget::QWidget;

  QSize sizeHint() const override { return ForAllPanels(QWidget::sizeHint()); }
  QSize minimumSizeHint() const override { return ForAllPanels(QWidget::minimumSizeHint()); }

 private:
  QSize ForAllPanels(QSize size) const {
    for (const QWidget* panel : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
      size.setHeight(std::max(size.height(), panel->sizeHint().height()));
    return size;
  }
};

}  // namespace

TdxStatusBarPanel::TdxStatusBarPanel(QLabel& label) : FWidget(&label), FLabel(&label) {}

TdxStatusBarPanel::TdxStatusBarPanel(QWidget& container) : FWidget(&container) {}

void TdxStatusBarPanel::SetText(const QString& text) {
  FText = text;
  if (FLabel != nullptr) FLabel->setText(text);
}

void TdxStatusBarPanel::SetVisible(bool visible) {
  FVisible = visible;
  FWidget->setVisible(visible);
}

int TdxStatusBarPanel::Width() const {
  return FWidget->minimumWidth();
}

void TdxStatusBarPanel::SetWidth(int width) {
  FWidget->setMinimumWidth(width);
}

QWidget* TdxStatusBarPanel::Container() const {
  return FLabel == nullptr ? FWidget : nullptr;
}

TdxStatusBar::TdxStatusBar(QWidget* parent)
    : QStatusBar(parent), FRow(new TPanelRow(this)), FRowLayout(new QHBoxLayout(FRow)) {
  FRowLayout->setContentsMargins(0, 0, 0, 0);
  addWidget(FRow, 1);
}

TdxStatusBar::~TdxStatusBar() = default;

TdxStatusBarPanel& TdxStatusBar::AddTextPanel(int width) {
  auto* label = new QLabel(FRow);
  label->setTextFormat(Qt::PlainText);
  label->setIndent(kTextIndent);
  label->setMinimumWidth(width);
  return Add(new TdxStatusBarPanel(*label), 0);
}

// The only panels that stretch: texts keep their width as the window grows.
TdxStatusBarPanel& TdxStatusBar::AddContainerPanel() {
  return Add(new TdxStatusBarPanel(*new QWidget(FRow)), 1);
}

TdxStatusBarPanel& TdxStatusBar::Add(TdxStatusBarPanel* panel, int stretch) {
  FPanels.emplace_back(panel);
  FRowLayout->addWidget(panel->FWidget, stretch);
  return *panel;
}
