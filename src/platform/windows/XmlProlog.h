// What stands before the root element of an XML document, as far as it must be known before the system's
// parser may see the document.
#pragma once

#include <QByteArray>

#include <optional>

// The document with blanks in the place of its document type, so that nothing it declares or names reaches
// the parser. Nothing if the document type declares entities or is followed by another one. A document in an
// encoding that is neither UTF-16 nor begins like ASCII, or that breaks off in its document type, comes back
// as it stands.
[[nodiscard]] std::optional<QByteArray> WithoutDocumentType(const QByteArray& document);
