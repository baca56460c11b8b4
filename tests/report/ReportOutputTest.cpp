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
      "  1 file, 2 folders, 1536 bytes (1.50 KB)\n"
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
  EXPECT_EQ(json[u"paths"][0].toObject(),
            QJsonObject({{u"path"_qs, u"/a"_qs}, {u"files"_qs, 1}, {u"folders"_qs, 2}, {u"bytes"_qs, 1536}}));
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
