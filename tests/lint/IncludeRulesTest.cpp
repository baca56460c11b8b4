// Holds the dependency rule of the folders: who may include whom, and no operating system outside the
// platform folder and the volume index library.
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <map>

namespace {

// Folder of src/ to the folders whose headers it may include besides its own.
const std::map<QString, QStringList> kMayInclude = {
    {u"platform"_qs, {}},
    {u"support"_qs, {u"platform"_qs}},
    {u"volindex"_qs, {}},
    {u"colophon"_qs, {}},
    {u"scan"_qs, {u"platform"_qs, u"support"_qs, u"volindex/include"_qs}},
    {u"download"_qs, {u"platform"_qs, u"support"_qs}},
    {u"controls"_qs, {u"platform"_qs, u"support"_qs}},
    {u"views"_qs, {u"platform"_qs, u"support"_qs, u"scan"_qs, u"download"_qs, u"controls"_qs}},
    {u"app"_qs, {u"platform"_qs, u"support"_qs, u"scan"_qs, u"download"_qs, u"controls"_qs, u"views"_qs}},
    {u"report"_qs, {u"platform"_qs, u"support"_qs, u"scan"_qs, u"download"_qs}}};

// The same within controls/, so that no family comes to need one that needs it.
const std::map<QString, QStringList> kFamilyMayInclude = {
    {u"picture"_qs, {}},
    {u"skin"_qs, {u"picture"_qs}},
    {u"notes"_qs, {u"picture"_qs}},
    {u"bars"_qs, {u"picture"_qs}},
    {u"scroll"_qs, {u"picture"_qs, u"skin"_qs}},
    {u"buttons"_qs, {u"picture"_qs, u"skin"_qs}},
    {u"progress"_qs, {u"picture"_qs, u"notes"_qs}},
    {u"fold"_qs, {u"buttons"_qs, u"progress"_qs}},
    {u"list"_qs, {u"picture"_qs, u"skin"_qs, u"scroll"_qs}},
    {u"shell"_qs, {u"picture"_qs, u"list"_qs}},
};

struct TLine {
  QString File;    // below src/
  QString Folder;  // first part of File
  int Number = 0;
  QString Text;
};

QString SourceRoot() {
  return qEnvironmentVariable("TALLYSCOPE_SOURCE_DIR") + u"/src/"_qs;
}

std::vector<TLine> SourceLines(const QString& root) {
  std::vector<TLine> lines;
  QDirIterator files(root, {u"*.h"_qs, u"*.cpp"_qs, u"*.c"_qs}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    const QString name = file.fileName().mid(root.size());
    if (!file.open(QIODevice::ReadOnly)) ADD_FAILURE() << "unreadable: " << qPrintable(name);
    int number = 0;
    for (const QByteArray& text : file.readAll().split('\n'))
      lines.push_back({name, name.section(u'/', 0, 0), ++number, QString::fromUtf8(text)});
  }
  return lines;
}

QString Complaint(const TLine& line) {
  static const QRegularExpression quoted(uR"re(^\s*#\s*include\s*"([^"]+)")re"_qs);
  static const QRegularExpression systemHeader(
      uR"(^\s*#\s*include\s*<((sys|linux|net|arpa|netinet|mach)/.*|unistd\.h|fcntl\.h|dirent\.h|dlfcn\.h)"
      uR"(|p?thread\.h|c?signal(\.h)?|malloc\.h|poll\.h|termios\.h|mntent\.h|windows\.h|win.*\.h|shl.*\.h|com.*\.h)>)"_qs);
  static const QRegularExpression systemSwitch(
      uR"(^\s*#\s*(if|ifdef|ifndef|elif)\b.*(_WIN32|_WIN64|__linux|__unix|__APPLE__|Q_OS_|Q_CC_|__MINGW))"_qs);
  // What they make wait may miss its wake where the system has no futex, with the C++ library used for Windows.
  static const QRegularExpression missesWakes(uR"(^\s*#\s*include\s*<(semaphore|latch|barrier)>)"_qs);
  if (missesWakes.match(line.Text).hasMatch()) return u"not a mutex with a condition variable"_qs;

  const auto rule = kMayInclude.find(line.Folder);
  if (rule == kMayInclude.end()) return u"a folder that the rules don't name"_qs;
  const bool knowsSystem = line.Folder == u"platform" || line.Folder == u"volindex";
  if (!knowsSystem && systemHeader.match(line.Text).hasMatch()) return u"a header of the system"_qs;
  // What a library exports is marked in each system's own way.
  const bool maySwitch = knowsSystem || line.File.startsWith(u"colophon/include/");
  if (!maySwitch && systemSwitch.match(line.Text).hasMatch()) return u"a switch by system"_qs;

  const auto include = quoted.match(line.Text);
  if (!include.hasMatch()) return {};
  const QString target = include.captured(1);
  const QString wanted = target.section(u'/', 1, 1);
  const auto family = kFamilyMayInclude.find(line.File.section(u'/', 1, 1));
  if (line.Folder == u"controls" && target.startsWith(u"controls/") && target.count(u'/') > 1 &&
      (family == kFamilyMayInclude.end() || (family->first != wanted && !family->second.contains(wanted))))
    return u"a family of controls that the file's own may not include"_qs;
  if (target.startsWith(line.Folder + u'/')) return {};
  if (target.startsWith(u"platform/posix/") || target.startsWith(u"platform/windows/"))
    return u"a header behind the platform seam"_qs;
  for (const QString& allowed : rule->second)
    if (target.startsWith(allowed + u'/')) return {};
  return u"an include that the folder may not make"_qs;
}

}  // namespace

TEST(IncludeRules, EveryFileOfTheTreeKeepsThem) {
  const auto lines = SourceLines(SourceRoot());
  ASSERT_GT(lines.size(), 1000U) << "the source tree was not found";
  for (const TLine& line : lines) {
    const QString complaint = Complaint(line);
    EXPECT_TRUE(complaint.isEmpty()) << qPrintable(line.File) << ':' << line.Number << ": "
                                     << qPrintable(complaint) << ": " << qPrintable(line.Text);
  }
}

TEST(IncludeRules, ABreachIsSeen) {
  const auto breach = [](const QString& file, const QString& text) {
    return !Complaint({file, file.section(u'/', 0, 0), 1, text}).isEmpty();
  };
  EXPECT_TRUE(breach(u"controls/list/A.h"_qs, u"#include \"scan/UnitScan.h\""_qs));
  EXPECT_TRUE(breach(u"support/A.cpp"_qs, u"#include \"controls/list/ListView.h\""_qs));
  EXPECT_TRUE(breach(u"controls/buttons/A.cpp"_qs, u"#include \"controls/fold/RdFoldPanel.h\""_qs));
  EXPECT_TRUE(breach(u"scan/A.cpp"_qs, u"#include \"platform/posix/MountTable.h\""_qs));
  EXPECT_TRUE(breach(u"views/A.cpp"_qs, u"#include <unistd.h>"_qs));
  EXPECT_TRUE(breach(u"views/A.cpp"_qs, u"#include <sys/stat.h>"_qs));
  EXPECT_TRUE(breach(u"scan/A.h"_qs, u"#include <semaphore>"_qs));
  EXPECT_TRUE(breach(u"views/A.cpp"_qs, u"#ifdef _WIN32"_qs));
  EXPECT_TRUE(breach(u"views/A.cpp"_qs, u"#if defined(Q_OS_LINUX)"_qs));
  EXPECT_TRUE(breach(u"cellar/A.cpp"_qs, u""_qs));
  EXPECT_FALSE(breach(u"views/A.cpp"_qs, u"#include \"scan/UnitScan.h\""_qs));
  EXPECT_FALSE(breach(u"platform/posix/A.cpp"_qs, u"#include <unistd.h>"_qs));
  EXPECT_FALSE(breach(u"controls/list/A.cpp"_qs, u"#include \"controls/picture/ImageList.h\""_qs));
}
