#include "support/PLanguage.h"

#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/PrivateProfile.h"
#include "support/AppFrame_New.h"

TLanguage::TLanguage(const QString& appName) : TLanguage(appName, ProgramFolder() + u"Language"_qs) {}

TLanguage::TLanguage(const QString& appName, const QString& languagePath)
    : FAppName(appName), FLanguagePath(languagePath) {}

void TLanguage::LoadLanguage(const QString& name) {
  const QString present = FileExists(FileOf(name)) ? name : u"English"_qs;
  if (!FileExists(FileOf(present))) return;
  FLanguageName = present;
  FDisplayName.clear();
  FIniFile.LoadFromFile(FileOf(present));
  FDisplayName = ReadText(u"Main"_qs, u"DisplayName"_qs, FLanguageName);
  QStringList messages;
  FIniFile.ReadSectionValues(FAppName + u"_M"_qs, messages);
  FMessages.Assign(messages);
}

QString TLanguage::GetMessage(const QString& key, const QString& defaultText) const {
  return FMessages.Value(key).value_or(defaultText);
}

QString TLanguage::ReadText(const QString& section, const QString& key, const QString& defaultText) const {
  return FIniFile.ReadString(section, key, defaultText);
}

QString TLanguage::FileOf(const QString& name) const {
  return FLanguagePath + PathDelim + name + u".lng"_qs;
}

QString GetSuiteLanguageName() {
  const QString settings =
      QStringList{TAppFrame().FUserDataPath, u"Korvel"_qs, u"Hearthline V7"_qs, u"Main.ini"_qs}.join(
          PathDelim);
  return ReadPrivateProfile(settings, u"Main"_qs, u"Language"_qs, u"English"_qs);
}
