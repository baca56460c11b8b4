#include "controls/shell/RzShellList.h"

#include "platform/Icons.h"
#include "platform/Paths.h"
#include "platform/SystemSettings.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr int kImageSide = 16;
constexpr qint64 kSlice = 6;          // milliseconds that the window does not answer
constexpr int kRowsPerLook = 32;      // between two looks at the clock
constexpr qint64 kRestPerWork = 5;    // times as long as the refresh before it took
constexpr qint64 kLongestRest = 500;  // milliseconds
constexpr int kSizeColumn = 0;        // as sub-items, in a folder
constexpr int kDateColumn = 2;
constexpr int kColumnWidths[] = {320, 110, 160, 150};

// Files of one key have one type and icon; that of a folder or place is no file's.
QString KeyOf(const TShellEntry& entry) {
  return entry.IsFolder() ? u'/' + QString::number(static_cast<int>(entry.Kind)) : FileTypeKey(entry.Name);
}

TPlaceIcon PlaceOf(TShellKind kind) {
  switch (kind) {
    case TShellKind::FixedVolume:
      return TPlaceIcon::FixedVolume;
    case TShellKind::RemovableVolume:
      return TPlaceIcon::RemovableVolume;
    case TShellKind::NetworkVolume:
      return TPlaceIcon::NetworkVolume;
    case TShellKind::Home:
      return TPlaceIcon::Home;
    default:
      return TPlaceIcon::Folder;
  }
}

QIcon IconOf(const TShellEntry& entry, const QStyle& style) {
  const QIcon icon = entry.IsFolder() ? PlaceIcon(PlaceOf(entry.Kind)) : FileIcon(entry.Name);
  if (!icon.isNull()) return icon;
  if (!entry.IsFolder()) return style.standardIcon(QStyle::SP_FileIcon);
  const bool isVolume = entry.Kind < TShellKind::Home;
  return style.standardIcon(isVolume ? QStyle::SP_DriveHDIcon : QStyle::SP_DirIcon);
}

}  // namespace

class TRzShellList::TItem : public TListItem {
 public:
  TItem(TListItems& owner, TShellEntry entry) : TListItem(owner), Shell(std::move(entry)) { SetData(&Shell); }

  TRzShellListData Shell;
};

// Rows that leave all together leave at once; telling of their end and freeing them takes long where they are
// very many, and is done one by one.
class TRzShellList::TRows : public TListItems {
 public:
  using TListItems::TListItems;

  void LeaveAll() {
    for (TListItem* const item : TakeAll())
      FLeft.emplace_back(item);
  }

  // False if none is left. The handler may be the end of the list.
  bool EndOne() {
    if (FLeft.empty()) return false;
    std::unique_ptr<TListItem> row = std::move(FLeft.back());
    FLeft.pop_back();
    const TListLifePtr life = Owner().Life();
    const TEventScope scope(life);
    Owner().ItemDeleting(*row);
    life->Bury(std::move(row));
    return true;
  }

  void Clear() override {
    const TEventScope scope(Owner().Life());
    TListItems::Clear();
    while (!scope.ListGone() && EndOne()) {
    }
  }

 private:
  std::vector<std::unique_ptr<TListItem>> FLeft;
};

TRzShellList::TRzShellList(QWidget* parent)
    : TListView(parent),
      FImages({kImageSide, kImageSide}),
      FRows(new TRows(*this)),
      FNotice(new QLabel(viewport())) {
  ReplaceCollections(std::unique_ptr<TListItems>(FRows), std::make_unique<TListColumns>());
  setAccessibleName(u"Contents"_qs);
  SetOptions({.CheckBoxes = true, .RowSelect = true, .ReadOnly = true});
  SetSmallImages(&FImages);
  for (const int width : kColumnWidths)
    Columns().Add(QString(), width);
  FNotice->setAlignment(Qt::AlignCenter);
  FNotice->setWordWrap(true);
  FNotice->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* const layout = new QVBoxLayout(viewport());
  layout->addWidget(FNotice);
  ShowUnreadable(false);
  TListView::OnDblClick = [this] { OpenSelected(); };
  FWatch.OnChange = [this] { Refresh(); };
  QObject::connect(&FStep, &QTimer::timeout, this, [this] { Step(); });
  QObject::connect(&FLeaving, &QTimer::timeout, this, [this] { FreeLeftRows(); });
  FRest.setSingleShot(true);
  QObject::connect(&FRest, &QTimer::timeout, this, [this] {
    if (FStale)
      Refresh();
    else
      FStep.start(0);
  });
  QObject::connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { TypeVisible(); });
}

TRzShellList::~TRzShellList() {
  FListing.Abandon();
  FStep.stop();
  FLeaving.stop();
  Clear();  // the rows know the list
  SetSmallImages(nullptr);
}

void TRzShellList::ItemGone(TListItem& item) {
  if (!FByName.isEmpty()) FByName.remove(static_cast<TItem&>(item).Shell.FEntry.Path);
  if (&item == FTop) FTop = nullptr;
  TListView::ItemGone(item);
}

void TRzShellList::SetPath(const QString& path) {
  FListing.Abandon();
  FWatch.Watch(nullptr);
  FStep.stop();
  FRest.stop();
  FPath = ExcludeTrailingPathDelimiter(path);
  FFolder = {};
  FByName.clear();
  FMerging = false;
  FSorted = false;
  FAnnounced = false;
  FRows->LeaveAll();
  FLeaving.start(0);
  SetTopIndex(0);
  ShowUnreadable(false);
  FState = TState::Filling;
  List();
  if (OnLink) OnLink();
  if (OnPathChanged) OnPathChanged();
}

void TRzShellList::FreeLeftRows() {
  QElapsedTimer clock;
  clock.start();
  const TListLifePtr life = EventLife();
  bool more = true;
  for (int done = 1; more && (done % kRowsPerLook != 0 || clock.elapsed() < kSlice); ++done) {
    more = FRows->EndOne();
    if (life->Gone()) return;
  }
  if (!more) FLeaving.stop();
}

// What was listed before and is not merged yet takes long to free, and goes with the thread.
void TRzShellList::List() {
  FIsListing = true;
  FStale = false;
  FClock.start();
  FListing.Start([this, path = FPath, left = std::exchange(FListed, {})](TDetachedTask::TLine& line) {
    ListShell(path, line, [this](TShellListed listed) { Listed(std::move(listed)); });
  });
}

// A list that has rows waits for all. The new watch has kept what the former one would have told from here
// on, and is on the folder that is there now.
void TRzShellList::Listed(TShellListed listed) {
  if (!listed.IsAll && Items().Count() > 0) return;
  FListed = std::move(listed);
  if (FListed.IsAll) {
    FIsListing = false;
    if (FListed.Changes) FWatch.Watch(std::move(FListed.Changes));
    ShowUnreadable(!FListed.Readable);
  }
  Merge();
}

// One at a time, and with a rest behind each, so that a folder that changes all the time leaves room for all
// else.
void TRzShellList::Refresh() {
  if (FIsListing || FMerging || FRest.isActive())
    FStale = true;
  else
    List();
}

void TRzShellList::ShowUnreadable(bool unreadable) {
  FNotice->setText(unreadable ? FTexts.Unreadable : QString());
  FNotice->setVisible(unreadable);
  if (unreadable)
    FState = TState::Unreadable;
  else if (FState == TState::Unreadable)
    FState = TState::Filling;
}

TRzShellListData& TRzShellList::ShellData(const TListItem& item) {
  return *static_cast<TRzShellListData*>(item.Data());
}

TRzShellList::TItem* TRzShellList::ItemAt(int row) const {
  return static_cast<TItem*>(Items().Item(row));
}

void TRzShellList::Merge() {
  if (!FAnnounced) FFolder = FListed.Folder;
  FMerging = true;
  FChanged = false;
  FCount = -1;
  FStep.start(0);
  StepMerge();
}

void TRzShellList::Step() {
  if (FMerging) return StepMerge();
  QElapsedTimer clock;
  clock.start();
  while (TypeNext()) {
    if (clock.elapsed() >= kSlice) return;
  }
  FStep.stop();
}

// The row at the top stays there while others come and go above it.
void TRzShellList::StepMerge() {
  QElapsedTimer clock;
  clock.start();
  FTop = TopIndex() > 0 ? ItemAt(TopIndex()) : nullptr;
  {
    const TListUpdate update(Items());
    if (Items().Count() != FCount) BeginMerge();
    for (int done = 1; FMerging && (done % kRowsPerLook != 0 || clock.elapsed() < kSlice); ++done)
      FMerging = FSorted ? MergeByName() : MergeInOrder();
    FCount = Items().Count();
  }
  if (TItem* const top = std::exchange(FTop, nullptr)) SetTopIndex(top->Index());
  if (!FMerging) EndMerge();
}

void TRzShellList::BeginMerge() {
  FNext = 0;
  FRow = FSorted ? Items().Count() : 0;
  FByName.clear();
  for (int row = 0; FSorted && row < Items().Count(); ++row)
    FByName.insert(ItemAt(row)->Shell.FEntry.Path, ItemAt(row));
}

// False when all is done.
bool TRzShellList::MergeInOrder() {
  TItem* const row = ItemAt(FRow);
  const bool listed = FNext < FListed.Entries.size();
  if (row == nullptr && !listed) return false;
  if (row != nullptr && (!listed || ComesBefore(row->Shell.FEntry, FListed.Entries[FNext]))) {
    if (!FListed.IsAll)
      ++FRow;
    else
      DeleteRow(FRow);
    return true;
  }
  if (row != nullptr && !ComesBefore(FListed.Entries[FNext], row->Shell.FEntry))
    Update(*row, FListed.Entries[FNext]);
  else
    Insert(FRow, FListed.Entries[FNext]);
  ++FRow;
  ++FNext;
  return true;
}

// First what was listed, then from the last row up the rows that were not.
bool TRzShellList::MergeByName() {
  if (FNext < FListed.Entries.size()) {
    const TShellEntry& entry = FListed.Entries[FNext++];
    if (TItem* const item = FByName.take(entry.Path))
      Update(*item, entry);
    else
      Insert(Items().Count(), entry);
    return true;
  }
  if (!FListed.IsAll || FByName.isEmpty() || FRow == 0) return false;
  --FRow;
  if (FByName.contains(ItemAt(FRow)->Shell.FEntry.Path)) DeleteRow(FRow);
  return true;
}

void TRzShellList::Insert(int row, const TShellEntry& entry) {
  auto item = std::make_unique<TItem>(Items(), entry);
  item->SetCaption(entry.Name);
  item->SubItems().Add(entry.SizeText);
  item->SubItems().Add(QString());
  item->SubItems().Add(entry.DateText);
  if (OnFillItem) OnFillItem(item.get());
  Items().AddItem(std::move(item), row);
  FChanged = true;
}

void TRzShellList::Update(TItem& item, const TShellEntry& entry) {
  TShellEntry& shown = item.Shell.FEntry;
  if (shown.Size == entry.Size && shown.Modified == entry.Modified && shown.Name == entry.Name) return;
  shown = entry;
  item.SetCaption(entry.Name);
  if (!entry.IsFolder()) item.SubItems().Put(kSizeColumn, entry.SizeText);
  item.SubItems().Put(kDateColumn, entry.DateText);
  if (OnFillItem) OnFillItem(&item);
  FChanged = true;
}

void TRzShellList::DeleteRow(int row) {
  if (ItemAt(row) == FTop) FTop = ItemAt(row + 1);
  Items().Delete(row);
  FChanged = true;
}

// What was checked were files of the same names in the folder that has gone.
void TRzShellList::UncheckRows() {
  const TListUpdate update(Items());
  for (TListItem* item : Items())
    item->SetChecked(false);
}

void TRzShellList::EndMerge() {
  const bool another = FFolder.IsOpen() && FListed.Folder.IsOpen() && !FListed.Folder.IsSame(FFolder);
  FFolder = FListed.Folder;
  const TListLifePtr life = EventLife();
  if (another) UncheckRows();
  if (life->Gone()) return;
  FListed.Entries = {};
  FByName.clear();
  FTypedRows = 0;
  TypeVisible();
  if (!FListed.IsAll) return;
  FRest.start(static_cast<int>(std::min(kRestPerWork * FClock.elapsed(), kLongestRest)));
  if (FState == TState::Filling) FState = TState::Complete;
  const bool isFirst = !std::exchange(FAnnounced, true);
  // While the folder goes on changing, only the rows in view get their types.
  if (!isFirst) FStep.stop();
  if (isFirst && OnFolderChanged) OnFolderChanged();
  if (!isFirst && FChanged && OnRefreshed) OnRefreshed();
}

void TRzShellList::OpenSelected() {
  if (OnDblClick) OnDblClick();
  const TListItem* const item = Selected();
  if (item != nullptr && ShellData(*item).IsFolder()) SetPath(QString(ShellData(*item).Path()));
}

// All types are there before anything is sorted by them.
void TRzShellList::AlphaSort() {
  FTypedRows = 0;
  while (TypeNext()) {
  }
  FSorted = true;
  FCount = -1;  // a merge under way begins anew
  TListView::AlphaSort();
}

QString TRzShellList::TypeText(TListItem& item) {
  Type(static_cast<TItem&>(item));
  return item.SubItems().Text(TypeColumn());
}

void TRzShellList::TypeVisible() {
  if (Items().Updating()) return;
  const int end = Layout().EndOfVisibleRows();
  for (int row = TopIndex(); row < end; ++row) {
    if (TItem* const item = ItemAt(row)) Type(*item);
  }
}

bool TRzShellList::TypeNext() {
  TItem* const item = ItemAt(FTypedRows++);
  if (item != nullptr) Type(*item);
  return item != nullptr;
}

void TRzShellList::Type(TItem& item) {
  if (std::exchange(item.Shell.FTyped, true)) return;
  const TType& type = TypeOf(item.Shell.FEntry);
  item.SubItems().Put(TypeColumn(), type.Text);
  item.SetImageIndex(type.Image);
}

const TRzShellList::TType& TRzShellList::TypeOf(const TShellEntry& entry) {
  const QString key = KeyOf(entry);
  if (const auto known = FTypes.find(key); known != FTypes.end()) return known->second;
  const QIcon icon = IconOf(entry, *style());
  const auto [image, isNew] = FImageOf.try_emplace(icon.name().isEmpty() ? key : icon.name(), -1);
  if (isNew) image->second = FImages.AddIcon(icon);
  return FTypes[key] = {TypeNameOf(entry), image->second};
}

QString TRzShellList::TypeNameOf(const TShellEntry& entry) const {
  switch (entry.Kind) {
    case TShellKind::FixedVolume:
      return FTexts.FixedVolume;
    case TShellKind::RemovableVolume:
      return FTexts.RemovableVolume;
    case TShellKind::NetworkVolume:
      return FTexts.NetworkVolume;
    case TShellKind::Home:
      return FTexts.Home;
    case TShellKind::Folder:
      return TypeTextOfFolder();
    case TShellKind::File:
      return TypeTextOfFile(entry.Name);
  }
  return {};
}

void TRzShellList::resizeEvent(QResizeEvent* event) {
  TListView::resizeEvent(event);
  TypeVisible();
}

void TRzShellList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F5) return Refresh();
  TListView::keyPressEvent(event);
}
