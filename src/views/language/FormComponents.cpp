// From a form to its texts: AddComponentsBelow walks the objects in the order of their making, ComponentOf
// asks the table of classes for each, and the class's function adds the texts with their keys and the way to
// put another one. The language, the spoken names and the tests all begin with that list. It is made anew for
// each use: nothing of it outlives a change of the form.
// A control of a new class is a function and a row of kClasses, before the rows of the classes that it
// derives from. A language needs nothing here: its file has the section of the form (FormSection) with these
// keys.

#include "views/language/FormComponents.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>

#include "controls/bars/BarManager.h"
#include "controls/bars/StatusBar.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/buttons/RdImageButton.h"
#include "controls/fold/RdFoldPanel.h"
#include "controls/list/ListView.h"
#include "controls/list/rd/RdListView.h"
#include "controls/notes/Image.h"
#include "controls/notes/Labels.h"
#include "controls/shell/RzShellCombo.h"
#include "controls/shell/RzShellList.h"
#include "support/PLanguage.h"
#include "views/rows/ListHelpers.h"

namespace {

using TTexts = std::vector<TFormText>;

// The object as a T. Classes that derive from T here and yet stand in the table by themselves, or not at all,
// are named behind it.
template <class T, class... TOthers>
T* As(QObject& object) {
  if ((... || (dynamic_cast<TOthers*>(&object) != nullptr))) return nullptr;
  return dynamic_cast<T*>(&object);
}

template <class T>
QString CaptionOf(const T& component) {
  if constexpr (requires { component.Caption(); })
    return component.Caption();
  else if constexpr (requires { component.Caption.Get(); })
    return component.Caption.Get();
  else if constexpr (requires { component.title(); })
    return component.title();
  else
    return component.text();
}

template <class T>
void PutCaption(T& component, const QString& caption) {
  if constexpr (requires { component.SetCaption(caption); })
    component.SetCaption(caption);
  else if constexpr (requires { component.Caption.Get(); })
    component.Caption = caption;
  else if constexpr (requires { component.setTitle(caption); })
    component.setTitle(caption);
  else
    component.setText(caption);
}

// Each function of the table is asked for an object of any class. It gives false for one that is not of its
// class, and else adds the object's texts with the last parts of their keys.

template <class T, class... TOthers>
bool Caption(QObject& object, TTexts& texts) {
  T* component = As<T, TOthers...>(object);
  if (component != nullptr)
    texts.push_back({u".Caption"_qs, CaptionOf(*component),
                     [component](const QString& text) { PutCaption(*component, text); }});
  return component != nullptr;
}

template <class T, class... TOthers>
bool Columns(QObject& object, TTexts& texts) {
  T* list = As<T, TOthers...>(object);
  for (int i = 0; list != nullptr && i < list->Columns().Count(); ++i)
    texts.push_back({u".Columns[%1].Caption"_qs.arg(i), list->Columns()[i].Caption(),
                     [list, i](const QString& text) { list->Columns()[i].SetCaption(text); }});
  return list != nullptr;
}

const QString kItemKey = u".Items[%1].Caption"_qs;

bool LabelNote(QObject& object, TTexts& texts) {
  auto* note = dynamic_cast<TLabelNote*>(&object);
  for (int i = 0; note != nullptr && i < note->Items().Count(); ++i)
    texts.push_back({kItemKey.arg(i), note->Items()[i].Text, [note, i](const QString& text) {
                       note->Items()[i].Text = text;
                       if (note->TextIndex() == i) note->SetTextIndex(i);
                     }});
  return note != nullptr;
}

bool ImageNote(QObject& object, TTexts& texts) {
  auto* note = dynamic_cast<TImageNote*>(&object);
  if (note != nullptr && note->ShowHint())
    texts.push_back({u".Hint"_qs, note->Hint(), [note](const QString& text) { note->SetHint(text); }});
  return note != nullptr;
}

// A page of a tab control has its caption there.
bool TabSheet(QObject& object, TTexts& texts) {
  auto* page = As<QWidget, TdxDockPanel>(object);
  auto* tabs = page == nullptr || page->parent() == nullptr
                   ? nullptr
                   : qobject_cast<QTabWidget*>(page->parent()->parent());
  const int index = tabs == nullptr ? -1 : tabs->indexOf(page);
  if (index >= 0)
    texts.push_back({u".Caption"_qs, tabs->tabText(index),
                     [tabs, index](const QString& text) { tabs->setTabText(index, text); }});
  return index >= 0;
}

bool CheckListBox(QObject& object, TTexts& texts) {
  auto* list = dynamic_cast<QListWidget*>(&object);
  for (int i = 0; list != nullptr && i < list->count(); ++i)
    texts.push_back({kItemKey.arg(i), list->item(i)->text(),
                     [list, i](const QString& text) { list->item(i)->setText(text); }});
  return list != nullptr;
}

// Its header is a button of its own, without a name.
bool FoldPanel(QObject& object, TTexts& texts) {
  auto* panel = dynamic_cast<TRdFoldPanel*>(&object);
  if (panel != nullptr)
    texts.push_back({u".Caption"_qs, panel->ButtonCaption.Get(),
                     [panel](const QString& text) { panel->ButtonCaption = text; }});
  return panel != nullptr;
}

// A box without a selected entry stays so: the text of an entry is all that changes.
bool ComboBox(QObject& object, TTexts& texts) {
  auto* box = As<QComboBox, TRzShellCombo>(object);
  for (int i = 0; box != nullptr && i < box->count(); ++i)
    texts.push_back(
        {kItemKey.arg(i), box->itemText(i), [box, i](const QString& text) { box->setItemText(i, text); }});
  return box != nullptr;
}

bool StatusBar(QObject& object, TTexts& texts) {
  auto* bar = dynamic_cast<TdxStatusBar*>(&object);
  for (int i = 0; bar != nullptr && i < bar->PanelCount(); ++i)
    texts.push_back({u".Panels[%1].Text"_qs.arg(i), bar->Panels(i).Text(),
                     [bar, i](const QString& text) { bar->Panels(i).SetText(text); }});
  return bar != nullptr;
}

// The nodes are numbered from top to bottom as they would stand with all of them open.
bool TreeView(QObject& object, TTexts& texts) {
  auto* tree = dynamic_cast<QTreeWidget*>(&object);
  if (tree == nullptr) return false;
  int index = 0;
  for (QTreeWidgetItemIterator node(tree); *node != nullptr; ++node, ++index)
    texts.push_back({kItemKey.arg(index), (*node)->text(0),
                     [item = *node](const QString& text) { item->setText(0, text); }});
  return true;
}

struct TClassRow {
  const char* Class;
  bool (*Texts)(QObject& object, TTexts& texts);
};

// An object is of the first class that takes it. What no row takes has no texts: plain labels, which hold
// what the program puts there, and the shell controls, whose texts come with their folders.
constexpr TClassRow kClasses[] = {
    {"TLabelNote", &LabelNote},
    {"TImageNote", &ImageNote},
    {"TLabel", &Caption<TLabel>},
    {"TButton", &Caption<QPushButton>},
    {"TGroupBox", &Caption<QGroupBox>},
    {"TCheckBox", &Caption<QCheckBox>},
    {"TRadioButton", &Caption<QRadioButton>},
    {"TMenuItem", &Caption<QAction, TdxBarButton>},
    {"TToolButton", &Caption<QToolButton>},
    {"TTabSheet", &TabSheet},
    {"TCheckListBox", &CheckListBox},
    {"TRdImageButtonEx", &Caption<TRdImageButtonEx>},
    {"TRdFoldPanel", &FoldPanel},
    {"TRdImageButton", &Caption<TRdImageButton>},
    {"TdxBarSubItem", &Caption<TdxBarSubItem>},
    {"TdxBarButton", &Caption<TdxBarButton>},
    {"TdxDockPanel", &Caption<TdxDockPanel>},
    {"TdxTabContainerDockSite", &Caption<TdxTabContainerDockSite>},
    {"TdxStatusBar", &StatusBar},
    {"TComboBox", &ComboBox},
    {"TTreeView", &TreeView},
    {"TRdListView", &Columns<TRdListView>},
    {"TListView", &Columns<TListView, TRzShellList>},
};

bool IsForm(const QObject* object) {
  return qobject_cast<const QMainWindow*>(object) != nullptr ||
         qobject_cast<const QDialog*>(object) != nullptr;
}

TFormComponent ComponentOf(QObject& object) {
  TFormComponent component{&object, object.objectName(), "", {}};
  for (const TClassRow& row : kClasses) {
    if (!row.Texts(object, component.Texts)) continue;
    component.Class = row.Class;
    break;
  }
  for (TFormText& text : component.Texts)
    text.Key.prepend(component.Name);
  return component;
}

void AddComponentsBelow(const QObject& parent, std::vector<TFormComponent>& components) {
  for (QObject* child : parent.children()) {
    // Unnamed objects are passed by, but not what stands in them: layouts of the toolkit put nameless widgets
    // between.
    if (IsForm(child) || qobject_cast<QTabBar*>(child) != nullptr) continue;  // a tab bar names its arrows
    const QString name = child->objectName();
    if (!name.isEmpty() && !name.startsWith(u"qt_"_qs)) components.push_back(ComponentOf(*child));
    AddComponentsBelow(*child, components);
  }
}

QWidget* FindWidget(const QObject& form, const char* name) {
  return form.findChild<QWidget*>(QLatin1String(name));
}

// A caption without what stands for its key: "&File" and "File(&F)" are both spoken "File".
QString Spoken(QString caption) {
  const auto key = caption.indexOf(u"(&"_qs);
  if (key >= 0) caption.truncate(key);
  return caption.remove(u'&').trimmed();
}

QString WordsOf(const std::vector<TFormComponent>& components, const QString& source) {
  for (const TFormComponent& component : components) {
    if (component.Name != source) continue;
    if (!component.Texts.empty()) return Spoken(component.Texts.front().Text);
    if (const auto* label = qobject_cast<const QLabel*>(component.Object)) return Spoken(label->text());
  }
  return {};
}

}  // namespace

std::vector<TFormComponent> FormComponents(const QObject& form) {
  std::vector<TFormComponent> components;
  AddComponentsBelow(form, components);
  return components;
}

QString FormSection(const TLanguage& language, const QObject& form) {
  return form.objectName().isEmpty() ? QString() : language.AppName() + u'_' + form.objectName();
}

void ApplyToForm(const TLanguage& language, QObject& form) {
  const QString section = FormSection(language, form);
  if (section.isEmpty()) return;
  try {
    for (const TFormComponent& component : FormComponents(form))
      for (const TFormText& text : component.Texts)
        text.Put(language.ReadText(section, text.Key, text.Text));
  } catch (...) {
    // What has its text keeps it, the rest stays English.
  }
}

void ApplyToAllForms(const TLanguage& language) {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (IsForm(window)) ApplyToForm(language, *window);
}

void ApplyToLabels(const TLanguage& language, QObject& form, std::initializer_list<const char*> labels) {
  for (const char* name : labels) {
    const QString text =
        language.ReadText(FormSection(language, form), QLatin1String(name) + u".Caption"_qs, QString());
    auto* label = qobject_cast<QLabel*>(FindWidget(form, name));
    if (label != nullptr && !text.isEmpty()) label->setText(text);
  }
}

void ApplySpokenNames(const TLanguage& language, QObject& form, std::span<const TSpokenRow> rows) {
  const std::vector<TFormComponent> components = FormComponents(form);
  for (const TSpokenRow& row : rows) {
    const QString source = QLatin1String(row.Source);
    const QString name = source.startsWith(u"M_"_qs)
                             ? language.GetMessage(source, QString::fromUtf8(row.Default))
                             : WordsOf(components, source);
    QWidget* component = FindWidget(form, row.Component);
    if (component == nullptr) continue;
    component->setAccessibleName(name);
    // The focus of an editable box is in its line.
    const auto* box = qobject_cast<QComboBox*>(component);
    if (box != nullptr && box->lineEdit() != nullptr) box->lineEdit()->setAccessibleName(name);
  }
}

void HoldFormCaptions(QObject& form, int room) {
  for (const TFormComponent& component : FormComponents(form))
    if (auto* list = dynamic_cast<TCustomListView*>(component.Object)) HoldCaptions(*list, room);
}
