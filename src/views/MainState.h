// What the main form holds for the whole program and hands to its parts. Main thread.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include "support/PLanguage.h"
#include "views/DriveList.h"

// Owned by the main form, made before its parts and living as long as the process.
struct TMainState {
  explicit TMainState(const QString& languageFolder) : FLanguage(u"Tallyscope"_qs, languageFolder) {}

  TLanguage FLanguage;
  QString FAnalyzingText;
  QString FCompletedText;

  TDriveList FDrives;

  // Bytes below each folder that a scan or the browser has measured, by full path without a delimiter.
  QHash<QString, qint64> FFolderSizes;

  // Folders visited before and after the present one.
  QStringList FBackHistory;
  QStringList FForwardHistory;

  // A result was filled that the folder browser has not been pointed at yet.
  bool FContentsPending = false;
};
