// Runs of the console program, as tests look at them.
#pragma once

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

struct TRun {
  int ExitCode = -1;
  QByteArray Out;
  QByteArray Err;
};

inline TRun Finish(QProcess& process) {
  if (!process.waitForFinished(120'000) || process.exitStatus() != QProcess::NormalExit) {
    ADD_FAILURE() << qPrintable(process.errorString());
    return {};
  }
  return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

inline QJsonObject Parsed(const QByteArray& json) {
  QJsonParseError error;
  const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
  EXPECT_EQ(error.error, QJsonParseError::NoError) << json.constData();
  return object;
}
