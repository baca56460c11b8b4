// The language on the forms: every text has its key, every language has every text, and none is cut.
#include "FormsFixture.h"
#include "controls/buttons/RdImageButton.h"
#include "controls/fold/RdFoldPanel.h"
#include "controls/list/rd/RdListView.h"
#include "controls/notes/Image.h"
#include "controls/notes/Labels.h"
#include "controls/shell/RzShellList.h"
#include "views/language/FormComponents.h"

namespace {

const QString kLanguageFolder = SourceFile(u"data/Toolbox_Language"_qs);

// What the forms say without any language file where that is not what the English one says.
const std::pair<const char*, const char*> kStored[] = {
    {"dxTabContainerDockSite1.Caption", ""},
    {"mniTDel.Caption", "New Separator"},
    {"dxbrbtnDownloadFilesDelete.Caption", "New Separator"},
    {"lvTopFile.Columns[0].Caption", "      Name"},
    {"lvDownloadsFile.Columns[0].Caption", "           Name"}};
const char* const kLabels[] = {"lblStcSize",          "lblStcFiles", "lblstcUsed", "lblStcFolders",
                               "lbl_Warning_Content", "lblWait",     "lblSelLoc"};

// Gives the text of a key of either form.
std::function<QString(const QString& key)> ReaderOf(const char* name) {
  const auto language = std::make_shared<TLanguage>(u"Tallyscope"_qs, kLanguageFolder);
  language->LoadLanguage(QLatin1String(name));
  return [language](const QString& key) {
    const QString text = language->ReadText(u"Tallyscope_FormWizard"_qs, key, u"no text"_qs);
    return language->ReadText(u"Tallyscope_FormMain"_qs, key, text);
  };
}

// Whether the widget has no room for some text of its own.
bool Cuts(QWidget& widget) {
  if (auto* list = dynamic_cast<TCustomListView*>(&widget)) {
    for (int i = 0; i < list->Columns().Count(); ++i)
      if (list->Columns()[i].Width() <
          list->fontMetrics().horizontalAdvance(list->Columns()[i].Caption()) + 10)
        return true;
    return list->horizontalScrollBar()->maximum() > 0;
  }
  if (auto* bar = qobject_cast<QToolBar*>(&widget)) {
    for (QAction* action : bar->actions())
      if (const QWidget* part = bar->widgetForAction(action);
          !part->isVisible() || !bar->rect().contains(part->geometry()))
        return true;
  }
  if (auto* tabs = qobject_cast<QTabBar*>(&widget))
    return tabs->tabRect(tabs->count() - 1).right() > tabs->width();
  if (auto* label = qobject_cast<QLabel*>(&widget); label != nullptr && label->wordWrap())
    return label->heightForWidth(label->width()) > label->height();
  const bool tells =
      qobject_cast<QLabel*>(&widget) != nullptr || qobject_cast<QAbstractButton*>(&widget) != nullptr;
  return tells && widget.sizeHint().width() > widget.width();
}

std::map<QString, QString> TextsOf(const QObject& form) {
  std::map<QString, QString> texts;
  for (const TFormComponent& component : FormComponents(form))
    for (const TFormText& text : component.Texts)
      EXPECT_TRUE(texts.emplace(text.Key, text.Text).second) << qPrintable(text.Key);
  texts.erase(u"dxstsbr1.Panels[1].Text"_qs);  // the panel with the subject shows no text of its own
  return texts;
}

class FormLanguage : public TFormsTest {
 protected:
  // Both forms as the program shows them to a user of this language, without their message loop.
  void OpenIn(const QByteArray& name, const QString& folder) {
    FUser.Home.WriteFile(TTestUser::AppData + "/Korvel/Hearthline V7/Main.ini", "[Main]\nLanguage=" + name);
    Open({}, folder);
    FForm->SetScanForm(*FWizard);
    FForm->show();
    FForm->hide();
    ShowWizard();
  }

  [[nodiscard]] std::map<QString, QString> Texts() {
    std::map<QString, QString> texts = TextsOf(*FForm);
    texts.merge(TextsOf(*FWizard));
    return texts;
  }

  // Every visible widget of every page and tab of both forms in turn.
  template <typename TLook>
  void OnEveryWidget(const TLook& look) {
    const auto lookAt = [&](QWidget& form) {
      QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
      for (QWidget* widget : form.findChildren<QWidget*>())
        if (widget->isVisible() && dynamic_cast<TEllipsisLabel*>(widget) == nullptr) look(*widget);
    };
    for (int page = 0; page < 2; ++page) {
      FWizard->findChild<TPageNote*>(u"pgntScan"_qs)->SetTabIndex(page);
      lookAt(*FWizard);
    }
    for (int tab = 0; tab < kTabCount; ++tab) {
      ActivateTab(tab);
      lookAt(*FForm);
    }
  }

  // English with four tenths more of each text behind it.
  [[nodiscard]] QString MakeLongerLanguage() {
    QFile file(kLanguageFolder + u"/English.lng"_qs);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (QString& line : lines) {
      const QString text = line.section(u'=', 1).trimmed();
      if (!text.isEmpty()) line += u' ' + text.left(text.size() * 2 / 5).replace(u'%', u'&');
    }
    FTree.WriteFile("Longer/Longer.lng", lines.join(u'\n').toUtf8());
    return FTree.Path("Longer");
  }

  TTestUser FUser;
};

class EachLanguage : public FormLanguage, public testing::WithParamInterface<const char*> {};

}  // namespace

TEST_F(FormLanguage, WithoutFilesTheFormsSayWhatTheyStore) {
  OpenIn("German", FTree.Path("empty"));
  const auto english = ReaderOf("English");
  std::map<QString, QString> stored;
  for (const auto& [key, text] : Texts())
    stored[key] = english(key);
  EXPECT_EQ(stored.size(), 84U);
  for (const auto& [key, text] : kStored)
    stored[QLatin1String(key)] = QLatin1String(text);
  EXPECT_EQ(Texts(), stored);
}

TEST_P(EachLanguage, HasAndShowsEveryText) {
  OpenIn(GetParam(), kLanguageFolder);
  const auto read = ReaderOf(GetParam());
  const auto room = [](const QString& key) {
    return key.contains(u"File.Columns[0]"_qs) ? u"      "_qs : QString();
  };
  for (const auto& [key, text] : Texts())
    EXPECT_EQ(text, room(key) + read(key)) << qPrintable(key);
  for (const char* name : kLabels)
    EXPECT_EQ(
        Label(name) == u"hidden"_qs ? FForm->findChild<QLabel*>(QLatin1String(name))->text() : Label(name),
        read(QLatin1String(name) + u".Caption"_qs));
  EXPECT_EQ(List("lvTopFile").accessibleName(), read(u"DockPnlFile.Caption"_qs));
  OnEveryWidget([](QWidget& widget) {
    if (widget.focusPolicy() == Qt::NoFocus) return;
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name).isEmpty())
        << qPrintable(widget.objectName()) << widget.metaObject()->className();
  });
}

TEST_P(EachLanguage, CutsNoText) {
  OpenIn(GetParam(), GetParam() == std::string("Longer") ? MakeLongerLanguage() : kLanguageFolder);
  OnEveryWidget([](QWidget& widget) {
    EXPECT_FALSE(Cuts(widget)) << qPrintable(widget.objectName()) << widget.metaObject()->className();
  });
}

INSTANTIATE_TEST_SUITE_P(Forms, EachLanguage,
                         testing::Values("English", "German", "French", "Spanish", "Japanese",
                                         "Chinese Simplified", "Longer"),
                         [](const auto& name) {
                           return QString::fromUtf8(name.param).remove(u' ').toStdString();
                         });

TEST_F(FormLanguage, TheWalkKnowsTheClassesOfEveryForm) {
  QDialog form;
  const auto add = [&form](const char* name, auto* component) {
    component->setParent(&form);
    component->setObjectName(QLatin1String(name));
    return component;
  };
  add("Button", new TRdImageButton);
  add("ButtonEx", new TRdImageButtonEx);
  add("Fold", new TRdFoldPanel);
  add("Label", new TLabel);
  add("Group", new QGroupBox);
  add("Tool", new QToolButton);
  add("Plain", new QLabel(u"plain"_qs));
  add("Shell", new TRzShellList);
  add("Choices", new QListWidget)->addItem(u"choice"_qs);
  auto* note = add("Note", new TLabelNote);
  note->Items().Add().Text = u"old"_qs;
  note->SetTextIndex(0);
  auto* image = add("Image", new TImageNote);
  auto* box = add("Box", new QComboBox);
  box->addItems({u"one"_qs, u"two"_qs});
  box->setCurrentIndex(1);
  auto* tree = add("Tree", new QTreeWidget);
  (new QTreeWidgetItem(new QTreeWidgetItem(tree)))->setText(0, u"child"_qs);
  auto* item = add("Item", new QAction);
  FTree.WriteFile(
      "L/L.lng",
      "[T_F]\nNote.Items[0].Caption=n\nImage.Hint=h\nBox.Items[1].Caption=b\nTree.Items[1].Caption=t\n"
      "Choices.Items[0].Caption=c\nItem.Caption=i\nShell.Columns[0].Caption=s\nLabel.Caption=l\n"
      "Button.Caption=u\nButtonEx.Caption=e\nFold.Caption=f\n"
      "Group.Caption=g\nTool.Caption=\nPlain.Caption=p\n[T_]\nLabel.Caption=x\n");
  TLanguage language(u"T"_qs, FTree.Path("L"));
  language.LoadLanguage(u"L"_qs);
  ApplyToForm(language, form);
  EXPECT_EQ(TextsOf(form)[u"Label.Caption"_qs], QString()) << "a form without a name";

  form.setObjectName(u"F"_qs);
  ApplyToForm(language, form);
  QString told;
  for (const auto& [key, text] : TextsOf(form))
    told += QString(key).remove(u".Caption"_qs) + u'=' + text + u' ';
  EXPECT_EQ(
      told,
      u"Box.Items[0]=one Box.Items[1]=b Button=u ButtonEx=e Choices.Items[0]=c Fold=f Group=g Item=i Label=l Note.Items[0]=n Tool= Tree.Items[0]= Tree.Items[1]=t "_qs);
  EXPECT_EQ(note->text() + box->currentText(), u"nb"_qs);
  image->SetShowHint(true);
  QObject::connect(item, &QAction::changed, [] { throw std::runtime_error("in the walk"); });
  item->blockSignals(true);
  item->setText(u"old"_qs);
  item->blockSignals(false);
  EXPECT_NO_THROW(ApplyToForm(language, form));
  EXPECT_EQ(image->toolTip(), u"h"_qs);
}
