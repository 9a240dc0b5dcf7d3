#pragma once

#include "tvx/dom/document.h"
#include "tvx/dom/tree.h"

namespace tvx::core {

/// Whether a page has a set of frames in place of its body: there is nothing in it to write into.
inline bool consists_of_frames(const dom::Document& page) {
  const dom::Element* root = page.document_element();
  for (const dom::Node* child = root ? root->first_child() : nullptr; child; child = child->next_sibling())
    if (child->is(dom::Tag::Body) || child->is(dom::Tag::Frameset)) return child->is(dom::Tag::Frameset);
  return false;
}

}  // namespace tvx::core
