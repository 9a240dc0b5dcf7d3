#pragma once

#include "tvx/browser/html_document.h"
#include "tvx/editing/gestures/control_box.h"
#include "tvx/editing/tables/table_sizes.h"
#include "tvx/platform/transfer_data.h"

/// What a drag has come to when the mouse is let go. Each is one gesture and one undo step; where the
/// document can't be edited, nothing happens.
namespace tvx::browser {

enum class DropEffect : std::uint8_t { Move, Copy };

/// The handle of a selected control.
void size_control(HTMLDocument& document, dom::Element& element, const editing::ControlBox& box);
/// The edge between two columns of a table.
void size_columns(HTMLDocument& document, const editing::ColumnEdge& edge);
/// A positioned element, to where it shall stand.
void place_control(HTMLDocument& document, dom::Element& element, int left, int top);
/// What is selected, to another position; within itself it stays.
void drop_selection(HTMLDocument& document, const dom::Boundary& place, DropEffect effect);
/// What a middle press brought; the caret then stands after it, as after any paste.
void paste_at(HTMLDocument& document, const dom::Boundary& place, const platform::TransferData& data);
/// What another program gave; it is selected there.
void drop_data(HTMLDocument& document, const dom::Boundary& place, const platform::TransferData& data);

}  // namespace tvx::browser
