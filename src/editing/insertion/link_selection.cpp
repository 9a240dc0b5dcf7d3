#include "tvx/editing/insertion/link_selection.h"

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/links.h"
#include "tvx/editing/insertion/insertion_commands.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

// The link as its own text, after which typing goes on.
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

}  // namespace

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
