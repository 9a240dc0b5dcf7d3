#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tvx/dom/node.h"
#include "tvx/dom/ref.h"

namespace tvx::dialogs {

/// One option of a list as a dialog edits it.
struct EditedOption {
  dom::Ref<dom::Element> element;  // empty: a new one
  std::u16string text;
  std::u16string value;  // empty: none of its own, the text is what is sent
  bool selected = false;
};

std::vector<EditedOption> options_of(dom::Element& list);
/// Makes the list's options those, in that order. Options that stay keep their elements and their group; a
/// new one stands in the group of the one before it.
void write_options(dom::Element& list, const std::vector<EditedOption>& wanted);

}  // namespace tvx::dialogs
