// Objects and texts of the component model that release themselves.
#pragma once

#include <QByteArray>
#include <QString>

#include <windows.h>

#include <oleauto.h>

#include <algorithm>
#include <memory>

struct TReleaseComponent {
  void operator()(IUnknown* component) const { component->Release(); }
};
template <typename T>
using TComponent = std::unique_ptr<T, TReleaseComponent>;

// What the call gives through its last argument: Asked<IXMLDOMNode>([&](auto** node) { ... }). Null if it
// fails.
template <typename T, typename TCall>
[[nodiscard]] TComponent<T> Asked(const TCall& call) {
  T* given = nullptr;
  const HRESULT result = call(&given);
  TComponent<T> component(given);
  if (FAILED(result)) component.reset();
  return component;
}

[[nodiscard]] inline BSTR MakeComponentText(const QString& text) {
  return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.utf16()), static_cast<UINT>(text.size()));
}

[[nodiscard]] inline QString TextOfComponentText(BSTR text) {
  return QString::fromWCharArray(text, static_cast<qsizetype>(SysStringLen(text)));
}

class TComponentText {
 public:
  TComponentText() = default;
  explicit TComponentText(const QString& text) : FText(MakeComponentText(text)) {}
  ~TComponentText() { SysFreeString(FText); }
  TComponentText(const TComponentText&) = delete;
  TComponentText& operator=(const TComponentText&) = delete;

  [[nodiscard]] BSTR Get() const { return FText; }
  // For a call that gives a text; only for an empty one.
  [[nodiscard]] BSTR* Out() { return &FText; }
  [[nodiscard]] QString Text() const { return TextOfComponentText(FText); }

 private:
  BSTR FText = nullptr;
};

class TComponentValue {
 public:
  TComponentValue() { VariantInit(&FValue); }
  explicit TComponentValue(bool value) : TComponentValue() {
    FValue.vt = VT_BOOL;
    FValue.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  }
  explicit TComponentValue(const QString& text) : TComponentValue() {
    FValue.vt = VT_BSTR;
    FValue.bstrVal = MakeComponentText(text);
  }
  // An array of these bytes; no value at all if there is no memory for it.
  explicit TComponentValue(const QByteArray& bytes) : TComponentValue() {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
    void* data = nullptr;
    if (array == nullptr) return;
    FValue.vt = VT_ARRAY | VT_UI1;
    FValue.parray = array;
    if (FAILED(SafeArrayAccessData(array, &data))) return;
    std::copy(bytes.begin(), bytes.end(), static_cast<char*>(data));
    SafeArrayUnaccessData(array);
  }
  ~TComponentValue() { VariantClear(&FValue); }
  TComponentValue(const TComponentValue&) = delete;
  TComponentValue& operator=(const TComponentValue&) = delete;

  [[nodiscard]] const VARIANT& Get() const { return FValue; }
  // For a call that gives a value; only for an empty one.
  [[nodiscard]] VARIANT* Out() { return &FValue; }
  // Empty if the value is no text.
  [[nodiscard]] QString Text() const {
    return FValue.vt == VT_BSTR ? TextOfComponentText(FValue.bstrVal) : QString();
  }

 private:
  VARIANT FValue;
};
