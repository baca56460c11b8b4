// The texts that the user sees. Each is asked for with its English default; a language file overrides it.
#pragma once

#include "support/ExtIniFiles.h"

#include <QString>

// Owned by the main form for the whole run. A language file is "<name>.lng" in the language folder, found
// without regard to case. Before a file was loaded, and where the file lacks a text, every lookup gives the
// default; a text that is present but empty is given as it stands. Main thread.
class TLanguage {
 public:
  // The application name is the first part of the section names. Without a folder the language files lie in
  // "Language" beside the program.
  explicit TLanguage(const QString& appName);
  TLanguage(const QString& appName, const QString& languagePath);

  // Loads the language of this name, or "English" if it has no file; changes nothing if that has none
  // either. Throws TIniFileError for a file that exists and can't be read.
  void LoadLanguage(const QString& name);

  // The text of an "M_..." key; nothing in it is unescaped or formatted.
  [[nodiscard]] QString GetMessage(const QString& key, const QString& defaultText) const;

  [[nodiscard]] QString ReadText(const QString& section, const QString& key,
                                 const QString& defaultText) const;

  [[nodiscard]] const QString& AppName() const { return FAppName; }

  // Of the loaded language, as in its file name, and in its own words. Both empty until a file was loaded.
  [[nodiscard]] const QString& LanguageName() const { return FLanguageName; }
  [[nodiscard]] const QString& DisplayName() const { return FDisplayName; }

 private:
  // The file of this language, by its name in the folder; empty if there is none.
  [[nodiscard]] QString FileOf(const QString& name) const;
  [[nodiscard]] QString PathOf(const QString& file) const;

  QString FAppName;
  QString FLanguagePath;
  QString FLanguageName;
  QString FDisplayName;
  TExtIniFile FIniFile;
  THashedStringList FMessages;
};

// The language that the user has chosen for the suite, from its settings file; "English" if there is none.
[[nodiscard]] QString GetSuiteLanguageName();
