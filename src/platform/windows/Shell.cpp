#include "platform/Shell.h"

#include "platform/windows/LongPath.h"

#include <QDir>
#include <QRegularExpression>

#include <windows.h>

#include <shellapi.h>

namespace {

bool Execute(const QString& file, const QString& parameters) {
  const wchar_t* const given = parameters.isEmpty() ? nullptr : WideText(parameters);
  const HINSTANCE result = ShellExecuteW(nullptr, L"open", WideText(file), given, nullptr, SW_SHOWNORMAL);
  constexpr INT_PTR kLastErrorNumber = 32;
  return reinterpret_cast<INT_PTR>(result) > kLastErrorNumber;
}

}  // namespace

// A scheme has at least two letters, a drive has one.
QUrl TargetUrl(const QString& target) {
  static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]+:"));
  return scheme.match(target).hasMatch() ? QUrl(target) : QUrl::fromLocalFile(QDir(target).absolutePath());
}

bool OpenTarget(const QString& target) {
  return !target.isEmpty() && Execute(target, QString());
}

bool StartProgram(const QString& program, const QString& parameters) {
  return Execute(program, parameters);
}
