#include "platform/FileTypes.h"
#include "platform/Paths.h"
#include "platform/Shell.h"

#include <gtest/gtest.h>

#include <QDir>

namespace {

TEST(Shell, TargetsAreAddressesOrFiles) {
  const QByteArray here = QDir::currentPath().toUtf8();
  const struct {
    QByteArray Target;
    QByteArray Address;
  } rows[] = {
      {"https://example.org/a?b=c", "https://example.org/a?b=c"},
      {"mailto:a@example.org", "mailto:a@example.org"},
      {"/a/plain.txt", "file:///a/plain.txt"},
      {"/a/100% #1 ?.txt", "file:///a/100%25%20%231%20%3F.txt"},
      {"/caf\xc3\xa9/\xff.txt", "file:///caf%C3%A9/%FF.txt"},
      {"/a/x:y", "file:///a/x:y"},
      {"name.txt", "file://" + here + "/name.txt"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(TargetUrl(NameFromBytes(row.Target)).toEncoded(), row.Address) << row.Target.data();
}

TEST(Shell, NothingIsOpenedForAnEmptyTarget) {
  EXPECT_FALSE(OpenTarget(QString()));
}

TEST(FileTypes, TextsOfTheSystem) {
  EXPECT_FALSE(FileTypeText(QStringLiteral(".pdf")).isEmpty());
  EXPECT_EQ(FileTypeText(QStringLiteral(".PDF")), FileTypeText(QStringLiteral(".pdf")));
  EXPECT_NE(FileTypeText(QStringLiteral(".png")), FileTypeText(QStringLiteral(".pdf")));
  for (const char16_t* const extension : {u".no-such-type", u"", u"."})
    EXPECT_EQ(FileTypeText(QString::fromUtf16(extension)), QString());
}

}  // namespace
