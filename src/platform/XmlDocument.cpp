#include "platform/XmlDocument.h"

#include "platform/FileTests.h"

TXmlElement LoadXml(const QString& fileName) {
  const auto content = ReadWholeFile(fileName);
  if (!content) throw TXmlError("can't read " + fileName.toStdString());
  return ParseXml(*content);
}
