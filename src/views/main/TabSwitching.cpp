#include "views/main/TabSwitching.h"

#include "controls/bars/TabContainerDockSite.h"
#include "controls/picture/Picture.h"
#include "views/commands/Commands.h"
#include "views/contents/ContentsTab.h"
#include "views/downloads/DownloadsTab.h"
#include "views/overview/OverviewTab.h"
#include "views/topfiles/TopFilesTab.h"

namespace {

template <typename TTab>
TResultTab* Make(const TTabParts& parts, QWidget& panel) {
  return new TTab(parts, panel);
}

constexpr std::array<TTabRow, kTabCount> kTabs = {{
    {"DockPnlOverview", "Overview", "tab_overview16", false, TTabStatus::Computer, &Make<TOverviewTab>},
    {"DockPnlcontent", "Contents", "tab_contents16", true, TTabStatus::Subject, &Make<TContentsTab>},
    {"DockPnlFile", "Top 100 Files", "tab_topfiles16", true, TTabStatus::RowCount, &Make<TTopFilesTab>},
    {"dxDockPnlDownloads", "Download Directory", "tab_downloads16", false, TTabStatus::RowCount,
     &Make<TDownloadsTab>},
}};

TdxDockPanel* AddPanel(const TTabRow& row, TdxTabContainerDockSite& site) {
  auto* panel = new TdxDockPanel(site);
  panel->setObjectName(QLatin1String(row.Panel));
  panel->SetCaption(QLatin1String(row.Caption));
  panel->SetPicture(TPicture::FromResource(QLatin1String(row.Picture)));
  return panel;
}

}  // namespace

std::span<const TTabRow, kTabCount> TabRows() {
  return kTabs;
}

TTabSwitching::TTabSwitching(const TTabParts& parts, TdxTabContainerDockSite& site)
    : FParts(parts), FSite(site) {
  for (size_t index = 0; index < kTabs.size(); ++index) {
    FPanels[index] = AddPanel(kTabs[index], FSite);
    FTabs[index] = kTabs[index].Make(FParts, *FPanels[index]);
  }
  // Behind the panels, the first of which becomes active as it is made.
  FSite.OnActiveChildChanged = [this] { Activated(); };
}

void TTabSwitching::Activate(TTabIndex index) {
  if (FSite.ActiveChildIndex() == index)
    Activated();
  else
    FSite.SetActiveChildIndex(index);
}

// The form switches tabs as it is made and shown, long before commands and status bar may follow: that begins
// with Start. A tab that can't do without the wizard gives way to the first one.
void TTabSwitching::Activated() {
  if (!FStarted) return;
  const int index = FSite.ActiveChildIndex();
  const TTabRow& row = kTabs[static_cast<size_t>(index)];
  if (row.NeedsScanForm && FParts.Host.ScanForm() == nullptr) return FSite.SetActiveChildIndex(kOverviewTab);
  TResultTab& tab = *FTabs[static_cast<size_t>(index)];
  tab.Activate();
  ApplyEnableRules(FParts.Commands, static_cast<TTabIndex>(index), TTabEvent::Activated, tab.CanGoUp());
  ShowStatus(row.Status, tab);
}

void TTabSwitching::ShowStatus(TTabStatus status, const TResultTab& tab) {
  TStatusLine& line = FParts.StatusLine;
  if (status == TTabStatus::RowCount) return line.ShowCount(tab.RowCount());
  line.ShowDetails();
  if (status == TTabStatus::Computer)
    line.SetComputer();
  else
    line.SetSubject(tab.Subject());
}
