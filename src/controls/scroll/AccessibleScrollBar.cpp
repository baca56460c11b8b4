#include "controls/scroll/AccessibleScrollBar.h"

#include <QAccessibleWidget>

#include <algorithm>

#include "controls/scroll/RdScrollBar.h"

namespace {

class TAccessibleScrollBar : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit TAccessibleScrollBar(TRdScrollBar& bar)
      : QAccessibleWidget(&bar, QAccessible::ScrollBar), FBar(bar) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QVariant currentValue() const override { return FBar.Position(); }
  QVariant maximumValue() const override { return FBar.Max(); }
  QVariant minimumValue() const override { return FBar.Min(); }
  QVariant minimumStepSize() const override { return FBar.SmallChange(); }

  void setCurrentValue(const QVariant& value) override {
    if (!FBar.isEnabled()) return;
    const int target = std::clamp(value.toInt(), FBar.Min(), FBar.Max());
    const bool up = target < FBar.Position();
    FBar.ScrollBy(up ? -1 : 1, up ? FBar.Position() - target : target - FBar.Position());
  }

  QStringList actionNames() const override {
    return QStringList{increaseAction(), decreaseAction()} + QAccessibleWidget::actionNames();
  }

  void doAction(const QString& name) override {
    const bool increase = name == increaseAction();
    if (!increase && name != decreaseAction()) return QAccessibleWidget::doAction(name);
    if (FBar.isEnabled()) FBar.ScrollBy(increase ? 1 : -1, FBar.SmallChange());
  }

 private:
  TRdScrollBar& FBar;
};

QAccessibleInterface* NewInterface(const QString&, QObject* object) {
  auto* bar = dynamic_cast<TRdScrollBar*>(object);
  return bar == nullptr ? nullptr : new TAccessibleScrollBar(*bar);
}

}  // namespace

void TellAccessibilityOfScrollBars() {
  // Installing the same factory again does nothing.
  QAccessible::installFactory(NewInterface);
}
