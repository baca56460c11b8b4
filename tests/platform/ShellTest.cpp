#include "fixtures/SystemTest.h"
#include "platform/Shell.h"
#include "platform/SystemSettings.h"

TEST(Shell, TargetsAreAddressesOrFilesAndWhatIsNotThereIsNotOpened) {
  const QByteArray here = "file://" + QByteArray(HasDrives() ? "/" : "") + QDir::currentPath().toUtf8();
  const QByteArray root = HasDrives() ? "file:///C:" : "file://";
  const std::pair<QString, QByteArray> rows[] = {
      {u"https://example.org/a?b=c"_qs, "https://example.org/a?b=c"},
      {u"mailto:a@example.org"_qs, "mailto:a@example.org"},
      {NativePath(u"/a/plain.txt"_qs), root + "/a/plain.txt"},
      {NativePath(u"/a/100% #1 ?.txt"_qs), root + "/a/100%25%20%231%20%3F.txt"},
      {NativePath(u"/café/x:y"_qs), root + "/caf%C3%A9/x:y"},
      {u"name.txt"_qs, here + "/name.txt"}};
  for (const auto& [target, address] : rows)
    EXPECT_EQ(TargetUrl(target).toEncoded(), address) << target.toStdString();
  EXPECT_TRUE(HasDrives() || TargetUrl(NameFromBytes("/\xff.txt")).toEncoded() == "file:///%FF.txt");
  EXPECT_FALSE(OpenTarget(QString()));
  EXPECT_FALSE(StartProgram(NativePath(u"/no/such program.exe"_qs), u"x"_qs));
}

TEST(FileTypes, TextsOfTheSystem) {
  const QString known = HasDrives() ? u".ini"_qs : u".pdf"_qs;
  EXPECT_FALSE(FileTypeText(known).isEmpty());
  EXPECT_EQ(FileTypeText(known.toUpper()), FileTypeText(known));
  EXPECT_NE(FileTypeText(HasDrives() ? u".chm"_qs : u".png"_qs), FileTypeText(known));
  for (const QString& extension : {u".no-such-type"_qs, QString(), u"."_qs})
    EXPECT_EQ(FileTypeText(extension), QString());
}
