#include "GalleryWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

constexpr int kSideWidth = 290;
constexpr int kLineMargin = 26;
constexpr int kLeastLog = 60;

// One row each: what to do, and what shall come of it.
constexpr const char* kToTry[] = {
    "Rest on a row, a button, a name, \"Rate\": each takes its hot look",
    "Hold a button, leave it, come back: pressed only over it",
    "Click a note, type, press Enter; press Esc to drop it",
    "Click a schedule and choose a line, by mouse and by keys",
    "Check rows, a group, the box in the header",
    "Collapse and expand a group by its arrow, by Plus and Minus",
    "Click column headers: up, down; Action clears the mark",
    "Drag dividers: On is fixed, Application stops at 120",
    "Narrow the window: both bars come, wheel and drag them",
    "Ctrl+Left, Ctrl+Right, then F2: every cell without a mouse",
};

QString NameOf(const TListItem* item) {
  const auto* const row = static_cast<const TkListItem*>(item);
  if (row->IsGroupHeader() && row->Group() != nullptr) return row->Group()->Header();
  return item->Caption().section(u'\r', 0, 0);
}

}  // namespace

TGalleryWindow::TGalleryWindow() : FLog(new QPlainTextEdit(this)) {
  auto* const side = new QVBoxLayout;
  AddSwitches(*side);
  AddCheckList(*side);
  FLog->setReadOnly(true);
  FLog->setMinimumHeight(kLeastLog);
  FLog->setAccessibleName(u"Events"_qs);
  side->addWidget(FLog, 1);
  auto* const columns = new QHBoxLayout(this);
  columns->addWidget(&List(), 1);
  columns->addLayout(side);
  Record();
  Use(TGallerySkin::Light);
  UseCustomBars(true);
}

void TGalleryWindow::AddSwitches(QVBoxLayout& side) {
  FLooks = new QComboBox(this);
  FLooks->setAccessibleName(u"Skin"_qs);
  FLooks->addItems({u"No skin"_qs, u"Light skin"_qs, u"Dark skin"_qs});
  connect(FLooks, &QComboBox::activated, this, [this](int index) { Use(static_cast<TGallerySkin>(index)); });
  side.addWidget(FLooks);
  const auto add = [this, &side](const QString& text, bool on, auto apply) {
    auto* const box = new QCheckBox(text, this);
    box->setChecked(on);
    connect(box, &QCheckBox::toggled, this, apply);
    side.addWidget(box);
  };
  add(u"Skinned scroll bars"_qs, true, [this](bool on) { UseCustomBars(on); });
  add(u"Rows drawn by the skin"_qs, true, [this](bool on) { List().SetOpenOwnerDraw(on); });
  add(u"Group rows"_qs, true, [this](bool on) { List().SetOpenGroupDraw(on); });
  add(u"A click on a group row expands it"_qs, false,
      [this](bool on) { List().AllSkinGroup().GroupClickExpand = on; });
}

void TGalleryWindow::AddCheckList(QVBoxLayout& side) {
  auto* const box = new QGroupBox(u"To try"_qs, this);
  box->setFixedWidth(kSideWidth);
  auto* const lines = new QVBoxLayout(box);
  for (const char* const text : kToTry) {
    auto* const line = new QLabel(u"\u2022 "_qs + QString::fromUtf8(text), box);
    line->setWordWrap(true);
    line->setMinimumHeight(line->heightForWidth(kSideWidth - kLineMargin));
    lines->addWidget(line);
  }
  side.addWidget(box);
}

void TGalleryWindow::Use(TGallerySkin skin) {
  FLooks->setCurrentIndex(static_cast<int>(skin));
  ApplyPalette(skin);
  ApplySkin(List(), skin);
  if (OnSkin) OnSkin(skin);
}

void TGalleryWindow::UseCustomBars(bool custom) {
  List().Bars().SetShowCustomVertScroll(custom);
  List().Bars().SetShowCustomHorzScroll(custom);
  List().Bars().SetShowVertScroll(!custom);
  List().Bars().SetShowHorzScroll(!custom);
}

void TGalleryWindow::Log(const QString& text) {
  FLog->appendPlainText(text);
}

void TGalleryWindow::Record() {
  TRdListView& list = List();
  const auto cell = [this](const char* event) {
    return [this, event](const TListItem* item, int column) {
      Log(QLatin1String(event) + u": "_qs + NameOf(item) + u", "_qs + List().Columns()[column].Caption());
    };
  };
  list.OnButtonClick = cell("Button");
  list.OnLabelClick = cell("Label");
  list.OnIconLabelClick = cell("Icon text");
  list.OnLabelIconClick = cell("Icon");
  list.OnStarCaptionClick = cell("Rate");
  list.EditOnExit = cell("Edited");
  list.OnColumnComboBoxChange = [this](TListItem* item, int column, int) {
    Log(u"Chosen: "_qs + NameOf(item) + u", "_qs + List().Columns()[column].Caption());
  };
  list.OnItemChecked = [this](TListItem* item) {
    Log((item->Checked() ? u"Checked: "_qs : u"Unchecked: "_qs) + NameOf(item));
  };
  list.OnColumnClick = [this](TListColumn* column) {
    Log(u"Sort by "_qs + column->Caption());
    const int sub = column->Index() - 1;
    const int sign = List().MouseState().SortState == ssDown ? -1 : 1;
    if (List().MouseState().SortColumn == nullptr) return;
    List().CustomSort([sub, sign](TListItem& a, TListItem& b) {
      const QString first = sub < 0 ? a.Caption() : a.SubItems().Text(sub);
      const QString second = sub < 0 ? b.Caption() : b.SubItems().Text(sub);
      return sign * QString::localeAwareCompare(first, second);
    });
  };
}
