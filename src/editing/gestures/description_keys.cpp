#include "tvx/editing/gestures/description_keys.h"

#include "tvx/dom/builder.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/list_keys.h"
#include "tvx/editing/tree/lines.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// The list whose last part that is; null: it isn't one of a list that can be edited.
Node* list_that_ends_with(const Element& part) {
  Node* list = part.parent();
  if (!list || !list->is(Tag::Dl) || !is_editable(*list) || !list->parent()) return nullptr;
  for (const Node* next = part.next_sibling(); next; next = next->next_sibling())
    if (!is_filling(*next)) return nullptr;
  return is_editable(*list->parent()) || is_editing_host(*list->parent()) ? list : nullptr;
}

/// The part leaves with the white space that puts it on a line of its own in the source.
void remove_part(Element& part) {
  Node* before = part.previous_sibling();
  if (before && before->is_text() && is_filling(*before)) dom::remove(*before);
  dom::remove(part);
}

}  // namespace

bool leave_empty_description(Editor& editor) {
  if (!editor.selection().collapsed()) return false;
  const Ref<Element> part(block_around(editor.selection().focus()));
  if (!part || !(part->is(Tag::Dd) || part->is(Tag::Dt))) return false;
  if (!is_editable(*part) || !is_empty_line(*part)) return false;
  const Ref<Node> list(list_that_ends_with(*part));
  if (!list) return false;
  const Ref<Element> paragraph =
      editor.document().create_element(dom::Name{std::u16string_view(editor.paragraph_separator())});
  dom::insert(*list->parent(), paragraph, list->next_sibling());
  append_line_break(*paragraph);
  editor.selection().collapse({paragraph.get(), 0});
  remove_part(*part);
  remove_if_without_items(*list);
  return true;
}

}  // namespace tvx::editing
