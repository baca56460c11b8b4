#include "platform/AnsiText.h"

#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

TEST(AnsiText, WhatTheSystemsCodePageHasComesBack) {
  const QByteArray bytes = HasDrives() ? "caf\xe9" : "caf\xc3\xa9";
  const QString text = TextFromAnsi(bytes);
  EXPECT_EQ(TextToAnsi(text), bytes);
  EXPECT_EQ(TextToAnsi(text + u'\\'), bytes + '\\');
}

}  // namespace
