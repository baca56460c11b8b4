#include "FormsFixture.h"

#include <QApplication>
#include <QTest>

#include "controls/notes/PPageNote.h"

TFormsTest::TFormsTest() {
  FTree.MakeFile("root.bin", 500);
  FTree.MakeHole("films/long.mkv", 4000000);
  FTree.MakeFile("films/short.mkv", 3000);
  FTree.MakeFile("music/a/song.ogg", 20000);
  FTree.MakeFile("music/cover.jpg", 700);
  FTree.MakeFolder("empty");
}

void TFormsTest::Open(const QStringList& parameters) {
  const TStartParameters start(parameters);
  FForm = std::make_unique<TFormMain>(start, FDialogs);
  FWizard = std::make_unique<TFormWizard>(*FForm, FForm->StaticImages(), start);
}

void TFormsTest::ShowWizard() {
  FForm->show();
  FWizard->show();
}

bool TFormsTest::WaitFor(const std::function<bool()>& condition) {
  return QTest::qWaitFor(condition, 10000);
}

bool TFormsTest::WaitForResult() {
  return WaitFor([this] { return !FWizard->isVisible(); });
}

void TFormsTest::Join() {
  ASSERT_TRUE(WaitFor([this] { return FForm->Activated(); }));
  FForm->SetScanForm(*FWizard);
}

void TFormsTest::StartScan(const QString& folder) {
  FWizard->PreselectFolder(folder);
  Click(Button("btnAnalyze"));
}

void TFormsTest::Analyse() {
  Open();
  ShowWizard();
  StartScan(FTree.Path());
  ASSERT_TRUE(WaitForResult());
  Join();
}

bool TFormsTest::OnFirstPage() {
  return FWizard->findChild<TPageNote*>(u"pgntScan"_qs)->TabIndex() == 0;
}

QString TFormsTest::Label(const char* name) {
  const auto* label = FForm->findChild<QLabel*>(QLatin1String(name));
  return label->isVisibleTo(FForm.get()) ? label->text() : u"hidden"_qs;
}

TListView& TFormsTest::List(const char* name) {
  auto* list = FForm->findChild<TListView*>(QLatin1String(name));
  if (list == nullptr) list = FWizard->findChild<TListView*>(QLatin1String(name));
  return *list;
}

QPushButton& TFormsTest::Button(const char* name) {
  return *FWizard->findChild<QPushButton*>(QLatin1String(name));
}

QStringList TFormsTest::Captions(const char* list) {
  QStringList captions;
  for (const TListItem* item : List(list).Items())
    captions += item->Caption();
  return captions;
}

TdxBarButton& TFormsTest::Command(const char* name) {
  return *FForm->findChild<TdxBarButton*>(QLatin1String(name));
}

TdxTabContainerDockSite& TFormsTest::Tabs() {
  return *FForm->findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs);
}

void TFormsTest::Click(QWidget& widget) {
  QTest::mouseClick(&widget, Qt::LeftButton);
}
