// A bar as assistive tools see it: a widget with a value in a range. The base of what they are told of the
// scroll bar and the progress bar.
#pragma once

#include <QAccessibleWidget>

// TBar has Position, Min and Max. Takes no input unless a descendant lets it.
template <class TBar>
class TAccessibleValue : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  // A widget has no value for the service, so the cast has to name this interface.
  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QVariant currentValue() const override { return FBar.Position(); }
  QVariant maximumValue() const override { return FBar.Max(); }
  QVariant minimumValue() const override { return FBar.Min(); }
  QVariant minimumStepSize() const override { return 1; }
  void setCurrentValue(const QVariant&) override {}

 protected:
  TAccessibleValue(TBar& bar, QAccessible::Role role) : QAccessibleWidget(&bar, role), FBar(bar) {}

  // The service forgets the interface as the widget goes, so nobody asks it of a bar that is gone.
  TBar& FBar;
};

// From the first call on, every TBar is a TAccessible to assistive tools. Later calls do nothing.
// The service keeps a factory once, known by its address; each pair of types has one of its own.
template <class TBar, class TAccessible>
void TellAccessibilityOf() {
  const QAccessible::InterfaceFactory factory = [](const QString&, QObject* object) -> QAccessibleInterface* {
    auto* const bar = dynamic_cast<TBar*>(object);
    return bar == nullptr ? nullptr : new TAccessible(*bar);
  };
  QAccessible::installFactory(factory);
}
