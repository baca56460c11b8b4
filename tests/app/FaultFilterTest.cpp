// What becomes of exceptions that leave a handler, in the program's own application object.
#include "app/FaultFilter.h"

#include "fixtures/FormTest.h"
#include "platform/Messages.h"

namespace {

QDialog* OpenReport() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->objectName() == u"FormFault" && window->isVisible()) return static_cast<QDialog*>(window);
  return nullptr;
}

QString ReportText() {
  QTest::qWait(0);
  return OpenReport() == nullptr ? QString() : OpenReport()->findChild<QPlainTextEdit*>()->toPlainText();
}

void CloseReport() {
  if (OpenReport() != nullptr) OpenReport()->findChild<QPushButton*>(u"btnClose"_qs)->click();
  QTest::qWait(0);
}

class TThrower : public QWidget {
 public:
  std::function<void()> OnKey;

 protected:
  void keyPressEvent(QKeyEvent*) override { OnKey(); }
};

}  // namespace

TEST(FaultFilter, IsSilentForATextThatLiesInAKnownOne) {
  const std::pair<const char*, bool> rows[] = {
      {"Not enough storage is available", true},
      {"Not enough storage is available to process this command.", false},
      {"enheten", true},
      {"Sistem belirtilen", true},
      {"sistem", false},
      {"", false}};
  for (const auto& [text, isKnown] : rows)
    for (const bool before : {false, true}) {
      bool handled = before;
      mdxcptnhndlr1Exception(text, handled);
      EXPECT_EQ(handled, isKnown || before) << text;
    }
}

TEST(FaultFilter, AnExceptionFromAnywhereIsReportedAndTheProgramGoesOn) {
  TThrower widget;
  TMessageWindow window({{1, [](const TMessage&) { throw std::runtime_error("of a message"); }}});
  const std::pair<QString, std::function<void()>> rows[] = {
      {u"of an event"_qs, [&] { QTest::keyClick(&widget, Qt::Key_A); }},
      {u"of a message"_qs, [&] { PostMessage(&window, 1, 0, 0); }},
      {u"of a timer"_qs, [&] { QTimer::singleShot(0, [] { throw std::runtime_error("of a timer"); }); }},
      {u"another kind"_qs, [&] { QTimer::singleShot(0, [] { throw 5; }); }}};
  widget.OnKey = [] { throw std::runtime_error("of an event"); };
  for (const auto& [text, throws] : rows) {
    throws();
    EXPECT_TRUE(QTest::qWaitFor([&, told = text] { return ReportText().contains(told); }))
        << text.toStdString();
    CloseReport();
    EXPECT_EQ(OpenReport(), nullptr);
  }
}

TEST(FaultFilter, AReportTakesWhatHappensMeanwhileOnceAndIsCopiedWhole) {
  TThrower widget;
  for (const char* text : {"first", "second", "second"}) {
    widget.OnKey = [text] { throw std::runtime_error(text); };
    QTest::keyClick(&widget, Qt::Key_A);
    QTest::qWait(0);
  }
  const QString report = ReportText();
  EXPECT_TRUE(report.startsWith(u"first\n"_qs));
  EXPECT_EQ(report.count(u"second"_qs), 1);
  EXPECT_TRUE(report.contains(u"runtime_error"_qs) && report.contains(u"KeyPress"_qs));
  OpenReport()->findChild<QPushButton*>(u"btnCopy"_qs)->click();
  EXPECT_EQ(QApplication::clipboard()->text(), report);
  CloseReport();

  widget.OnKey = [] { throw std::runtime_error("Not enough storage"); };
  QTest::keyClick(&widget, Qt::Key_A);
  EXPECT_EQ(ReportText(), QString()) << "a fault that is known";
}

int main(int argc, char** argv) {
  TGuardedApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
