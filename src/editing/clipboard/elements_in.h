#pragma once

#include <vector>

#include "tvx/dom/tree.h"

namespace tvx::editing {

/// The elements in some content that pass a test, in tree order, held while the content is changed.
template <class Test>
std::vector<dom::Ref<dom::Element>> elements_in(dom::Node& content, Test&& test) {
  std::vector<dom::Ref<dom::Element>> found;
  for (dom::Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content))
    if (auto* element = dom::as<dom::Element>(node); element && test(*element)) found.emplace_back(element);
  return found;
}

}  // namespace tvx::editing
