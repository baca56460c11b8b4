#include "app/FaultFilter.h"

#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMetaEnum>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <exception>
#include <typeinfo>

#include "support/PLanguage.h"

namespace {

// Words of the system's own messages, in Swedish, Turkish and English.
constexpr const char16_t* kSilent[] = {u"angivna enheten", u"Sistem belirtilen",
                                       u"Not enough storage is available"};

// Device-independent pixels.
constexpr QSize kReportSize(480, 260);
constexpr int kLongestReport = 1000;  // lines

// For whoever is sent the report: what, while which event, and where.
QString Describe(const char* type, const char* text, const QEvent& event) {
  const char* name = QMetaEnum::fromType<QEvent::Type>().valueToKey(event.type());
  return QString::fromLocal8Bit(text) +
         u"\n\n%1 in %2\nTallyscope on %3, Qt %4"_qs.arg(
             QString::fromLatin1(type), name == nullptr ? QString::number(event.type()) : QLatin1String(name),
             QSysInfo::prettyProductName(), QLatin1String(qVersion()));
}

}  // namespace

void mdxcptnhndlr1Exception(const QByteArray& text, bool& handled) {
  const QString widened = QString::fromLocal8Bit(text);
  if (widened.isEmpty()) return;
  if (std::any_of(std::begin(kSilent), std::end(kSilent),
                  [&](const char16_t* silent) { return QString::fromUtf16(silent).contains(widened); }))
    handled = true;
}

void TGuardedApplication::ReportOn(QWidget& form, const TLanguage& language) {
  FForm = &form;
  FLanguage = &language;
}

// Every event passes here, those of nested loops and those sent from within others too, and with them the
// posted messages and the timers. The receiver may be gone when its handler has thrown; the event is not.
bool TGuardedApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& fault) {
    Take(typeid(fault).name(), fault.what(), *event);
  } catch (...) {
    Take("an object of another kind", "", *event);
  }
  return false;
}

// The report opens in an event of its own: the one at hand may be a painting, or of another thread. What
// fails on the way there has no report.
void TGuardedApplication::Take(const char* type, const char* text, const QEvent& event) noexcept {
  try {
    bool handled = false;
    mdxcptnhndlr1Exception(text, handled);
    if (handled) return;
    QMetaObject::invokeMethod(
        this, [this, fault = Describe(type, text, event)] { Report(fault); }, Qt::QueuedConnection);
  } catch (...) {
  }
}

void TGuardedApplication::Report(const QString& fault) {
  if (FReport == nullptr) OpenReport();
  const QString before = FReport->toPlainText();
  // A fault that comes with every repaint stands in the report once.
  if (!before.contains(fault)) FReport->appendPlainText(before.isEmpty() ? fault : u'\n' + fault);
}

// Modal, since the wizard may be, and a loop of its own is not needed.
void TGuardedApplication::OpenReport() {
  auto* dialog = new QDialog(FForm);
  dialog->setObjectName(u"FormFault"_qs);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setModal(true);
  dialog->setWindowTitle(applicationDisplayName());
  auto* said = new QLabel(Text(u"M_Fault"_qs,
                               u"Something went wrong inside Tallyscope. You can go on working. If it "
                               u"happens again, copy the details and send them to the support "
                               u"forum."_qs),
                          dialog);
  said->setWordWrap(true);
  FReport = new QPlainTextEdit(dialog);
  FReport->setReadOnly(true);
  FReport->setTabChangesFocus(true);
  FReport->setMaximumBlockCount(kLongestReport);
  // A screen reader that comes to the details hears first what they are of.
  FReport->setAccessibleName(said->text());
  auto* buttons = new QDialogButtonBox(dialog);
  auto* copy = buttons->addButton(Text(u"M_Copy"_qs, u"Copy"_qs), QDialogButtonBox::ActionRole);
  auto* shut = buttons->addButton(Text(u"M_Close"_qs, u"Close"_qs), QDialogButtonBox::RejectRole);
  copy->setObjectName(u"btnCopy"_qs);
  shut->setObjectName(u"btnClose"_qs);
  shut->setDefault(true);
  connect(copy, &QPushButton::clicked, FReport, [this] { clipboard()->setText(FReport->toPlainText()); });
  connect(shut, &QPushButton::clicked, dialog, &QDialog::reject);

  auto* column = new QVBoxLayout(dialog);
  column->addWidget(said);
  column->addWidget(FReport, 1);
  column->addWidget(buttons);
  dialog->resize(kReportSize);
  dialog->show();
}

QString TGuardedApplication::Text(const QString& key, const QString& defaultText) const {
  return FLanguage == nullptr ? defaultText : FLanguage->GetMessage(key, defaultText);
}
