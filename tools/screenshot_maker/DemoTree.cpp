#include "DemoTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

struct TDemoFile {
  const char* Path;
  double Megabytes;
};

constexpr TDemoFile kFiles[] = {
    {"Holiday 2024.mkv", 8210.4},
    {"backup-home.tar.gz", 5630.2},
    {"Thesis (final).pdf", 48.6},
    {"notes.txt", 0.02},
    {"Videos/Grand Canyon 4K.mp4", 12840.7},
    {"Videos/Birthday.mp4", 2120.9},
    {"Videos/clips/cut-01.mov", 940.3},
    {"Music/Concert recording.flac", 1310.5},
    {"Music/Albums/01 - Overture.flac", 61.2},
    {"Pictures/2023/panorama.tiff", 420.8},
    {"Pictures/2024/IMG_2041.raw", 88.4},
    {"Downloads/debian-12-dvd.iso", 3940.1},
    {"Downloads/dataset.zip", 2760.0},
    {"Downloads/setup.bin", 310.7},
    {"Virtual Machines/workbench.qcow2", 21504.0},
    {"Projects/engine/build/engine.a", 760.3},
    {"Projects/engine/src/main.cpp", 0.04},
    {"Documents/Tax 2023/receipts.pdf", 112.3},
    {"Documents/letters.odt", 1.4},
    {"Mail/archive-2019.mbox", 1890.6},
};

}  // namespace

TDemoTree::TDemoTree() : FFolder(QDir::tempPath() + u"/demo-XXXXXX"_qs) {
  constexpr double kBytesPerMegabyte = 1024.0 * 1024.0;
  for (const TDemoFile& file : kFiles)
    AddFile(Root() + u'/' + QString::fromUtf8(file.Path),
            static_cast<qint64>(file.Megabytes * kBytesPerMegabyte));
}

void TDemoTree::AddFile(const QString& path, qint64 bytes) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || !file.resize(bytes))
    qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
}
