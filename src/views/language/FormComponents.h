// The components of a form: every named object below it, with its class and the texts of it that a language
// file may replace. The language is put onto the forms by this list; tests and assistive tools go by it too.
// Main thread.
#pragma once

#include <QString>

#include <functional>
#include <initializer_list>
#include <span>
#include <vector>

class QObject;
class TLanguage;

// One text: its key in the form's section, such as "lvTop.Columns[0].Caption", and what it says now.
struct TFormText {
  QString Key;
  QString Text;
  std::function<void(const QString& text)> Put;
};

struct TFormComponent {
  QObject* Object;
  QString Name;
  const char* Class;             // of the table of classes; empty for one without texts of its own
  std::vector<TFormText> Texts;  // as they were when the list was made
};

// In the order of their making, containers before what they hold. Qt's own inner parts are none, and a form
// that lies above another one stands for itself.
[[nodiscard]] std::vector<TFormComponent> FormComponents(const QObject& form);

// The section of a form's texts: "Tallyscope_FormMain". Empty for an object without a name.
[[nodiscard]] QString FormSection(const TLanguage& language, const QObject& form);

// Gives every text of the components the loaded language's, present but empty ones too; what the language
// lacks stays. An exception ends the walk of the form and goes no further.
void ApplyToForm(const TLanguage& language, QObject& form);

// The same for each form that is there.
void ApplyToAllForms(const TLanguage& language);

// Plain labels, which the walk passes by. An empty text leaves the label as it is.
void ApplyToLabels(const TLanguage& language, QObject& form, std::initializer_list<const char*> labels);

// How assistive tools call a component that shows no text of its own.
struct TSpokenRow {
  const char* Component;
  const char* Source;        // a component of the form that shows the words, or the key of a message
  const char* Default = "";  // of the message
};
void ApplySpokenNames(const TLanguage& language, QObject& form, std::span<const TSpokenRow> rows);

// HoldCaptions for every list of the form.
void HoldFormCaptions(QObject& form, int room);
