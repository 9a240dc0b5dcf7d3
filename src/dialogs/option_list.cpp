#include "tvx/dialogs/option_list.h"

#include <algorithm>

#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/option.h"
#include "tvx/dom/objects/reflection.h"

namespace tvx::dialogs {
namespace {

using dom::Element;
using dom::OptionObject;
using dom::Ref;

const dom::Name selected(u"selected");

void write_option(const EditedOption& wanted) {
  OptionObject option(*wanted.element);
  if (option.text() != wanted.text) option.set_text(wanted.text);
  dom::set_or_remove(*wanted.element, dom::names::value, wanted.value);
  dom::set_reflected_flag(*wanted.element, selected, wanted.selected);
}

void remove_missing(Element& list, const std::vector<EditedOption>& wanted) {
  const std::vector<Element*> all = dom::SelectObject(list).options();
  const std::vector<Ref<Element>> present(all.begin(), all.end());
  for (const Ref<Element>& option : present)
    if (std::ranges::find(wanted, option, &EditedOption::element) == wanted.end()) dom::remove(*option);
}

/// Brings an option to its place: after the one before it, or to the front.
void place(Element& list, const Ref<Element>& option, const Ref<Element>& before) {
  const std::vector<Element*> all = dom::SelectObject(list).options();
  const auto here = std::ranges::find(all, option.get());
  Element* stands_after = here == all.end() || here == all.begin() ? nullptr : *(here - 1);
  if (here != all.end() && stands_after == before.get()) return;
  if (here != all.end()) dom::remove(*option);
  if (before)
    dom::insert(*before->parent(), option, before->next_sibling());
  else
    dom::insert(list, option, list.first_child());
}

}  // namespace

std::vector<EditedOption> options_of(Element& list) {
  std::vector<EditedOption> options;
  for (Element* element : dom::SelectObject(list).options())
    options.push_back({element, OptionObject(*element).text(),
                       dom::reflected_text(*element, dom::names::value),
                       dom::reflected_flag(*element, selected)});
  return options;
}

void write_options(Element& list, const std::vector<EditedOption>& wanted) {
  remove_missing(list, wanted);
  Ref<Element> before;
  for (const EditedOption& each : wanted) {
    EditedOption option = each;
    if (!option.element) option.element = dom::document_of(list).create_element(dom::Tag::Option);
    place(list, option.element, before);
    write_option(option);
    before = option.element;
  }
}

}  // namespace tvx::dialogs
