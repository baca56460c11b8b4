// Runs of the real form over real trees, driven at random by mouse and keys, while another process adds,
// renames, replaces and removes files. A ledger of its own, which knows the rules and no code, tells after
// each step what must be on disk and which rows must be listed. TALLYSCOPE_LEDGER_RUNS is the number of runs
// on each volume, TALLYSCOPE_LEDGER_SEED the first one.
#include <random>
#include <set>

#include "FormsFixture.h"
#include "LedgerVolume.h"
#include "controls/list/rd/RdListView.h"
#include "controls/shell/RzShellCombo.h"
#include "controls/shell/RzShellList.h"

namespace {

// Everything below some folders, by its path with "/" between names: what stands there.
using TDisk = std::map<QString, QByteArray>;

void ReadDisk(const QString& root, TDisk& disk) {
  QDirIterator entries(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
  while (entries.hasNext()) {
    const QFileInfo entry(entries.next());
    const auto content = [&] {
      return ReadWholeFile(QDir::toNativeSeparators(entry.filePath())).value_or("?");
    };
    disk[entry.filePath()] = entry.isSymLink() ? "link " + entry.symLinkTarget().toUtf8()
                             : entry.isDir()   ? "folder"
                                               : "file " + content();
  }
}

// What differs, a line each; empty if nothing does.
std::string Difference(const TDisk& is, const TDisk& expected) {
  QByteArray text;
  for (const bool here : {true, false})
    for (const auto& each : here ? is : expected)
      if (!(here ? expected : is).contains(each.first) || is.at(each.first) != expected.at(each.first))
        text += (here ? "\nis " : "\nexpected ") + each.first.toUtf8() + ' ' + each.second.left(20);
  return text.toStdString();
}

// The entry and all below it.
TDisk Taken(const TDisk& disk, const QString& path) {
  TDisk taken;
  for (const auto& each : disk)
    if (each.first == path || each.first.startsWith(path + u'/')) taken.insert(each);
  return taken;
}

QString RealFolder(const TDisk& disk, const QString& folder) {
  const auto found = disk.find(folder);
  if (found == disk.end() || !found->second.startsWith("link ")) return folder;
  return QString::fromUtf8(found->second.mid(5));
}

// A row as the rules know it.
struct TRow {
  QString Folder, Name;  // no delimiter at the end of the folder
  bool Checked = false;
  bool IsFolder = false;
  QString Moved = {};  // where the folder that the user has named for it lay then; empty for a row not moved
  [[nodiscard]] QString Path() const { return Folder + u'/' + Name; }
  [[nodiscard]] bool IsOf(const TRow& other) const { return Folder == other.Folder && Name == other.Name; }
  bool operator==(const TRow& other) const { return IsOf(other) && Checked == other.Checked; }
};

std::string TextOf(const std::vector<TRow>& rows) {
  QString text;
  for (const TRow& row : rows)
    text += row.Path().section(u'/', -3) + (row.Checked ? u"* "_qs : u" "_qs);
  return text.toStdString();
}

// A command's names on the tool bar, if it is there, in the main menu, in the popup of each tab but the
// first.
using TCommand = std::array<const char*, 5>;
constexpr TCommand kDelete = {"lbtnDelete", "btnDelete", "mniCDelete", "mniTDel",
                              "dxbrbtnDownloadFilesDelete"};
constexpr TCommand kMove = {"lbtnMove", "btnMove", "mniCMove", "mniTMove", "dxbrbtnDownloadFilesMove"};
constexpr TCommand kMarks[] = {
    {nullptr, "btnSelAll", "mniCSelectAll", "mniTSelAll", "dxDownloadFilesSelectAll"},
    {nullptr, "btnDeSelAll", "mniCDeselAll", "mniTDeselAll", "dxDownloadFilesDeselectAll"},
    {nullptr, "btnInverSel", "mniCInvSelAll", "mniTInvSel", "dxDownloadFilesInvertSelection"}};
constexpr const char* kLists[] = {"lvTop", "ShellListContent", "lvTopFile", "lvDownloadsFile"};
constexpr const char* kPopups[] = {nullptr, "pmContent", "pmTop100", "pmDownloadFiles"};

// The other process.
class TDisturber {
 public:
  TDisturber() { FProcess.start(QApplication::applicationDirPath() + u"/ledger_disturber"_qs, {}); }
  ~TDisturber() {
    FProcess.closeWriteChannel();
    FProcess.waitForFinished();
  }
  // True if it was done.
  bool Do(const QString& what, const QString& path = {}, const QString& more = {}) {
    FProcess.write((what + u'\t' + path + u'\t' + more + u'\n').toUtf8());
    while (!FProcess.canReadLine())
      if (!FProcess.waitForReadyRead(60'000)) return ADD_FAILURE() << "no answer", false;
    return FProcess.readLine().startsWith('1');
  }

 private:
  QProcess FProcess;
};

// Before any tree is made.
struct TOnVolume {
  const TLedgerVolume Volume{testing::WithParamInterface<const char*>::GetParam()};
  const TVariables Temporary{{"TMPDIR", Volume.Home}};
};

class Ledger : private TOnVolume, public TFormsTest, public testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    if (!Volume.Refusal.isEmpty()) GTEST_SKIP() << Volume.Refusal.toStdString();
    Open();
    ShowWizard();
    FWizard->reject();
    Join();
    FForm->activateWindow();
    FDialogs.WhileShowing = [this] { DialogShows(); };
  }

  // One run: a new tree, a scan, some steps.
  void Run(unsigned seed);
  void MakeWorld();
  void Scan();
  void Step();

  // What the user does.
  void SwitchTab(int tab);
  void SwitchBox(int row);
  void MarkRows(int way);
  void ClickHeaderBox();
  void Look();
  QMenu* Reach(const TCommand& command, TdxBarButton*& item);
  void Press(TdxBarButton& item, QMenu* menu);
  void Act(const TCommand& command);

  // What others do.
  void Disturb();
  void Replace(const QByteArray& folder);

  // The rules.
  void DialogShows();
  void NoteChosen(const TDisk& disk, const std::function<bool(const TRow&)>& now);
  [[nodiscard]] bool Reached(const TRow& row) const;
  [[nodiscard]] QString PlaceOf(const TRow& row) const;
  void ExpectDelete();
  void ExpectMove();
  void ExpectAt(const QString& from, const QString& to);
  void CheckNothingLost(const TDisk& after);
  void AdoptRows();

  [[nodiscard]] int Any(int count) { return static_cast<int>(FRandom() % static_cast<unsigned>(count)); }
  [[nodiscard]] TCustomListView& List(int tab) {
    return *dynamic_cast<TCustomListView*>(FForm->findChild<QWidget*>(QLatin1String(kLists[tab])));
  }
  [[nodiscard]] TCustomListView& List() { return List(FTab); }
  [[nodiscard]] bool OnContents() const { return FTab == kContentsTab; }
  [[nodiscard]] std::vector<TRow>& Rows() { return FRows[FTab]; }
  [[nodiscard]] TRow ShownRow(const TListItem& item) const {
    const QString path =
        OnContents() ? TRzShellList::ShellData(item).Path() : item.SubItems().Text(0) + u'/' + item.Caption();
    const QString clean = QDir::cleanPath(QDir::fromNativeSeparators(path));
    return {clean.section(u'/', 0, -2), clean.section(u'/', -1), item.Checked()};
  }
  [[nodiscard]] std::vector<TRow> ShownRows() {
    std::vector<TRow> shown;
    for (const TListItem* item : List().Items())
      shown.push_back(ShownRow(*item));
    return shown;
  }
  [[nodiscard]] TDisk Disk() const {
    TDisk disk;
    ReadDisk(QDir::fromNativeSeparators(FWorld->Path()), disk);
    if (FSecond) ReadDisk(FSecond->path(), disk);
    return disk;
  }
  [[nodiscard]] QString At(const QByteArray& name) const {
    return QDir::fromNativeSeparators(FWorld->Path(name));
  }
  [[nodiscard]] QStringList Trashes() const {
    return {FUser.Home.Path(TTestUser::LocalAppData + "/Trash"), QString::fromUtf8(Volume.Trash)};
  }

  TTestUser FUser;
  TDisturber FDisturber;
  std::mt19937 FRandom;
  std::unique_ptr<TTempTree> FWorld;
  std::unique_ptr<QTemporaryDir> FSecond;
  std::map<int, std::vector<TRow>> FRows;  // by tab
  std::vector<TRow> FResult;
  int FActive = kOverviewTab;
  int FTab = kTopFilesTab;                    // the active one, or the last that has check boxes
  int FNumber = 0;                            // makes names and contents unlike all others
  std::map<QByteArray, QByteArray> FSwapped;  // folder to where it was put

  // Contents follows the disk when it may: what its rows are is sure from a look until somebody acts.
  QString FShown;  // the folder as the user named it
  QString FHeld;   // where the folder lies that was there then
  bool FSure = false;
  std::set<QByteArray> FChosen;  // what was checked since the look

  bool FMoves = false;   // what the dialog is for
  bool FStormy = false;  // others act during the walk too
  bool FLoose = false;   // what is met is not known
  TDisk FBefore;
  std::optional<TDisk> FExpected;
  std::vector<TRow> FShownRows;  // in the order of the list
  std::vector<TRow> FExpectedRows;
  std::set<QByteArray> FMayGo;  // contents
  int FOperations = 0;
};

void Ledger::MakeWorld() {
  {
    const TVariables there{{"TMPDIR", Volume.Folder}};
    FWorld = std::make_unique<TTempTree>();
  }
  FSwapped.clear();
  for (const QString& trash : Trashes())
    if (!trash.isEmpty()) QDir(trash).removeRecursively();
  for (int file = 0; file < 11; ++file) {
    const QByteArray folder = file < 9 ? "d" + QByteArray::number(file / 3) + '/' : QByteArray();
    const QByteArray name = folder + 'f' + QByteArray::number(file % 3);
    FWorld->WriteFile("root/" + name, name + QByteArray(100 + 37 * file, '.'));
  }
  for (int file = 0; file < 3; ++file)
    FWorld->WriteFile("precious/f" + QByteArray::number(file), "precious " + QByteArray::number(file));
  for (const char* folder : {"hold", "to/plain", "to/readonly", "to/other"})
    FWorld->MakeFolder(folder);
  FWorld->WriteFile("to/holds/f0", "not this one");
  FWorld->WriteFile("to/holds/d1", "nor this one");
  if (!HasDrives()) FWorld->MakeLink("to/link", "plain");
  FWorld->MakeReadOnly("to/readonly");
  FSecond.reset();
  if (!Volume.Second.isEmpty())
    FSecond = std::make_unique<QTemporaryDir>(QString::fromUtf8(Volume.Second) + u"/ledger-XXXXXX"_qs);
}

void Ledger::Scan() {
  // In one run of eight a browser downloads into the tree; each such folder costs a scan a tenth of a second.
  const bool downloads = Any(8) == 0;
  const QString folder = FWorld->Path("root/d1").replace(u"\\"_qs, u"\\\\"_qs);
  FUser.Home.WriteFile(TTestUser::Firefox + "/profiles.ini", "[Profile0]\nPath=p\n");
  FUser.Home.WriteFile(
      TTestUser::Firefox + "/p/prefs.js",
      downloads ? "user_pref(\"browser.download.dir\", \"" + NameToBytes(folder) + "\");\n" : "");
  SwitchTab(kOverviewTab);
  ShowWizard();
  StartScan(FWorld->Path("root"));
  ASSERT_TRUE(WaitForResult());
  FRows.clear();
  FSure = false;
  FShown.clear();
  for (const int tab : {kTopFilesTab, kDownloadsTab}) {
    FTab = tab;
    Rows() = ShownRows();
  }
  FResult = FRows[kTopFilesTab];
  ASSERT_EQ(FResult.size(), 11U);
  EXPECT_EQ(FRows[kDownloadsTab].size(), downloads ? 3U : 0U);
}

void Ledger::SwitchTab(int tab) {
  auto* bar = FForm->findChild<QTabBar*>();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
  if (tab != kOverviewTab) FTab = tab;
  if (tab == kTopFilesTab && tab != FActive && FRows[tab].empty()) FRows[tab] = FResult;
  FActive = tab;
}

// The list of Contents shows a folder, which is listed as it is now.
void Ledger::Look() {
  const TDisk disk = Disk();
  auto& list = dynamic_cast<TRzShellList&>(List());
  auto& combo = *FForm->findChild<TRzShellCombo*>();
  QString folder = FSecond && Any(6) == 0
                       ? FSecond->path()
                       : At("root" + (Any(3) == 0 ? QByteArray() : "/d" + QByteArray::number(Any(3))));
  if (!FSecond || folder != FSecond->path())
    if (const auto found = disk.find(folder); found == disk.end() || found->second.startsWith("file"))
      folder = At("root");
  const auto go = [&](const QString& to) {
    combo.setEditText(QDir::toNativeSeparators(to));
    QTest::keyClick(&combo, Qt::Key_Return);
    EXPECT_TRUE(WaitFor([&] {
      return QDir::fromNativeSeparators(list.Path()) == to && list.State() != TRzShellList::TState::Filling;
    })) << to.toStdString();
  };
  if (QDir::fromNativeSeparators(list.Path()) == folder) go(At("to"));
  go(folder);
  FShown = folder;
  FHeld = RealFolder(disk, folder);
  FChosen.clear();
  Rows().clear();
  for (const auto& [path, what] : disk)
    if (path.section(u'/', 0, -2) == FHeld)
      Rows().push_back({folder, path.section(u'/', -1), false, what == "folder"});
  FSure = true;
}

void Ledger::SwitchBox(int row) {
  TCustomListView& list = List();
  list.Items()[row]->MakeVisible(false);
  const TRow shown = ShownRow(*list.Items()[row]);
  const bool right = Any(8) == 0;  // selects the row and shows the popup
  for (TRow& each : Rows())
    if (!right && each.IsOf(shown)) each.Checked = !each.Checked;
  if (!right && Any(2) == 0) {
    list.SetItemFocused(list.Items()[row]);
    QTest::keyClick(&list, Qt::Key_Space);
  } else {
    ClickBox(list, row, right ? Qt::RightButton : Qt::LeftButton);
    if (auto* popup = QApplication::activePopupWidget()) popup->close();
  }
  if (OnContents()) NoteChosen(Disk(), [&](const TRow& each) { return each.IsOf(shown); });
}

void Ledger::ClickHeaderBox() {
  auto* box = FForm->findChild<QAbstractButton*>(FTab == kTopFilesTab ? u"CheckBox_All"_qs
                                                                      : u"CheckBox_Downloads"_qs);
  Click(*box);
  for (TRow& row : Rows())
    row.Checked = box->isChecked();
}

// All, none, the others.
void Ledger::MarkRows(int way) {
  TdxBarButton* item = nullptr;
  QMenu* const menu = Reach(kMarks[way], item);
  const bool reaches = FTab != kDownloadsTab || item->objectName().startsWith(u"dx"_qs);
  Press(*item, menu);
  for (TRow& row : Rows())
    if (reaches) row.Checked = way == 0 || (way == 2 && !row.Checked);
  if (OnContents()) NoteChosen(Disk(), [way](const TRow&) { return way != 1; });
}

// Brings one of the places of a command before the mouse: the menu that shows it, null for the tool bar.
QMenu* Ledger::Reach(const TCommand& command, TdxBarButton*& item) {
  const auto find = [&](const char* name) { item = &Command(name); };
  const int way = Any(3);
  if (way == 0 && command[0] != nullptr) return find(command[0]), nullptr;
  if (way == 1 && FActive != kOverviewTab) {
    auto* popup = FForm->findChild<QMenu*>(QLatin1String(kPopups[FTab]));
    QTest::mouseClick(List().viewport(), Qt::RightButton, {}, {40, List().Layout().RowRect(0).center().y()});
    EXPECT_TRUE(popup->isVisible());
    return find(command[static_cast<size_t>(FTab) + 1]), popup;
  }
  auto* bar = FForm->findChild<QMenuBar*>();
  auto* menu = FForm->findChild<QMenu*>(command[0] != nullptr ? u"SubItemFile"_qs : u"SubItemEdit"_qs);
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu->menuAction()).center());
  EXPECT_TRUE(menu->isVisible());
  return find(command[1]), menu;
}

void Ledger::Press(TdxBarButton& item, QMenu* menu) {
  if (menu == nullptr)
    return Click(*FForm->findChild<QToolBar*>(u"dxbrManager1Bar1"_qs)->widgetForAction(&item));
  QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(&item).center());
  while (auto* popup = QApplication::activePopupWidget())
    popup->close();
}

// A delete or move, with what the dialogs will answer.
void Ledger::Act(const TCommand& command) {
  static const char* const kTargets[] = {"to/plain", "to/holds", "to/readonly", "to/gone",
                                         "to/link",  "to/other", "root/d2"};
  FMoves = &command == &kMove;
  FStormy = Any(3) == 0;
  FLoose = FStormy || (OnContents() && !FSure);
  FDialogs.Yes = Any(5) != 0;
  const int target = Any(9);
  FDialogs.Folder =
      QDir::toNativeSeparators(target > 6 && FSecond ? FSecond->path() : At(kTargets[target % 7]));
  FDialogs.Said.clear();
  FExpected.reset();
  TdxBarButton* item = nullptr;
  QMenu* const menu = Reach(command, item);
  const bool enabled = item->Enabled();
  EXPECT_FALSE(FActive == kOverviewTab && enabled);
  FBefore = Disk();
  if (FStormy && enabled) FDisturber.Do(u"storm"_qs, At({}));
  Press(*item, menu);
  if (FStormy && enabled) FDisturber.Do(u"calm"_qs);
  EXPECT_EQ(FDialogs.Said.size(), enabled ? 1 : 0);
  const TDisk after = Disk();
  if (!enabled) {
    EXPECT_EQ(Difference(after, FBefore), "");
    return;
  }
  ++FOperations;
  SCOPED_TRACE(FMoves ? "move" : "delete");
  CheckNothingLost(after);
  if (FLoose) return AdoptRows();
  EXPECT_EQ(Difference(after, *FExpected), "");
  if (FMoves && OnContents()) FSure = false;  // its rows follow the disk in their own time
  Rows() = FExpectedRows;
  EXPECT_FALSE(!FMoves && FDialogs.Yes && Enabled("lbtnDelete"));
}

void Ledger::DialogShows() {
  const bool sure = FSure;
  for (int i = Any(3); i > 0 && !FStormy; --i)
    Disturb();
  const TDisk disk = FStormy ? FBefore : Disk();
  FExpected = disk;
  FExpectedRows.clear();
  std::vector<TRow> rest = Rows();
  for (const TRow& shown : ShownRows()) {  // in the order in which the list shows them
    const auto row =
        std::find_if(rest.begin(), rest.end(), [&](const TRow& each) { return each.IsOf(shown); });
    if (row == rest.end()) continue;
    FExpectedRows.push_back(*row);
    rest.erase(row);
  }
  FShownRows = FExpectedRows;
  FMayGo.clear();
  if (!FMoves && FDialogs.Yes) {
    if (OnContents()) NoteChosen(disk, [](const TRow&) { return false; });
    FMayGo = OnContents() ? FChosen : std::set<QByteArray>();
    for (const TRow& row : Rows())
      if (const auto found = disk.find(PlaceOf(row)); row.Checked && !OnContents() && found != disk.end())
        FMayGo.insert(found->second);
  }
  if (OnContents() && sure && FExpectedRows.size() > 10) FLoose = true;  // it may follow the disk on its way
  if (FMoves)
    ExpectMove();
  else if (FDialogs.Yes)
    ExpectDelete();
}

// What the marks on Contents stand for: the file of the name in the folder that was looked at; for those that
// the user has set now, also the one in the folder that stands there now, which the list may show already. On
// Windows there may be no trash for a folder.
void Ledger::NoteChosen(const TDisk& disk, const std::function<bool(const TRow&)>& now) {
  const auto note = [&](const QString& path) {
    for (const auto& [each, what] : Taken(disk, path))
      if (each == path || HasDrives()) FChosen.insert(what);
  };
  for (const TRow& row : ShownRows()) {
    if (!row.Checked) continue;
    note(FHeld + u'/' + row.Name);
    if (now(row)) note(RealFolder(disk, FShown) + u'/' + row.Name);
  }
}

// No link from the scanned root to the folder of the row; one that was moved lies where the user said, and no
// link is there now.
bool Ledger::Reached(const TRow& row) const {
  if (OnContents()) return true;
  QString folder = row.Moved.isEmpty() ? row.Folder : row.Moved;
  for (; folder.startsWith(At({})); folder = folder.section(u'/', 0, -2)) {
    const auto found = FExpected->find(folder);
    if (found == FExpected->end() || found->second != "folder") return false;
  }
  return true;
}

QString Ledger::PlaceOf(const TRow& row) const {
  return (OnContents() ? FHeld : row.Moved.isEmpty() ? row.Folder : row.Moved) + u'/' + row.Name;
}

void Ledger::ExpectDelete() {
  std::erase_if(FExpectedRows, [this](const TRow& row) {
    if (!row.Checked) return false;
    const QString path = PlaceOf(row);
    const auto found = FExpected->find(path);
    const bool goes =
        Reached(row) && found != FExpected->end() && (found->second == "folder") == row.IsFolder;
    if (goes)
      for (const auto& each : Taken(*FExpected, path))
        FExpected->erase(each.first);
    return goes || !OnContents();
  });
}

void Ledger::ExpectMove() {
  const QString named = QDir::fromNativeSeparators(*FDialogs.Folder);
  const QFileInfo folder(named);
  if (!folder.isDir() || !(folder.isWritable() || HasDrives())) return;
  const QString target = RealFolder(*FExpected, named);
  const auto volume = [this](const QString& path) { return FSecond && path.startsWith(FSecond->path()); };
  for (TRow& row : FExpectedRows) {
    const QString from = PlaceOf(row);
    const QString to = target + u'/' + row.Name;
    const auto found = FExpected->find(from);
    if (!row.Checked || !Reached(row) || found == FExpected->end() || FExpected->contains(to)) continue;
    if ((found->second == "folder") != row.IsFolder || to.startsWith(from + u'/')) continue;
    if (row.IsFolder && volume(from) != volume(to)) continue;
    ExpectAt(from, to);
    if (OnContents()) continue;
    row.Folder = named;
    row.Moved = target;
  }
}

void Ledger::ExpectAt(const QString& from, const QString& to) {
  for (const auto& [path, what] : Taken(*FExpected, from)) {
    FExpected->erase(path);
    (*FExpected)[to + path.mid(from.size())] = what;
  }
}

void Ledger::Disturb() {
  const QByteArray folder = "root/d" + QByteArray::number(Any(3));
  const QByteArray file =
      Any(5) == 0 ? "root/f" + QByteArray::number(Any(2)) : folder + "/f" + QByteArray::number(Any(3));
  const QByteArray fresh = QByteArray::number(++FNumber);
  FSure = false;
  if (Any(3) == 0 && !HasDrives()) return Replace(folder);
  if (FSwapped.contains(folder)) return;  // a link stands there
  const int kind = Any(4);
  if (kind < 2) {
    const QByteArray name = kind == 0 ? folder + "/new" + fresh : "to/plain/f" + QByteArray::number(Any(3));
    FDisturber.Do(u"write"_qs, At(name), QString::fromLatin1("new " + fresh));
    return;
  }
  if (!FDisturber.Do(u"rename"_qs, At(file), At("hold/" + fresh))) return;
  const int next = Any(4);
  if (next == 0 && !HasDrives()) FDisturber.Do(u"link"_qs, At(file), At("precious/f0"));
  if (next == 1) FDisturber.Do(u"write"_qs, At(file + "/inner"), QString::fromLatin1("inner " + fresh));
  if (next == 2) FDisturber.Do(u"write"_qs, At(file), QString::fromLatin1("another " + fresh));
}

// A folder gives its place to a link that leads to files of the same names, or gets it back.
void Ledger::Replace(const QByteArray& folder) {
  const auto swapped = FSwapped.find(folder);
  const QByteArray hold =
      swapped == FSwapped.end() ? "hold/d" + QByteArray::number(++FNumber) : swapped->second;
  if (swapped != FSwapped.end()) {
    FDisturber.Do(u"unlink"_qs, At(folder));  // the user may have chosen that link, too
    if (FDisturber.Do(u"rename"_qs, At(hold), At(folder)) && FHeld == At(hold)) FHeld = At(folder);
    FSwapped.erase(swapped);
  } else if (FDisturber.Do(u"rename"_qs, At(folder), At(hold))) {
    FDisturber.Do(u"link"_qs, At(folder), At("precious"));
    if (FHeld == At(folder)) FHeld = At(hold);
    FSwapped[folder] = hold;
  }
}

// Whatever was met on the way: nothing is gone that was not chosen, whoever stood where.
void Ledger::CheckNothingLost(const TDisk& after) {
  std::set<QByteArray> left;
  TDisk trash;
  for (const QString& folder : Trashes())
    if (!folder.isEmpty()) ReadDisk(folder, trash);
  for (const auto& [path, what] : after) {
    left.insert(what);
    EXPECT_FALSE(path.contains(u".tallyscope-"_qs)) << "litter: " << path.toStdString();
  }
  for (const auto& each : trash)
    left.insert(each.second);
  for (const auto& [path, what] : FStormy ? FBefore : *FExpected)
    EXPECT_TRUE(FMayGo.contains(what) || left.contains(what)) << path.toStdString();
}

void Ledger::AdoptRows() {
  if (OnContents()) {
    FSure = false;
    return;
  }
  if (!FMoves) {
    Rows() = FExpectedRows;
    return;
  }
  std::vector<TRow> rows = ShownRows();
  for (size_t i = 0; i < rows.size(); ++i)
    rows[i].Moved =
        rows[i].Folder == FShownRows[i].Folder ? FShownRows[i].Moved : RealFolder(FBefore, rows[i].Folder);
  Rows() = rows;
}

void Ledger::Step() {
  if (OnContents() && (FShown.isEmpty() || Any(FSure ? 6 : 2) == 0)) return Look();
  const int kind = Any(11);
  SCOPED_TRACE("kind " + std::to_string(kind));
  switch (kind) {
    case 0:
      SwitchTab(Any(kTabCount));
      if (FActive == kOverviewTab) Act(Any(2) == 0 ? kDelete : kMove);
      if (FActive == kOverviewTab) SwitchTab(FTab);
      return;
    case 1:
      QTest::keyClick(&List(), static_cast<Qt::Key>(Qt::Key_1 + Any(4)), Qt::ControlModifier);
      return;
    case 2:
      return OnContents() || Any(3) != 0 ? MarkRows(Any(3)) : ClickHeaderBox();
    case 3:
      return Disturb();
    case 4:
    case 5:
    case 6:
    case 7:
      return Act(kind < 6 ? kDelete : kMove);
    default:
      if (const int rows = List().Items().Count(); rows > 0) SwitchBox(Any(rows));
  }
}

void Ledger::Run(unsigned seed) {
  FRandom.seed(seed);
  MakeWorld();
  Scan();
  SwitchTab(FRows[kDownloadsTab].empty() ? Any(2) + kContentsTab : Any(3) + kContentsTab);
  for (int step = 0; step < 14 && !HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step();
    if (OnContents() && !FSure) continue;
    const std::vector<TRow> shown = ShownRows();
    EXPECT_TRUE(std::is_permutation(shown.begin(), shown.end(), Rows().begin(), Rows().end()))
        << "shown: " << TextOf(shown) << "\nexpected: " << TextOf(Rows());
  }
}

}  // namespace

TEST_P(Ledger, NothingIsLostButWhatWasChosen) {
  bool isNumber = false;
  const int given = qEnvironmentVariableIntValue("TALLYSCOPE_LEDGER_RUNS", &isNumber);
  const int runs = isNumber ? given : HasDrives() ? 15 : 70;
  const auto first = static_cast<unsigned>(qEnvironmentVariableIntValue("TALLYSCOPE_LEDGER_SEED"));
  for (int run = 0; run < runs && !HasFailure(); ++run) {
    SCOPED_TRACE("seed " + std::to_string(first + static_cast<unsigned>(run)));
    Run(first + static_cast<unsigned>(run));
  }
  EXPECT_TRUE(runs < 15 || FOperations > runs) << "deletes and moves really happened";
}

INSTANTIATE_TEST_SUITE_P(OnVolumes, Ledger, testing::ValuesIn(LedgerVolumes()),
                         [](const auto& kind) { return std::string(kind.param); });
