#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/block_range.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/inline/inline_values.h"
#include "tvx/editing/inline/recorded_values.h"
#include "tvx/editing/insertion/insertion_commands.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/hard_spaces.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Node;
using dom::Tag;

namespace {

// Steps 6 to 8: into a text beside the caret, if there is one.
Boundary text_beside(Boundary place) {
  if (place.node->is_text()) return place;
  Node* next = dom::child_at(*place.node, place.offset);
  Node* before = next ? next->previous_sibling() : place.node->last_child();
  if (before && before->is_text()) return {before, dom::length_of(*before)};
  if (next && next->is_text()) return {next, 0};
  return place;
}

// Step 14: a text of its own. A line break that only kept the line open has done its duty.
void insert_as_new_text(Editor& editor, Node& parent, std::u16string_view unit) {
  Node* only = parent.first_child();
  if (only && only == parent.last_child() && is_collapsed_line_break(*only)) dom::remove(*only);
  const dom::Ref<dom::Text> text = editor.document().create_text(std::u16string(unit));
  insert_at_selection(editor, text);
  editor.selection().set({text.get(), 0}, {text.get(), text->length()});
}

// A blank after an element of a line is seen by nobody, and no command looks at it any more.
void show_blank(Editor& editor) {
  const Boundary end = editor.selection().range().end;
  auto* text = dom::as<dom::Text>(end.node);
  if (!text || end.offset == 0 || text->data()[end.offset - 1] != u' ' || is_visible(*text)) return;
  dom::replace_data(*text, end.offset - 1, 1, u"\u00A0");
  editor.selection().set({text, end.offset - 1}, end);
}

/// Line ends and tabs of the source around the caret, which are white space like a blank: beside one of them
/// a typed blank would not be seen.
void write_source_space_as_blanks(const Boundary& caret) {
  auto* text = dom::as<dom::Text>(caret.node);
  if (!text || !collapses(*text)) return;
  const auto blank = [&](Offset at) {
    if (text->data()[at] == u' ') return;
    // Written before what it replaces, so that a caret after that stays there.
    dom::replace_data(*text, at, 0, u" ");
    dom::replace_data(*text, at + 1, 1, u"");
  };
  for (Offset at = caret.offset; at > 0 && is_ascii_space(text->data()[at - 1]); --at) blank(at - 1);
  for (Offset at = caret.offset; at < text->length() && is_ascii_space(text->data()[at]); ++at) blank(at);
}

enum class By : bool { Command, Writer };

// One code unit. The numbers of the steps are those of the standard's "insertText" command.
void insert_unit(Editor& editor, std::u16string_view unit, By by) {
  const Boundary start = text_beside(editor.selection().range().start);
  const bool look_is_pending = !editor.overrides().empty();
  const RecordedLook look = record_current_overrides(editor);  // 9
  editor.selection().collapse(start);
  if (is_ascii_space(unit.front())) write_source_space_as_blanks(start);
  canonicalize_whitespace(editor.selection().range().start);  // 11
  const Boundary place = editor.selection().range().start;
  if (auto* text = dom::as<dom::Text>(place.node)) {  // 13
    dom::replace_data(*text, place.offset, 0, unit);
    editor.selection().set(place, {text, place.offset + unit.size()});
  } else {
    insert_as_new_text(editor, *place.node, unit);
  }
  if (by == By::Writer) show_blank(editor);
  // What can't be seen takes no style, and a space at the end of a line isn't once it stands apart.
  if (look_is_pending && is_ascii_space(unit.front()))
    canonicalize_whitespace(editor.selection().range().end, false);
  restore_look(look, editor);  // 15
  canonicalize_whitespace(editor.selection().range().start, false);
  canonicalize_whitespace(editor.selection().range().end, false);
  if (by == By::Command && is_ascii_space(unit.front())) {  // 18
    if (const auto address = address_before(editor.selection().range().start)) make_link(editor, *address);
  }
  editor.selection().collapse(editor.selection().range().end);
}

void insert_units(Editor& editor, std::u16string_view text, By by) {
  const bool goes_on = by == By::Writer && editor.selection().collapsed();
  const bool keeps_spaces = goes_on && !is_ascii_space(text.front());
  HardSpaceKeeper hard_spaces(keeps_spaces ? editor.selection().range() : dom::Range{});
  const RecordedLook chosen = goes_on ? record_current_overrides(editor) : RecordedLook();
  delete_selection(editor, {.strip_wrappers = false});
  // White space at the caret that nobody sees has gone, and the caret with it: not what was chosen for it.
  restore_look(chosen, editor);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const Node* start = editor.selection().range().start.node;
    if (!is_editable(*start) && !is_editing_host(*start)) return;
    if (text[i] == u'\n') {
      insert_paragraph(editor);
    } else {
      insert_unit(editor, text.substr(i, 1), by);
    }
  }
  hard_spaces.put_back();
}

}  // namespace

bool insert_text(Editor& editor, std::u16string_view text) {
  insert_units(editor, text, By::Command);
  return true;
}

void insert_plain_text(Editor& editor, std::u16string_view text) { insert_units(editor, text, By::Writer); }

namespace {

// Punctuation after an address is seldom part of it.
bool may_end_address(char16_t c) {
  return std::u16string_view(u"!\"'(),-.:;<>[]`{}").find(c) == std::u16string_view::npos;
}

bool is_scheme_unit(char16_t c) {
  return is_ascii_alpha(c) || is_ascii_digit(c) || c == u'+' || c == u'-' || c == u'.';
}

/// An address found in a text, and where a link to it leads.
struct Address {
  std::size_t start, end;
  std::u16string href;
};

// RFC 3986, section 3.1, followed by "://" or, of the schemes without, by "mailto:" alone. The longest.
std::optional<std::size_t> url_start(std::u16string_view text) {
  for (std::size_t start = 0; start < text.size(); ++start) {
    const std::u16string_view rest = text.substr(start);
    if (rest.size() > 7 && rest.substr(0, 7) == u"mailto:") return start;
    if (!is_ascii_alpha(rest[0])) continue;
    std::size_t scheme = 1;
    while (scheme < rest.size() && is_scheme_unit(rest[scheme])) ++scheme;
    if (rest.substr(scheme, 3) == u"://" && rest.size() > scheme + 3) return start;
    // No later start within this run of scheme letters can do better.
    start += scheme - 1;
  }
  return std::nullopt;
}

std::optional<Address> find_url(std::u16string_view text) {
  std::size_t end = text.size();
  while (end > 0 && !may_end_address(text[end - 1])) --end;
  const auto start = url_start(text.substr(0, end));
  if (!start) return std::nullopt;
  return Address{*start, end, std::u16string(text.substr(*start, end - *start))};
}

bool is_local_part_unit(char16_t c) {
  return is_ascii_alpha(c) || is_ascii_digit(c) ||
         std::u16string_view(u".!#$%&'*+/=?^_`{|}~-").find(c) != std::u16string_view::npos;
}

// The longest beginning of a text that is a domain: labels of letters, digits and inner hyphens.
std::size_t domain_length(std::u16string_view text) {
  std::size_t valid = 0, label = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (is_ascii_alpha(c) || is_ascii_digit(c)) {
      if (++label > 63) return valid;
      valid = i + 1;
    } else if (c == u'-' && label > 0) {
      ++label;
    } else if (c == u'.' && label > 0 && text[i - 1] != u'-') {
      label = 0;
    } else {
      break;
    }
  }
  return valid;
}

// HTML standard, section 4.10.5.1.5 "valid e-mail address".
std::optional<Address> find_mail(std::u16string_view text) {
  for (std::size_t at = text.rfind(u'@'); at != std::u16string_view::npos && at > 0;
       at = text.rfind(u'@', at - 1)) {
    std::size_t start = at;
    while (start > 0 && is_local_part_unit(text[start - 1])) --start;
    const std::size_t domain = domain_length(text.substr(at + 1));
    if (start == at || domain == 0) continue;
    const std::size_t end = at + 1 + domain;
    return Address{start, end, u"mailto:" + std::u16string(text.substr(start, end - start))};
  }
  return std::nullopt;
}

}  // namespace

std::optional<TypedAddress> address_before(Boundary end) {
  end = first_equivalent_point(end);
  auto* text = dom::as<dom::Text>(end.node);
  if (!text || dom::enclosing(*text, Tag::A)) return std::nullopt;
  const std::u16string_view before = std::u16string_view(text->data()).substr(0, end.offset);
  std::size_t from = before.size();
  while (from > 0 && !is_ascii_space(before[from - 1])) --from;
  std::optional<Address> address = find_url(before.substr(from));
  if (!address) address = find_mail(before.substr(from));
  if (!address) return std::nullopt;
  return TypedAddress{text, from + address->start, from + address->end, address->href};
}

void make_link(Editor& editor, const TypedAddress& address) {
  const dom::LiveRange original(editor.document(), editor.selection().range());
  editor.selection().set({address.text, address.start}, {address.text, address.end});
  inline_row(u"createLink").action(editor, address.href);
  editor.selection().set(original.range());
}

}  // namespace tvx::editing
