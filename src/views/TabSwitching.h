// What happens when another tab becomes active: its selection ends, its commands go on and off, its panel of
// the status bar shows. Main thread.
#pragma once

class TMainCommands;
class TOverviewTab;
class TTopFilesTab;

// The commands and tabs outlive it.
class TTabSwitching {
 public:
  TTabSwitching(TMainCommands& commands, TOverviewTab& overview, TTopFilesTab& topFiles)
      : FCommands(commands), FOverview(overview), FTopFiles(topFiles) {}

  // The tab of this index has become active. An index that has no tab to act on sets the commands alone.
  void Activated(int index);

 private:
  void SetCommands(int index);

  TMainCommands& FCommands;
  TOverviewTab& FOverview;
  TTopFilesTab& FTopFiles;
};
