#include "support/PLanguage.h"

#include "platform/FileEnumeration.h"
#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/SystemSettings.h"
#include "support/AppFrame_New.h"

namespace {

const QString kExtension = u".lng"_qs;

}  // namespace

TLanguage::TLanguage(const QString& appName) : TLanguage(appName, ProgramFolder() + u"Language"_qs) {}

TLanguage::TLanguage(const QString& appName, const QString& languagePath)
    : FAppName(appName), FLanguagePath(languagePath) {}

void TLanguage::LoadLanguage(const QString& name) {
  QString file = FileOf(name);
  if (file.isEmpty()) file = FileOf(u"English"_qs);
  if (file.isEmpty()) return;
  FLanguageName = file.chopped(kExtension.size());
  FDisplayName.clear();
  FIniFile.LoadFromFile(PathOf(file));
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

// The name itself comes before others that differ from it by case, which file systems of Linux tell apart.
QString TLanguage::FileOf(const QString& name) const {
  const QString file = name + kExtension;
  if (FileExists(PathOf(file))) return file;
  TFileEnumeration files;
  TFoundFile found;
  for (bool more = files.First(FLanguagePath, found); more; more = files.Next(found))
    if (found.Name.compare(file, Qt::CaseInsensitive) == 0 && FileExists(PathOf(found.Name)))
      return found.Name;
  return {};
}

QString TLanguage::PathOf(const QString& file) const {
  return FLanguagePath + PathDelim + file;
}

QString GetSuiteLanguageName() {
  const QString settings =
      QStringList{TAppFrame().FUserDataPath, u"Korvel"_qs, u"Hearthline V7"_qs, u"Main.ini"_qs}.join(
          PathDelim);
  return ReadPrivateProfile(settings, u"Main"_qs, u"Language"_qs, u"English"_qs);
}
