#pragma once

#include "tvx/core/htmled.h"
#include "tvx/library/members/value.h"
#include "tvx/library/objects/directory_item_object.h"
#include "tvx/library/objects/document_object.h"

/// Late binding to those few members whose form in C++ isn't that of the table.
namespace tvx::library::hand {

inline Value get_DOM(core::HTMLed& control) { return document_object(control.DOM()); }
inline void set_DOM(core::HTMLed& control, const Value&) { control.set_DOM(); }

inline Value get_DirectoryItem(core::HTMLed&) { return directory_item_object({}); }

inline Value call_InCodeView(core::HTMLed& control, Values& arguments) {
  arguments[0] = control.InCodeView();
  return {};
}

}  // namespace tvx::library::hand
