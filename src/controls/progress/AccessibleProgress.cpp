#include "controls/progress/AccessibleProgress.h"

#include <QAccessibleWidget>

#include "controls/progress/PImageProgress.h"

namespace {

class TAccessibleProgress : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit TAccessibleProgress(TImageProgress& bar)
      : QAccessibleWidget(&bar, QAccessible::ProgressBar), FBar(bar) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QVariant currentValue() const override { return FBar.Position(); }
  QVariant maximumValue() const override { return FBar.Max(); }
  QVariant minimumValue() const override { return FBar.Min(); }
  QVariant minimumStepSize() const override { return 1; }
  void setCurrentValue(const QVariant&) override {}  // shows, takes no input

 private:
  TImageProgress& FBar;
};

QAccessibleInterface* NewInterface(const QString&, QObject* object) {
  auto* bar = dynamic_cast<TImageProgress*>(object);
  return bar == nullptr ? nullptr : new TAccessibleProgress(*bar);
}

}  // namespace

void TellAccessibilityOfProgressBars() {
  // Installing the same factory again does nothing.
  QAccessible::installFactory(NewInterface);
}
