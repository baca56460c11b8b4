#include "controls/scroll/AccessibleScrollBar.h"

#include <algorithm>

#include "controls/AccessibleValue.h"
#include "controls/scroll/RdScrollBar.h"

namespace {

class TAccessibleScrollBar : public TAccessibleValue<TRdScrollBar> {
 public:
  explicit TAccessibleScrollBar(TRdScrollBar& bar) : TAccessibleValue(bar, QAccessible::ScrollBar) {}

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
};

}  // namespace

void TellAccessibilityOfScrollBars() {
  TellAccessibilityOf<TRdScrollBar, TAccessibleScrollBar>();
}
