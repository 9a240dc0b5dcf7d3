#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tvx/library/objects/object.h"

namespace tvx::library {

/// One name of a path, with what stands in the brackets after it.
struct PathStep {
  std::u16string name;
  Values arguments;  // numbers, quoted texts, True, False, Nothing
};

/// Reads `Toolbar1.Buttons(10).Value`, `docHTML.all.tags("P").item(0).innerHTML`. A quote in a text is
/// written twice. Throws RuntimeError(5) for what is no path.
std::vector<PathStep> parse_path(std::u16string_view path);

/// Walks from `root`; the last step's arguments come back as the callee left them. Throws RuntimeError(91)
/// where a step before the last gives nothing and RuntimeError(424) where it gives no object.
Value read_path(Object& root, std::vector<PathStep>& steps);
void write_path(Object& root, std::vector<PathStep>& steps, const Value& value);

}  // namespace tvx::library
