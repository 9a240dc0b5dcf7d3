#include "tvx/dom/objects/option.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/reflection.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {

namespace {

namespace attributes {
const Name disabled(u"disabled"), multiple(u"multiple"), selected(u"selected");
}

void expect(const Element& element, Tag tag) {
  if (!element.is(tag)) throw RuntimeError(errors::type_mismatch, u"The element is of another kind");
}

}  // namespace

// --- options ---

OptionObject::OptionObject(Element& option) : element_(option) { expect(option, Tag::Option); }

// White space at its ends and in runs is stripped.
std::u16string OptionObject::text() const {
  const std::u16string content = text_content(*element_);
  std::u16string text;
  for (const std::u16string_view word : split_on_space(content)) {
    if (!text.empty()) text += u' ';
    text += word;
  }
  return text;
}

void OptionObject::set_text(std::u16string_view text) {
  if (text_content(*element_) == text) return;
  Document& document = document_of(*element_);
  const UndoStep step(document.journal(), u"Text");
  if (text.empty()) return clear(*element_);
  replace_children(*element_, document.create_text(std::u16string(text)));
}

std::u16string OptionObject::value() const {
  const std::u16string* written = element_->attribute(names::value);
  return written ? *written : text();
}
void OptionObject::set_value(std::u16string_view value) {
  set_reflected_text(*element_, names::value, value);
}

std::int32_t OptionObject::index() const {
  Element* list = enclosing(*element_, Tag::Select);
  if (!list) return 0;
  std::int32_t place = 0;
  for (const Element* option : SelectObject(*list).options()) {
    if (option == element_.get()) return place;
    ++place;
  }
  return 0;
}

bool OptionObject::selected() const {
  Element* list = enclosing(*element_, Tag::Select);
  if (reflected_flag(*element_, attributes::selected))
    return !list || SelectObject(*list).multiple() || SelectObject(*list).selected() == element_.get();
  return list && SelectObject(*list).selected() == element_.get();
}

void OptionObject::set_selected(bool on) {
  Element* list = enclosing(*element_, Tag::Select);
  if (on && list && !SelectObject(*list).multiple()) return SelectObject(*list).choose(element_.get());
  set_reflected_flag(*element_, attributes::selected, on);
}

bool OptionObject::disabled() const { return reflected_flag(*element_, attributes::disabled); }
void OptionObject::set_disabled(bool on) { set_reflected_flag(*element_, attributes::disabled, on); }

// --- lists ---

SelectObject::SelectObject(Element& list) : element_(list) { expect(list, Tag::Select); }

std::vector<Element*> SelectObject::options() const {
  std::vector<Element*> found;
  for (Node* node = element_->first_child(); node; node = next_in_order(*node, element_.get()))
    if (node->is(Tag::Option)) found.push_back(static_cast<Element*>(node));
  return found;
}

bool SelectObject::multiple() const { return reflected_flag(*element_, attributes::multiple); }
void SelectObject::set_multiple(bool on) { set_reflected_flag(*element_, attributes::multiple, on); }

bool SelectObject::shows_one() const {
  return !multiple() && reflected_number(*element_, names::size, 1, 0) <= 1;
}

Element* SelectObject::selected() const {
  Element* chosen = nullptr;
  const std::vector<Element*> all = options();
  for (Element* option : all)
    if (reflected_flag(*option, attributes::selected)) chosen = option;
  return chosen || !shows_one() || all.empty() ? chosen : all.front();
}

std::int32_t SelectObject::selectedIndex() const {
  Element* chosen = selected();
  return chosen ? OptionObject(*chosen).index() : -1;
}

void SelectObject::set_selectedIndex(std::int32_t index) {
  const std::vector<Element*> all = options();
  const bool known = index >= 0 && static_cast<std::size_t>(index) < all.size();
  choose(known ? all[static_cast<std::size_t>(index)] : nullptr);
}

void SelectObject::choose(const Element* option) {
  if (option && option == selected()) return;
  const UndoStep step(document_of(*element_).journal(), u"Choice");
  for (Element* candidate : options())
    set_reflected_flag(*candidate, attributes::selected, candidate == option);
}

}  // namespace tvx::dom
