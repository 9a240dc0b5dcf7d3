#include "tvx/editing/inline/links.h"

#include <unordered_set>

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/effectively_contained.h"
#include "tvx/editing/inline/inline_values.h"

/// The rows of the commands for links: editing commands standard, sections "The createLink command" and "The
/// unlink command".
namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool is_hyperlink(const Node& node) {
  return node.is(Tag::A) && static_cast<const Element&>(node).has_attribute(dom::names::href);
}

}  // namespace

std::vector<Ref<Element>> links_touched(const dom::Range& range) {
  std::vector<Ref<Element>> links, of_end;
  const auto add = [](std::vector<Ref<Element>>& list, Node& node) {
    if (is_hyperlink(node)) list.emplace_back(static_cast<Element*>(&node));
  };
  for (Node* node = range.start.node; node; node = node->parent()) add(links, *node);
  for (Node* node = range.end.node; node && !dom::is_inclusive_ancestor(*node, *range.start.node);
       node = node->parent()) {
    add(of_end, *node);
  }
  walk_contained(range, [&](Node& node) {
    add(links, node);
    return Visit::Children;
  });
  links.insert(links.end(), of_end.rbegin(), of_end.rend());
  return links;
}

namespace {

// The links around what is selected, each once.
std::vector<Ref<Element>> links_around(const dom::Range& range) {
  std::vector<Ref<Element>> links;
  std::unordered_set<const Node*> seen;
  walk_effectively_contained(range, [&](Node& node) {
    for (Node* ancestor = node.parent(); ancestor && seen.insert(ancestor).second;
         ancestor = ancestor->parent()) {
      if (is_hyperlink(*ancestor) && is_editable(*ancestor))
        links.emplace_back(static_cast<Element*>(ancestor));
    }
    return true;
  });
  return links;
}

// A link that is touched at all changes as a whole: nobody wants a new address for a part of its words.
bool create_link(Editor& editor, std::u16string_view value) {
  if (value.empty()) return false;
  for (const Ref<Element>& link : links_around(*editor.active_range())) {
    dom::set_attribute(*link, dom::names::href, value);
  }
  set_selection_value(editor, InlineCommand::CreateLink, std::u16string(value));
  return true;
}

bool unlink(Editor& editor, std::u16string_view) {
  for (const Ref<Element>& link : links_touched(*editor.active_range())) {
    clear_value(link, InlineCommand::CreateLink);
  }
  return true;
}

const CommandDefinition rows[] = {
    {.name = u"createLink",
     .label = u"Link",
     .action = create_link,
     .inline_command = InlineCommand::CreateLink},
    {.name = u"unlink",
     .label = u"Remove link",
     .action = unlink,
     .inline_command = InlineCommand::CreateLink},
};

}  // namespace

std::span<const CommandDefinition> link_commands() { return rows; }

std::u16string link_address(Editor& editor) {
  const auto range = editor.active_range();
  if (!range) return {};
  const auto links = links_touched(*range);
  return links.empty() ? std::u16string()
                       : std::u16string(links.front()->attribute_or_empty(dom::names::href));
}

}  // namespace tvx::editing
