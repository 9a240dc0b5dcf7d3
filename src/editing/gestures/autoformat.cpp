#include "tvx/editing/gestures/autoformat.h"

#include <algorithm>

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/written_address.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/line_keys.h"
#include "tvx/editing/insertion/insertion_commands.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// A blank that was typed is looked at once: undo brings the caret back to it, and typing goes on there.
bool takes_typed_blank(Editor& editor) {
  TypingRun& run = editor.typing_run();
  const Boundary caret = editor.selection().focus();
  if (!editor.selection().collapsed() || !caret || run.node != caret.node->id() || run.offset != caret.offset)
    return false;
  if (run.text.empty() || run.text.back() != u' ') return false;
  run.text.back() = u'\t';
  return caret.node->is_text() && caret.offset > 0;
}

void quote(Element& block) {
  const Ref<Element> quotation = block.document()->create_element(Tag::Blockquote);
  dom::insert(*block.parent(), quotation, &block);
  move_preserving_ranges(Ref<Node>(block), *quotation, nullptr);
}

struct Form {
  std::u16string_view typed, command, value;
};

constexpr Form forms[] = {
    {u"-", u"insertUnorderedList", {}},
    {u"*", u"insertUnorderedList", {}},
    {u"1.", u"insertOrderedList", {}},
    {u"1)", u"insertOrderedList", {}},
    {u"#", u"formatBlock", u"h1"},
    {u"##", u"formatBlock", u"h2"},
    {u"###", u"formatBlock", u"h3"},
    {u"####", u"formatBlock", u"h4"},
    {u"#####", u"formatBlock", u"h5"},
    {u"######", u"formatBlock", u"h6"},
    {u">", u"indent", {}},
};

const Form* form_typed(std::u16string_view text) {
  for (const Form& form : forms)
    if (form.typed == text) return &form;
  return nullptr;
}

/// The paragraph that a caret's text starts; null where something stands before that.
Element* paragraph_started_by(const Boundary& caret) {
  Element* block = block_around(caret);
  if (!block || !(block->is(Tag::P) || block->is(Tag::Div)) || !is_editable(*block) ||
      !is_text_block(*block) || is_plain_text_host(*editing_host_of(*block)))
    return nullptr;
  const Content before = content_beside({caret.node, 0}, Direction::Backward);
  return before.kind == ContentKind::LeaveBlock && before.node == block ? block : nullptr;
}

void take_out_typed(Editor& editor, Element& block) {
  const Boundary caret = editor.selection().focus();
  const Ref<dom::Text> text(static_cast<dom::Text*>(caret.node));
  dom::replace_data(*text, 0, caret.offset, u"");
  if (text->length() > 0) return editor.selection().collapse({text.get(), 0});
  Ref<Node> holder(text->parent());
  dom::remove(*text);
  while (!holder->has_children() && holder.get() != &block) {
    const Ref<Node> outer(holder->parent());
    dom::remove(*holder);
    holder = outer;
  }
  if (!has_visible_child(block)) append_line_break(block);
  editor.selection().collapse(normalized_caret_place({&block, 0}));
}

bool format_paragraph(Editor& editor) {
  const Boundary caret = editor.selection().focus();
  const std::u16string_view typed =
      std::u16string_view(static_cast<dom::Text*>(caret.node)->data()).substr(0, caret.offset - 1);
  const Form* form = form_typed(typed);
  const Ref<Element> block(form ? paragraph_started_by(caret) : nullptr);
  if (!block) return false;
  const dom::UndoStep step(editor.document().journal(), form->command);
  const RecordedLook style = style_that_goes_on(editor);
  take_out_typed(editor, *block);
  if (form->command == u"indent") {
    quote(*block);
  } else if (form->command == u"formatBlock") {
    // The paragraph itself and not its line: white space of the source beside it is none of the heading's.
    set_tag_name(*block, dom::Name(form->value));
  } else {
    execute_as_writer(editor, form->command, form->value);
  }
  if (!is_heading(*block_around(editor.selection().focus()))) go_on_in_style(editor, style);
  return true;
}

/// An address that says no scheme, "www.example.org", before a position in a text.
std::optional<TypedAddress> bare_address_before(const Boundary& end) {
  auto& text = static_cast<dom::Text&>(*end.node);
  if (dom::enclosing(text, Tag::A)) return std::nullopt;
  const std::u16string_view before = std::u16string_view(text.data()).substr(0, end.offset);
  const std::size_t blank = before.find_last_of(u" \t\r\n\u00A0");
  const std::size_t word = blank == before.npos ? 0 : blank + 1;
  const std::size_t start = std::min(before.find_first_not_of(u"([{<\"'", word), before.size());
  const std::u16string_view address = written_address(before.substr(start));
  if (address.empty()) return std::nullopt;
  return TypedAddress{&text, Offset(start), Offset(start + address.size()), target_of(address)};
}

/// A bracket that is opened in an address closes there, though what closes others ends a sentence.
void take_own_brackets(TypedAddress& address, Offset end) {
  const std::u16string_view text = address.text->data();
  const std::size_t scheme = text.substr(address.start, address.end - address.start).find(u"://");
  if (scheme == text.npos) return;
  const auto count = [&](char16_t c) {
    return std::ranges::count(text.substr(address.start, address.end - address.start), c);
  };
  while (address.end < end && text[address.end] == u')' && count(u'(') > count(u')')) {
    address.href += u')';
    ++address.end;
  }
}

bool link_address(Editor& editor, const Boundary& end) {
  if (is_plain_text_host(*editing_host_of(*end.node))) return false;
  auto address = address_before(end);
  if (address) take_own_brackets(*address, end.offset);
  if (!address) address = bare_address_before(end);
  if (!address) return false;
  const dom::UndoStep step(editor.document().journal(), u"Link");
  make_link(editor, *address);
  return true;
}

}  // namespace

bool format_what_was_typed(Editor& editor) {
  if (!takes_typed_blank(editor) || !editor.enabled(u"insertText")) return false;
  const Boundary caret = editor.selection().focus();
  const bool done = format_paragraph(editor) || link_address(editor, {caret.node, caret.offset - 1});
  if (done) editor.document().journal().end_typing_run();
  return done;
}

bool link_what_was_typed(Editor& editor) {
  const TypingRun& run = editor.typing_run();
  const Boundary caret = editor.selection().focus();
  if (!editor.selection().collapsed() || !caret || !caret.node->is_text()) return false;
  if (run.node != caret.node->id() || run.offset != caret.offset || run.text.empty()) return false;
  if (!editor.enabled(u"insertText") || !link_address(editor, caret)) return false;
  editor.document().journal().end_typing_run();
  return true;
}

}  // namespace tvx::editing
