#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/Variables.h"
#include "platform/KnownFolders.h"

#include <gtest/gtest.h>

namespace {

TEST(ExpandEnvironment, KnownNamesAreReplacedAndOthersStay) {
  const TVariables set{{"TALLYSCOPE_A", "v"}, {"tallyscope_b", nullptr}, {"TALLYSCOPE_B", "w"}};
  const struct {
    QString Text;
    QString Expanded;
  } rows[] = {
      {QString(), QString()},
      {u"no name"_qs, u"no name"_qs},
      {u"%TALLYSCOPE_A%"_qs, u"v"_qs},
      {u"a%TALLYSCOPE_A%b%TALLYSCOPE_A%"_qs, u"avbv"_qs},
      {u"%tallyscope_b%"_qs, HasDrives() ? u"w"_qs : u"%tallyscope_b%"_qs},
      {u"%NO_SUCH_NAME%/x"_qs, u"%NO_SUCH_NAME%/x"_qs},
      {u"100%"_qs, u"100%"_qs},
      {u"%%"_qs, u"%%"_qs},
      {u"a%%b"_qs, u"a%%b"_qs},
  };
  for (const auto& row : rows)
    EXPECT_EQ(ExpandEnvironment(row.Text), row.Expanded) << row.Text.toStdString();
}

}  // namespace
