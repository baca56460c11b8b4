// The window asks two questions, for the facts at once and for the checksum when the button is pressed. Each
// runs on a thread of its own that nobody waits for; window and thread share a TQuestion, whose lock the
// thread takes once, to leave its answer. A timer looks for answers as long as any is due. A window that
// closes drops its half of the questions, and a checksum under way is asked to stop.

#include "views/files/PropertiesDialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTimer>

#include <array>
#include <mutex>
#include <thread>

#include "platform/FileActions.h"
#include "platform/FileEnumeration.h"
#include "platform/Paths.h"
#include "support/Korvel_Routine_New.h"
#include "support/PLanguage.h"
#include "support/ShellRoutines.h"

namespace {

// Milliseconds between two looks for an answer.
constexpr int kLookMs = 30;

// One question to the file system on a thread that nobody waits for: a dead network drive may keep it for
// ever. Window and thread share the object.
template <typename TAnswer>
struct TQuestion {
  TActionProgress Progress;  // its Stop ends what takes long
  std::mutex Guard;
  bool Answered = false;          // under Guard
  std::optional<TAnswer> Answer;  // under Guard
};

template <typename TAnswer, typename TAsk>
std::shared_ptr<TQuestion<TAnswer>> AskOffThread(TAsk ask) {
  auto question = std::make_shared<TQuestion<TAnswer>>();
  std::thread([question, ask = std::move(ask)] {
    auto answer = ask(question->Progress);
    const std::scoped_lock lock(question->Guard);
    question->Answer = std::move(answer);
    question->Answered = true;
  }).detach();
  return question;
}

// True once the answer is there.
template <typename TAnswer>
bool Take(std::shared_ptr<TQuestion<TAnswer>>& question, std::optional<TAnswer>& answer) {
  if (question == nullptr) return false;
  const std::scoped_lock lock(question->Guard);
  if (!question->Answered) return false;
  answer = std::move(question->Answer);
  return true;
}

// "rwxr-x--- (0750)", with the marks that some programs run by.
QString RightsText(unsigned mode) {
  constexpr std::array<char16_t, 3> kSpecial = {u's', u's', u't'};
  QString text;
  for (int place = 0; place < 9; ++place) {
    const bool set = (mode >> (8 - place) & 1U) != 0;
    text += set ? u"rwx"[place % 3] : u'-';
    const auto who = static_cast<size_t>(place / 3);
    if (place % 3 == 2 && (mode >> (11 - place / 3) & 1U) != 0)
      text.back() = set ? QChar(kSpecial[who]) : QChar(kSpecial[who]).toUpper();
  }
  return u"%1 (%2)"_qs.arg(text).arg(mode, 4, 8, QChar(u'0'));
}

class TPropertiesDialog : public QDialog {
 public:
  TPropertiesDialog(QWidget& owner, const QString& path, const TLanguage& language);
  ~TPropertiesDialog() override;

 private:
  QLabel* AddLine(const char* name, const QString& key, const QString& caption);
  void AddBottom();
  void Look();
  void ShowFacts(const TFileFacts& facts);
  void ShowOwner(const TFileFacts& facts);
  void ShowSizes(const TFileFacts& facts);
  void ShowTimes(const TFileFacts& facts);
  [[nodiscard]] QString KindText(const TFileFacts& facts) const;
  void ComputeChecksum();
  void ShowChecksum();
  [[nodiscard]] QString Text(const QString& key, const QString& defaultText) const {
    return FLanguage.GetMessage(key, defaultText);
  }

  const QString FPath;
  const TLanguage& FLanguage;
  QFormLayout* FLines;
  QLabel* lblKind = nullptr;
  QLabel* lblChecksum = nullptr;
  QPushButton* btnChecksum = nullptr;
  QTimer FLook;
  std::shared_ptr<TQuestion<TFileFacts>> FFacts;
  std::shared_ptr<TQuestion<QByteArray>> FChecksum;
};

TPropertiesDialog::TPropertiesDialog(QWidget& owner, const QString& path, const TLanguage& language)
    : QDialog(&owner),
      FPath(WithoutDelimitersAtEnd(path)),
      FLanguage(language),
      FLines(new QFormLayout(this)) {
  setObjectName(u"FormProperties"_qs);
  setAttribute(Qt::WA_DeleteOnClose);
  setFont(owner.font());
  setWindowTitle(Text(u"M_Properties"_qs, u"Properties"_qs) + u" - "_qs + ExtractFileName(FPath));
  setMinimumWidth(460);
  FLines->setHorizontalSpacing(18);
  FLines->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  AddLine("lblName", u"M_Name"_qs, u"Name"_qs)->setText(ExtractFileName(FPath));
  AddLine("lblLocation", u"M_Location"_qs, u"Location"_qs)->setText(ExtractFilePath(FPath));
  lblKind = AddLine("lblKind", u"M_Type"_qs, u"Type"_qs);
  lblKind->setText(u"..."_qs);
  AddBottom();
  FFacts = AskOffThread<TFileFacts>([path = FPath](TActionProgress&) {
    return GetFileFacts(TOpenFolder::Open(ExtractFileDir(path)), ExtractFileName(path));
  });
  connect(&FLook, &QTimer::timeout, this, [this] { Look(); });
  FLook.start(kLookMs);
}

TPropertiesDialog::~TPropertiesDialog() {
  if (FChecksum != nullptr) FChecksum->Progress.Stop = true;
}

// Before the row of buttons, once that is there.
QLabel* TPropertiesDialog::AddLine(const char* name, const QString& key, const QString& caption) {
  auto* value = new QLabel(this);
  value->setObjectName(QLatin1String(name));
  value->setTextFormat(Qt::PlainText);
  value->setWordWrap(true);
  value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  const QString text = Text(key, caption);
  value->setAccessibleName(text);
  const int row = btnChecksum == nullptr ? FLines->rowCount() : FLines->rowCount() - 1;
  FLines->insertRow(row, text + u':', value);
  return value;
}

void TPropertiesDialog::AddBottom() {
  auto* buttons = new QDialogButtonBox(this);
  btnChecksum =
      buttons->addButton(Text(u"M_Checksum"_qs, u"Compute Checksum"_qs), QDialogButtonBox::ActionRole);
  btnChecksum->setObjectName(u"btnChecksum"_qs);
  btnChecksum->setEnabled(false);
  btnChecksum->setAutoDefault(false);
  auto* close = buttons->addButton(Text(u"M_Close"_qs, u"Close"_qs), QDialogButtonBox::RejectRole);
  close->setDefault(true);
  connect(btnChecksum, &QPushButton::clicked, this, [this] { ComputeChecksum(); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  FLines->addRow(buttons);
}

// Answers come without an event, so they are looked for.
void TPropertiesDialog::Look() {
  std::optional<TFileFacts> facts;
  if (Take(FFacts, facts)) {
    FFacts.reset();
    if (facts)
      ShowFacts(*facts);
    else
      lblKind->setText(Text(u"M_Not_There"_qs, u"There is nothing here any more."_qs));
  }
  ShowChecksum();
  if (FFacts == nullptr && FChecksum == nullptr) FLook.stop();
}

void TPropertiesDialog::ShowFacts(const TFileFacts& facts) {
  lblKind->setText(KindText(facts));
  if (!facts.LeadsTo.isEmpty())
    AddLine("lblLeadsTo", u"M_Leads_To"_qs, u"Leads to"_qs)->setText(facts.LeadsTo);
  ShowSizes(facts);
  ShowTimes(facts);
  ShowOwner(facts);
  // Reading a device or a pipe might never end.
  constexpr unsigned kNoContent = kAttributeDirectory | kAttributeReparse | kAttributeSystem;
  btnChecksum->setEnabled((facts.Attributes & kNoContent) == 0);
}

QString TPropertiesDialog::KindText(const TFileFacts& facts) const {
  if ((facts.Attributes & kAttributeReparse) != 0) return Text(u"M_Link"_qs, u"Link"_qs);
  if ((facts.Attributes & kAttributeDirectory) != 0) return Text(u"M_Folder"_qs, u"File Folder"_qs);
  return GetFileTypeName(ExtractFileExt(FPath));
}

// Each also in bytes.
void TPropertiesDialog::ShowSizes(const TFileFacts& facts) {
  const auto text = [](qint64 bytes) {
    return bytes < 1024 ? SizeToText(bytes) : u"%1 (%2)"_qs.arg(SizeToText(bytes), QLocale().toString(bytes));
  };
  if ((facts.Attributes & kAttributeDirectory) == 0)
    AddLine("lblSize", u"M_Size"_qs, u"Size"_qs)->setText(text(facts.Size));
  AddLine("lblSizeOnDisk", u"M_Size_On_Disk"_qs, u"Size on Disk"_qs)->setText(text(facts.SizeOnDisk));
}

void TPropertiesDialog::ShowTimes(const TFileFacts& facts) {
  const auto add = [this](const char* name, const QString& key, const QString& caption,
                          const QDateTime& time) {
    if (time.isValid()) AddLine(name, key, caption)->setText(QLocale().toString(time));
  };
  add("lblCreated", u"M_Created"_qs, u"Date Created"_qs, facts.Created);
  add("lblModified", u"M_Date"_qs, u"Date Modified"_qs, facts.Modified);
  add("lblAccessed", u"M_Accessed"_qs, u"Date Accessed"_qs, facts.Accessed);
}

void TPropertiesDialog::ShowOwner(const TFileFacts& facts) {
  AddLine("lblOwner", u"M_Owner"_qs, u"Owner"_qs)->setText(facts.Owner + u", "_qs + facts.Group);
  AddLine("lblRights", u"M_Rights"_qs, u"Permissions"_qs)->setText(RightsText(facts.Mode));
  AddLine("lblLinks", u"M_Names"_qs, u"Names"_qs)->setText(QString::number(facts.Links));
}

void TPropertiesDialog::ComputeChecksum() {
  btnChecksum->setEnabled(false);
  if (lblChecksum == nullptr) lblChecksum = AddLine("lblChecksum", u"M_SHA"_qs, u"SHA-256"_qs);
  lblChecksum->setText(u"..."_qs);
  FChecksum = AskOffThread<QByteArray>([path = FPath](TActionProgress& progress) {
    return FileChecksum(TOpenFolder::Open(ExtractFileDir(path)), ExtractFileName(path), progress);
  });
  FLook.start(kLookMs);
}

void TPropertiesDialog::ShowChecksum() {
  std::optional<QByteArray> sum;
  if (!Take(FChecksum, sum)) {
    if (FChecksum == nullptr || FChecksum->Progress.Total <= 0) return;
    const qint64 percent = 100 * FChecksum->Progress.Done / FChecksum->Progress.Total;
    lblChecksum->setText(u"%1%"_qs.arg(percent));
    return;
  }
  FChecksum.reset();
  btnChecksum->setEnabled(true);
  lblChecksum->setText(sum ? QString::fromLatin1(sum->left(32) + ' ' + sum->mid(32))
                           : Text(u"M_Unreadable_File"_qs, u"The file can't be read."_qs));
}

}  // namespace

void ShowOwnProperties(QWidget& owner, const QString& path, const TLanguage& language) {
  (new TPropertiesDialog(owner, path, language))->show();
}
