#pragma once

#include <string>

namespace tvx::library {

/// The reference of all members of the control, from src/library/tvxhtml.interface, in Markdown and UTF-8:
/// docs/reference.md.
std::string reference();

}  // namespace tvx::library
