// The monkey on the gallery's list.
#include "GalleryList.h"
#include "controls/list/Monkey.h"

#include <QTest>
#include <QWheelEvent>

namespace {

class TRdMonkey : public TMonkey {
 protected:
  [[nodiscard]] TRdListView& List() { return FGallery->List(); }
  [[nodiscard]] bool Dead() const { return FGallery == nullptr || FDying; }

  void Make() {
    FGallery = std::make_unique<TGalleryList>();
    Handle();
    List().Bars().SetShowCustomVertScroll(Rarely(2));
    List().Bars().SetShowCustomHorzScroll(Rarely(2));
    List().AllSkinGroup().GroupClickExpand = Rarely(2);
    List().SetOpenOwnerDraw(!Rarely(5));
    List().resize(500 + Below(700), 200 + Below(300));
    List().show();
  }

  void Destroy() {
    if (std::exchange(FDying, true)) return;
    FGallery.reset();
    FDying = false;
  }

  void Refill() {
    const TEventScope scope(List().EventLife());  // keeps the rows that are being filled
    while (List().Groups().Count() < 3)
      List().Groups().Add(u"group"_qs);
    while (!Dead() && List().Columns().Count() < 9) {
      List().Columns().Add().SetColumnType(static_cast<TListColumnType>(Below(ltDefault + 1)));
      if (!Dead()) List().Columns()[List().Columns().Count() - 1].ComboBoxItems = {u"a"_qs, u"b"_qs};
    }
    for (int row = Below(15); row > 0 && !Dead(); --row) {
      TkListItem* const item = List().Items().Add(Below(6) - 1);
      for (int column = Below(12); column > 0 && !Dead() && item != nullptr && !item->Gone(); --column)
        item->SubItems().Add(QString::number(column));
    }
  }

  TkListItem* SomeRow() {
    const TkItemQuickList& all = List().Model().AllItems();
    return all.Count() > 0 ? all[Below(all.Count())] : nullptr;
  }
  TkListGroup* SomeGroup() { return List().Groups().Find(Below(List().Groups().Count() + 1)); }

  void Something() override {
    if (!Dead() && Rarely(5)) ToAll();
    if (!Dead() && Rarely(3)) ToRow(SomeRow());
    if (!Dead() && Rarely(6)) ToGroup(SomeGroup());
  }

  // The row may lack the cell that was edited; no exception may pass through Qt.
  void Hide() {
    try {
      List().HideEditors();
    } catch (const EListError&) {
    }
  }

  void ToAll() {
    TRdListView& list = List();
    Any({[&] { list.Clear(); }, [&] { list.AlphaSort(); }, [&] { list.DeleteSelected(); }, [&] { Hide(); },
         [&] { list.Model().Checks().SetAll(Rarely(2)); },
         [&] { list.SetOpenGroupDraw(!list.OpenGroupDraw()); }, [&] { Refill(); },
         [&] {
           if (list.Columns().Count() > 0) list.Columns().Delete(Below(list.Columns().Count()));
         },
         [&] {
           list.OnSelectItem = nullptr;
           Handle();
         },
         [&] {
           if (Rarely(3))
             Any({[&] { Destroy(); }, [&] { list.Columns().Clear(); }, [&] { list.Groups().Clear(); }});
         }});
  }

  void ToRow(TkListItem* row) {
    if (row == nullptr) return;
    Any({[&] { row->Delete(); }, [&] { row->Delete(); }, [&] { row->SetChecked(!row->Checked()); },
         [&] { row->SetGroupID(Below(5) - 1); }, [&] { Rarely(2) ? row->Hide() : row->Show(); },
         [&] { row->MoveTo(Below(20)); }, [&] { row->SetSubItemChecked(Below(9), Rarely(2)); },
         [&] { row->SetSelected(!row->Selected()); },
         [&] { row->SetCaption(QString::number(Below(1000))); }});
  }

  void ToGroup(TkListGroup* group) {
    if (group == nullptr) return;
    Any({[&] { List().Groups().Delete(group->GroupID()); },
         [&] { group->SetGroupChecked(!group->GroupChecked()); },
         [&] { group->SetGroupExpand(!group->GroupExpand()); }});
  }

  void Handle() {
    TRdListView& list = List();
    TMonkey::Handle(list);
    const auto anything = [this](auto&&...) { Anything(); };
    const auto item = [this](TListItem* told, auto&&...) { ToldOf(*told); };
    list.GroupShowHide = [this](TRdListView&, TkListGroup& group, bool& show) {
      Anything();
      (void)group.Header().size();
      if (Rarely(8)) show = !show;
    };
    list.OnButtonClick = list.OnLabelClick = list.OnIconLabelClick = list.OnLabelIconClick =
        list.OnStarCaptionClick = item;
    list.EditOnEnter = list.EditOnExit = list.EditOnChange = item;
    list.OnSubItemChecking = list.OnSubItemChecked = item;
    list.OnColumnComboBoxDropDown = list.OnColumnComboBoxChange = item;
    list.OnItemCheckBoxClick = item;
    list.OnCheckBoxClick = anything;
    list.EditOnKeyPress = anything;
    list.OnWriteLog = anything;
  }

  void Gesture() {
    TRdEditors& editors = List().Editors();
    if (editors.Shown() && Rarely(2)) {
      QWidget& editor =
          editors.Edit().isVisible() ? static_cast<QWidget&>(editors.Edit()) : editors.ComboBox();
      return Rarely(2) ? Key(editor) : Mouse(*editors.ComboBox().viewport());
    }
    const auto wheel = [this] {
      QWheelEvent event({50, 50}, {50, 50}, {}, {0, 120 * (Below(3) - 1)}, {}, {}, Qt::NoScrollPhase, false);
      QCoreApplication::sendEvent(List().viewport(), &event);
    };
    const auto edit = [this] {
      if (TkListItem* const row = SomeRow())
        List().Editors().Open(*row, Below(List().Columns().Count()), std::nullopt, false);
    };
    const auto key = [this] { Key(List()); };
    const auto mouse = [this] { Mouse(*List().viewport()); };
    Any({[this] { Header(List()); },
         [this] { Mouse(Rarely(2) ? List().Bars().VertBar() : List().Bars().HorzBar()); },
         [this] { List().SetTopIndex(Below(12)); }, [this] { Anything(); }, wheel, edit, key, key, key, mouse,
         mouse, mouse});
  }

  void Check() {
    ASSERT_NO_FATAL_FAILURE(CheckRows(List()));
    const auto& all = List().Model().AllItems();
    const auto checked = [](const TkListItem* row) { return row->Checked(); };
    ASSERT_EQ(List().Model().Checks().CheckedTotal(), std::count_if(all.begin(), all.end(), checked));
    for (int row = 0; row < List().Items().Count(); ++row) {
      const TkListItem& item = *List().Items()[row];
      ASSERT_TRUE(all.Contains(item) && item.HasState(kRowChecked) == item.Checked());
    }
    for (const auto& group : List().Groups()) {
      const TkItemQuickList& members = group->Items();
      ASSERT_EQ(group->CheckedCount(), std::count_if(members.begin(), members.end(), checked));
      for (const TkListItem* row : members)
        ASSERT_TRUE(all.Contains(*row) && row->Group() == group.get());
      for (const TkListItem* row : group->HiddenItems())
        ASSERT_TRUE(row->Hidden() && members.Contains(*row));
    }
    const TkListItem* const edited = List().MouseState().EditItem;
    ASSERT_TRUE(edited == nullptr || all.Contains(*edited));
    ASSERT_EQ(edited != nullptr, List().Editors().Shown());
  }

  std::unique_ptr<TGalleryList> FGallery;
};

}  // namespace

TEST_F(TRdMonkey, NoHandlerLeavesAnythingDangling) {
  for (int step = 0; step < Steps() && !HasFatalFailure(); ++step) {
    SCOPED_TRACE(step);
    if (FGallery == nullptr) Make();
    if (List().Items().Count() < 6 || List().Columns().Count() < 5) Refill();
    if (FGallery != nullptr) Gesture();
    if (FGallery != nullptr && step % 40 == 0) List().grab();
    if (step % 50 == 0) QCoreApplication::processEvents();
    if (FGallery != nullptr) Check();
  }
  Destroy();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
