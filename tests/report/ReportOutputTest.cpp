#include "report/ReportOutput.h"

#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include <limits>

namespace {

const TPathTotals kTotals[] = {{1, 2, 1536}, {0, 0, 0}};
const TFileInfoEx kFolders[] = {{u"/a/"_qs, u"sub"_qs, 2'000'000'000}, {u"/a/"_qs, u"x"_qs, 5}};
const TFileInfoEx kOddFiles[] = {{u"/a/"_qs, u"q\"b\\n\n"_qs, std::numeric_limits<quint64>::max()},
                                 {u"/a/"_qs, u'f' + QString(QChar(0xDCFF)), (quint64{1} << 53) + 1}};

TReport SampleReport() {
  return {.Paths = {u"/a"_qs, u"/b"_qs},
          .PathTotals = kTotals,
          .Folders = kFolders,
          .Files = kOddFiles,
          .DownloadFiles = {},
          .Stopped = false,
          .Milliseconds = 1234};
}

QByteArray Decimal(const char* text) {
  return QByteArray(text).replace('.', QLocale().decimalPoint().toUtf8());
}

}  // namespace

TEST(ReportAsText, ShowsTotalsThenTheListsWithTheirSizesAligned) {
  TReport report = SampleReport();
  report.Files = {};
  EXPECT_EQ(ReportAsText(report), Decimal("/a\n"
                                          "  1 file, 2 folders, 1536 bytes (1.50 KB)\n"
                                          "/b\n"
                                          "  0 files, 0 folders, 0 bytes (0 Byte)\n"
                                          "\n"
                                          "Largest folders\n"
                                          "  1.86 GB  /a/sub\n"
                                          "   5 Byte  /a/x\n"));
}

TEST(ReportAsText, NamesComeOutAsTheirBytes) {
  const QByteArray text = ReportAsText(SampleReport());
  EXPECT_TRUE(text.endsWith("  /a/f\xff\n")) << text.constData();
  EXPECT_TRUE(text.contains("\nLargest files\n"));
  EXPECT_FALSE(text.contains("Download files"));
}

TEST(ReportAsJson, IsValidAndHasEverything) {
  QJsonParseError error;
  const QJsonObject json = QJsonDocument::fromJson(ReportAsJson(SampleReport()), &error).object();
  ASSERT_EQ(error.error, QJsonParseError::NoError) << qPrintable(error.errorString());
  EXPECT_EQ(json.keys(), QStringList({u"downloadFiles"_qs, u"largestFiles"_qs, u"largestFolders"_qs,
                                      u"paths"_qs, u"seconds"_qs, u"stopped"_qs}));
  const QJsonObject path = json[u"paths"].toArray()[0].toObject();
  EXPECT_EQ(path,
            QJsonObject({{u"path"_qs, u"/a"_qs}, {u"files"_qs, 1}, {u"folders"_qs, 2}, {u"bytes"_qs, 1536}}));
  EXPECT_EQ(json[u"largestFolders"].toArray()[1].toObject(),
            QJsonObject({{u"path"_qs, u"/a/"_qs}, {u"name"_qs, u"x"_qs}, {u"size"_qs, 5}}));
  EXPECT_EQ(json[u"stopped"], false);
  EXPECT_EQ(json[u"seconds"].toDouble(), 1.234);
}

// Where names are bytes an escape of our own keeps them; where they are UTF-16 those of JSON do.
TEST(ReportAsJson, NamesAreEscapedReversiblyAndIntegersAreExact) {
  const QByteArray json = ReportAsJson(SampleReport());
  EXPECT_TRUE(json.contains(": 18446744073709551615}"));
  EXPECT_TRUE(json.contains(": 9007199254740993}"));
  const QJsonArray files = QJsonDocument::fromJson(json).object()[u"largestFiles"].toArray();
  const QString bytes[] = {u"q\"b\\\\n\n"_qs, u"f\\xff"_qs};
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(files[i][u"name"].toString(), HasDrives() ? kOddFiles[i].Name : bytes[i]) << i;
  EXPECT_EQ(json.contains("f\\udcff"), HasDrives());
  EXPECT_TRUE(QString::fromUtf8(json).isValidUtf16());
}

TEST(ReportAsCsv, IsATableWithTheWholePathLast) {
  TReport report = SampleReport();
  report.DownloadFiles = kFolders;
  const QByteArray undecodable = HasDrives() ? "f\xed\xb3\xbf" : "f\\xff";
  const QByteArray odd = HasDrives() ? "q\"\"b\\n\n" : "q\"\"b\\\\n\n";
  EXPECT_EQ(ReportAsCsv(report),
            "kind,bytes,files,folders,path\n"
            "path,1536,1,2,\"/a\"\n"
            "path,0,0,0,\"/b\"\n"
            "folder,2000000000,,,\"/a/sub\"\n"
            "folder,5,,,\"/a/x\"\n"
            "file,18446744073709551615,,,\"/a/" +
                odd +
                "\"\n"
                "file,9007199254740993,,,\"/a/" +
                undecodable +
                "\"\n"
                "download,2000000000,,,\"/a/sub\"\n"
                "download,5,,,\"/a/x\"\n");
}
