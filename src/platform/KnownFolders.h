// Where the system keeps things. No function fails: what is not known is empty text. Paths have no
// delimiter at their end unless they are a root. Any thread.
#pragma once

#include <QString>

// The folder numbers that the program uses, as the system counts them.
enum class TSpecialFolder : int {
  Personal = 5,  // documents
  Desktop = 16,
  AppData = 26,  // this user's application data
  LocalAppData = 28,
  CommonAppData = 35,  // application data of all users; Linux: first folder of XDG_CONFIG_DIRS, /etc/xdg
  Profile = 40,        // the user's home folder
};

// The folder's path; nothing is created.
[[nodiscard]] QString GetKnownFolder(TSpecialFolder folder);

// This user's folder for downloads; empty only if the home folder is not known. Linux: the one of the user
// directories, unless that is the home folder itself, which stands for none; then "Downloads" at home.
// Windows: "%HOMEDRIVE%%HOMEPATH%\Downloads", a variable that is missing staying as it stands.
[[nodiscard]] QString GetDownloadsFolder();

// Where this user's browser keeps its profiles, whether or not it is installed; on Windows Chrome's is below
// "%LocalAppdata%", which stays as it stands if it is missing.
enum class TBrowser { Firefox, Chrome };
[[nodiscard]] QString GetBrowserFolder(TBrowser browser);

// The folder of the operating system, and of its programs. Both are "/" on Linux, where the system volume
// is the one of "/".
[[nodiscard]] QString GetWindowsFolder();
[[nodiscard]] QString GetSystemFolder();

// The root of the system volume with its delimiter: "C:\" or "/".
[[nodiscard]] QString SystemVolumeRoot();

// Replaces each "%NAME%" by the variable's value; an unknown name stays as written. On Linux HOMEDRIVE is
// empty and HOMEPATH, USERPROFILE, APPDATA and LOCALAPPDATA are given where the environment lacks them;
// these names, and on Windows all names, compare without regard to case.
[[nodiscard]] QString ExpandEnvironment(const QString& text);

// The running program's file, and its folder with its delimiter.
[[nodiscard]] QString ProgramFile();
[[nodiscard]] QString ProgramFolder();
