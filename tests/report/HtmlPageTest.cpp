// The page read back: the areas of its tiles, and that no name becomes more than text.
#include "report/HtmlPage.h"

#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "platform/Paths.h"
#include "report/HtmlText.h"
#include "report/Treemap.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <algorithm>
#include <random>

namespace {

// Each folder lies in one before it; sizes from nothing to very much, kinds as they come.
TFolderTree RandomTree(int folders, const QString& name) {
  std::mt19937 random(7);
  std::lognormal_distribution<double> size(12, 4);
  TFolderTree tree;
  for (int i = 0; i < folders; ++i) {
    const auto parent = static_cast<int>(random() % static_cast<unsigned>(std::max(i, 1)));
    TFolderTree::TFolder folder{i == 0 ? QString() : name + QString::number(i), parent, 0, {}};
    for (quint64& bytes : folder.Own)
      bytes = random() % 3 == 0 ? static_cast<quint64>(size(random)) : 0;
    tree.Folders.push_back(folder);
  }
  for (size_t i = tree.Folders.size(); i-- > 0;) {
    for (const quint64 bytes : tree.Folders[i].Own)
      tree.Folders[i].Total += bytes;
    if (i != 0) tree.Folders[static_cast<size_t>(tree.Folders[i].Parent)].Total += tree.Folders[i].Total;
  }
  return tree;
}

QByteArray PageOf(const TFolderTree& tree, const QString& path, const std::vector<TFileInfoEx>& rows = {}) {
  const TPathTotals totals[] = {{5, 2, tree.Folders[0].Total}};
  const TDownloadLocation downloads[] = {{path, {path}}};
  TReport report;
  report.Paths = QStringList(path);
  report.PathTotals = totals;
  report.Folders = report.Files = report.DownloadFiles = rows;
  report.Trees = {&tree, 1};
  report.Downloads = downloads;
  report.Unreadable = QStringList(path);
  return ReportAsHtml(report);
}

// All kinds that a name can do harm with.
const QString kHostile = u"</title><script>\"'&amp;\x1b\n\u202e\uFFFE"_qs + QChar(0xDC80) + QChar(0xD800);

}  // namespace

TEST(HtmlText, NothingInATextIsMarkupOrUnseen) {
  const QString byte = HasDrives() ? u"\\udcff"_qs : u"\\xff"_qs;
  const std::pair<QString, QString> cases[] = {
      {u"Sommer 資料 é🎵"_qs, u"Sommer 資料 é🎵"_qs},
      {u"<a href=\"x\" b='y'>&lt;"_qs, u"&lt;a href=&quot;x&quot; b=&#39;y&#39;&gt;&amp;lt;"_qs},
      {u"a\x1b[1m\n\x7f\u0085"_qs, u"a\\x1b[1m\\x0a\\x7f\\x85"_qs},
      {u"\u202egpj\u200f.exe\uFEFF\u2028"_qs, u"\\u202egpj\\u200f.exe\\ufeff\\u2028"_qs},
      {u"\uE000\uFFFE"_qs, u"\\ue000\\ufffe"_qs},
      {QChar(0xDCFF) + u"x"_qs + QChar(0xD800), byte + u"x\\ud800"_qs},
      {u"\u0301mark e\u0301"_qs, u"◌\u0301mark e\u0301"_qs}};
  for (const auto& [text, html] : cases)
    EXPECT_EQ(QString::fromUtf8(HtmlText(text)), html);
}

TEST(HtmlText, OfALongTextBothEndsStay) {
  EXPECT_EQ(HtmlText(u"abcdefghi"_qs, 9), "abcdefghi");
  EXPECT_EQ(HtmlText(u"abcdefghij"_qs, 9), "abc…efghij");
  EXPECT_EQ(HtmlText(u"<<<>>>"_qs, 12), "&lt;…&gt;&gt;");
}

TEST(Treemap, BoxesAreAsSquareAsRowsAllow) {
  const quint64 sizes[] = {6, 6, 4, 3, 2, 2, 1};
  const TMapBox expected[] = {{0, 0, 3, 2},
                              {0, 2, 3, 2},
                              {3, 0, 12. / 7, 7. / 3},
                              {33. / 7, 0, 9. / 7, 7. / 3},
                              {3, 7. / 3, 1.2, 5. / 3},
                              {4.2, 7. / 3, 1.2, 5. / 3},
                              {5.4, 7. / 3, .6, 5. / 3}};
  const std::vector<TMapBox> boxes = PartBox({0, 0, 6, 4}, sizes);
  ASSERT_EQ(boxes.size(), std::size(sizes));
  for (size_t i = 0; i < boxes.size(); ++i)
    EXPECT_TRUE(std::abs(boxes[i].X - expected[i].X) < 1e-9 && std::abs(boxes[i].Y - expected[i].Y) < 1e-9 &&
                std::abs(boxes[i].Width - expected[i].Width) < 1e-9 &&
                std::abs(boxes[i].Height - expected[i].Height) < 1e-9)
        << i;
}

// Without overlap, since all lie in the picture and their areas come to its own.
TEST(HtmlPage, TilesAreInThePictureAndInProportion) {
  static const QRegularExpression maps(uR"x(<svg class="map (\w+)".*?</svg>)x"_qs,
                                       QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression tiles(
      uR"x(<rect class="k\d" x="([\d.]+)" y="([\d.]+)" width="([\d.]+)" height="([\d.]+)"><title>[^<]*\((\d+) bytes\))x"_qs);
  for (const int folders : {1, 2, 40, 1500}) {
    const TFolderTree tree = RandomTree(folders, u"name "_qs);
    const QString page = QString::fromUtf8(PageOf(tree, u"/a"_qs));
    auto map = maps.globalMatch(page);
    for (const TMapShape& shape : kMapShapes) {
      ASSERT_TRUE(map.hasNext());
      const QString svg = map.next().captured();
      quint64 bytes = 0;
      int count = 0;
      for (auto tile = tiles.globalMatch(svg); tile.hasNext(); ++count) {
        const QRegularExpressionMatch found = tile.next();
        const TMapBox box{found.captured(1).toDouble(), found.captured(2).toDouble(),
                          found.captured(3).toDouble(), found.captured(4).toDouble()};
        const quint64 own = found.captured(5).toULongLong();
        bytes += own;
        EXPECT_NEAR(box.Area(),
                    static_cast<double>(own) / static_cast<double>(tree.Folders[0].Total) * shape.Width *
                        shape.Height,
                    1);
        EXPECT_TRUE(box.X + box.Width <= shape.Width + 0.01 && box.Y + box.Height <= shape.Height + 0.01);
      }
      EXPECT_EQ(bytes, tree.Folders[0].Total) << "nothing is missing";
      EXPECT_EQ(count, svg.count(u"<rect class"_qs));
      EXPECT_LE(count, shape.MostTiles);
      EXPECT_GE(count, std::min(folders, 20));
    }
  }
}

TEST(HtmlPage, LabelsCoverNoOtherAndStayInTheirFolders) {
  const TFolderTree tree = RandomTree(1500, u"some name "_qs);
  const TMap map = LayOutMap(tree, 1200, 660, 1500);
  const std::vector<TMapLabel> labels = LabelMap(tree, map);
  EXPECT_GT(labels.size(), 20U);
  for (size_t i = 0; i < labels.size(); ++i) {
    const auto folder = std::ranges::find(map.Folders, labels[i].Folder, &TMapFolder::Folder);
    EXPECT_TRUE(labels[i].Box.X >= folder->Box.X &&
                labels[i].Box.X + labels[i].Box.Width <= folder->Box.X + folder->Box.Width &&
                labels[i].Box.Y + labels[i].Box.Height <= folder->Box.Y + folder->Box.Height);
    for (size_t j = 0; j < i; ++j)
      EXPECT_FALSE(labels[i].Box.Meets(labels[j].Box)) << i << ' ' << j;
  }
}

TEST(HtmlPage, HostileNamesAreTextAndKeepThePageSmall) {
  static const QRegularExpression ours(
      u"</"
      u"?(!DOCTYPE|html|head|meta|title|style|body|main|header|p|h1|h2|ul|li|b|section|svg|rect|path|g|text|"
      u"tspan|"
      u"div|table|tr|td|th|span|wbr|details|summary|footer)[ >]"_qs);
  const QString name = kHostile + QString(240, u'&');
  const TFolderTree tree = RandomTree(1500, name);
  const QByteArray page =
      PageOf(tree, u'/' + name.repeated(4), {200, {u'/' + name.repeated(4) + u'/', name, 7}});
  EXPECT_LE(page.size(), 1 << 20);
  const QString text = QString::fromUtf8(page);
  EXPECT_EQ(text.count(u'<'), text.count(ours));
  EXPECT_TRUE(std::ranges::all_of(text.toUcs4(), [](uint point) {
    const QChar::Category category = QChar::category(point);
    return point == '\n' || category < QChar::Separator_Line || category > QChar::Other_NotAssigned;
  }));
  EXPECT_FALSE(text.contains(u"://"_qs) || text.contains(u"url("_qs) || text.contains(u"src="_qs));
}
