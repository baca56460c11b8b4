// The page from top to bottom: style, helpers that make HTML of one value each, then TPage with a function
// per section in the order of Make. A new section is such a function and its place in Make. Whatever others
// have written goes through HtmlText; numbers and lengths are made here and need none. Text is joined rather
// than formatted, as maps have thousands of tiles.
// The page keeps below its bound of bytes by bounds on everything that can grow: rows, tiles, and the bytes
// of each path.

#include "report/HtmlPage.h"

#include "platform/Paths.h"
#include "report/HtmlText.h"
#include "report/Treemap.h"
#include "report/VolumeBalance.h"
#include "support/Korvel_Routine_New.h"

#include <QSysInfo>

#include <algorithm>
#include <numeric>
#include <optional>

namespace {

// Bytes of a path: in a tile's title and in a list.
constexpr qsizetype kLongestTitle = 200;
constexpr qsizetype kLongestPath = 400;
constexpr size_t kMostRows = 100;
constexpr size_t kRowsAtOnce = 12;  // the others unfold

// The colours hold beside each other for the colour-blind, and black letters can be read on all of them.
constexpr const char* kStyle = R"css(
:root{color-scheme:light dark;--page:#f6f7f9;--card:#fff;--ink:#1d2733;--soft:#5c6b7a;--line:#e3e7ec;--bar:#c9dcf0;--chip:#fffffff0;
--k0:#c8cdd4;--k1:#4fb99b;--k2:#ec8b6b;--k3:#f7aebb;--k4:#ecdc8f;--k5:#bcc648;--k6:#a3daf5;--k7:#80aedb}
@media (prefers-color-scheme:dark){:root{--page:#12161c;--card:#1a2028;--ink:#e6ebf1;--soft:#96a4b3;--line:#2b343f;--bar:#2b4460;--chip:#12161ceb;
--k0:#6f7883;--k1:#3a967b;--k2:#c8704f;--k3:#cf8896;--k4:#bfae62;--k5:#939d31;--k6:#77aecb;--k7:#567fae}}
*{box-sizing:border-box}
body{margin:0;background:var(--page);color:var(--ink);font:15px/1.5 system-ui,-apple-system,"Segoe UI","Noto Sans","DejaVu Sans",sans-serif}
main{max-width:1264px;margin:0 auto;padding:28px 32px 40px}
header p{margin:0;color:var(--soft)}
h1{margin:2px 0 20px;font-size:27px;line-height:1.25;font-weight:650;overflow-wrap:anywhere}
h2{margin:0 0 12px;font-size:17px;font-weight:650}
.totals{display:grid;grid-template-columns:repeat(auto-fit,minmax(150px,1fr));gap:14px;margin:0 0 14px;padding:0;list-style:none}
.totals li,section{background:var(--card);border:1px solid var(--line);border-radius:10px}
.totals li{padding:12px 16px;color:var(--soft);font-size:13px}
.totals b{display:block;color:var(--ink);font-size:21px;font-weight:600;font-variant-numeric:tabular-nums}
section{margin:0 0 14px;padding:18px 20px}
.kinds{display:flex;flex-wrap:wrap;gap:6px 20px;margin:0 0 14px;padding:0;list-style:none;font-size:13px}
.kinds li{display:flex;align-items:center;gap:6px;color:var(--soft);white-space:nowrap}
.kinds b{color:var(--ink);font-weight:600}
.kinds li::before{content:"";background:var(--c);width:13px;height:13px;border-radius:3px}
svg{display:block;width:100%;height:auto;font:11px system-ui,-apple-system,"Segoe UI","Noto Sans","DejaVu Sans",sans-serif}
.map{border-radius:6px;overflow:hidden}
.narrow{display:none}
.map rect{fill:var(--c);stroke:var(--card);stroke-width:.6}
.map>rect:hover{stroke:var(--ink);stroke-width:2}
.edge{fill:none;stroke:var(--card);pointer-events:none}
.name rect{fill:var(--chip);stroke:none}
.map text{fill:var(--ink)}
.map tspan{fill:var(--soft)}
.map .top{font-weight:600}
.map .top tspan{font-weight:400}
.k0{--c:var(--k0)}.k1{--c:var(--k1)}.k2{--c:var(--k2)}.k3{--c:var(--k3)}.k4{--c:var(--k4)}.k5{--c:var(--k5)}.k6{--c:var(--k6)}.k7{--c:var(--k7)}
.note{margin:10px 0 0;color:var(--soft);font-size:13px}
.two{display:grid;grid-template-columns:1fr 1fr;gap:14px;align-items:start}
.two section{min-width:0}
table{width:100%;border-collapse:collapse;font-size:13.5px}
th{padding:0 10px 6px 0;color:var(--soft);font-size:12.5px;font-weight:500;text-align:left}
td{padding:5px 10px 5px 0;border-top:1px solid var(--line);vertical-align:top}
.n{width:1%;text-align:right;white-space:nowrap;font-variant-numeric:tabular-nums}
.p{width:100%;overflow-wrap:anywhere;direction:ltr;unicode-bidi:isolate}
.p span{color:var(--soft)}
.b{width:64px;min-width:64px}
.b::before{content:"";display:block;width:var(--w);height:8px;margin-top:6px;min-width:2px;border-radius:3px;background:var(--bar)}
summary{padding:10px 0 0;color:var(--soft);cursor:pointer}
details[open] summary{padding-bottom:8px}
footer{color:var(--soft);font-size:13px}
footer p{margin:6px 2px 0}
@media (max-width:860px){main{padding:20px 16px 32px}.totals{grid-template-columns:repeat(auto-fit,minmax(130px,1fr));gap:10px}.two{grid-template-columns:minmax(0,1fr);gap:0}
section{padding:16px 14px}.wide{display:none}.narrow{display:block;max-width:620px}h1{font-size:22px;margin-bottom:14px}.totals b{font-size:18px}}
@media (max-width:480px){.b{display:none}.totals li:first-child:nth-last-child(odd){grid-column:1/-1}}
@media print{body{background:none}section{break-inside:avoid}}
)css";

struct TKindName {
  const char* Heading;
  const char* Within;  // a sentence
};
// By the kinds of volindex_folders.h, which are the numbers of the classes k0 to k7 in the style too.
constexpr TKindName kKindNames[TALLYSCOPE_KINDS] = {
    {"Other", "other files"},   {"Pictures", "pictures"}, {"Video", "video"}, {"Audio", "audio"},
    {"Documents", "documents"}, {"Archives", "archives"}, {"Code", "code"},   {"Programs", "programs"}};

QByteArray SizeHtml(quint64 bytes) {
  return HtmlText(SizeToText(static_cast<qint64>(bytes)));
}

// Groups of three digits with a narrow blank between.
QByteArray NumberHtml(quint64 number) {
  QByteArray digits = QByteArray::number(number);
  for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
    digits.insert(at, "\u202F");
  return digits;
}

double Percent(quint64 part, quint64 whole) {
  return whole == 0 ? 0 : 100 * static_cast<double>(part) / static_cast<double>(whole);
}

QByteArray ShareHtml(quint64 part, quint64 whole) {
  const double percent = Percent(part, whole);
  return percent > 0 && percent < 0.1 ? "&lt; 0.1 %" : QByteArray::number(percent, 'f', 1) + " %";
}

// Of a path's end the name stands out. A line may end behind a delimiter.
QByteArray PathHtml(const QString& folder, const QString& name) {
  const char delimiter = PathDelim.toLatin1();
  const QByteArray path =
      HtmlText(folder, kLongestPath).replace(delimiter, QByteArray(1, delimiter) + "<wbr>");
  return "<span>" + path + "</span>" + HtmlText(name, kLongestPath);
}

// Without the noughts that mean nothing.
QByteArray LengthHtml(double pixels) {
  QByteArray text = QByteArray::number(pixels, 'f', 3);
  while (text.endsWith('0'))
    text.chop(1);
  if (text.endsWith('.')) text.chop(1);
  return text;
}

QByteArray BoxHtml(const TMapBox& box) {
  return " x=\"" + LengthHtml(box.X) + "\" y=\"" + LengthHtml(box.Y) + "\" width=\"" + LengthHtml(box.Width) +
         "\" height=\"" + LengthHtml(box.Height) + '"';
}

class TPage {
 public:
  explicit TPage(const TReport& report)
      : FReport(report), FTree(JoinTrees(report.Paths, report.Trees)), FPaths(FTree.Folders.size()) {
    for (const TPathTotals& totals : report.PathTotals) {
      FBytes += totals.Bytes;
      FAllocated =
          FAllocated && totals.Usage ? std::optional(*FAllocated + totals.Usage->Allocated) : std::nullopt;
      FFiles += totals.Files;
      FFolders += totals.Folders;
    }
  }

  [[nodiscard]] QByteArray Make() const {
    return Head() + "<body>\n<main>\n" + Header() + Paths() + MapSection() + "<div class=\"two\">\n" +
           Rows("Largest folders", FReport.Folders) + Rows("Largest files", FReport.Files) + "</div>\n" +
           Downloads() + Unreadable() + "<footer>\n" + Balances() +
           "<p>Made by Tallyscope.</p>\n</footer>\n</main>\n</body>\n</html>\n";
  }

 private:
  [[nodiscard]] QByteArray Heading() const {
    return FReport.Paths.size() == 1 ? HtmlText(FReport.Paths[0], kLongestPath)
                                     : NumberHtml(static_cast<quint64>(FReport.Paths.size())) + " places";
  }
  [[nodiscard]] QByteArray Head() const;
  [[nodiscard]] QByteArray Header() const;
  [[nodiscard]] QByteArray Paths() const;
  [[nodiscard]] QByteArray MapSection() const;
  [[nodiscard]] QByteArray Kinds() const;
  [[nodiscard]] QByteArray Map(const TMapShape& shape) const;
  [[nodiscard]] QByteArray Title(int folder, const QByteArray& what, quint64 bytes) const;
  [[nodiscard]] QByteArray Edges(const TMap& map) const;
  [[nodiscard]] QByteArray Label(const TMapLabel& label) const;
  [[nodiscard]] static QByteArray Rows(const char* heading, std::span<const TFileInfoEx> rows);
  [[nodiscard]] static QByteArray Row(const TFileInfoEx& row, quint64 largest);
  [[nodiscard]] QByteArray Downloads() const;
  [[nodiscard]] QByteArray Unreadable() const;
  [[nodiscard]] QByteArray Balances() const;

  const TReport& FReport;
  const TFolderTree FTree;
  mutable std::vector<QByteArray> FPaths;  // the beginnings of the titles of those folders that had one
  quint64 FBytes = 0;
  std::optional<quint64> FAllocated = 0;  // if it is known of all paths
  quint64 FFiles = 0;
  quint64 FFolders = 0;
};

QByteArray TPage::Head() const {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
         "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
         "<meta name=\"color-scheme\" content=\"light dark\">\n"
         "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
         "'unsafe-inline'\">\n"
         "<title>" +
         Heading() + ": " + SizeHtml(FBytes) + "</title>\n<style>" + kStyle + "</style>\n</head>\n";
}

QByteArray TPage::Header() const {
  const auto box = [](const char* name, const QByteArray& value) {
    return QByteArray("<li>") + name + " <b>" + value + "</b></li>\n";
  };
  // Whose computer and when, as a page is read elsewhere and later.
  const QByteArray host = HtmlText(QSysInfo::machineHostName(), kLongestPath);
  return "<header>\n<p>" + host + (host.isEmpty() ? "" : ", ") +
         FReport.Begun.toString(u"yyyy-MM-dd HH:mm t"_qs).toUtf8() + "</p>\n<h1>" + Heading() +
         "</h1>\n<ul class=\"totals\">\n" + box("Size", SizeHtml(FBytes)) +
         (FAllocated ? box("On disk", SizeHtml(*FAllocated)) : QByteArray()) +
         box("Files", NumberHtml(FFiles)) + box("Folders", NumberHtml(FFolders)) +
         box("Seconds", QByteArray::number(static_cast<double>(FReport.Milliseconds) / 1000, 'f', 2)) +
         "</ul>\n</header>\n";
}

// Of several paths each one's totals.
QByteArray TPage::Paths() const {
  if (FReport.PathTotals.size() < 2) return {};
  QByteArray html =
      "<section>\n<h2>Places</h2>\n<table>\n<tr><th class=\"n\">Size</th><th class=\"n\">Files</th>"
      "<th class=\"n\">Folders</th><th>Path</th></tr>\n";
  for (size_t i = 0; i < std::min(FReport.PathTotals.size(), kMostRows); ++i) {
    const TPathTotals& totals = FReport.PathTotals[i];
    html += "<tr><td class=\"n\">" + SizeHtml(totals.Bytes) + "</td><td class=\"n\">" +
            NumberHtml(totals.Files) + "</td><td class=\"n\">" + NumberHtml(totals.Folders) +
            "</td><td class=\"p\">" + HtmlText(FReport.Paths[static_cast<qsizetype>(i)], kLongestPath) +
            "</td></tr>\n";
  }
  return html + "</table>\n</section>\n";
}

QByteArray TPage::MapSection() const {
  // Nothing to draw: of empty folders, or of a scan that kept no tree.
  if (FTree.Folders.empty() || FTree.Folders[0].Total == 0) return {};
  QByteArray html = "<section>\n<h2>Map of the folders</h2>\n" + Kinds();
  for (const TMapShape& shape : kMapShapes)
    html += Map(shape);
  return html +
         "<p class=\"note\">Area is size, by the same measure everywhere; colour is the kind of content, by "
         "the "
         "endings of names. Point at a tile for its path, size and share.</p>\n</section>\n";
}

QByteArray TPage::Kinds() const {
  TKindSizes sum{};
  for (const TFolderTree::TFolder& folder : FTree.Folders)
    std::transform(sum.begin(), sum.end(), folder.Own.begin(), sum.begin(), std::plus());
  std::array<size_t, TALLYSCOPE_KINDS> order{};
  std::iota(order.begin(), order.end(), size_t{0});
  std::ranges::stable_sort(order, std::greater(), [&sum](size_t kind) { return sum[kind]; });
  QByteArray html = "<ul class=\"kinds\">\n";
  for (const size_t kind : order)
    if (sum[kind] != 0)
      html += "<li class=\"k" + QByteArray::number(kind) + "\">" + kKindNames[kind].Heading + " <b>" +
              SizeHtml(sum[kind]) + "</b> " + ShareHtml(sum[kind], FTree.Folders[0].Total) + "</li>\n";
  return html + "</ul>\n";
}

// Tiles first, then the lines around folders, then names: what comes later lies above.
QByteArray TPage::Map(const TMapShape& shape) const {
  const TMap map = LayOutMap(FTree, shape.Width, shape.Height, static_cast<size_t>(shape.MostTiles));
  QByteArray html = QByteArray("<svg class=\"map ") + shape.Name + "\" viewBox=\"0 0 " +
                    QByteArray::number(shape.Width) + ' ' + QByteArray::number(shape.Height) +
                    "\" role=\"group\" aria-label=\"Map of the folders\">\n";
  for (const TMapTile& tile : map.Tiles)
    html += "<rect class=\"k" + QByteArray::number(tile.Kind) + '"' + BoxHtml(tile.Box) + '>' +
            Title(tile.Folder, QByteArray(tile.Mixed ? "mostly " : "") + kKindNames[tile.Kind].Within + ", ",
                  tile.Bytes) +
            "</rect>\n";
  html += Edges(map);
  for (const TMapLabel& label : LabelMap(FTree, map))
    html += Label(label);
  return html + "</svg>\n";
}

// The path is the greater part of a title, and a folder may have a tile for each kind and a name in both
// maps: it is made once for each folder.
QByteArray TPage::Title(int folder, const QByteArray& what, quint64 bytes) const {
  QByteArray& path = FPaths[static_cast<size_t>(folder)];
  if (path.isNull()) path = "<title>" + HtmlText(PathInTree(FTree, folder), kLongestTitle) + "\n";
  return path + what + SizeHtml(bytes) + " (" + QByteArray::number(bytes) + " bytes), " +
         ShareHtml(bytes, FTree.Folders[0].Total) + "</title>";
}

// One line around all folders of a level, the thicker the fewer boxes are around them.
QByteArray TPage::Edges(const TMap& map) const {
  // By level, from the outermost; deeper ones have no line of their own.
  static constexpr const char* kWidths[] = {"4", "2.5", "1.5"};
  QByteArray html;
  for (size_t level = std::size(kWidths); level > 0; --level) {
    QByteArray path;
    for (const TMapFolder& folder : map.Folders)
      if (folder.Level == static_cast<int>(level))
        path += 'M' + QByteArray::number(folder.Box.X, 'f', 1) + ' ' +
                QByteArray::number(folder.Box.Y, 'f', 1) + 'h' +
                QByteArray::number(folder.Box.Width, 'f', 1) + 'v' +
                QByteArray::number(folder.Box.Height, 'f', 1) + 'h' +
                QByteArray::number(-folder.Box.Width, 'f', 1) + 'z';
    if (!path.isEmpty())
      html += "<path class=\"edge\" stroke-width=\"" + QByteArray(kWidths[level - 1]) + "\" d=\"" + path +
              "\"/>\n";
  }
  return html;
}

QByteArray TPage::Label(const TMapLabel& label) const {
  const QByteArray size =
      label.Size.isEmpty() ? QByteArray() : " <tspan>" + HtmlText(label.Size) + "</tspan>";
  // A name need not be placed as exactly as a tile is.
  const auto shorter = [](double pixels) { return QByteArray::number(pixels, 'f', 1); };
  return "<g class=\"name\" transform=\"translate(" + shorter(label.Box.X) + ' ' + shorter(label.Box.Y) +
         ")\">" + Title(label.Folder, {}, FTree.Folders[static_cast<size_t>(label.Folder)].Total) +
         "<rect width=\"" + shorter(label.Box.Width) + "\" height=\"" + shorter(label.Box.Height) +
         "\" rx=\"3\"/><text" + (label.Level == 1 ? " class=\"top\"" : "") + " x=\"5\" y=\"12.5\">" +
         HtmlText(label.Text) + size + "</text></g>\n";
}

QByteArray TPage::Row(const TFileInfoEx& row, quint64 largest) {
  return "<tr><td class=\"n\">" + SizeHtml(row.Size) +
         "</td><td class=\"b\" style=\"--w:" + QByteArray::number(Percent(row.Size, largest), 'f', 1) +
         "%\"></td><td class=\"p\">" + PathHtml(row.Path, row.Name) + "</td></tr>\n";
}

QByteArray TPage::Rows(const char* heading, std::span<const TFileInfoEx> rows) {
  if (rows.empty()) return {};
  rows = rows.first(std::min(rows.size(), kMostRows));
  const auto table = [&rows](std::span<const TFileInfoEx> part) {
    QByteArray html = "<table>\n";
    for (const TFileInfoEx& row : part)
      html += Row(row, rows[0].Size);
    return html + "</table>\n";
  };
  // The browser unfolds the others by itself, without a script.
  const size_t first = std::min(rows.size(), kRowsAtOnce);
  QByteArray html = QByteArray("<section>\n<h2>") + heading + "</h2>\n" + table(rows.first(first));
  if (rows.size() > first)
    html += "<details><summary>" + NumberHtml(rows.size() - first) + " more</summary>\n" +
            table(rows.subspan(first)) + "</details>\n";
  return html + "</section>\n";
}

// Locations end in the delimiter, so that no folder counts what lies in one whose name only begins like its
// own.
QByteArray TPage::Downloads() const {
  if (FReport.Downloads.empty()) return {};
  QByteArray html =
      "<section>\n<h2>Download folders</h2>\n<table>\n<tr><th class=\"n\">Size</th><th class=\"n\">Files</th>"
      "<th>Applications</th><th>Folder</th></tr>\n";
  for (const TDownloadLocation& location :
       FReport.Downloads.first(std::min(FReport.Downloads.size(), kMostRows))) {
    quint64 bytes = 0;
    quint64 files = 0;
    for (const TFileInfoEx& file : FReport.DownloadFiles)
      if (file.Path.startsWith(location.Directory)) bytes += file.Size, ++files;
    html += "<tr><td class=\"n\">" + SizeHtml(bytes) + "</td><td class=\"n\">" + NumberHtml(files) +
            "</td><td>" + HtmlText(location.Applications.join(u", "_qs), kLongestPath) +
            "</td><td class=\"p\">" + HtmlText(location.Directory, kLongestPath) + "</td></tr>\n";
  }
  return html + "</table>\n</section>\n";
}

QByteArray TPage::Unreadable() const {
  const QStringList folders = FReport.Unreadable.value_or(QStringList());
  if (folders.isEmpty()) return {};
  QByteArray html = "<section>\n<h2>Could not be read</h2>\n<table>\n";
  const auto shown = std::min(folders.size(), static_cast<qsizetype>(kMostRows));
  for (const QString& folder : folders.first(shown))
    html += "<tr><td class=\"p\">" + HtmlText(folder, kLongestPath) + "</td></tr>\n";
  html += "</table>\n";
  if (folders.size() > shown)
    html +=
        "<p class=\"note\">and " + NumberHtml(static_cast<quint64>(folders.size() - shown)) + " more</p>\n";
  return html + "</section>\n";
}

// How what each whole volume has in use adds up.
QByteArray TPage::Balances() const {
  QByteArray html;
  for (size_t i = 0; i < std::min(FReport.PathTotals.size(), kMostRows); ++i) {
    const auto balance = BalanceOf(FReport.PathTotals[i]);
    if (!balance) continue;
    html += "<p>";
    if (FReport.Paths.size() > 1)
      html += HtmlText(FReport.Paths[static_cast<qsizetype>(i)], kLongestPath) + ": ";
    html += HtmlText(balance->Text()) + ".</p>\n";
  }
  return html;
}

}  // namespace

QByteArray ReportAsHtml(const TReport& report) {
  return TPage(report).Make();
}
