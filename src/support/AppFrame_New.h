// The folders that an application of the suite needs.
#pragma once

#include "platform/KnownFolders.h"

#include <QString>

// A value that never changes after its making; empty texts for what the system does not know. Any thread.
struct TAppFrame {
  // This user's application data and that of all users; no delimiter at the end.
  const QString FUserDataPath = GetKnownFolder(TSpecialFolder::AppData);
  const QString FCommonDataPath = GetKnownFolder(TSpecialFolder::CommonAppData);
  // Of the running program's file, with the delimiter at the end.
  const QString FAppPath = ProgramFolder();
};
