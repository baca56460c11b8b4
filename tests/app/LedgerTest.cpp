// Runs of the real form over real trees, driven at random by mouse and keys, while somebody else adds,
// renames, replaces and removes files. A ledger of its own, which knows the rules and no code, tells after
// each step what must be on disk and which rows must be listed. TALLYSCOPE_LEDGER_RUNS is the number of runs,
// TALLYSCOPE_LEDGER_SEED the first one, TALLYSCOPE_SECOND_VOLUME a folder on another volume.
#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QStorageInfo>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

#include <atomic>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <thread>

#include "FormsFixture.h"
#include "controls/bars/BarItems.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/list/rd/RdListView.h"
#include "fixtures/NativePath.h"
#include "fixtures/TestUser.h"
#include "platform/FileTests.h"

namespace {

// Everything below a folder: what stands at each path.
using TDisk = std::map<QString, QByteArray>;

void ReadDisk(const QString& root, TDisk& disk) {
  QDirIterator entries(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
  while (entries.hasNext()) {
    const QFileInfo entry(entries.next());
    QByteArray what = "folder";
    if (entry.isSymLink())
      what = "link " + entry.symLinkTarget().toUtf8();
    else if (!entry.isDir())
      what = "file " + ReadWholeFile(QDir::toNativeSeparators(entry.filePath())).value_or("?");
    disk[entry.filePath()] = what;
  }
}

// What differs, a line each; empty if nothing does.
std::string Difference(const TDisk& is, const TDisk& expected) {
  QByteArray text;
  for (const auto& [path, what] : is)
    if (const auto found = expected.find(path); found == expected.end() || found->second != what)
      text += "\nis " + path.toUtf8() + ' ' + what.left(20);
  for (const auto& [path, what] : expected)
    if (const auto found = is.find(path); found == is.end() || found->second != what)
      text += "\nexpected " + path.toUtf8() + ' ' + what.left(20);
  return text.toStdString();
}

bool IsFile(const TDisk& disk, const QString& path) {
  const auto found = disk.find(path);
  return found != disk.end() && found->second != "folder";
}

// A row as the rules know it.
struct TRow {
  QString Folder, Name;  // no delimiter at the end of the folder
  bool Checked = false;
  bool Moved = false;  // into a folder that the user named
  [[nodiscard]] QString Path() const { return Folder + u'/' + Name; }
  bool operator==(const TRow& other) const {
    return Folder == other.Folder && Name == other.Name && Checked == other.Checked;
  }
};

std::string TextOf(const std::vector<TRow>& rows) {
  QString text;
  for (const TRow& row : rows)
    text += row.Path().section(u'/', -3) + (row.Checked ? u"* "_qs : u" "_qs);
  return text.toStdString();
}

QString FolderOf(const TListItem& item) {
  QString folder = QDir::fromNativeSeparators(item.SubItems().Text(0));
  while (folder.endsWith(u'/'))
    folder.chop(1);
  return folder;
}

class Ledger : public TFormsTest {
 protected:
  Ledger() {
    Open();
    ShowWizard();
    FWizard->reject();
    EXPECT_TRUE(WaitFor([this] { return FForm->Activated(); }));
    FForm->SetScanForm(*FWizard);
    FDialogs.WhileShowing = [this] { DialogShows(); };
  }

  // One run: a new tree, a scan, some steps.
  void Run(unsigned seed);
  void MakeWorld(const QString& secondVolume);
  void Scan();
  void Step();
  void Check();

  // What the user does.
  void SwitchTab(int tab);
  void SwitchBox(int row);
  void CheckAllRows(int way);
  void ClickLarge(const char* button, bool moves);

  // What others do.
  void Disturb();
  void Replace(const QByteArray& folder);
  void Storm();

  // The rules.
  void DialogShows();
  [[nodiscard]] bool Reached(const TRow& row) const;
  void ExpectDelete();
  void ExpectMove();
  void CheckAfterStorm();

  [[nodiscard]] int Any(int count) { return static_cast<int>(FRandom() % static_cast<unsigned>(count)); }
  [[nodiscard]] TCustomListView& List() {
    return *dynamic_cast<TCustomListView*>(
        FForm->findChild<QWidget*>(FTab == kTopFilesTab ? u"lvTopFile"_qs : u"lvDownloadsFile"_qs));
  }
  [[nodiscard]] std::vector<TRow>& Rows() { return FRows[FTab]; }
  [[nodiscard]] TDisk Disk() const {
    TDisk disk;
    ReadDisk(FWorld->Path(), disk);
    if (FSecond) ReadDisk(FSecond->path(), disk);
    return disk;
  }
  [[nodiscard]] QString At(const QByteArray& name) const { return FWorld->Path(name); }

  TTestUser FUser;
  std::mt19937 FRandom;
  std::unique_ptr<TTempTree> FWorld;
  std::unique_ptr<QTemporaryDir> FSecond;
  std::map<int, std::vector<TRow>> FRows;  // by tab
  std::vector<TRow> FResult;
  int FActive = kOverviewTab;
  int FTab = kTopFilesTab;                    // the active one, or the last that has check boxes
  int FNumber = 0;                            // makes names and contents unlike all others
  std::map<QByteArray, QByteArray> FSwapped;  // folder to where it was put

  bool FMoves = false;   // what the dialog is for
  bool FStormy = false;  // others act during the walk too
  TDisk FBefore;
  std::optional<TDisk> FExpected;
  std::vector<TRow> FShownRows;  // in the order of the list
  std::vector<TRow> FExpectedRows;
  std::set<QByteArray> FMayGo;  // contents
  int FOperations = 0;
};

void Ledger::MakeWorld(const QString& secondVolume) {
  FWorld = std::make_unique<TTempTree>();
  FSwapped.clear();
  for (int file = 0; file < 12; ++file) {
    const QByteArray name = "d" + QByteArray::number(file / 3) + "/f" + QByteArray::number(file % 4);
    FWorld->WriteFile("root/" + name, name + QByteArray(100 + 37 * file, '.'));
  }
  for (int file = 0; file < 4; ++file)
    FWorld->WriteFile("precious/f" + QByteArray::number(file), "precious " + QByteArray::number(file));
  for (const char* folder : {"hold", "to/plain", "to/readonly", "to/other"})
    FWorld->MakeFolder(folder);
  FWorld->WriteFile("to/holds/f0", "not this one");
  FWorld->WriteFile("to/holds/f1", "nor this one");
  FWorld->MakeLink("to/link", "plain");
  FWorld->MakeReadOnly("to/readonly");
  FSecond.reset();
  if (!secondVolume.isEmpty()) FSecond = std::make_unique<QTemporaryDir>(secondVolume + u"/ledger-XXXXXX"_qs);
}

void Ledger::Scan() {
  // In one run of eight a browser downloads into the tree; each such folder costs a scan a tenth of a second.
  const bool downloads = Any(8) == 0;
  const QString folder = At("root/d1").replace(u"\\"_qs, u"\\\\"_qs);
  FUser.Home.WriteFile(TTestUser::Firefox + "/profiles.ini", "[Profile0]\nPath=p\n");
  FUser.Home.WriteFile(
      TTestUser::Firefox + "/p/prefs.js",
      downloads ? "user_pref(\"browser.download.dir\", \"" + NameToBytes(folder) + "\");\n" : "");
  SwitchTab(kOverviewTab);
  ShowWizard();
  FWizard->PreselectFolder(At("root"));
  Click(Button("btnAnalyze"));
  ASSERT_TRUE(WaitForResult());
  FRows.clear();
  for (const int tab : {kTopFilesTab, kDownloadsTab}) {
    FTab = tab;
    for (const TListItem* item : List().Items())
      Rows().push_back({FolderOf(*item), item->Caption()});
  }
  FResult = FRows[kTopFilesTab];
  ASSERT_EQ(FResult.size(), 12U);
  EXPECT_EQ(FRows[kDownloadsTab].size(), downloads ? 3U : 0U);
}

void Ledger::SwitchTab(int tab) {
  auto* bar = FForm->findChild<QTabBar*>();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
  FTab = tab == kOverviewTab ? kTopFilesTab : tab;
  if (tab == kTopFilesTab && tab != FActive && FRows[tab].empty()) FRows[tab] = FResult;
  FActive = tab;
}

void Ledger::SwitchBox(int row) {
  TCustomListView& list = List();
  list.Items()[row]->MakeVisible(false);
  const TListItem& item = *list.Items()[row];
  const bool right = Any(8) == 0;  // selects the row and shows the popup
  for (TRow& each : Rows())
    if (!right && each.Folder == FolderOf(item) && each.Name == item.Caption()) each.Checked = !each.Checked;
  if (!right && Any(2) == 0) {
    list.SetItemFocused(list.Items()[row]);
    QTest::keyClick(&list, Qt::Key_Space);
    return;
  }
  const int y =
      list.Layout().RowRect(row - (list.TopItem() != nullptr ? list.TopItem()->Index() : 0)).center().y();
  int x = 0;
  while (x < 60 && (list.GetHitTestInfoAt(x, y) & htOnStateIcon) == 0)
    ++x;
  QTest::mouseClick(list.viewport(), right ? Qt::RightButton : Qt::LeftButton, {}, {x + 3, y});
  if (auto* popup = QApplication::activePopupWidget()) popup->close();
}

// All, none, the others; by the box in the header or by the popup's commands.
void Ledger::CheckAllRows(int way) {
  const bool top = FTab == kTopFilesTab;
  if (way == 3) {
    auto* box = FForm->findChild<QAbstractButton*>(top ? u"CheckBox_All"_qs : u"CheckBox_Downloads"_qs);
    Click(*box);
    for (TRow& row : Rows())
      row.Checked = box->isChecked();
    return;
  }
  const char* const commands[2][3] = {
      {"dxDownloadFilesSelectAll", "dxDownloadFilesDeselectAll", "dxDownloadFilesInvertSelection"},
      {"mniTSelAll", "mniTDeselAll", "mniTInvSel"}};
  FForm->findChild<TdxBarButton*>(QLatin1String(commands[top ? 1 : 0][way]))->Click();
  for (TRow& row : Rows())
    row.Checked = way == 0 || (way == 2 && !row.Checked);
}

// The button of the tool bar, with what the dialogs will answer.
void Ledger::ClickLarge(const char* button, bool moves) {
  static const char* const kTargets[] = {"to/plain", "to/holds", "to/readonly", "to/gone",
                                         "to/link",  "to/other", "root/d2"};
  FMoves = moves;
  FStormy = Any(3) == 0;
  FDialogs.Yes = Any(5) != 0;
  const int target = Any(9);
  FDialogs.Folder = target == 8 && FSecond ? FSecond->path() : At(kTargets[target % 7]);
  FDialogs.Said.clear();
  FExpected.reset();
  auto* action = FForm->findChild<TdxBarButton*>(QLatin1String(button));
  const bool enabled = action->Enabled();
  FBefore = Disk();
  std::atomic<bool> stop{false};
  std::thread storm;
  if (FStormy && enabled)
    storm = std::thread([&] {
      while (!stop)
        Storm();
    });
  Click(*FForm->findChild<QToolBar*>(u"dxbrManager1Bar1"_qs)->widgetForAction(action));
  stop = true;
  if (storm.joinable()) storm.join();
  EXPECT_EQ(FDialogs.Said.size(), enabled ? 1 : 0);
  if (!enabled) {
    EXPECT_EQ(Difference(Disk(), FBefore), "");
    return;
  }
  ++FOperations;
  if (FStormy) return CheckAfterStorm();
  EXPECT_EQ(Difference(Disk(), *FExpected), "") << (moves ? "move" : "delete");
  Rows() = FExpectedRows;
  EXPECT_FALSE(!moves && FDialogs.Yes && action->Enabled());
}

void Ledger::DialogShows() {
  for (int i = Any(3); i > 0 && !FStormy; --i)
    Disturb();
  const TDisk disk = FStormy ? FBefore : Disk();
  FExpected = disk;
  FMayGo.clear();
  for (const TRow& row : Rows())
    if (!FMoves && FDialogs.Yes && row.Checked)
      if (const auto found = disk.find(row.Path()); found != disk.end()) FMayGo.insert(found->second);
  // In the order in which the list shows them.
  FExpectedRows.clear();
  for (const TListItem* item : List().Items())
    for (const TRow& row : Rows())
      if (row.Folder == FolderOf(*item) && row.Name == item->Caption()) FExpectedRows.push_back(row);
  FShownRows = FExpectedRows;
  if (FMoves)
    ExpectMove();
  else if (FDialogs.Yes)
    ExpectDelete();
}

// No link from the scanned root to the folder of the row; one that was moved lies where the user said.
bool Ledger::Reached(const TRow& row) const {
  if (row.Moved) return true;
  QString folder = row.Folder;
  for (; folder.size() > At("root").size(); folder = folder.section(u'/', 0, -2)) {
    const auto found = FExpected->find(folder);
    if (found == FExpected->end() || found->second != "folder") return false;
  }
  return true;
}

QString RealFolder(const TDisk& disk, const QString& folder) {
  const auto found = disk.find(folder);
  if (found == disk.end() || !found->second.startsWith("link ")) return folder;
  return QString::fromUtf8(found->second.mid(5));
}

void Ledger::ExpectDelete() {
  std::erase_if(FExpectedRows, [this](const TRow& row) {
    if (!row.Checked) return false;
    const QString path = RealFolder(*FExpected, row.Folder) + u'/' + row.Name;
    if (Reached(row) && IsFile(*FExpected, path)) FExpected->erase(path);
    return true;
  });
}

void Ledger::ExpectMove() {
  const QString named = QDir::fromNativeSeparators(*FDialogs.Folder);
  const QFileInfo folder(named);
  if (!folder.isDir() || !folder.isWritable()) return;
  const QString target = RealFolder(*FExpected, named);
  for (TRow& row : FExpectedRows) {
    const QString from = RealFolder(*FExpected, row.Folder) + u'/' + row.Name;
    const QString to = target + u'/' + row.Name;
    if (!row.Checked || !Reached(row) || !IsFile(*FExpected, from) || FExpected->contains(to)) continue;
    (*FExpected)[to] = FExpected->at(from);
    FExpected->erase(from);
    row.Folder = named;
    row.Moved = true;
  }
}

void Ledger::Disturb() {
  const QByteArray folder = "root/d" + QByteArray::number(Any(4));
  const QByteArray file = folder + "/f" + QByteArray::number(Any(4));
  const QByteArray fresh = QByteArray::number(++FNumber);
  if (Any(3) == 0) return Replace(folder);
  if (FSwapped.contains(folder)) return;  // a link stands there
  switch (Any(4)) {
    case 0:
      return FWorld->WriteFile(folder + "/new" + fresh, "new " + fresh);
    case 1:
      return FWorld->WriteFile("to/plain/f" + QByteArray::number(Any(4)), "in the way " + fresh);
    default:
      break;
  }
  if (!GetFileStatus(At(file))) return;
  FWorld->Rename(file, "hold/" + fresh);
  switch (Any(4)) {
    case 0:
      return FWorld->MakeLink(file, "../../precious/f0");
    case 1:
      return FWorld->WriteFile(file + "/inner", "inner " + fresh);
    case 2:
      return FWorld->WriteFile(file, "another " + fresh);
    default:
      return;
  }
}

// A folder gives its place to a link that leads to files of the same names, or gets it back.
void Ledger::Replace(const QByteArray& folder) {
  if (const auto swapped = FSwapped.find(folder); swapped != FSwapped.end()) {
    FWorld->Remove(folder);
    FWorld->Rename(swapped->second, folder);
    FSwapped.erase(swapped);
    return;
  }
  if (!GetFileStatus(At(folder))) return;
  FSwapped[folder] = "hold/d" + QByteArray::number(++FNumber);
  FWorld->Rename(folder, FSwapped[folder]);
  FWorld->MakeLink(folder, "../precious");
}

// One folder goes and comes, with a link in its place meanwhile, and so does one file. Any thread.
void Ledger::Storm() {
  namespace fs = std::filesystem;
  std::error_code failed;
  const fs::path root = FWorld->Path().toStdU16String();
  fs::rename(root / "root/d0", root / "hold/storm", failed);
  if (!failed) {
    fs::create_directory_symlink("../precious", root / "root/d0", failed);
    std::this_thread::yield();
    if (!failed) fs::remove(root / "root/d0", failed);
    fs::rename(root / "hold/storm", root / "root/d0", failed);
  }
  fs::rename(root / "root/d3/f1", root / "hold/storm file", failed);
  if (failed) return;
  std::this_thread::yield();
  fs::rename(root / "hold/storm file", root / "root/d3/f1", failed);
}

// What was met in the storm is not known; but nothing is lost that was not chosen, whoever stood where.
void Ledger::CheckAfterStorm() {
  std::set<QByteArray> left;
  const TDisk after = Disk();
  for (const auto& [path, what] : after) {
    left.insert(what);
    EXPECT_FALSE(path.contains(u".tallyscope-"_qs)) << "litter: " << path.toStdString();
  }
  for (const auto& [path, what] : *FExpected)
    EXPECT_TRUE(FMayGo.contains(what) || left.contains(what)) << path.toStdString();
  for (int file = 0; file < 4; ++file)
    EXPECT_TRUE(after.contains(At("precious/f" + QByteArray::number(file))));
  if (!FMoves) {
    Rows() = FExpectedRows;
    return;
  }
  Rows().clear();
  for (const TListItem* item : List().Items()) {
    const TRow& before = FShownRows[Rows().size()];
    const QString folder = FolderOf(*item);
    Rows().push_back({folder, item->Caption(), item->Checked(), before.Moved || folder != before.Folder});
  }
}

void Ledger::Check() {
  std::vector<TRow> shown;
  for (const TListItem* item : List().Items())
    shown.push_back({FolderOf(*item), item->Caption(), item->Checked()});
  EXPECT_TRUE(std::is_permutation(shown.begin(), shown.end(), Rows().begin(), Rows().end()))
      << "shown: " << TextOf(shown) << "\nexpected: " << TextOf(Rows());
}

void Ledger::Step() {
  const int rows = List().Items().Count();
  const int kind = Any(10);
  SCOPED_TRACE("kind " + std::to_string(kind));
  switch (kind) {
    case 0:
      return SwitchTab(std::array{kOverviewTab, kTopFilesTab, kDownloadsTab}[static_cast<size_t>(Any(3))]),
             SwitchTab(FTab);
    case 1:
      QTest::keyClick(&List(), static_cast<Qt::Key>(Qt::Key_1 + Any(4)), Qt::ControlModifier);
      return;
    case 2:
      return CheckAllRows(Any(4));
    case 3:
      return Disturb();
    case 4:
      return ClickLarge("lbtnDelete", false);
    case 5:
    case 6:
      return ClickLarge("lbtnMove", true);
    default:
      if (rows > 0) SwitchBox(Any(rows));
  }
}

void Ledger::Run(unsigned seed) {
  FRandom.seed(seed);
  MakeWorld(qEnvironmentVariable("TALLYSCOPE_SECOND_VOLUME",
                                 QDir(u"/dev/shm"_qs).exists() ? u"/dev/shm"_qs : QString()));
  Scan();
  SwitchTab(Any(4) == 0 ? kDownloadsTab : kTopFilesTab);
  for (int step = 0; step < 14 && !HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step();
    Check();
  }
}

}  // namespace

TEST_F(Ledger, NothingIsLostButWhatWasChosen) {
  bool isNumber = false;
  const int given = qEnvironmentVariableIntValue("TALLYSCOPE_LEDGER_RUNS", &isNumber);
  const int runs = isNumber ? given : 200;
  const auto first = static_cast<unsigned>(qEnvironmentVariableIntValue("TALLYSCOPE_LEDGER_SEED"));
  for (int run = 0; run < runs && !HasFailure(); ++run) {
    SCOPED_TRACE("seed " + std::to_string(first + static_cast<unsigned>(run)));
    Run(first + static_cast<unsigned>(run));
  }
  EXPECT_GT(FOperations, runs) << "deletes and moves really happened";
}
