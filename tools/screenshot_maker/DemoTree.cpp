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
    {"Torrents/openSUSE-Leap-15.6.iso", 4411.5},
    {"Torrents/Big Buck Bunny 4K.mkv", 691.8},
    {"Incoming/old radio plays.zip", 843.2},
    {"Fetched/planet-extract.osm.pbf", 1287.6},
    {"Fetched/fonts.tar.xz", 21.9},
    {"gPodder/Downloads/Science hour 112.mp3", 54.3},
    {"gPodder/Downloads/Science hour 113.mp3", 57.0},
    {"FrostWire/Torrent Data/Concert at night.flac", 402.7},
};

// Where applications were told to put their downloads; "~" stands for the home folder.
struct TDemoSettings {
  const char* Path;
  const char* Text;
};
constexpr TDemoSettings kSettings[] = {
    {".config/qBittorrent/qBittorrent.conf", "[BitTorrent]\nSession\\DefaultSavePath=~/Torrents\n"},
    {".aMule/amule.conf", "[eMule]\nIncomingDir=~/Incoming\n"},
    {".config/aria2/aria2.conf", "dir=~/Fetched\n"},
    {".frostwire5/frostwire.props", "DEFAULT_TORRENT_DATA_DIR_SETTING=~/FrostWire/Torrent Data\n"},
};

}  // namespace

TDemoTree::TDemoTree() : FFolder(QDir::tempPath() + u"/demo-XXXXXX"_qs) {
  constexpr double kBytesPerMegabyte = 1024.0 * 1024.0;
  for (const TDemoFile& file : kFiles)
    AddFile(Root() + u'/' + QString::fromUtf8(file.Path),
            static_cast<qint64>(file.Megabytes * kBytesPerMegabyte));
  for (const TDemoSettings& settings : kSettings)
    AddSettings(Root() + u'/' + QLatin1String(settings.Path), settings.Text);
  qputenv("HOME", Root().toLocal8Bit());
  qunsetenv("XDG_CONFIG_HOME");
}

void TDemoTree::AddSettings(const QString& path, QByteArray text) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(text.replace('~', Root().toLocal8Bit())) < 0)
    qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
}

void TDemoTree::AddFile(const QString& path, qint64 bytes) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || !file.resize(bytes))
    qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
}
