#include <unordered_set>

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/command_table.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/effectively_contained.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/inline/links.h"
#include "tvx/editing/insertion/insertion_commands.h"

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

// The links that the range contains or that hold one of its ends, in tree order.
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

bool unlink(Editor& editor, std::u16string_view) {
  for (const Ref<Element>& link : links_touched(*editor.active_range())) {
    clear_value(link, InlineCommand::CreateLink);
  }
  return true;
}

// The link as its own text, behind which typing goes on.
bool insert_link(Editor& editor, std::u16string_view address) {
  const Node& place = *editor.selection().focus().node;
  const Node& parent = place.is_text() ? *place.parent() : place;
  if (!is_editable(place) && !is_editing_host(place)) return false;
  if (!is_allowed_child_name(dom::Name(Tag::A), parent)) return false;
  step_out_of_text_edge(editor);
  const Ref<Element> link = editor.document().create_element(Tag::A);
  dom::set_attribute(*link, dom::names::href, address);
  dom::insert(*link, editor.document().create_text(std::u16string(address)));
  insert_at_selection(editor, link);
  editor.selection().collapse(dom::after(*link));
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

bool link_selection(Editor& editor, std::u16string_view address) {
  if (!editor.selection().collapsed()) return editor.execute(u"createLink", address);
  if (address.empty() || !editor.enabled(u"createLink")) return false;
  const dom::UndoStep step(editor.document().journal(), u"Link");
  leave_comments(editor);
  const auto links = links_touched(*editor.active_range());
  if (links.empty()) return insert_link(editor, address);
  if (!is_editable(*links.front())) return false;
  dom::set_attribute(*links.front(), dom::names::href, address);
  return true;
}

}  // namespace tvx::editing
