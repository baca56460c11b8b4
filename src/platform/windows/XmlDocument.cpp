// Documents through MSXML.
//
// The system's parser would refuse a document type where it is told to prohibit one, and a harmless one is
// common. So WithoutDocumentType blanks it first, by its own small reader of what stands before the root
// element (TPrologReader), and the parser gets its rules all the same (SetRules). Where that reader
// understands less than the parser, the parser refuses.
//
// A document belongs to the thread that has parsed it: TDocument keeps that thread's right to use components.
#include "platform/XmlDocument.h"

#include "platform/Process.h"
#include "platform/windows/Component.h"
#include "platform/windows/XmlProlog.h"

#include <msxml2.h>
#include <limits>

namespace {

// The import libraries of MinGW lack it.
constexpr IID kDocumentInterface = {
    0x2933bf95, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};

void Check(HRESULT result, const std::string& what) {
  if (FAILED(result)) throw TXmlError(what);
}

// Its thread can use components for as long as the document lives.
struct TDocument {
  TComThread Thread;
  TComponent<IXMLDOMDocument2> Document;
};

struct TNode {
  std::shared_ptr<TDocument> Document;
  TComponent<IXMLDOMElement> Element;
};

const TNode& NodeOf(const std::shared_ptr<void>& node) {
  return *static_cast<const TNode*>(node.get());
}

TXmlElement MakeElement(const std::shared_ptr<TDocument>& document, TComponent<IXMLDOMElement> element) {
  return TXmlElement(std::make_shared<TNode>(TNode{document, std::move(element)}));
}

TComponent<IXMLDOMElement> AsElement(IXMLDOMNode* node) {
  return Asked<IXMLDOMElement>([&](auto** element) {
    return node->QueryInterface(IID_IXMLDOMElement, reinterpret_cast<void**>(element));
  });
}

bool IsElement(IXMLDOMNode* node) {
  DOMNodeType type = NODE_INVALID;
  return SUCCEEDED(node->get_nodeType(&type)) && type == NODE_ELEMENT;
}

QString NameOf(IXMLDOMNode* node) {
  TComponentText name;
  return SUCCEEDED(node->get_baseName(name.Out())) ? name.Text() : QString();
}

// The node itself or the next one behind it that is an element of this name; null if there is none.
TComponent<IXMLDOMElement> FindNamed(TComponent<IXMLDOMNode> node, const QString& name) {
  for (; node; node = Asked<IXMLDOMNode>([&](auto** next) { return node->get_nextSibling(next); })) {
    if (IsElement(node.get()) && NameOf(node.get()) == name) return AsElement(node.get());
  }
  return nullptr;
}

TComponent<IXMLDOMElement> FirstNamed(const TNode& parent, const QString& name) {
  return FindNamed(Asked<IXMLDOMNode>([&](auto** first) { return parent.Element->get_firstChild(first); }),
                   name);
}

TComponent<IXMLDOMElement> NextNamed(const TComponent<IXMLDOMElement>& element, const QString& name) {
  return FindNamed(Asked<IXMLDOMNode>([&](auto** next) { return element->get_nextSibling(next); }), name);
}

TComponent<IXMLDOMElement> AppendNamed(const TNode& parent, const QString& name) {
  auto made = Asked<IXMLDOMElement>([&](auto** element) {
    return parent.Document->Document->createElement(TComponentText(name).Get(), element);
  });
  if (!made) throw TXmlError("no name of an element: " + name.toStdString());
  const auto appended =
      Asked<IXMLDOMNode>([&](auto** node) { return parent.Element->appendChild(made.get(), node); });
  if (!appended) throw TXmlError("no element can be added");
  return made;
}

// The newest one that this computer has.
TComponent<IXMLDOMDocument2> CreateDocument() {
  for (const wchar_t* const name :
       {L"Msxml2.DOMDocument.6.0", L"Msxml2.DOMDocument.3.0", L"Msxml2.DOMDocument"}) {
    CLSID number;
    if (FAILED(CLSIDFromProgID(name, &number))) continue;
    auto document = Asked<IXMLDOMDocument2>([&](IXMLDOMDocument2** made) {
      return CoCreateInstance(number, nullptr, CLSCTX_INPROC_SERVER, kDocumentInterface,
                              reinterpret_cast<void**>(made));
    });
    if (document) return document;
  }
  throw TXmlError("no XML parser on this computer");
}

void SetProperty(IXMLDOMDocument2& document, const QString& name, const TComponentValue& value) {
  Check(document.setProperty(TComponentText(name).Get(), value.Get()),
        "the XML parser lacks " + name.toStdString());
}

// Nothing outside the document is read, and none of its own declarations is followed.
void SetRules(IXMLDOMDocument2& document) {
  const char* const what = "the XML parser takes no rules";
  Check(document.put_async(VARIANT_FALSE), what);
  Check(document.put_validateOnParse(VARIANT_FALSE), what);
  Check(document.put_resolveExternals(VARIANT_FALSE), what);
  SetProperty(document, QStringLiteral("ProhibitDTD"), TComponentValue(true));
  SetProperty(document, QStringLiteral("SelectionLanguage"), TComponentValue(QStringLiteral("XPath")));
}

void Load(IXMLDOMDocument2& document, const QByteArray& bytes) {
  VARIANT_BOOL loaded = VARIANT_FALSE;
  const HRESULT result = document.load(TComponentValue(bytes).Get(), &loaded);
  if (result != S_OK || loaded == VARIANT_FALSE) throw TXmlError("a document that is not well-formed");
}

// One byte for each unit of the document, as if it were ASCII.
struct TUnits {
  QByteArray Text;
  int Width = 1;    // bytes of one unit
  int LowByte = 0;  // where in a unit its low byte stands
};

constexpr char kNoAscii = '\x80';

TUnits UnitsOf(const QByteArray& document) {
  const bool little = document.startsWith("\xff\xfe") || document.startsWith(QByteArrayView("<\0", 2));
  const bool big = document.startsWith("\xfe\xff") || document.startsWith(QByteArrayView("\0<", 2));
  if (!little && !big) return {document};
  TUnits units{{}, 2, little ? 0 : 1};
  units.Text.reserve(document.size() / 2);
  for (qsizetype i = 0; i + 1 < document.size(); i += 2) {
    const bool ascii = document[i + 1 - units.LowByte] == '\0';
    units.Text += ascii ? document[i + units.LowByte] : kNoAscii;
  }
  return units;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Reads a document's units up to the end of its document type. Every place is -1 once the text has broken
// off.
class TPrologReader {
 public:
  explicit TPrologReader(const QByteArray& text) : FText(text) {}

  // Behind the byte-order mark, if there is one.
  [[nodiscard]] qsizetype Begin() const {
    const bool ofUtf16 = StandsAt(0, QByteArrayView(&kNoAscii, 1));
    return StandsAt(0, "\xef\xbb\xbf") ? 3 : ofUtf16 ? 1 : 0;
  }

  // The place of the next "<!DOCTYPE", -1 if there is none before the root element.
  [[nodiscard]] qsizetype FindDocumentType(qsizetype from) const;

  // Goes through the document type; false if the text breaks off.
  bool ReadDocumentType(qsizetype begin);
  [[nodiscard]] qsizetype End() const { return FPlace; }
  [[nodiscard]] bool DeclaresEntities() const { return FDeclaresEntities; }

 private:
  [[nodiscard]] bool StandsAt(qsizetype place, QByteArrayView text) const {
    return QByteArrayView(FText).sliced(place).startsWith(text);
  }
  // Behind the next such text.
  [[nodiscard]] qsizetype Behind(QByteArrayView text, qsizetype from) const {
    const qsizetype found = FText.indexOf(text, from);
    return found < 0 ? -1 : found + text.size();
  }
  // Behind the comment or processing instruction at the place; the place itself if there is none.
  [[nodiscard]] qsizetype BehindRemark(qsizetype place) const;
  // Behind what stands at FPlace inside the document type.
  [[nodiscard]] qsizetype BehindPart() const;

  const QByteArray& FText;
  qsizetype FPlace = 0;
  bool FDeclaresEntities = false;
};

qsizetype TPrologReader::BehindRemark(qsizetype place) const {
  if (StandsAt(place, "<!--")) return Behind("-->", place + 4);
  if (StandsAt(place, "<?")) return Behind("?>", place + 2);
  return place;
}

qsizetype TPrologReader::FindDocumentType(qsizetype from) const {
  for (qsizetype place = from; place >= 0 && place < FText.size();) {
    if (StandsAt(place, "<!DOCTYPE")) return place;
    const qsizetype next = IsBlank(FText[place]) ? place + 1 : BehindRemark(place);
    if (next == place) return -1;
    place = next;
  }
  return -1;
}

qsizetype TPrologReader::BehindPart() const {
  const char c = FText[FPlace];
  if (c == '"' || c == '\'') return Behind(QByteArrayView(&c, 1), FPlace + 1);
  const qsizetype behind = BehindRemark(FPlace);
  return behind == FPlace ? FPlace + 1 : behind;
}

bool TPrologReader::ReadDocumentType(qsizetype begin) {
  bool inside = false;  // the brackets that hold declarations
  for (FPlace = begin; FPlace >= 0 && FPlace < FText.size(); FPlace = BehindPart()) {
    const char c = FText[FPlace];
    if (c == '[') inside = true;
    if (c == ']') inside = false;
    if (StandsAt(FPlace, "<!ENTITY")) FDeclaresEntities = true;
    if (c != '>' || inside) continue;
    ++FPlace;
    return true;
  }
  return false;
}

}  // namespace

QString TXmlElement::Name() const {
  return NameOf(NodeOf(FNode).Element.get());
}

QString TXmlElement::Attribute(const QString& name) const {
  TComponentValue value;
  const HRESULT result = NodeOf(FNode).Element->getAttribute(TComponentText(name).Get(), value.Out());
  return result == S_OK ? value.Text() : QString();
}

void TXmlElement::SetAttribute(const QString& name, const QString& value) {
  Check(NodeOf(FNode).Element->setAttribute(TComponentText(name).Get(), TComponentValue(value).Get()),
        "no name of an attribute: " + name.toStdString());
}

TXmlElement TXmlElement::Child(const QString& name) const {
  const TNode& parent = NodeOf(FNode);
  auto child = FirstNamed(parent, name);
  return MakeElement(parent.Document, child ? std::move(child) : AppendNamed(parent, name));
}

int TXmlElement::ChildCount(const QString& name) const {
  int count = 0;
  for (auto child = FirstNamed(NodeOf(FNode), name); child; child = NextNamed(child, name))
    ++count;
  return count;
}

TXmlElement TXmlElement::ChildAt(const QString& name, int index) const {
  auto child = index < 0 ? nullptr : FirstNamed(NodeOf(FNode), name);
  for (; child && index > 0; --index)
    child = NextNamed(child, name);
  if (!child) throw std::out_of_range("no such child element");
  return MakeElement(NodeOf(FNode).Document, std::move(child));
}

std::optional<QString> TXmlElement::SelectText(const QString& expression) const {
  IXMLDOMNode* found = nullptr;
  const HRESULT result = NodeOf(FNode).Element->selectSingleNode(TComponentText(expression).Get(), &found);
  const TComponent<IXMLDOMNode> node(found);
  Check(result, "selects no nodes: " + expression.toStdString());
  if (!node) return std::nullopt;
  TComponentText text;
  Check(node->get_text(text.Out()), "a node without a text");
  return IsElement(node.get()) ? text.Text().trimmed() : text.Text();
}

TXmlElement ParseXml(const QByteArray& document) {
  if (document.size() > std::numeric_limits<int>::max()) throw TXmlError("a document that is too large");
  const auto bytes = WithoutDocumentType(document);
  if (!bytes) throw TXmlError("a document with entities of its own");
  const auto holder = std::make_shared<TDocument>();
  holder->Document = CreateDocument();
  SetRules(*holder->Document);
  Load(*holder->Document, *bytes);
  auto root =
      Asked<IXMLDOMElement>([&](auto** element) { return holder->Document->get_documentElement(element); });
  if (!root) throw TXmlError("a document without an element");
  return MakeElement(holder, std::move(root));
}

std::optional<QByteArray> WithoutDocumentType(const QByteArray& document) {
  const TUnits units = UnitsOf(document);
  TPrologReader prolog(units.Text);
  const qsizetype begin = prolog.FindDocumentType(prolog.Begin());
  if (begin < 0) return document;
  const bool whole = prolog.ReadDocumentType(begin);
  if (prolog.DeclaresEntities()) return std::nullopt;
  if (!whole) return document;
  // Blanks in the place of the first one would make a second one the right one.
  if (prolog.FindDocumentType(prolog.End()) >= 0) return std::nullopt;
  QByteArray without = document;
  for (qsizetype unit = begin; unit < prolog.End(); ++unit) {
    for (int i = 0; i < units.Width; ++i)
      without[unit * units.Width + i] = i == units.LowByte ? ' ' : '\0';
  }
  return without;
}
