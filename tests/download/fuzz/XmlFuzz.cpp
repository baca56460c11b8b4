// The input is a document: an application's settings, and a catalogue.
#include "download/DownloadApplication.h"
#include "platform/XmlDocument.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const TXmlElement root =
        ParseXml(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    for (const char16_t* path : {u"a/b", u"//@*", u"//*[2] | .", u"/descendant-or-self::node()/text()"})
      (void)root.SelectText(QString::fromUtf16(path));
    const TXMLDownloadApplicationType catalogue(root);
    for (int i = 0; i < catalogue.Count(); ++i) {
      (void)catalogue.Application(i).ConfigInfo().ConfigName().Value();
      (void)catalogue.Application(i).RegistryInfo().RegistryKeyName().Value();
    }
  } catch (const TXmlError&) {
  }
  return 0;
}
