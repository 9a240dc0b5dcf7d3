#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/browser/view/messages.h"
#include "tvx/dom/document.h"

/// How the view's tree differs from the document's on purpose; this is the one place that says so. The
/// mirror sends by these rules and the agreement test compares by them.
///
/// Nodes stay one to one, so that a position in the view is a position in the document: what may not act in
/// the view is replaced or emptied, never dropped. Only the document type has no counterpart (the page's own
/// stands for it), and what lies inside a script, a frame or an embedded object isn't shown.
namespace tvx::browser {

/// False for the document type.
bool is_mirrored(const dom::Node& node);

/// The name to make the element by: its own; `tvx-name` for one that a browser's createElement refuses
/// though the parser makes it (`a"b`); `tvx-box` for frames and embedded objects, `tvx-frameset` and
/// `tvx-base` for what must not act.
std::u16string_view mirrored_name(const dom::Element& element);

/// The attributes to set, in order. Left out: names that setAttribute refuses, event attributes, script
/// addresses, what moves the focus or loads by itself, refresh and other orders to the browser. A hidden
/// field is sent as a button that `tvx-hidden` marks, so that it can be selected.
std::vector<PatchOperation::Attribute> mirrored_attributes(const dom::Element& element);

/// Whether one attribute's change can change how others are mirrored: then all are sent again.
bool attributes_depend_on_each_other(const dom::Element& element);

/// False for scripts and boxes: what is inside stays in the document.
bool mirrors_children(const dom::Element& element);

/// The tree as the view should have it, one node a line, indented by depth. The view's own dump has the
/// same form, so that two texts can be compared.
std::u16string print_mirrored(const dom::Document& document);

/// The lines of that form, for whoever prints a tree.
void print_element_line(std::u16string& out, std::size_t depth, std::u16string_view name,
                        dom::Namespace name_space, std::vector<PatchOperation::Attribute> attributes);
void print_text_line(std::u16string& out, std::size_t depth, bool comment, std::u16string_view data);

}  // namespace tvx::browser
