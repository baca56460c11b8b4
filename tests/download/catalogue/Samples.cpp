#include "Samples.h"

#include <QFile>

namespace {

QString SourceFile(const QString& name) {
  return qEnvironmentVariable("TALLYSCOPE_SOURCE_DIR") + u'/' + name;
}

}  // namespace

QString DataFile(const QString& name) {
  return SourceFile(u"data/"_qs + name);
}

QString CatalogueFile(const QString& system) {
  return DataFile(u"DownloadApplication.%1.xml"_qs.arg(system));
}

std::vector<TXMLApplicationType> Applications(const QString& system) {
  const TXMLDownloadApplicationType catalogue = LoadDownloadApplication(CatalogueFile(system));
  std::vector<TXMLApplicationType> applications;
  for (int i = 0; i < catalogue.Count(); ++i)
    applications.push_back(catalogue.Application(i));
  return applications;
}

QString SampleFolder(const QString& system, const QString& application) {
  return SourceFile(u"tests/download/catalogue/samples/%1/%2"_qs.arg(system, application));
}

QByteArray FileBytes(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
