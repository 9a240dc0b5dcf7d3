#include "tvx/editing/gestures/line_keys.h"

#include <algorithm>

#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/attached_lines.h"
#include "tvx/editing/gestures/list_keys.h"
#include "tvx/editing/gestures/quotations.h"
#include "tvx/editing/gestures/writing_place.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/inline_command.h"
#include "tvx/editing/insertion/insertion_commands.h"
#include "tvx/editing/layout/source_filling.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

Ref<Element> make_paragraph(Editor& editor) {
  return editor.document().create_element(dom::Name{std::u16string_view(editor.paragraph_separator())});
}

// --- preformatted text ---

Element* pre_around(const Boundary& caret) {
  for (Node* node = caret.node; node && !is_editing_host(*node); node = node->parent()) {
    if (node->is(Tag::Pre) && is_editable(*node)) return static_cast<Element*>(node);
    if (is_block_node(*node)) return nullptr;
  }
  return nullptr;
}

bool is_at_end_of(const Boundary& caret, const Element& block) {
  const Content after = content_beside(caret, Direction::Forward);
  return (after.kind == ContentKind::LeaveBlock && after.node == &block) ||
         (after.kind == ContentKind::LineBreak && after.node && !after.node->next_sibling() &&
          after.node->parent() == &block);
}

/// Two empty lines at the end: the writer wants to go on after the text.
bool leaves_pre(const Element& pre, const Boundary& caret) {
  const auto* text = dom::as<dom::Text>(caret.node);
  if (!text || caret.offset != text->length() || !is_at_end_of(caret, pre)) return false;
  return std::u16string_view(text->data()).ends_with(u"\n\n");
}

void leave_pre(Editor& editor, Element& pre) {
  const Ref<dom::Text> text(static_cast<dom::Text*>(editor.selection().focus().node));
  Offset end = text->length();
  while (end > 0 && text->data()[end - 1] == u'\n') --end;
  dom::replace_data(*text, end, text->length() - end, u"");
  Node* last = pre.last_child();
  if (last && last->is(Tag::Br)) dom::remove(*last);
  const Ref<Element> paragraph = make_paragraph(editor);
  dom::insert(*pre.parent(), paragraph, pre.next_sibling());
  append_line_break(*paragraph);
  editor.selection().collapse({paragraph.get(), 0});
  if (!has_visible_child(pre)) remove_keeping_comments(pre);
}

bool start_line_in_pre(Editor& editor) {
  Element* pre = pre_around(editor.selection().focus());
  if (!pre) return false;
  const Boundary caret = editor.selection().focus();
  if (leaves_pre(*pre, caret)) {
    leave_pre(editor, *pre);
    return true;
  }
  auto* text = dom::as<dom::Text>(caret.node);
  if (!text) {
    const Ref<dom::Text> line = editor.document().create_text(u"\n");
    dom::insert(*caret.node, line, dom::child_at(*caret.node, caret.offset));
    editor.selection().collapse({line.get(), 1});
  } else {
    dom::replace_data(*text, caret.offset, 0, u"\n");
    editor.selection().collapse({text, caret.offset + 1});
  }
  // A line's end as the last thing in the text shows no new line.
  const Boundary place = editor.selection().focus();
  const Content after = content_beside(place, Direction::Forward);
  if (after.kind == ContentKind::LeaveBlock) {
    append_line_break(*pre);
    editor.selection().collapse(place);
  }
  return true;
}

// --- after a line was parted ---

/// Before a heading there is room for text, not for a heading.
void make_room_before_heading(Editor& editor, Element* heading) {
  if (!heading || !is_heading(*heading) || !heading->previous_sibling()) return;
  Node* before = heading->previous_sibling();
  if (!is_heading(*before) || !is_empty_line(*before) || is_empty_line(*heading)) return;
  set_tag_name(static_cast<Element&>(*before), dom::Name{std::u16string_view(editor.paragraph_separator())});
}

/// The caret of a parted item stands in the new one's own line, not in its list.
void stay_in_item(Editor& editor, Element* item) {
  Node* created = item ? item->next_sibling() : nullptr;
  if (!created || !created->is(Tag::Li)) return;
  Node* first = created->first_child();
  while (first && is_filling(*first)) first = first->next_sibling();
  if (first && !is_list(*first)) {
    // Where it stands there already, it may be on purpose before a link and not in it.
    if (dom::enclosing(*editor.selection().focus().node, Tag::Li) != created)
      editor.selection().collapse(normalized_caret_place({created, 0}));
    return;
  }
  if (!first) return;
  dom::insert(*created, editor.document().create_element(Tag::Br), created->first_child());
  editor.selection().collapse({created, 0});
}

Element* item_with_list(Editor& editor) {
  for (Node* node = editor.selection().focus().node; node && !is_editing_host(*node); node = node->parent()) {
    if (!node->is(Tag::Li)) continue;
    for (const Node* child = node->first_child(); child; child = child->next_sibling())
      if (is_list(*child)) return static_cast<Element*>(node);
    return nullptr;
  }
  return nullptr;
}

}  // namespace

namespace {

/// The elements around a caret that give the text a style of which commands know no equal, the outermost
/// first; nothing where commands can say it all.
std::vector<Ref<Element>> styled_elements(Editor& editor) {
  std::vector<Ref<Element>> around;
  bool has_style = false;
  const Element* block = block_around(editor.selection().focus());
  for (Node* node = editor.selection().focus().node; node && node != block; node = node->parent()) {
    auto* element = dom::as<Element>(node);
    if (!element || element->is(Tag::A)) continue;
    if (!is_look(*element)) return {};
    has_style =
        has_style || element->has_attribute(dom::names::style) || element->has_attribute(dom::names::class_);
    around.emplace_back(element);
  }
  if (!has_style) around.clear();
  return {around.rbegin(), around.rend()};
}

/// Puts the break of an empty line into copies of these elements.
void style_empty_line(Editor& editor, Element& line, const std::vector<Ref<Element>>& styles) {
  Node* last = line.last_child();
  if (!last || !last->is(Tag::Br)) return;
  const Ref<Node> line_break(last);
  Ref<Node> holder(line);
  for (const Ref<Element>& style : styles) {
    const Ref<Node> copy = dom::clone(*style, editor.document(), dom::Deep::No);
    dom::remove_attribute(static_cast<Element&>(*copy), dom::names::id);
    dom::insert(*holder, copy);
    holder = copy;
  }
  dom::insert(*holder, dom::remove(*line_break));
  editor.selection().collapse({holder.get(), 0});
}

}  // namespace

namespace {

constexpr std::u16string_view style_states[] = {u"bold",      u"italic",      u"strikethrough",
                                                u"subscript", u"superscript", u"underline"};
constexpr std::u16string_view style_values[] = {u"fontname", u"fontsize", u"forecolor", u"hilitecolor"};

/// The node whose style the text at a caret has; a link's colour and line end with the link.
const Node& node_outside_link(Editor& editor) {
  const Node* node = editor.selection().focus().node;
  const Element* block = block_around(editor.selection().focus());
  const Node* outside = node;
  for (const Node* around = node; around && around != block; around = around->parent())
    if (around->is(Tag::A)) outside = around->parent();
  return *outside;
}

template <class List>
const auto* find_named(const List& list, std::u16string_view name) {
  const auto found = std::ranges::find(list, name, [](const auto& entry) { return entry.first; });
  return found == list.end() ? nullptr : &*found;
}

}  // namespace

RecordedLook style_that_goes_on(Editor& editor) {
  RecordedLook style;
  const Node* node = editor.selection().focus().node;
  if (!block_around(editor.selection().focus()) || !editing_host_of(*node)) return style;
  const Node& outside = node_outside_link(editor);
  const RecordedLook pending = record_current_overrides(editor);
  for (const std::u16string_view name : style_states) {
    const auto* chosen = find_named(pending.states, name);
    style.states.emplace_back(
        name, chosen
                  ? chosen->second
                  : is_activated_value(inline_row(name), effective_command_value(outside, inline_row(name))));
  }
  for (const std::u16string_view name : style_values) {
    const auto* chosen = find_named(pending.values, name);
    const InlineValue value =
        chosen ? InlineValue(chosen->second) : effective_command_value(outside, inline_row(name));
    if (value) style.values.emplace_back(name, *value);
  }
  return style;
}

namespace {

/// What of a style the text at the caret doesn't have by itself.
RecordedLook missing_style(Editor& editor, const RecordedLook& style, const Element* line_before) {
  const Element* line = block_around(editor.selection().focus());
  const Node& outside = node_outside_link(editor);
  const auto of = [](const Node& node, std::u16string_view name) {
    return effective_command_value(node, inline_row(name));
  };
  // What the line before gave its text by being a heading, say, ends with it.
  const auto is_of_line_before = [&](std::u16string_view name, const InlineValue& value) {
    return line_before && line && of(*line_before, name) == value && of(*line, name) != value;
  };
  RecordedLook missing;
  for (const auto& [name, state] : style.states)
    if (is_activated_value(inline_row(name), of(outside, name)) != state)
      missing.states.emplace_back(name, state);
  for (const auto& [name, value] : style.values)
    if (name != u"createlink" && !loosely_equivalent_values(inline_row(name), of(outside, name), value) &&
        !is_of_line_before(name, value))
      missing.values.emplace_back(name, value);
  return missing;
}

/// At the start of a line that begins with a style of its own the caret stands within that if typing goes on
/// so, else before it.
void choose_line_start(Editor& editor, const RecordedLook& style) {
  const Boundary start = editor.selection().focus();
  if (start.node->is_text()) return;
  editor.selection().collapse(normalized_caret_place(start));
  if (block_around(editor.selection().focus()) != block_around(start)) return;
  if (dom::enclosing(*editor.selection().focus().node, Tag::A) != dom::enclosing(*start.node, Tag::A))
    return editor.selection().collapse(start);
  const RecordedLook missing = missing_style(editor, style, nullptr);
  if (!missing.states.empty() || !missing.values.empty()) editor.selection().collapse(start);
}

}  // namespace

void go_on_in_style(Editor& editor, const RecordedLook& style, const Element* line_before) {
  if (!editor.selection().collapsed() || !is_editable(*editor.selection().focus().node)) return;
  restore_look(missing_style(editor, style, line_before), editor);
}

void forget_link(Editor& editor) {
  if (!editor.selection().collapsed()) return;
  Overrides& overrides = editor.overrides();
  if (overrides.values.erase(u"createlink") > 0) {
    overrides.values.erase(u"forecolor");
    overrides.states.erase(u"underline");
  }
  Element* link = dom::enclosing(*editor.selection().focus().node, Tag::A);
  if (!link || !is_editable(*link) || !link->has_attribute(dom::names::href)) return;
  for (const Node* node = link->first_child(); node; node = dom::next_in_order(*node, link))
    if (!node->is(Tag::Br) && (!node->has_children() || node->is_text()) && is_visible(*node)) return;
  remove_preserving_descendants(Ref<Node>(link));
}

void drop_end_break_before(const Element* line) {
  Node* before = line ? line->previous_sibling() : nullptr;
  Node* last = before ? before->last_child() : nullptr;
  if (last && last->is(Tag::Br) && is_editable(*last) && is_extraneous_line_break(*last)) dom::remove(*last);
}

namespace {

/// A line's end in the source, after what was a bare line, stays after the line that Enter makes.
void leave_source_end(Editor& editor, Element* line) {
  if (!line || !is_empty_line(*line) || !is_text_block(*line)) return;
  for (Node* child = line->first_child(); child;) {
    Node* next = child->next_sibling();
    const auto* text = dom::as<dom::Text>(child);
    if (text && is_filling(*text) && collapses(*text)) {
      const Ref<Node> end = dom::remove(*child);
      if (text->data().find(u'\n') != text->data().npos)
        dom::insert(*line->parent(), end, line->next_sibling());
      editor.selection().collapse({line, 0});
    }
    child = next;
  }
}

/// Where the line before has a line of its own in the source, the new one has too.
void start_source_line(const Element* before, Element* line) {
  if (!before || !line || line->previous_sibling() != before || !before->parent()) return;
  const auto* start = dom::as<dom::Text>(before->previous_sibling());
  if (!start || !is_filling(*start) || !collapses(*start)) return;
  const std::size_t end = start->data().rfind(u'\n');
  if (end == start->data().npos) return;
  dom::insert(*line->parent(), line->document()->create_text(start->data().substr(end)), line);
}

/// The paragraphs that Enter has made of a bare line take no white space in that parts the blocks.
void give_back_beside_bare_line(Editor& editor, const Element* around, Element* line) {
  if (!around || !line || line->parent() != around || !is_text_block(*line)) return;
  auto* before = dom::as<Element>(line->previous_sibling());
  if (before && before->name() == line->name()) give_back_filling(editor, *before);
  if (!is_empty_line(*line)) give_back_filling(editor, *line);
  start_source_line(before, line);
}

/// A paragraph that begins an item is the item's own line. The block of the caret.
Element* line_of_item(Editor& editor, Element& paragraph) {
  auto* item = dom::as<Element>(paragraph.parent());
  if (!item || !item->is(Tag::Li) || paragraph.previous_sibling()) return &paragraph;
  const Ref<Element> held(paragraph);
  move_run_preserving_ranges(children_of(paragraph), *item, &paragraph);
  dom::remove(*held);
  editor.selection().collapse({item, 0});
  return item;
}

/// At a heading's end there may be white space of the source, which nobody sees: the line after it is a
/// paragraph all the same.
Element* end_heading(Editor& editor, Element* line) {
  if (!line || !is_heading(*line) || !is_empty_line(*line)) return line;
  const Ref<Element> paragraph = set_tag_name(*line, dom::Name(editor.paragraph_separator()));
  for (Node* child = paragraph->first_child(); child;) {
    Node* next = child->next_sibling();
    if (child->is_text() || child->is(Tag::Br)) dom::remove(*child);
    child = next;
  }
  append_line_break(*paragraph);
  editor.selection().collapse(dom::before(*paragraph->last_child()));
  return line_of_item(editor, *paragraph);
}

}  // namespace

void start_line(Editor& editor) {
  const Ref<Element> line_before(block_around(editor.selection().focus()));
  const bool in_heading = line_before && is_heading(*line_before);
  const RecordedLook style = in_heading ? record_current_overrides(editor) : style_that_goes_on(editor);
  if (leave_empty_item(editor) || leave_empty_description(editor) || leave_quotation_at_end(editor) ||
      start_line_in_attached(editor))
    return go_on_in_style(editor, style, line_before.get());
  wrap_line_beside_blocks(editor);
  const std::vector<Ref<Element>> styles = in_heading ? std::vector<Ref<Element>>() : styled_elements(editor);
  if (start_line_in_pre(editor)) return go_on_in_style(editor, style, line_before.get());
  wrap_line_parted_in_style(editor);
  const Ref<Element> item(item_with_list(editor));
  insert_writers_paragraph(editor);
  if (item) stay_in_item(editor, item.get());
  Element* line = block_around(editor.selection().focus());
  if (in_heading)
    line = end_heading(editor, line);
  else
    leave_source_end(editor, line);
  drop_end_break_before(line);
  give_back_beside_bare_line(editor, line_before.get(), line);
  start_source_line(line_before.get(), line);
  make_room_before_heading(editor, line);
  if (line && is_empty_line(*line) && !styles.empty()) style_empty_line(editor, *line, styles);
  forget_link(editor);
  choose_line_start(editor, style);
  if (!in_heading || (line && !is_heading(*line))) go_on_in_style(editor, style, line_before.get());
}

void break_line(Editor& editor) {
  const RecordedLook style = style_that_goes_on(editor);
  insert_line_break(editor);
  forget_link(editor);
  choose_line_start(editor, style);
  go_on_in_style(editor, style);
}

void drop_spare_break(Editor& editor) {
  if (!editor.selection().collapsed()) return;
  const Boundary caret = editor.selection().focus();
  const Content after = content_beside(caret, Direction::Forward);
  if (after.kind != ContentKind::LineBreak || !after.node || !is_editable(*after.node)) return;
  const Ref<Node> line_break(after.node);
  const Content next = content_beside(dom::after(*line_break), Direction::Forward);
  if (next.kind != ContentKind::LeaveBlock && next.kind != ContentKind::EnterBlock) return;
  const ContentKind before = content_beside(caret, Direction::Backward).kind;
  if (before != ContentKind::Text && before != ContentKind::Object) return;
  // In preformatted text the caret may stand on an empty line that the break alone holds open.
  const auto* text = dom::as<dom::Text>(caret.node);
  if (text && caret.offset > 0 && text->data()[caret.offset - 1] == u'\n') return;
  const Ref<Node> holder(line_break->parent());
  dom::remove(*line_break);
  without_empty_looks({holder.get(), 0});
}

}  // namespace tvx::editing
