// What the whole program shares: the user's language and the drives of the computer. Main thread.
#pragma once

#include <QString>

#include "support/PLanguage.h"
#include "views/rows/DriveList.h"

// Owned by the main form, made before its parts and living as long as the process.
struct TMainState {
  explicit TMainState(const QString& languageFolder) : FLanguage(u"Tallyscope"_qs, languageFolder) {}

  TLanguage FLanguage;
  TDriveList FDrives;
};
