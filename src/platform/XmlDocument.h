// Reading of XML documents by their elements: encodings as the documents declare them, selection of a node by
// an XPath expression. Nothing but the given bytes is ever read: no network, no external entity and no
// external document type; a document that declares entities of its own is refused, so none can blow up. An
// entity that only an external document type could declare is empty on Linux and an error on Windows.
#pragma once

#include "platform/FileTests.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

// A file that can't be read, a document that is not well-formed, an expression that is none.
class TXmlError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One element of a document. A view, which copies share: it keeps the document alive. One thread per
// document.
class TXmlElement {
 public:
  // The system's own node.
  explicit TXmlElement(std::shared_ptr<void> node) : FNode(std::move(node)) {}

  // As it stands in the tag, without a namespace's prefix.
  [[nodiscard]] QString Name() const;

  // Empty if there is no such attribute.
  [[nodiscard]] QString Attribute(const QString& name) const;
  void SetAttribute(const QString& name, const QString& value);

  // The first child element of this name. One that is missing is made, empty, in memory.
  [[nodiscard]] TXmlElement Child(const QString& name) const;

  // All child elements of this name in document order, 0-based; std::out_of_range for an index outside them.
  [[nodiscard]] int ChildCount(const QString& name) const;
  [[nodiscard]] TXmlElement ChildAt(const QString& name, int index) const;

  // The text of the first node in document order that the XPath expression, evaluated from this element,
  // finds: an attribute's value, or all texts in an element without the blanks at both ends; on Windows a
  // text alone loses them too. Nothing if it finds none. Throws TXmlError for an expression that does not
  // select nodes.
  [[nodiscard]] std::optional<QString> SelectText(const QString& expression) const;

 private:
  std::shared_ptr<void> FNode;
};

// The root element of a document. Both throw TXmlError; the second one blocks on the file system.
[[nodiscard]] TXmlElement ParseXml(const QByteArray& document);
[[nodiscard]] inline TXmlElement LoadXml(const QString& fileName) {
  const auto content = ReadWholeFile(fileName);
  if (!content) throw TXmlError("can't read " + fileName.toStdString());
  return ParseXml(*content);
}
