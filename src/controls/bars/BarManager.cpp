#include "controls/bars/BarManager.h"

#include <QCursor>
#include <QMenuBar>
#include <QToolBar>

#include <algorithm>
#include <cstring>

#include "controls/picture/Picture.h"

TdxBarButton::TdxBarButton(QObject* parent) : QAction(parent) {
  connect(this, &QAction::triggered, this, [this] {
    if (OnClick) OnClick();
  });
}

void TdxBarButton::SetCaption(const QString& caption) {
  setText(caption);
  // A tool button would drop the "..." of a text that it derives by itself.
  setIconText(caption);
}

void TdxBarPopupMenu::PopupFromCursorPos() {
  popup(QCursor::pos());
}

namespace {

// Device-independent pixels, above the captions of a tool bar.
constexpr QSize kLargePicture(32, 32);

TdxBarButton* NewButton(const TBarItemRow& row, QObject* parent) {
  TdxBarButton* button =
      row.Kind == TBarItemKind::LargeButton ? new TdxBarLargeButton(parent) : new TdxBarButton(parent);
  button->SetCaption(QString::fromUtf8(row.Caption));
  button->SetEnabled(row.Enabled);
  if (row.Picture != nullptr)
    button->setIcon(TPicture::FromResource(QString::fromUtf8(row.Picture)).ToIcon());
  return button;
}

TdxBarSubItem* NewSubItem(const TBarItemRow& row, QWidget* parent) {
  auto* menu = new TdxBarSubItem(parent);
  menu->SetCaption(QString::fromUtf8(row.Caption));
  menu->setEnabled(row.Enabled);
  return menu;
}

QToolBar* NewToolBar(QWidget* parent) {
  auto* bar = new QToolBar(parent);
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  bar->setIconSize(kLargePicture);
  bar->setMovable(false);
  bar->setFloatable(false);
  // The form's own menu for hiding bars would leave the user without a way back.
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  return bar;
}

QWidget* NewBar(const TBarItemRow& row, QWidget* parent) {
  QWidget* bar = nullptr;
  if (row.Kind == TBarItemKind::MenuBar)
    bar = new QMenuBar(parent);
  else if (row.Kind == TBarItemKind::ToolBar)
    bar = NewToolBar(parent);
  else
    bar = new TdxBarPopupMenu(parent);
  bar->setAccessibleName(QString::fromUtf8(row.Caption));
  return bar;
}

// A bar is to be used without a mouse as well: Tab goes through its buttons.
// Tool buttons take no focus by themselves.
void LetTabReach(const QToolBar& bar, QAction* action) {
  bar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
}

void AddSeparator(QWidget& bar) {
  auto* separator = new QAction(&bar);
  separator->setSeparator(true);
  bar.addAction(separator);
}

}  // namespace

void TdxBarManager::Build(std::span<const TBarItemRow> items, std::span<const TBarLinkRow> links) {
  for (const TBarItemRow& row : items)
    FComponents.push_back(Make(row));
  for (const TBarLinkRow& link : links)
    Place(link);
}

QMenuBar& TdxBarManager::MenuBar(const QString& name) const {
  return Get<QMenuBar>(name);
}

QToolBar& TdxBarManager::ToolBar(const QString& name) const {
  return Get<QToolBar>(name);
}

QObject* TdxBarManager::Find(const QString& name) const {
  const auto found = std::find_if(FComponents.begin(), FComponents.end(),
                                  [&](const QObject* component) { return component->objectName() == name; });
  return found == FComponents.end() ? nullptr : *found;
}

void TdxBarManager::FailOn(const QString& name) {
  qFatal("No bar, menu or command fits the name \"%s\".", qPrintable(name));
}

QObject* TdxBarManager::Make(const TBarItemRow& row) {
  QObject* component = nullptr;
  if (row.Kind == TBarItemKind::Button || row.Kind == TBarItemKind::LargeButton)
    component = NewButton(row, &FForm);
  else if (row.Kind == TBarItemKind::SubItem)
    component = NewSubItem(row, &FForm);
  else
    component = NewBar(row, &FForm);
  component->setObjectName(QString::fromUtf8(row.Name));
  return component;
}

void TdxBarManager::Place(const TBarLinkRow& link) {
  auto& bar = Get<QWidget>(QString::fromUtf8(link.Bar));
  if (std::strcmp(link.Item, kBarSeparator) == 0 || std::strcmp(link.Item, kBarGroupBreak) == 0)
    return AddSeparator(bar);

  const QString name = QString::fromUtf8(link.Item);
  // What a bar shows of a sub-item is its menu's own action, which carries caption and enabled state along.
  if (auto* menu = dynamic_cast<TdxBarSubItem*>(Find(name))) return bar.addAction(menu->menuAction());
  TdxBarButton& button = Button(name);
  bar.addAction(&button);
  if (auto* toolBar = dynamic_cast<QToolBar*>(&bar)) LetTabReach(*toolBar, &button);
}
