#pragma once

#include "tvx/dom/range.h"
#include "tvx/editing/tree/surgery.h"

/// Editing commands standard, section "Indenting and outdenting".
namespace tvx::editing {

class Editor;

bool is_indentation_element(const dom::Node& node);
bool is_simple_indentation_element(const dom::Node& node);
bool has_editable_descendant(const dom::Node& node);

/// Puts consecutive siblings a step in.
void indent(const NodeList& nodes, Editor& editor);
void outdent(const dom::Ref<dom::Node>& node, Editor& editor);

// The commands.
bool indent_selection(Editor& editor, std::u16string_view = {});
bool outdent_selection(Editor& editor, std::u16string_view = {});

}  // namespace tvx::editing
