// Documents through libxml2.
#include "platform/XmlDocument.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <limits>
#include <new>

namespace {

template <auto Free>
struct TFree {
  template <typename T>
  void operator()(T* object) const {
    Free(object);
  }
};
using TParser = std::unique_ptr<xmlParserCtxt, TFree<xmlFreeParserCtxt>>;
using TPathContext = std::unique_ptr<xmlXPathContext, TFree<xmlXPathFreeContext>>;
using TPathResult = std::unique_ptr<xmlXPathObject, TFree<xmlXPathFreeObject>>;

template <typename T>
T* Made(T* object) {
  if (object == nullptr) throw std::bad_alloc();
  return object;
}

const xmlChar* XmlText(const QByteArray& text) {
  return reinterpret_cast<const xmlChar*>(text.constData());
}

QByteArray TakeText(xmlChar* text) {
  const QByteArray taken(reinterpret_cast<const char*>(text));
  xmlFree(text);
  return taken;
}

xmlNode* NodeOf(const std::shared_ptr<void>& node) {
  return static_cast<xmlNode*>(node.get());
}

bool IsNamed(const xmlNode* node, const QByteArray& name) {
  return node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, XmlText(name)) != 0;
}

// The node itself or the next one behind it that is an element of this name; null if there is none.
xmlNode* FindNamed(xmlNode* node, const QByteArray& name) {
  while (node != nullptr && !IsNamed(node, name))
    node = node->next;
  return node;
}

// A document without entities has nothing to expand and nothing to fetch.
void RefuseEntity(void* parser, const xmlChar*, int, const xmlChar*, const xmlChar*, xmlChar*) {
  auto* context = static_cast<xmlParserCtxt*>(parser);
  context->wellFormed = 0;
  xmlStopParser(context);
}

// Else libxml2 writes to standard error.
void DropMessage(void*, const char*, ...) {}

QString TextOf(xmlNode* node) {
  const QByteArray text = TakeText(xmlNodeGetContent(node));
  return QString::fromUtf8(node->type == XML_ELEMENT_NODE ? text.trimmed() : text);
}

}  // namespace

QString TXmlElement::Name() const {
  return QString::fromUtf8(reinterpret_cast<const char*>(NodeOf(FNode)->name));
}

QString TXmlElement::Attribute(const QString& name) const {
  return QString::fromUtf8(TakeText(xmlGetNoNsProp(NodeOf(FNode), XmlText(name.toUtf8()))));
}

void TXmlElement::SetAttribute(const QString& name, const QString& value) {
  Made(xmlSetProp(NodeOf(FNode), XmlText(name.toUtf8()), XmlText(value.toUtf8())));
}

TXmlElement TXmlElement::Child(const QString& name) const {
  const QByteArray tag = name.toUtf8();
  xmlNode* child = FindNamed(NodeOf(FNode)->children, tag);
  if (child == nullptr) child = Made(xmlNewChild(NodeOf(FNode), nullptr, XmlText(tag), nullptr));
  return TXmlElement({FNode, child});
}

int TXmlElement::ChildCount(const QString& name) const {
  const QByteArray tag = name.toUtf8();
  int count = 0;
  for (xmlNode* child = FindNamed(NodeOf(FNode)->children, tag); child != nullptr;
       child = FindNamed(child->next, tag))
    ++count;
  return count;
}

TXmlElement TXmlElement::ChildAt(const QString& name, int index) const {
  const QByteArray tag = name.toUtf8();
  xmlNode* child = index < 0 ? nullptr : FindNamed(NodeOf(FNode)->children, tag);
  for (; child != nullptr && index > 0; --index)
    child = FindNamed(child->next, tag);
  if (child == nullptr) throw std::out_of_range("no such child element");
  return TXmlElement({FNode, child});
}

std::optional<QString> TXmlElement::SelectText(const QString& expression) const {
  const TPathContext context(Made(xmlXPathNewContext(NodeOf(FNode)->doc)));
  context->node = NodeOf(FNode);
  context->error = [](void*, auto) {};
  xmlSetGenericErrorFunc(nullptr, DropMessage);  // some complaints go this way only
  const TPathResult result(xmlXPathEval(XmlText(expression.toUtf8()), context.get()));
  if (!result || result->type != XPATH_NODESET)
    throw TXmlError("selects no nodes: " + expression.toStdString());
  if (xmlXPathNodeSetIsEmpty(result->nodesetval)) return std::nullopt;
  xmlXPathNodeSetSort(result->nodesetval);
  return TextOf(result->nodesetval->nodeTab[0]);
}

// The document is hostile: no network, and no option that would load an external type, expand entities or
// lift the library's own bounds on depth and sizes.
TXmlElement ParseXml(const QByteArray& document) {
  if (document.size() > std::numeric_limits<int>::max()) throw TXmlError("a document that is too large");
  const TParser parser(Made(xmlNewParserCtxt()));
  parser->sax->entityDecl = RefuseEntity;
  const std::shared_ptr<xmlDoc> tree(
      xmlCtxtReadMemory(parser.get(), document.constData(), static_cast<int>(document.size()), nullptr,
                        nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
      xmlFreeDoc);
  xmlNode* root = tree ? xmlDocGetRootElement(tree.get()) : nullptr;
  if (root == nullptr) throw TXmlError("a document that is not well-formed");
  return TXmlElement(std::shared_ptr<void>(tree, root));
}
