// What assistive tools are told of image buttons: a button, a check box if it has one, and whether the panel
// beneath it is open.
#include <QAccessibleWidget>

#include "controls/buttons/CustomImageButton.h"

namespace {

class TAccessibleImageButton : public QAccessibleWidget {
 public:
  explicit TAccessibleImageButton(TCustomImageButton& button)
      : QAccessibleWidget(&button, QAccessible::Button), FButton(button) {}

  QAccessible::Role role() const override {
    return FButton.ShowCheckBox ? QAccessible::CheckBox : QAccessible::Button;
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    const TButtonLook& look = FButton.Look();
    state.checkable = look.ShowCheckBox;
    state.checked = look.ShowCheckBox && FButton.Checked();
    state.checkStateMixed = look.ShowCheckBox && look.CheckState == TButtonCheck::Grayed;
    state.pressed = FButton.State() == TImageButtonState::Down;
    state.expandable = FButton.FoldHeader();
    state.expanded = FButton.FoldHeader() && look.Expand;
    state.collapsed = FButton.FoldHeader() && !look.Expand;
    return state;
  }

  QString text(QAccessible::Text kind) const override {
    const QString told = QAccessibleWidget::text(kind);
    if (!told.isEmpty()) return told;
    const TButtonLook& look = FButton.Look();
    if (kind == QAccessible::Name) return look.Caption;
    if (kind == QAccessible::Description) return (look.SubCaption + u' ' + look.SubCaptionData).trimmed();
    return {};
  }

  QStringList actionNames() const override {
    QStringList names{pressAction()};
    if (FButton.ShowCheckBox) names.prepend(toggleAction());
    return names + QAccessibleWidget::actionNames();
  }

  // A handler may delete the button, and this object with it.
  void doAction(const QString& name) override {
    const bool toggles = name == toggleAction() && FButton.ShowCheckBox;
    if (!toggles && name != pressAction()) return QAccessibleWidget::doAction(name);
    if (!FButton.isEnabled()) return;
    toggles ? FButton.FlipCheck() : FButton.Click();
  }

  QStringList keyBindingsForAction(const QString& name) const override {
    if (name == toggleAction()) return {QKeySequence(Qt::Key_Space).toString(QKeySequence::NativeText)};
    if (name == pressAction()) return {QKeySequence(Qt::Key_Return).toString(QKeySequence::NativeText)};
    return QAccessibleWidget::keyBindingsForAction(name);
  }

 private:
  TCustomImageButton& FButton;
};

QAccessibleInterface* AccessibleOf(const QString&, QObject* object) {
  auto* const button = dynamic_cast<TCustomImageButton*>(object);
  return button == nullptr ? nullptr : new TAccessibleImageButton(*button);
}

}  // namespace

void TellAccessibilityOfImageButtons() {
  QAccessible::installFactory(AccessibleOf);
}
