#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/node.h"
#include "tvx/dom/ref.h"

/// Forms and their fields as objects (HTML standard, section 4.10), as a document that is edited has them:
/// values are those written in attributes and content, nobody types into a field here. Members have the names
/// of that object model; a value that isn't among those allowed throws RuntimeError(380).
namespace tvx::dom {

class FormObject {
 public:
  explicit FormObject(Element& form);
  /// The fields in it, in document order.
  std::vector<Element*> elements() const;

  std::u16string name() const;
  void set_name(std::u16string_view value);
  /// "get" or "post"; "get" where nothing else is written.
  std::u16string method() const;
  void set_method(std::u16string_view value);
  /// As written: what is sent nowhere needs no absolute address, and a dialog that shows and writes it back
  /// changes nothing.
  std::u16string action() const;
  void set_action(std::u16string_view value);
  /// The attribute `enctype`: "application/x-www-form-urlencoded" (also where nothing else is written),
  /// "multipart/form-data" or "text/plain".
  std::u16string encoding() const;
  void set_encoding(std::u16string_view value);
  std::u16string target() const;
  void set_target(std::u16string_view value);

 private:
  Ref<Element> element_;
};

/// INPUT, BUTTON, SELECT or TEXTAREA.
class FieldObject {
 public:
  explicit FieldObject(Element& field);

  /// The form around it, null if there is none.
  Element* form() const;
  std::u16string name() const;
  void set_name(std::u16string_view value);
  /// In small letters: of an INPUT "text" where no known type is written, of a BUTTON "submit", of a SELECT
  /// "select-one" or "select-multiple", "textarea". Setting: of INPUT and BUTTON only, else
  /// RuntimeError(383).
  std::u16string type() const;
  void set_type(std::u16string_view value);
  /// Of a TEXTAREA its text, of a SELECT the value of its selected option, else the attribute; a check box or
  /// a radio button without one has "on". A SELECT ignores a text that is no option.
  std::u16string value() const;
  void set_value(std::u16string_view value);
  /// Checking a radio button takes the check from the others of its name in its form.
  bool checked() const;
  void set_checked(bool on);
  bool disabled() const;
  void set_disabled(bool on);
  bool readOnly() const;
  void set_readOnly(bool on);
  /// Characters wide (options high of a SELECT); 0 where none is written.
  int size() const;
  void set_size(int value);

 private:
  void uncheck_group();
  Ref<Element> element_;
};

}  // namespace tvx::dom
