// A volume index library made of plain lists, in the place of the real one: for records that fail, volumes
// that are declined, reads that never end and the order of calls, which no real volume can be made to give.
#pragma once

#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>
#include <vector>

struct TFakeRecord {
  QString Name;
  quint64 Size = 0;
  bool Fails = false;
  QString Path = u"/v/"_qs;
};

// What the library answers, and what was called, in order. Reset between tests; the scan thread reads it
// while a scan runs.
struct TFakeVolindex {
  bool Accepts = false;
  std::vector<TFakeRecord> Files;
  std::vector<TFakeRecord> Folders;
  QStringList Unreadable;
  std::function<void()> DuringScan;  // runs on the scan thread, inside the volume read
  QStringList Calls;
};

TFakeVolindex& FakeVolindex();

// What the scan passed on as it began; any thread.
extern std::atomic<int> FakeElevation;

// How often Tallyscope_Stop was called; any thread.
extern std::atomic<int> FakeStops;
