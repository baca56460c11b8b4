#include "controls/shell/RzShellCombo.h"

#include "controls/shell/RzShellList.h"
#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPalette>

namespace {

constexpr int kMostRows = 25;
constexpr int kPatience = 40;  // milliseconds that a user does not feel

// Readable on a light and on a dark background.
QColor WarningColor(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < 128 ? QColor(255, 140, 130) : QColor(180, 20, 10);
}

// The path that a user means; relative ones begin at the folder.
QString Meant(const QString& typed, const QString& folder) {
  const QString home = GetKnownFolder(TSpecialFolder::Profile);
  if (typed == u'~') return home;
  if (typed.startsWith(u'~') && typed[1] == PathDelim) return home + typed.mid(1);
  const QString path = ExpandEnvironment(typed);
  return IsAbsolutePath(path) || folder.isEmpty() ? path : IncludeTrailingPathDelimiter(folder) + path;
}

// A combo of Qt bears its text for a name, so that nobody hears what it is for. This one has a name, and
// tells its text as its value and, unless there is something else to say, as its description.
class TComboAccessible : public QAccessibleWidget {
 public:
  explicit TComboAccessible(TRzShellCombo& combo)
      : QAccessibleWidget(&combo, QAccessible::ComboBox), FCombo(combo) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return FCombo.currentText();
    const QString text = QAccessibleWidget::text(kind);
    return kind == QAccessible::Description && text.isEmpty() ? FCombo.currentText() : text;
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = state.expandable = state.hasPopup = true;
    return state;
  }
  [[nodiscard]] QStringList actionNames() const override {
    return QStringList{showMenuAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name == showMenuAction())
      FCombo.showPopup();
    else
      QAccessibleWidget::doAction(name);
  }

 private:
  TRzShellCombo& FCombo;
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* const combo = dynamic_cast<TRzShellCombo*>(object);
  return combo != nullptr ? new TComboAccessible(*combo) : nullptr;
}

void InstallComboAccessibility() {
  static const bool installed = [] {
    QAccessible::installFactory(MakeInterface);
    return true;
  }();
  Q_UNUSED(installed);
}

}  // namespace

TRzShellCombo::TRzShellCombo(QWidget* parent)
    : QComboBox(parent), FComputer(u"My Computer"_qs), FNotFoundText(u"Folder not found"_qs) {
  InstallComboAccessibility();
  setAccessibleName(u"Folder"_qs);
  setEditable(true);
  lineEdit()->setAccessibleName(accessibleName());
  setInsertPolicy(QComboBox::NoInsert);
  setCompleter(nullptr);
  setMaxVisibleItems(kMostRows);
  connect(this, &QComboBox::activated, this, [this](int row) { Go(itemData(row).toString()); });
  connect(lineEdit(), &QLineEdit::returnPressed, this, [this] { GoToTyped(); });
  connect(lineEdit(), &QLineEdit::textEdited, this, [this] {
    FTypedLook.Abandon();
    MarkNotFound(false);
  });
  ShowPath();
}

void TRzShellCombo::SetShellList(TRzShellList* list) {
  if (FList != nullptr) FList->OnLink = nullptr;
  FList = list;
  if (FList != nullptr) FList->OnLink = [this] { ShowPath(); };
  ShowPath();
}

QString TRzShellCombo::Path() const {
  return FList != nullptr ? FList->Path() : QString();
}

void TRzShellCombo::SetPath(const QString& path) {
  if (FList != nullptr) FList->SetPath(path);
}

void TRzShellCombo::SetTexts(const QString& computer, const QString& notFound) {
  FComputer = computer;
  FNotFoundText = notFound;
  ShowPath();
}

// The rows are made when they are asked for; until then the box holds what its arrow keys need, the ways up.
void TRzShellCombo::ShowPath() {
  const QSignalBlocker quiet(this);
  FTypedLook.Abandon();
  FShortcutLook.Abandon();
  clear();
  AddPlace(FComputer, QString(), 0);
  AddAncestors();
  setCurrentIndex(count() - 1);
  lineEdit()->setText(Path().isEmpty() ? FComputer : Path());
  MarkNotFound(false);
}

void TRzShellCombo::showPopup() {
  ShowPath();
  {
    const QSignalBlocker quiet(this);
    AddShortcuts();
  }
  QComboBox::showPopup();
}

void TRzShellCombo::AddPlace(const QString& name, const QString& path, int depth) {
  addItem(QString(2 * depth, u' ') + name, path);
}

// From the root down to the folder itself.
void TRzShellCombo::AddAncestors() {
  QStringList paths;
  for (QString path = Path(); !path.isEmpty() && !paths.contains(path);) {
    paths.prepend(path);
    path = ExtractFileDir(WithoutDelimitersAtEnd(path));
  }
  for (qsizetype i = 0; i < paths.size(); ++i) {
    const QString name = ExtractFileName(WithoutDelimitersAtEnd(paths[i]));
    AddPlace(name.isEmpty() ? paths[i] : name, paths[i], static_cast<int>(i) + 1);
  }
}

// Those that are slow to answer come while the rows are dropped down.
void TRzShellCombo::AddShortcuts() {
  FShortcuts = 0;
  FShortcutLook.Start([this](TDetachedTask::TLine& line) {
    ListShortcuts([this, &line](const std::vector<TShellPlace>& places) {
      line.Tell([this, places] {
        const QSignalBlocker quiet(this);
        for (; FShortcuts < places.size(); ++FShortcuts)
          AddPlace(places[FShortcuts].Name, places[FShortcuts].Path, 0);
      });
    });
  });
  FShortcutLook.WaitFor(kPatience);
}

void TRzShellCombo::GoToTyped() {
  const QString typed = lineEdit()->text();
  if (typed.trimmed().isEmpty() || typed == FComputer) return Go(QString());
  FTypedLook.Start([this, typed, here = Path()](TDetachedTask::TLine& line) {
    const QString path = Meant(DirectoryExists(typed) ? typed : typed.trimmed(), here);
    line.Tell([this, path, found = DirectoryExists(path)] {
      if (found)
        Go(path);
      else
        MarkNotFound(true);
    });
  });
}

void TRzShellCombo::Go(const QString& path) {
  const QString before = Path();
  if (FList == nullptr || SameFolder(path, before)) return ShowPath();
  SetPath(path);
  if (OnChange) OnChange();
}

void TRzShellCombo::MarkNotFound(bool notFound) {
  FNotFound = notFound;
  QPalette colors = palette();
  if (notFound) colors.setColor(QPalette::Text, WarningColor(colors));
  lineEdit()->setPalette(colors);
  const QString text = notFound ? FNotFoundText : QString();
  lineEdit()->setToolTip(text);
  setAccessibleDescription(text);
}

void TRzShellCombo::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return ShowPath();
  QComboBox::keyPressEvent(event);
}
