#pragma once

#include <string_view>

#include "tvx/core/views/layout.h"
#include "tvx/library/objects/object.h"

namespace tvx::core {
class HTMLed;
}
namespace tvx::platform {
class Form;
class FormControl;
class Menu;
class Toolbar;
}  // namespace tvx::platform

/// The face of a control as objects: its toolbars with their buttons, its menus with their items, the boxes
/// of its layout. Handles are for one call: they don't keep the control, nor what they stand for.
namespace tvx::library {

/// `Toolbar1`, `Toolbar2`, `tlbDOM`, `Picture1` to `Picture3`, each menu and each item by its name; of a menu
/// array its items by their index: `mnuClass(2)`. Null if no part has that name.
ObjectHandle part_named(core::HTMLed& control, std::u16string_view name);

/// The root of paths like `Toolbar1.Buttons(18).Visible` and `mnuMiscSource.Enabled`: the parts, the document
/// as `docHTML`, and the members that every host sees.
ObjectHandle face_of(core::HTMLed& control);

ObjectHandle toolbar_object(platform::Toolbar& toolbar);                  // toolbar_object.cpp
ObjectHandle box_object(std::u16string_view name, const core::Box& box);  // box_object.cpp
/// A dialog; its controls are members by their names.
ObjectHandle form_object(platform::Form& form);                    // dialog_object.cpp
ObjectHandle form_control_object(platform::FormControl& control);  // dialog_object.cpp
// Of lists with columns; list_view_object.cpp.
Value list_items(const platform::FormControl& control);
Value column_headers(const platform::FormControl& control);
Value selected_item(const platform::FormControl& control);
void select_item(const platform::FormControl& control, const Value& row);
void click_column(const platform::FormControl& control, const Value& column);
/// Files are dropped on it, by their paths. False: it doesn't take them.
bool drop_files(const platform::FormControl& control, const Values& paths);
/// An item or a menu; one in a menu array stands for itself alone.
ObjectHandle menu_object(platform::Menu& menu);  // menu_object.cpp
/// The array that the item is in: `UBound`, `Item(index)`.
ObjectHandle menu_array_object(platform::Menu& item);  // menu_object.cpp

}  // namespace tvx::library
