#include "platform/AnsiText.h"

#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

TEST(AnsiText, AsciiIsTheSameInAll) {
  EXPECT_EQ(TextFromAnsi("C:\\a b"), u"C:\\a b"_qs);
  EXPECT_EQ(TextToAnsi(u"C:\\a b"_qs), "C:\\a b");
  EXPECT_EQ(TextFromAnsi({}), QString());
  EXPECT_EQ(TextToAnsi(QString()), QByteArray());
}

TEST(AnsiText, WhatTheSystemsCodePageHasComesBack) {
  const QByteArray bytes = HasDrives() ? "caf\xe9" : "caf\xc3\xa9";
  const QString text = TextFromAnsi(bytes);
  EXPECT_EQ(TextToAnsi(text), bytes);
  EXPECT_EQ(TextToAnsi(text + u'\\'), bytes + '\\');
}

}  // namespace
