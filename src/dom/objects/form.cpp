#include "tvx/dom/objects/form.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/option.h"
#include "tvx/dom/objects/reflection.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

namespace {

namespace attributes {
const Name method(u"method"), enctype(u"enctype"), disabled(u"disabled"), read_only(u"readonly"),
    multiple(u"multiple");
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
std::vector<Element*> all_below(const Node& root, Fits fits) {
  std::vector<Element*> found;
  for (Node* node = root.first_child(); node; node = next_in_order(*node, &root))
    if (fits(*node)) found.push_back(static_cast<Element*>(node));
  return found;
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

std::u16string FieldObject::value() const {
  if (element_->is(Tag::Textarea)) return text_content(*element_);
  if (element_->is(Tag::Select)) {
    Element* option = SelectObject(*element_).selected();
    return option ? OptionObject(*option).value() : std::u16string();
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
  SelectObject list(*element_);
  for (Element* option : list.options())
    if (OptionObject(*option).value() == value) return list.choose(option);
}

bool FieldObject::checked() const { return reflected_flag(*element_, names::checked); }
void FieldObject::set_checked(bool on) {
  const UndoStep step(document_of(*element_).journal(), u"Check");
  if (on && element_->is(Tag::Input) && type() == u"radio") uncheck_group();
  set_reflected_flag(*element_, names::checked, on);
}

void FieldObject::uncheck_group() {
  const std::u16string group = name();
  if (group.empty()) return;
  const Element* own_form = form();
  const Node& root = own_form ? static_cast<const Node&>(*own_form) : root_of(*element_);
  const std::vector<Element*> inputs = all_below(root, [](const Node& node) { return node.is(Tag::Input); });
  for (Element* input : inputs) {
    const FieldObject other(*input);
    if (input != element_.get() && other.type() == u"radio" && other.name() == group &&
        other.form() == own_form)
      set_reflected_flag(*input, names::checked, false);
  }
}

bool FieldObject::disabled() const { return reflected_flag(*element_, attributes::disabled); }
void FieldObject::set_disabled(bool on) { set_reflected_flag(*element_, attributes::disabled, on); }
bool FieldObject::readOnly() const { return reflected_flag(*element_, attributes::read_only); }
void FieldObject::set_readOnly(bool on) { set_reflected_flag(*element_, attributes::read_only, on); }
int FieldObject::size() const { return reflected_number(*element_, names::size, 1, 0); }
void FieldObject::set_size(int value) { set_reflected_number(*element_, names::size, value, 1); }

}  // namespace tvx::dom
