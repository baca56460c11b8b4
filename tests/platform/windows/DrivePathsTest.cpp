#include "platform/Paths.h"

#include "fixtures/QtPrinters.h"
#include "platform/windows/LongPath.h"

#include <gtest/gtest.h>

namespace {

TEST(DrivePaths, UpToThreeCharactersAreAVolume) {
  for (const QString& path : {u"C:\\"_qs, u"c:"_qs, u"\\"_qs})
    EXPECT_TRUE(IsVolumeRoot(path)) << path.toStdString();
  for (const QString& path : {QString(), u"C:\\a"_qs, u"home"_qs})
    EXPECT_FALSE(IsVolumeRoot(path)) << path.toStdString();
}

TEST(DrivePaths, VolumesCompareByTheirLetters) {
  EXPECT_TRUE(SameVolume(u"C:\\a"_qs, u"c:\\b"_qs));
  EXPECT_FALSE(SameVolume(u"C:\\a"_qs, u"D:\\a"_qs));
  EXPECT_FALSE(SameVolume(QString(), QString()));
  EXPECT_FALSE(SameVolume(QString(), u"C:\\"_qs));
  EXPECT_EQ(VolumeName(u"C:\\"_qs), u"C:"_qs);
}

TEST(DrivePaths, TheFormForTheSystemTakesAnyNameAndLength) {
  const struct {
    QString Path;
    QString Long;
  } rows[] = {
      {QString(), QString()},
      {u"C:\\"_qs, u"\\\\?\\C:\\"_qs},
      {u"C:\\a\\b"_qs, u"\\\\?\\C:\\a\\b"_qs},
      {u"C:/a//b/./c/../d/"_qs, u"\\\\?\\C:\\a\\b\\d\\"_qs},
      {u"C:\\..\\a. "_qs, u"\\\\?\\C:\\a. "_qs},
      {u"\\\\server\\share\\a"_qs, u"\\\\?\\UNC\\server\\share\\a"_qs},
      {u"\\\\?\\C:\\a\\."_qs, u"\\\\?\\C:\\a\\."_qs},
      {u"\\\\.\\C:"_qs, u"\\\\.\\C:"_qs},
      {u"a\\b"_qs, u"a\\b"_qs},
      {u"C:"_qs, u"C:"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(QString::fromStdWString(LongPath(row.Path)), row.Long);
}

}  // namespace
