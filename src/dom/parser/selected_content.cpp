#include "tvx/dom/parser/selected_content.h"

#include "tvx/dom/builder.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::parser {
namespace {

const Name disabled_name{u"disabled"}, selected_name{u"selected"}, multiple_name{u"multiple"};

// Without `selected` anywhere, the first option of a list that drops down counts as selected.
bool may_be_selected_by_default(const Element& select, const Element& option) {
  const auto size = parse_integer(select.attribute_or_empty(names::size));
  return size.value_or(1) <= 1 && !option.has_attribute(disabled_name);
}

}  // namespace

void SelectedContent::element_made(Element& element) {
  for (Element* ancestor = element.parent_element(); ancestor; ancestor = ancestor->parent_element()) {
    if (ancestor->is(Tag::Option) || ancestor->is(Tag::Selectedcontent)) return;
    if (!ancestor->is(Tag::Select)) continue;
    if (!ancestor->has_attribute(multiple_name)) targets_.try_emplace(ancestor, Target{ancestor, element});
    return;
  }
}

// Counts the option's contents, those of templates too. Once the budget is used up no copy is made any more.
bool SelectedContent::spend(const Element& option, Offset allowance) {
  std::vector<const Node*> roots{&option};
  while (!roots.empty()) {
    const Node* root = roots.back();
    roots.pop_back();
    for (const Node* node = root->first_child(); node; node = next_in_order(*node, root)) {
      ++spent_;
      if (const auto* data = as<CharacterData>(node)) spent_ += data->length();
      const auto* element = as<Element>(node);
      if (element && element->template_content()) roots.push_back(element->template_content());
      if (spent_ <= allowance) continue;
      targets_.clear();
      return false;
    }
  }
  return true;
}

void SelectedContent::option_closed(Element& option, Offset allowance) {
  if (targets_.empty()) return;
  const Element* select = enclosing(option, Tag::Select);
  const auto found = targets_.find(select);
  if (found == targets_.end()) return;
  Target& target = found->second;
  if (is_ancestor(*target.place, option)) return;
  if (!option.has_attribute(selected_name) && (target.filled || !may_be_selected_by_default(*select, option)))
    return;
  if (!spend(option, allowance)) return;
  target.filled = true;
  while (Node* child = target.place->first_child()) Builder::remove(*child);
  for (const Node* child = option.first_child(); child; child = child->next_sibling()) {
    Builder::insert(*target.place, clone(*child, *option.document(), Deep::Yes));
  }
}

}  // namespace tvx::dom::parser
