#include "platform/windows/XmlProlog.h"

namespace {

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
