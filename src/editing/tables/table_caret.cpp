#include "tvx/editing/tables/table_caret.h"

#include "tvx/dom/range.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/walk/caret.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Tag;

void leave_table_parts(Editor& editor) {
  static const TagSet parts{Tag::Table, Tag::Thead, Tag::Tbody, Tag::Tfoot, Tag::Tr, Tag::Colgroup};
  Selection& selection = editor.selection();
  const Boundary caret = selection.focus();
  if (!selection.collapsed() || !parts.has(*caret.node)) return;
  Boundary place = normalized_caret_place(caret);
  const dom::Element* table = dom::enclosing(*caret.node, Tag::Table);
  if (parts.has(*place.node) && table && table->parent())
    place = {table->parent(), dom::index_of(*table) + 1};
  const RecordedLook look = record_current_overrides(editor);
  selection.collapse(place);
  restore_look(look, editor);
}

}  // namespace tvx::editing
