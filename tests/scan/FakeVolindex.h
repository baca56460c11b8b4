// A volume index library made of plain lists, in the place of the real one: for records that fail, volumes
// that are declined and the order of calls, which no real volume can be made to give.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

struct TFakeRecord {
  QString Path;
  QString Name;
  quint64 Size = 0;
  bool Fails = false;
};

// What the library answers, and what was called, in order. Reset between tests; the scan thread reads it
// while a scan runs.
struct TFakeVolindex {
  bool Accepts = false;
  std::vector<TFakeRecord> Files;
  std::vector<TFakeRecord> Folders;
  quint64 FolderSize = 0;
  std::function<void()> DuringScan;  // runs on the scan thread, inside the volume read

  QStringList Calls;
};

TFakeVolindex& FakeVolindex();
