#include "platform/FileActionsGui.h"

#include "platform/AnsiText.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/windows/Handle.h"
#include "platform/windows/LongPath.h"

#include <shellapi.h>

bool OpenFile(const QString& path, QWindow* owner, TShowWindow show) {
  const auto window = owner == nullptr ? nullptr : reinterpret_cast<HWND>(owner->winId());
  const HINSTANCE result =
      ShellExecuteW(window, L"open", WideText(path), nullptr, nullptr, static_cast<int>(show));
  constexpr INT_PTR kLastErrorNumber = 32;
  return reinterpret_cast<INT_PTR>(result) > kLastErrorNumber;
}

// The file manager takes what follows the comma as it stands, quotes and all. It is named by its full path,
// so that no other program of that name is started.
void ShowInFileManager(const QString& path) {
  const QString program = IncludeTrailingPathDelimiter(GetWindowsFolder()) + QStringLiteral("explorer.exe");
  WinExec(TextToAnsi(u'"' + program + QStringLiteral("\" /select,") + path).constData(), SW_SHOWNORMAL);
}

void ShowPropertiesDialog(const QString& path, const std::function<void()>&) {
  SHELLEXECUTEINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_INVOKEIDLIST | SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
  info.lpVerb = L"properties";
  info.lpFile = WideText(path);
  ShellExecuteExW(&info);
  const TFileHandle process(info.hProcess);
}
