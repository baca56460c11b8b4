// The language on both forms: every text has its key, every language has every text, and none is cut.
#include <QAccessible>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QMenuBar>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>

#include <map>

#include "FormsFixture.h"
#include "controls/bars/StatusBar.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/notes/EllipsisLabel.h"
#include "controls/notes/PPageNote.h"
#include "fixtures/TestUser.h"
#include "views/language/FormComponents.h"

namespace {

QString LanguageFolder() {
  return qEnvironmentVariable("TALLYSCOPE_SOURCE_DIR") + u"/data/Toolbox_Language"_qs;
}

const char* const kLabels[] = {"lblStcSize",          "lblStcFiles", "lblstcUsed", "lblStcFolders",
                               "lbl_Warning_Content", "lblWait",     "lblSelLoc"};

// What the forms say without any language file.
const struct {
  const char* Text;
  const char* Keys;
} kStored[] = {
    {"", "dxTabContainerDockSite1.Caption CheckBox_All.Caption CheckBox_Downloads.Caption"},
    {"Overview", "DockPnlOverview.Caption"},
    {"Contents", "DockPnlcontent.Caption"},
    {"Top 100 Files", "DockPnlFile.Caption"},
    {"Download Directory", "dxDockPnlDownloads.Caption"},
    {"File(&F)", "SubItemFile.Caption"},
    {"Edit(&E)", "SubItemEdit.Caption"},
    {"Help(&H)", "SubItemHelp.Caption"},
    {"Analyze", "btnScan.Caption lbtnAnalyze.Caption btnAnalyze.Caption"},
    {"Exit", "btnExit.Caption"},
    {"Homepage", "btnHome.Caption"},
    {"Help", "btnHelp.Caption"},
    {"About", "btnAbout.Caption"},
    {"Select All",
     "btnSelAll.Caption mniCSelectAll.Caption mniTSelAll.Caption "
     "dxDownloadFilesSelectAll.Caption"},
    {"Deselect All",
     "btnDeSelAll.Caption mniCDeselAll.Caption mniTDeselAll.Caption "
     "dxDownloadFilesDeselectAll.Caption"},
    {"Invert Selection",
     "btnInverSel.Caption mniCInvSelAll.Caption mniTInvSel.Caption "
     "dxDownloadFilesInvertSelection.Caption"},
    {"Open File Folder",
     "btnOFF.Caption mniCOFF.Caption mniTOFF.Caption mniLOFF.Caption "
     "dxDownloadFileOpenFolder.Caption"},
    {"Properties",
     "btnPPT.Caption mniCPPT.Caption mniTPPT.Caption mniLPPT.Caption lbtnProperty.Caption "
     "dxDownloadFilesPro.Caption"},
    {"Back", "lbtnBack.Caption"},
    {"Forward", "lbtnForward.Caption"},
    {"Up", "lbtnUp.Caption"},
    {"Move...",
     "btnMove.Caption mniCMove.Caption mniTMove.Caption lbtnMove.Caption "
     "dxbrbtnDownloadFilesMove.Caption"},
    {"Open",
     "btnOpen.Caption mniCOpen.Caption mniTOpen.Caption mniLOpen.Caption lbtnOpen.Caption "
     "dxbrbtnDownloadFilesOpen.Caption"},
    {"Delete", "btnDelete.Caption mniCDelete.Caption lbtnDelete.Caption"},
    {"New Separator", "mniTDel.Caption dxbrbtnDownloadFilesDelete.Caption"},
    {"Name", "lvTop.Columns[0].Caption lvOverview.Columns[0].Caption lvDrive.Columns[0].Caption"},
    {"      Name", "lvTopFile.Columns[0].Caption"},
    {"           Name", "lvDownloadsFile.Columns[0].Caption"},
    {"Location", "lvTop.Columns[1].Caption lvTopFile.Columns[1].Caption lvDownloadsFile.Columns[1].Caption"},
    {"Size", "lvTop.Columns[2].Caption lvTopFile.Columns[2].Caption lvDownloadsFile.Columns[2].Caption"},
    {"Type", "lvTop.Columns[3].Caption lvTopFile.Columns[3].Caption lvDownloadsFile.Columns[3].Caption"},
    {"Capacity", "lvOverview.Columns[1].Caption lvDrive.Columns[1].Caption"},
    {"Free Space", "lvOverview.Columns[2].Caption lvDrive.Columns[2].Caption"},
    {"My Computer", "dxstsbr1.Panels[0].Text"},
    {"Scan Drives", "rbScanDrive.Caption"},
    {"Scan Folder", "rbScanFolder.Caption"},
    {"Browse...", "Button_Browse.Caption"},
    {"Close", "btnClose.Caption"},
    {"Analysis Path", "lvAnalyze.Columns[0].Caption"},
    {"Status", "lvAnalyze.Columns[1].Caption"},
};

// Why the widget does not show all of its text; empty if it does.
QString CutOf(QWidget& widget) {
  const auto inside = [&](const QWidget& part) {
    return part.isVisible() && widget.rect().contains(part.geometry());
  };
  if (auto* list = dynamic_cast<TCustomListView*>(&widget)) {
    for (int i = 0; i < list->Columns().Count(); ++i)
      if (list->Columns()[i].Width() <
          list->fontMetrics().horizontalAdvance(list->Columns()[i].Caption()) + 10)
        return list->Columns()[i].Caption();
    return list->horizontalScrollBar()->maximum() > 0 ? u"the columns of "_qs + list->objectName()
                                                      : QString();
  }
  if (auto* bar = qobject_cast<QToolBar*>(&widget)) {
    for (QAction* action : bar->actions())
      if (!inside(*bar->widgetForAction(action))) return action->text() + u" on the tool bar"_qs;
  } else if (auto* tabs = qobject_cast<QTabBar*>(&widget)) {
    if (tabs->tabRect(tabs->count() - 1).right() > tabs->width()) return u"the tabs"_qs;
  } else if (auto* label = qobject_cast<QLabel*>(&widget)) {
    const bool cut = label->wordWrap() ? label->heightForWidth(label->width()) > label->height()
                                       : label->sizeHint().width() > label->width();
    if (cut) return label->text();
  } else if (auto* button = qobject_cast<QAbstractButton*>(&widget)) {
    if (!button->text().isEmpty() && button->sizeHint().width() > button->width()) return button->text();
  }
  return {};
}

}  // namespace

class FormLanguage : public TFormsTest {
 protected:
  // Both forms as the program shows them to a user of this language, without their message loop.
  void OpenIn(const QString& name, const QString& folder) {
    FUser.Home.WriteFile(TTestUser::AppData + "/Korvel/Hearthline V7/Main.ini",
                         "[Main]\nLanguage=" + name.toUtf8());
    const TStartParameters start({});
    FForm = std::make_unique<TFormMain>(start, FDialogs, folder);
    FWizard = std::make_unique<TFormWizard>(*FForm, FForm->StaticImages(), start);
    FForm->SetScanForm(*FWizard);
    FForm->show();
    FWizard->show();
  }

  [[nodiscard]] std::map<QString, QString> Texts() {
    std::map<QString, QString> texts;
    for (const QObject* form : {static_cast<QObject*>(FForm.get()), static_cast<QObject*>(FWizard.get())})
      for (const TFormComponent& component : FormComponents(*form))
        for (const TFormText& text : component.Texts)
          EXPECT_TRUE(texts.emplace(text.Key, text.Text).second) << qPrintable(text.Key);
    texts.erase(u"dxstsbr1.Panels[1].Text"_qs);  // the panel with the subject shows no text of its own
    return texts;
  }

  // Every page and tab of both forms in turn.
  template <typename TLook>
  void OnEveryPage(const TLook& look) {
    auto& note = *FWizard->findChild<TPageNote*>(u"pgntScan"_qs);
    for (int page = 0; page < note.TabCount(); ++page) {
      note.SetTabIndex(page);
      look(*FWizard);
    }
    auto& tabs = *FForm->findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs);
    for (int tab = 0; tab < tabs.ChildCount(); ++tab) {
      tabs.SetActiveChildIndex(tab);
      look(*FForm);
    }
  }

  // English with four tenths more of each text behind it.
  [[nodiscard]] QString MakeLongerLanguage() {
    QFile file(LanguageFolder() + u"/English.lng"_qs);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (QString& line : lines) {
      const QString text = line.section(u'=', 1).trimmed();
      if (!line.startsWith(u';') && !text.isEmpty())
        line += u' ' + text.left((text.size() * 2 + 4) / 5 - 1).replace(u'%', u'&');
    }
    FTree.WriteFile("Longer/Longer.lng", lines.join(u'\n').toUtf8());
    return FTree.Path("Longer");
  }

  TTestUser FUser;
};

TEST_F(FormLanguage, WithoutFilesTheFormsSayWhatTheyStore) {
  OpenIn(u"German"_qs, FTree.Path("empty"));
  std::map<QString, QString> texts = Texts();
  for (const auto& row : kStored)
    for (const QString& key : QString::fromUtf8(row.Keys).split(u' ')) {
      EXPECT_EQ(texts.count(key), 1U) << "no component has " << qPrintable(key);
      EXPECT_EQ(texts[key], QString::fromUtf8(row.Text)) << qPrintable(key);
      texts.erase(key);
    }
  for (const auto& [key, text] : texts)
    ADD_FAILURE() << "a text that the table lacks: " << qPrintable(key);
}

class EachLanguage : public FormLanguage, public testing::WithParamInterface<const char*> {};

TEST_P(EachLanguage, HasAndShowsEveryTextOfTheForms) {
  OpenIn(QString::fromUtf8(GetParam()), LanguageFolder());
  TLanguage language(u"Tallyscope"_qs, LanguageFolder());
  language.LoadLanguage(QString::fromUtf8(GetParam()));
  const auto read = [&](const QString& key) {
    const QString missing = u"has no text"_qs;
    const QString text = language.ReadText(u"Tallyscope_FormMain"_qs, key, missing);
    return text == missing ? language.ReadText(u"Tallyscope_FormWizard"_qs, key, missing) : text;
  };
  for (const auto& [key, text] : Texts())
    EXPECT_EQ(key == u"lvTopFile.Columns[0].Caption"_qs || key == u"lvDownloadsFile.Columns[0].Caption"_qs
                  ? u"      "_qs + read(key)
                  : read(key),
              text)
        << qPrintable(key);
  for (const char* name : kLabels)
    EXPECT_EQ(FForm->findChild<QLabel*>(QLatin1String(name))->text(),
              read(QLatin1String(name) + u".Caption"_qs));
}

TEST_P(EachLanguage, TellsAssistiveToolsOfEveryControlThatTakesKeys) {
  OpenIn(QString::fromUtf8(GetParam()), LanguageFolder());
  OnEveryPage([](QWidget& form) {
    for (QWidget* widget : form.findChildren<QWidget*>())
      if (widget->isVisible() && widget->focusPolicy() != Qt::NoFocus) {
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
            << qPrintable(widget->objectName()) << widget->metaObject()->className();
      }
  });
  const auto spoken = [this](const char* name) {
    return FForm->findChild<QWidget*>(QLatin1String(name))->accessibleName();
  };
  EXPECT_EQ(spoken("lvTopFile"), Texts()[u"DockPnlFile.Caption"_qs]);
  EXPECT_EQ(spoken("lvAnalyze"), FForm->findChild<QLabel*>(u"lblSelLoc"_qs)->text());
}

TEST_P(EachLanguage, CutsNoText) {
  OpenIn(QString::fromUtf8(GetParam()),
         GetParam() == std::string("Longer") ? MakeLongerLanguage() : LanguageFolder());
  OnEveryPage([](QWidget& form) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    for (QWidget* widget : form.findChildren<QWidget*>())
      if (widget->isVisible() && dynamic_cast<TEllipsisLabel*>(widget) == nullptr) {
        EXPECT_EQ(CutOf(*widget), QString()) << qPrintable(widget->objectName());
      }
  });
}

INSTANTIATE_TEST_SUITE_P(Forms, EachLanguage,
                         testing::Values("English", "German", "French", "Spanish", "Japanese",
                                         "Chinese Simplified", "Longer"),
                         [](const auto& name) {
                           return QString::fromUtf8(name.param).remove(u' ').toStdString();
                         });
