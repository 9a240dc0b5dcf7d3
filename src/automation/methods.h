#pragma once

#include <span>
#include <string_view>

#include "tvx/automation/json.h"

namespace tvx::automation {

class Session;

/// A method of the protocol is a row: what it is called and what it does. It gives the result, or throws
/// ProtocolError or RuntimeError.
struct Method {
  std::string_view name;
  Json (*run)(Session& session, const Params& params);
};

/// Null if there is no such method.
const Method* find_method(std::string_view name);

// The rows, by subject.
std::span<const Method> document_methods();  // document_methods.cpp: document.*
std::span<const Method> member_methods();   // member_methods.cpp: get, set, call, answer, expect, fault, pump
std::span<const Method> control_methods();  // control_methods.cpp: control
std::span<const Method> object_methods();   // object_methods.cpp: object
std::span<const Method> gesture_methods();  // gesture_methods.cpp: press, mouse, select, navigate
std::span<const Method> clipboard_methods();  // clipboard_methods.cpp: clipboard
std::span<const Method> typing_methods();     // typing_methods.cpp: document.type, document.key

}  // namespace tvx::automation
