// What Windows reads of the program files themselves: their kind, manifest, version and icon.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QtEndian>

namespace {

constexpr int kNewHeaderOffset = 0x3C;  // where the offset of the header stands
constexpr int kSubsystemOffset = 0x5C;  // in the header
constexpr int kWindowProgram = 2;
constexpr int kConsoleProgram = 3;

QByteArray ReadProgram(const QString& name) {
  QFile file(QCoreApplication::applicationDirPath() + u'/' + name);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
  return file.readAll();
}

int SubsystemOf(const QByteArray& program) {
  const auto header = qFromLittleEndian<quint32>(program.constData() + kNewHeaderOffset);
  return qFromLittleEndian<quint16>(program.constData() + header + kSubsystemOffset);
}

// Texts of resources are UTF-16.
bool HasText(const QByteArray& program, const QString& text) {
  return program.contains(QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2));
}

}  // namespace

TEST(ProgramFile, SaysWhatItIsAndWhichRightsItNeeds) {
  const std::tuple<QString, int, const char*> programs[] = {
      {u"tallyscope.exe"_qs, kWindowProgram, "level=\"requireAdministrator\""},
      {u"tallyscope-report.exe"_qs, kConsoleProgram, "level=\"asInvoker\""}};
  for (const auto& [name, subsystem, level] : programs) {
    const QByteArray program = ReadProgram(name);
    ASSERT_GT(program.size(), 1000);
    EXPECT_EQ(SubsystemOf(program), subsystem) << qPrintable(name);
    for (const char* setting : {level, ">PerMonitorV2<", "Microsoft.Windows.Common-Controls"})
      EXPECT_TRUE(program.contains(setting)) << qPrintable(name) << setting;
    for (const QString& text : {u"MAINICON"_qs, u"OriginalFilename"_qs, name})
      EXPECT_TRUE(HasText(program, text)) << qPrintable(name) << qPrintable(text);
  }
}
