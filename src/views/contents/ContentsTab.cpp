#include "views/contents/ContentsTab.h"

#include <QMouseEvent>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

#include "controls/shell/RzShellCombo.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "scan/UnitScan.h"
#include "support/Korvel_Routine_New.h"
#include "support/ShellRoutines.h"
#include "views/commands/Commands.h"
#include "views/main/ResultTab.h"
#include "views/rows/ListHelpers.h"
#include "views/rows/ResultRows.h"

namespace {

constexpr int kGap = 5;        // pixels between combo and list
constexpr int kCellRoom = 14;  // pixels beside the text of a cell
constexpr int kTypeAtComputer = 1;

struct TKeyRow {
  QKeyCombination Key;
  const char* Command;
};
constexpr TKeyRow kKeys[] = {{Qt::ALT | Qt::Key_Left, "lbtnBack"},
                             {Qt::ALT | Qt::Key_Right, "lbtnForward"},
                             {Qt::ALT | Qt::Key_Up, "lbtnUp"},
                             {Qt::Key_Backspace, "lbtnUp"}};

}  // namespace

TContentsTab::TContentsTab(const TTabParts& parts, QWidget& panel)
    : QObject(&panel),
      FParts(parts),
      FPanel(panel),
      RzShellCombo1(new TRzShellCombo(&panel)),
      ShellListContent(new TRzShellList(&panel)),
      FFill(*ShellListContent, parts.State),
      FSort(*ShellListContent, *RzShellCombo1, parts.State.FDrives),
      FNavigation(*ShellListContent, *RzShellCombo1, FFill, parts.Commands),
      FFileRows(*ShellListContent),
      FFileOperations(parts, kContentsTab, FFileRows) {
  BuildList();
  BuildCombo();
  WireNavigation();
  auto* column = new QVBoxLayout(&panel);
  column->setContentsMargins(0, kGap, 0, 0);
  column->setSpacing(kGap);
  column->addWidget(RzShellCombo1);
  column->addWidget(ShellListContent, 1);
}

// The list's rows go while the fill that has given them cells still stands.
TContentsTab::~TContentsTab() {
  RzShellCombo1->SetShellList(nullptr);
  delete ShellListContent;
}

void TContentsTab::BuildList() {
  TRzShellList& list = *ShellListContent;
  list.setObjectName(u"ShellListContent"_qs);
  TRzShellTexts texts;
  texts.FixedVolume = Text(u"M_Local_Disk"_qs, texts.FixedVolume);
  texts.RemovableVolume = Text(u"M_Removable_Disk"_qs, texts.RemovableVolume);
  texts.NetworkVolume = Text(u"M_Network_Drive"_qs, texts.NetworkVolume);
  texts.Home = Text(u"M_Home_Folder"_qs, texts.Home);
  texts.Unreadable = Text(u"M_Unreadable"_qs, texts.Unreadable);
  list.SetTexts(texts);
  HoldTypes(texts);
  list.OnPathChanged = [this] { ShellListContentPathChanged(); };
  list.OnFillItem = [this](TListItem* item) { FFill.FillItem(*item); };
  list.OnFolderChanged = [this] { ShellListContentFolderChanged(); };
  list.OnRefreshed = [this] { ShowCount(); };
  list.OnDeletion = [this](TListItem* item) { FFill.Forget(*item); };
  list.OnColumnClick = [this](TListColumn* column) { FSort.ColumnClick(*column); };
  list.OnSelectItem = [this](TListItem* item, bool selected) { ShellListContentSelectItem(*item, selected); };
  list.OnItemChecked = [this](TListItem*) { ShellListContentClick(); };
  list.OnClick = [this] { ShellListContentClick(); };
  list.OnDblClick = [this] { ShellListContentDblClick(); };
  AssignPopup(list, FParts.Commands.Bars().Popup(u"pmContent"_qs));
  FFileRows.OnRefill = [this] { FillAgain(); };
  FFill.OnSized = [this](TListItem& item) {
    if (item.Selected() && OnTop()) ShowRow(item);
  };
}

// The kinds of places are words of the language, and at the computer level they stand in the narrow column.
void TContentsTab::HoldTypes(const TRzShellTexts& texts) {
  TListColumns& columns = ShellListContent->Columns();
  const int before = columns[kTypeAtComputer].Width();
  int width = before;
  for (const QString& text : {texts.FixedVolume, texts.RemovableVolume, texts.NetworkVolume, texts.Home})
    width = std::max(width, ShellListContent->fontMetrics().horizontalAdvance(text) + kCellRoom);
  columns[kTypeAtComputer].SetWidth(width);
  columns[0].SetWidth(columns[0].Width() - (width - before));
}

void TContentsTab::BuildCombo() {
  RzShellCombo1->setObjectName(u"RzShellCombo1"_qs);
  RzShellCombo1->SetTexts(Text(u"M_PC"_qs, u"My Computer"_qs),
                          Text(u"M_Not_Found"_qs, u"Folder not found"_qs));
  RzShellCombo1->SetShellList(ShellListContent);
  RzShellCombo1->OnChange = [this] { FNavigation.RzShellCombo1Change(); };
}

// The keys serve while the panel shows; the side buttons of the mouse wherever they are pressed on it.
void TContentsTab::WireNavigation() {
  for (const TKeyRow& row : kKeys) {
    auto* shortcut = new QShortcut(QKeySequence(row.Key), &FPanel);
    connect(shortcut, &QShortcut::activated, this,
            [&button = FParts.Commands.Button(row.Command)] { button.Click(); });
  }
  FPanel.installEventFilter(this);
  ShellListContent->viewport()->installEventFilter(this);
}

// A side button goes its way as it is pressed, twice on a double click, which is what someone does who goes
// back quickly. Its release is taken too: the list is to see neither half of the click.
bool TContentsTab::eventFilter(QObject*, QEvent* event) {
  const bool press =
      event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
  if (!press && event->type() != QEvent::MouseButtonRelease) return false;
  const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
  if (button != Qt::BackButton && button != Qt::ForwardButton) return false;
  if (press) FParts.Commands.Button(button == Qt::BackButton ? "lbtnBack" : "lbtnForward").Click();
  return true;
}

QString TContentsTab::Text(const QString& key, const QString& defaultText) const {
  return FParts.State.FLanguage.GetMessage(key, defaultText);
}

void TContentsTab::FormActivate() {
  ShellListContent->SetPath(QString());
}

void TContentsTab::FormClose() {
  FFill.FormClose();
}

void TContentsTab::Reset() {
  FNavigation.ClearHistory();
  ShellListContent->SetPath(QString());
}

// Only keeps what the result knows: the folder that shows is not listed again until the tab is looked at.
void TContentsTab::Fill(const TTallyscopeScan& scan, const QStringList&) {
  for (int i = 0; i < std::min(kTopRules.RowLimit, scan.Folders().Count()); ++i) {
    const TFileInfoEx& record = scan.Folders()[i];
    FFill.FolderSizes().Add(record.Path + record.Name, static_cast<qint64>(record.Size));
  }
  FContentsPending = true;
}

// The targets of a result are gone by the time of a first look at it, so that is at the computer level.
void TContentsTab::Activate() {
  if (std::exchange(FContentsPending, false)) {
    const QStringList& targets = FParts.Host.ScanForm()->Targets();
    ShellListContent->SetPath(targets.size() == 1 ? QString(targets.first()) : QString());
    FFill.SetCurrentFolder(ShellListContent->Path());
  }
  ShellListContent->SetSelected(nullptr);
  FitColumnsOnce();
}

// At the first look, the first time that the list has its width; from then on the columns are the user's. A
// folder with many rows is to find room for its scroll bar.
void TContentsTab::FitColumnsOnce() {
  if (std::exchange(FFitted, true)) return;
  FPanel.layout()->activate();
  FitLastColumn(*ShellListContent);
  if (RowCount() == 0) return;
  TListColumn& last = ShellListContent->Columns()[ShellListContent->Columns().Count() - 1];
  last.SetWidth(last.Width() - ShellListContent->VertScrollBarWidth());
}

int TContentsTab::RowCount() const {
  return ShellListContent->Items().Count();
}

TSubject TContentsTab::Subject() const {
  const QString path = RzShellCombo1->Path();
  return {PictureOf(path), path.isEmpty() ? Text(u"M_PC"_qs, u"My Computer"_qs) : path,
          FParts.StatusLine.CountText(RowCount()), std::nullopt};
}

bool TContentsTab::CanGoUp() const {
  return !RzShellCombo1->Path().isEmpty();
}

// Commands and status bar belong to the tab that shows, while this list follows the disk behind it too.
bool TContentsTab::OnTop() const {
  return FPanel.isVisibleTo(FPanel.window());
}

int TContentsTab::PictureOf(const QString& path) const {
  if (path.isEmpty()) return StorePicture::kComputer32;
  if (!IsVolumeRoot(path)) return StorePicture::kFolder32;
  return SameVolume(path, GetWindowsDir()) ? StorePicture::kSystemDisk32 : StorePicture::kDisk32;
}

// No event tells of a selection that went with the rows.
void TContentsTab::ShellListContentPathChanged() {
  FFill.Begin();
  ShellListContent->setAccessibleDescription(Subject().Name);
  if (!OnTop()) return;
  ApplyEnableRules(FParts.Commands, kContentsTab, TTabEvent::RowSelected, false);
  FParts.StatusLine.SetSubject(Subject());
}

void TContentsTab::ShellListContentFolderChanged() {
  FFill.End();
  ShowCount();
}

void TContentsTab::FillAgain() {
  FFill.Repeat();
  if (OnTop()) FParts.StatusLine.SetSubject(Subject());
}

// Rows come and go while another tab shows its own subject, or a row of this one is the subject.
void TContentsTab::ShowCount() {
  if (OnTop() && ShellListContent->Selected() == nullptr) FParts.StatusLine.SetSubject(Subject());
}

void TContentsTab::ShellListContentSelectItem(TListItem& item, bool selected) {
  if (!OnTop()) return;
  ApplyEnableRules(FParts.Commands, kContentsTab, TTabEvent::RowSelected, selected);
  if (selected)
    ShowRow(item);
  else
    FParts.StatusLine.SetSubject(Subject());
}

void TContentsTab::ShowRow(TListItem& item) {
  const TRzShellListData& row = TRzShellList::ShellData(item);
  if (row.IsFolder())
    FParts.StatusLine.SetPicture(PictureOf(row.Path()));
  else
    FParts.StatusLine.SetIcon(GetFileIconHandle(row.Path()));
  FParts.StatusLine.SetLines(item.Caption(), ShellListContent->TypeText(item), SizeLineOf(item));
  if (row.Kind() == TShellKind::Folder) LookAtFolder(row.Path());
}

// One look at a time, however many rows are gone through meanwhile.
void TContentsTab::LookAtFolder(const QString& path) {
  if (std::exchange(FLooking, true)) return;
  // On a thread, as the folder may lie behind a server that is gone; a look that never ends leaves the size
  // line as it is.
  FLook.Start([this, path](TDetachedTask::TLine& line) {
    line.Tell([this, path, found = DirectoryExists(path)] { FolderLookedAt(path, found); });
  });
}

// A folder that is gone has no size. Another row may be the one to ask for by now.
void TContentsTab::FolderLookedAt(const QString& path, bool found) {
  FLooking = false;
  const TListItem* const item = ShellListContent->Selected();
  if (item == nullptr || !OnTop()) return;
  const TRzShellListData& row = TRzShellList::ShellData(*item);
  if (row.Path() != path && row.Kind() == TShellKind::Folder) return LookAtFolder(row.Path());
  if (row.Path() == path && !found) FParts.StatusLine.HideSizeLine();
}

// Of a drive its capacity, and nothing of other places that stand beside the drives.
std::optional<QString> TContentsTab::SizeLineOf(const TListItem& item) const {
  const TRzShellListData& row = TRzShellList::ShellData(item);
  const TStatusLine& line = FParts.StatusLine;
  if (!row.IsFolder()) return line.SizeLine(row.SizeText());
  if (row.Kind() == TShellKind::Folder && !IsVolumeRoot(row.Path()))
    return line.SizeLine(item.SubItems().Text(0));
  const int index = FParts.State.FDrives.IndexOf(row.Path());
  if (index < 0) return std::nullopt;
  return line.SizeLine(SizeToText(FParts.State.FDrives.Drives()[static_cast<size_t>(index)].Size));
}

// Also when a key or a screen reader has switched a box. At the computer level there is nothing to delete.
void TContentsTab::ShellListContentClick() {
  if (FMarking) return;
  const TListItems& rows = ShellListContent->Items();
  const bool checked =
      std::any_of(rows.begin(), rows.end(), [](const TListItem* item) { return item->Checked(); });
  ApplyEnableRules(FParts.Commands, kContentsTab, TTabEvent::BoxesCounted,
                   checked && FParts.Commands.Button("lbtnUp").Enabled());
}

void TContentsTab::ShellListContentDblClick() {
  if (FNavigation.ShellListContentDblClick()) FParts.StatusLine.HideSizeLine();
}

// Of a folder, the history gets the one that is left, as by a double click, and then the one that is entered.
void TContentsTab::Open() {
  ShellListContentDblClick();
  const TListItem* item = ShellListContent->Selected();
  if (item == nullptr) return;
  const TRzShellListData& row = TRzShellList::ShellData(*item);
  if (!row.IsFolder()) return FFileOperations.Open();
  FNavigation.OpenFolder(QString(row.Path()));
  FParts.StatusLine.HideSizeLine();
}

// Unlike a click, these commands count at the computer level too. Each box that switches tells so by itself,
// and counting all rows at each would make marking a large folder quadratic: they are counted here, once.
template <typename TMark>
void TContentsTab::MarkRows(const TMark& mark) {
  bool any = false;
  FMarking = true;
  {
    const TListUpdate update(ShellListContent->Items());
    for (TListItem* item : ShellListContent->Items()) {
      const bool checked = mark(*item);
      item->SetChecked(checked);
      any = any || checked;
    }
  }
  FMarking = false;
  ApplyEnableRules(FParts.Commands, kContentsTab, TTabEvent::BoxesCounted, any);
}

void TContentsTab::SelectAll() {
  MarkRows([](const TListItem&) { return true; });
}

void TContentsTab::DeselectAll() {
  MarkRows([](const TListItem&) { return false; });
}

void TContentsTab::InvertSelection() {
  MarkRows([](const TListItem& item) { return !item.Checked(); });
}
