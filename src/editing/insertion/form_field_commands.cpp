#include <array>

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/command_definition.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/insertion/insertion_commands.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/whitespace.h"

/// The platform's commands that put one form field at the selection. The value is the new element's id.
namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

struct FormField {
  std::u16string_view command;
  std::u16string_view label;  // of the undo step
  Tag tag;
  std::u16string_view type = {};  // of an `input`; always written, the default too: readers ask for it
};

constexpr FormField fields[] = {
    {u"InsertInputText", u"Text field", Tag::Input, u"text"},
    {u"InsertTextArea", u"Text area", Tag::Textarea},
    {u"InsertInputFileUpload", u"File field", Tag::Input, u"file"},
    {u"InsertInputHidden", u"Hidden field", Tag::Input, u"hidden"},
    {u"InsertInputImage", u"Image field", Tag::Input, u"image"},
    {u"InsertInputCheckbox", u"Check box", Tag::Input, u"checkbox"},
    {u"InsertSelectDropdown", u"Drop-down list", Tag::Select},
    {u"InsertInputButton", u"Button", Tag::Input, u"button"},
    {u"InsertInputSubmit", u"Submit button", Tag::Input, u"submit"},
    {u"InsertInputReset", u"Reset button", Tag::Input, u"reset"},
    {u"InsertInputRadio", u"Radio button", Tag::Input, u"radio"},
};

Ref<Element> make_field(const FormField& field, std::u16string_view id, dom::Document& document) {
  Ref<Element> element = document.create_element(field.tag);
  if (!field.type.empty()) dom::set_attribute(*element, dom::Name(u"type"), field.type);
  if (!id.empty()) dom::set_attribute(*element, dom::names::id, id);
  return element;
}

/// In these there is text and nothing else, or (a button) no further field: HTML has no way to write one
/// there.
bool takes_no_field(const Node& node) {
  static const TagSet tags{Tag::Textarea, Tag::Select, Tag::Option, Tag::Optgroup,
                           Tag::Button,   Tag::Title,  Tag::Script, Tag::Style};
  const auto* element = dom::as<Element>(&node);
  return element && tags.has(*element);
}

// Where the field goes: the caret's position, or after what takes no field.
void leave_other_fields(Editor& editor) {
  const Boundary caret = editor.selection().range().start;
  const Node* outermost = nullptr;
  for (const Node* node = caret.node; node && is_editable(*node); node = node->parent()) {
    if (takes_no_field(*node)) outermost = node;
  }
  if (outermost) editor.selection().collapse(dom::after(*outermost));
}

// An empty line needs no line break any more once the field stands in it.
void remove_lone_break(const Boundary& place) {
  Node* only = place.node->first_child();
  if (place.offset == 0 && only && only == place.node->last_child() && only->is(Tag::Br) &&
      is_block_node(*place.node)) {
    dom::remove(*only);
  }
}

bool insert_field(const FormField& field, Editor& editor, std::u16string_view id) {
  delete_selection(editor, {.strip_wrappers = false});
  leave_other_fields(editor);
  const Boundary start = editor.selection().range().start;
  if (!is_editable(*start.node) && !is_editing_host(*start.node)) return true;
  const Node& parent = start.node->is_text() ? *start.node->parent() : *start.node;
  if (!is_allowed_child_name(dom::Name(field.tag), parent)) return true;
  // A hidden field shows nothing that could hold the line open.
  if (field.type != u"hidden") remove_lone_break(start);
  step_out_of_text_edge(editor);
  const Ref<Element> element = make_field(field, id, editor.document());
  insert_at_selection(editor, element);
  // A no-break space that was one at the line's end has the field after it now.
  canonicalize_whitespace(dom::before(*element), false);
  editor.selection().collapse(dom::after(*element));
  return true;
}

template <std::size_t index>
bool insert_by_index(Editor& editor, std::u16string_view id) {
  return insert_field(fields[index], editor, id);
}

template <std::size_t... indexes>
auto make_rows(std::index_sequence<indexes...>) {
  return std::array{CommandDefinition{.name = fields[indexes].command,
                                      .label = fields[indexes].label,
                                      .action = insert_by_index<indexes>,
                                      .keeps_overrides = true}...};
}

}  // namespace

std::span<const CommandDefinition> form_field_commands() {
  static const auto rows = make_rows(std::make_index_sequence<std::size(fields)>());
  return rows;
}

}  // namespace tvx::editing
