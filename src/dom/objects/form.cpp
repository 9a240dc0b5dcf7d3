#include "dom/objects/form.h"

#include "base/error.h"
#include "base/strings.h"
#include "dom/inner_text.h"
#include "dom/journal.h"
#include "dom/mutation.h"
#include "dom/objects/reflection.h"
#include "dom/tree.h"

namespace tvx::dom {

namespace {

namespace attributes {
const Name method(u"method"), enctype(u"enctype"), disabled(u"disabled"), read_only(u"readonly"),
    selected(u"selected"), multiple(u"multiple");
}

constexpr auto input_types = {
    std::u16string_view(u"button"), std::u16string_view(u"checkbox"),       std::u16string_view(u"color"),
    std::u16string_view(u"date"),   std::u16string_view(u"datetime-local"), std::u16string_view(u"email"),
    std::u16string_view(u"file"),   std::u16string_view(u"hidden"),         std::u16string_view(u"image"),
    std::u16string_view(u"month"),  std::u16string_view(u"number"),         std::u16string_view(u"password"),
    std::u16string_view(u"radio"),  std::u16string_view(u"range"),          std::u16string_view(u"reset"),
    std::u16string_view(u"search"), std::u16string_view(u"submit"),         std::u16string_view(u"tel"),
    std::u16string_view(u"text"),   std::u16string_view(u"time"),           std::u16string_view(u"url"),
    std::u16string_view(u"week")};
constexpr auto button_types = {std::u16string_view(u"button"), std::u16string_view(u"reset"),
                               std::u16string_view(u"submit")};
constexpr auto methods = {std::u16string_view(u"get"), std::u16string_view(u"post")};
constexpr auto encodings = {std::u16string_view(u"application/x-www-form-urlencoded"),
                            std::u16string_view(u"multipart/form-data"), std::u16string_view(u"text/plain")};

bool is_field(const Node& node) {
  return node.is(Tag::Input) || node.is(Tag::Button) || node.is(Tag::Select) || node.is(Tag::Textarea);
}

void expect(bool fits) {
  if (!fits) throw RuntimeError(errors::type_mismatch, u"The element is of another kind");
}

template <class Fits>
std::vector<Element*> all_below(const Element& root, Fits fits) {
  std::vector<Element*> found;
  for (Node* node = root.first_child(); node; node = next_in_order(*node, &root))
    if (fits(*node)) found.push_back(static_cast<Element*>(node));
  return found;
}

std::u16string option_value(const Element& option) {
  if (const std::u16string* value = option.attribute(names::value)) return *value;
  // HTML standard, "text" of an option: white space at its ends and in runs is stripped.
  const std::u16string content = text_content(option);
  std::u16string text;
  for (const std::u16string_view word : split_on_space(content)) {
    if (!text.empty()) text += u' ';
    text += word;
  }
  return text;
}

}  // namespace

// --- forms ---

FormObject::FormObject(Element& form) : element_(form) { expect(form.is(Tag::Form)); }
std::vector<Element*> FormObject::elements() const { return all_below(*element_, is_field); }

std::u16string FormObject::name() const { return reflected_text(*element_, names::name); }
void FormObject::set_name(std::u16string_view value) { set_reflected_text(*element_, names::name, value); }
std::u16string FormObject::method() const {
  return reflected_enumerated(*element_, attributes::method, methods, u"get");
}
void FormObject::set_method(std::u16string_view value) {
  set_enumerated(*element_, attributes::method, value, methods);
}
std::u16string FormObject::action() const { return reflected_text(*element_, names::action); }
void FormObject::set_action(std::u16string_view value) {
  set_reflected_text(*element_, names::action, value);
}
std::u16string FormObject::encoding() const {
  return reflected_enumerated(*element_, attributes::enctype, encodings, *encodings.begin());
}
void FormObject::set_encoding(std::u16string_view value) {
  set_enumerated(*element_, attributes::enctype, value, encodings);
}
std::u16string FormObject::target() const { return reflected_text(*element_, names::target); }
void FormObject::set_target(std::u16string_view value) { set_or_remove(*element_, names::target, value); }

// --- fields ---

FieldObject::FieldObject(Element& field) : element_(field) { expect(is_field(field)); }
Element* FieldObject::form() const { return enclosing(*element_, Tag::Form); }

std::u16string FieldObject::name() const { return reflected_text(*element_, names::name); }
void FieldObject::set_name(std::u16string_view value) { set_reflected_text(*element_, names::name, value); }

std::u16string FieldObject::type() const {
  if (element_->is(Tag::Textarea)) return u"textarea";
  if (element_->is(Tag::Select))
    return element_->has_attribute(attributes::multiple) ? u"select-multiple" : u"select-one";
  if (element_->is(Tag::Button)) return reflected_enumerated(*element_, names::type, button_types, u"submit");
  return reflected_enumerated(*element_, names::type, input_types, u"text");
}

void FieldObject::set_type(std::u16string_view value) {
  if (element_->is(Tag::Input)) return set_enumerated(*element_, names::type, value, input_types);
  if (element_->is(Tag::Button)) return set_enumerated(*element_, names::type, value, button_types);
  throw RuntimeError(errors::set_not_permitted_here, u"The type of this element can't be set");
}

std::vector<Element*> FieldObject::options() const {
  return all_below(*element_, [](const Node& node) { return node.is(Tag::Option); });
}

// HTML standard, section 4.10.7: the last option that says so, else the first of a list that shows one.
Element* FieldObject::selected_option() const {
  Element* chosen = nullptr;
  const std::vector<Element*> all = options();
  for (Element* option : all)
    if (option->has_attribute(attributes::selected)) chosen = option;
  const bool shows_one = !element_->has_attribute(attributes::multiple) && size() <= 1;
  return chosen || !shows_one || all.empty() ? chosen : all.front();
}

std::u16string FieldObject::value() const {
  if (element_->is(Tag::Textarea)) return text_content(*element_);
  if (element_->is(Tag::Select)) {
    const Element* option = selected_option();
    return option ? option_value(*option) : std::u16string();
  }
  const std::u16string* written = element_->attribute(names::value);
  if (written) return *written;
  const bool box = element_->is(Tag::Input) && (type() == u"checkbox" || type() == u"radio");
  return box ? u"on" : u"";
}

void FieldObject::set_value(std::u16string_view value) {
  const UndoStep step(document_of(*element_).journal(), u"Value");
  if (element_->is(Tag::Textarea)) {
    if (text_content(*element_) == value) return;
    return replace_children(*element_, document_of(*element_).create_text(std::u16string(value)));
  }
  if (!element_->is(Tag::Select)) return set_reflected_text(*element_, names::value, value);
  const std::vector<Element*> all = options();
  Element* chosen = nullptr;
  for (Element* option : all)
    if (!chosen && option_value(*option) == value) chosen = option;
  if (!chosen || chosen == selected_option()) return;
  for (Element* option : all) set_reflected_flag(*option, attributes::selected, option == chosen);
}

bool FieldObject::checked() const { return reflected_flag(*element_, names::checked); }
void FieldObject::set_checked(bool on) { set_reflected_flag(*element_, names::checked, on); }
bool FieldObject::disabled() const { return reflected_flag(*element_, attributes::disabled); }
void FieldObject::set_disabled(bool on) { set_reflected_flag(*element_, attributes::disabled, on); }
bool FieldObject::readOnly() const { return reflected_flag(*element_, attributes::read_only); }
void FieldObject::set_readOnly(bool on) { set_reflected_flag(*element_, attributes::read_only, on); }
int FieldObject::size() const { return reflected_number(*element_, names::size, 1, 0); }
void FieldObject::set_size(int value) { set_reflected_number(*element_, names::size, value, 1); }

}  // namespace tvx::dom
