#include "report/ReportOutput.h"

#include "report/VolumeBalance.h"

#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include <limits>

namespace {

const TPathTotals kTotals[] = {{1, 2, 1536, TPathUsage{4096, 10240, 3}}, {0, 0, 0}};
const TFileInfoEx kFolders[] = {{u"/a/"_qs, u"sub"_qs, 2'000'000'000}, {u"/a/"_qs, u"x"_qs, 5}};
const TFileInfoEx kOddFiles[] = {{u"/a/"_qs, u"q\"b\\n\n"_qs, std::numeric_limits<quint64>::max()},
                                 {u"/a/"_qs, u'f' + QString(QChar(0xDCFF)), (quint64{1} << 53) + 1}};
const TReport kReport = {.Paths = {u"/a"_qs, u"/b"_qs},
                         .PathTotals = kTotals,
                         .Folders = kFolders,
                         .Files = kOddFiles,
                         .DownloadFiles = {},
                         .Stopped = false,
                         .Milliseconds = 1234};

}  // namespace

TEST(ReportAsText, ShowsTotalsThenTheListsWithTheirSizesAlignedAndNamesAsTheirBytes) {
  const QByteArray expected =
      "/a\n"
      "  1 file, 2 folders, 1536 bytes (1.50 KB), 4096 bytes (4.00 KB) on disk\n"
      "  10240 bytes used on the volume = 4096 by these files + 6144 (6.00 KB) left: the file system's own, "
      "snapshots, files deleted but open, 3 unreadable folders\n"
      "/b\n"
      "  0 files, 0 folders, 0 bytes (0 Byte)\n"
      "\n"
      "Largest folders\n"
      "  1.86 GB  /a/sub\n"
      "   5 Byte  /a/x\n"
      "\n"
      "Largest files\n";
  const QByteArray text = ReportAsText(kReport).replace(QLocale().decimalPoint().toUtf8(), ".");
  EXPECT_TRUE(text.startsWith(expected)) << text.constData();
  EXPECT_TRUE(text.endsWith("  /a/f\xff\n") && !text.contains("Download files")) << text.constData();
}

TEST(ReportAsJson, IsValidAndHasEverything) {
  QJsonParseError error;
  const QJsonObject json = QJsonDocument::fromJson(ReportAsJson(kReport), &error).object();
  ASSERT_EQ(error.error, QJsonParseError::NoError) << qPrintable(error.errorString());
  EXPECT_EQ(json.keys().join(u' '), u"downloadFiles largestFiles largestFolders paths seconds stopped"_qs);
  EXPECT_EQ(json[u"paths"][0].toObject(), QJsonObject({{u"path"_qs, u"/a"_qs},
                                                       {u"files"_qs, 1},
                                                       {u"folders"_qs, 2},
                                                       {u"bytes"_qs, 1536},
                                                       {u"allocated"_qs, 4096},
                                                       {u"volumeUsed"_qs, 10240},
                                                       {u"unreadable"_qs, 3}}));
  EXPECT_EQ(json[u"paths"][1].toObject().keys().join(u' '), u"bytes files folders path"_qs);
  EXPECT_EQ(json[u"largestFolders"][1].toObject(),
            QJsonObject({{u"path"_qs, u"/a/"_qs}, {u"name"_qs, u"x"_qs}, {u"size"_qs, 5}}));
  EXPECT_EQ(json[u"stopped"], false);
  EXPECT_EQ(json[u"seconds"].toDouble(), 1.234);
}

// Where names are bytes an escape of our own keeps them; where they are UTF-16 those of JSON do.
TEST(ReportAsJson, NamesAreEscapedReversiblyAndIntegersAreExact) {
  const QByteArray json = ReportAsJson(kReport);
  EXPECT_TRUE(json.contains(": 18446744073709551615}") && json.contains(": 9007199254740993}"));
  const QJsonValue files = QJsonDocument::fromJson(json).object()[u"largestFiles"];
  const QString bytes[] = {u"q\"b\\\\n\n"_qs, u"f\\xff"_qs};
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(files[i][u"name"].toString(), HasDrives() ? kOddFiles[i].Name : bytes[i]) << i;
  EXPECT_EQ(json.contains("f\\udcff"), HasDrives());
  EXPECT_TRUE(QString::fromUtf8(json).isValidUtf16());
}

TEST(ReportAsCsv, IsATableWithTheWholePathLast) {
  TReport report = kReport;
  report.DownloadFiles = kFolders;
  report.Unreadable = QStringList(u"/a/shut"_qs);
  const QByteArray undecodable = HasDrives() ? "f?" : "f\\xff";
  const QByteArray odd = HasDrives() ? "q\"\"b\\n\n" : "q\"\"b\\\\n\n";
  EXPECT_EQ(ReportAsCsv(report),
            "kind,bytes,files,folders,allocated,volumeUsed,unreadable,path\n"
            "path,1536,1,2,4096,10240,3,\"/a\"\n"
            "path,0,0,0,,,,\"/b\"\n"
            "folder,2000000000,,,,,,\"/a/sub\"\n"
            "folder,5,,,,,,\"/a/x\"\n"
            "file,18446744073709551615,,,,,,\"/a/" +
                odd +
                "\"\n"
                "file,9007199254740993,,,,,,\"/a/" +
                undecodable +
                "\"\n"
                "download,2000000000,,,,,,\"/a/sub\"\n"
                "download,5,,,,,,\"/a/x\"\n"
                "unreadable,,,,,,,\"/a/shut\"\n");
}

// Blocks that files share are counted for each, so that they may come to more than the volume has in use.
TEST(VolumeBalance, AddsUpWhateverIsLeft) {
  const struct {
    TVolumeBalance Balance;
    const char* Text;
  } rows[] = {{{900, 500, 1},
               "900 bytes used on the volume = 500 by these files + 400 (400 Byte) left: the file "
               "system's own, snapshots, files deleted but open, 1 unreadable folder"},
              {{500, 900, 0},
               "500 bytes used on the volume = 900 by these files - 400 (400 Byte) that they "
               "share or keep compressed"}};
  for (const auto& [balance, text] : rows) {
    EXPECT_EQ(balance.Text(), QString::fromUtf8(text));
    EXPECT_EQ(static_cast<qint64>(balance.Files) + balance.Left(), static_cast<qint64>(balance.Used));
  }
  TPathTotals folder = kTotals[0];
  folder.Usage->VolumeUsed.reset();
  TReport report = {};
  report.Paths = kReport.Paths;
  report.PathTotals = {&folder, 1};
  report.Unreadable = QStringList(u"/a/shut"_qs);
  const QByteArray text = ReportAsText(report);
  EXPECT_TRUE(text.contains(" on disk, 3 unreadable folders\n")) << text.constData();
  EXPECT_TRUE(text.endsWith("\n\nUnreadable folders\n  /a/shut\n")) << text.constData();
  folder.Usage->Unreadable = 0;
  EXPECT_TRUE(ReportAsText(report).contains(" on disk\n"));
  EXPECT_TRUE(ReportAsJson(report).contains("\"unreadableFolders\": [\n    \"/a/shut\"\n  ],\n"));
}
