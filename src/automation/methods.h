#pragma once

#include <span>
#include <string_view>

#include "automation/json.h"

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
std::span<const Method> typing_methods();    // typing_methods.cpp: document.type, document.key

}  // namespace tvx::automation
