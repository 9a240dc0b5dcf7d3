#include "tvx/core/spelling/wrapper.h"

#include "tvx/browser/html_document.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::core {

using dom::StepJoin;

namespace {

constexpr std::u16string_view wrapper_id = u"DIVOVSPELL", wrapper_class = u"oVSpellClass",
                              label = u"Spelling";

bool has_element(const dom::Element& body) {
  for (const dom::Node* child = body.first_child(); child; child = child->next_sibling())
    if (child->is_element()) return true;
  return false;
}

dom::Element* wrapper_in(const dom::Element& body) {
  for (dom::Node* child = body.first_child(); child; child = child->next_sibling()) {
    auto* element = dom::as<dom::Element>(child);
    if (element && element->attribute_or_empty(dom::names::id) == wrapper_id) return element;
  }
  return nullptr;
}

}  // namespace

void SpellingWrapper::wrap() {
  dom::Element& body = *document_.body();
  const dom::Ref<dom::Element> wrapper = document_.tree().create_element(dom::Name(dom::Tag::Div));
  dom::insert(body, wrapper);
  dom::set_attribute(*wrapper, dom::names::id, wrapper_id);
  dom::set_attribute(*wrapper, dom::names::class_, wrapper_class);
  editing::NodeList content = editing::children_of(body);
  content.pop_back();
  editing::move_run_preserving_ranges(content, *wrapper, nullptr);
}

void SpellingWrapper::unwrap() {
  dom::Element* body = document_.body();
  if (!body) return;
  const dom::Ref<dom::Element> wrapper = wrapper_in(*body);
  if (!wrapper) return;
  editing::move_run_preserving_ranges(editing::children_of(*wrapper), *body, wrapper.get());
  dom::remove(*wrapper);
}

void SpellingWrapper::put_in() {
  if (stands_ || has_element(*document_.body())) return;
  const dom::UndoStep step(document_.tree().journal(), label, StepJoin::LastStep);
  wrap();
  stands_ = true;
}

void SpellingWrapper::begin_change() {
  if (!stands_ || changing_) return;
  {
    const dom::UndoStep undone(document_.tree().journal(), label, StepJoin::LastStep);
    unwrap();
  }
  const dom::UndoStep step(document_.tree().journal(), label);
  wrap();
  changing_ = true;
}

void SpellingWrapper::take_out() {
  if (!stands_) return;
  stands_ = false;
  const dom::UndoStep step(document_.tree().journal(), label, StepJoin::LastStep);
  unwrap();
}

}  // namespace tvx::core
