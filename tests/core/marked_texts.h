#pragma once

#include <string>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/browser/view/mark_display.h"
#include "tvx/dom/tree.h"

namespace tvx::core {

/// The stretches of the texts below a node that are marked, in their order. `stretches_of` gives those of a
/// text.
template <class StretchesOf>
std::vector<std::string> marked_texts(dom::Node& top, StretchesOf&& stretches_of) {
  std::vector<std::string> all;
  for (dom::Node* node = &top; node; node = dom::next_in_order(*node, &top))
    if (const auto* text = dom::as<dom::Text>(node))
      for (const browser::MarkedStretch& stretch : stretches_of(*text))
        all.push_back(to_utf8(text->data().substr(stretch.from, stretch.to - stretch.from)));
  return all;
}

}  // namespace tvx::core
