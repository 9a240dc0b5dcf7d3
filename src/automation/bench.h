#pragma once

#include <string_view>

#include "tvx/dom/document.h"
#include "tvx/editing/editor.h"

namespace tvx::automation {

/// What a test begins with: content in a place, and the modes that outlive a command.
struct BenchContent {
  std::u16string html;  // with selection marks
  /// A DIV of its own that can be edited, with a sibling "<p>test" in a body that can't; else the body.
  bool in_div = false;
  bool style_with_css = false;
  std::u16string separator = u"p";
  std::u16string sheet;  // style rules that the content is seen with
};

/// Puts the content into the document in place of its body's, as loading does: nothing of it can be undone,
/// and what was before is forgotten. Returns the element that holds the content, the editing host.
dom::Ref<dom::Element> lay_out_bench(editing::Editor& editor, const BenchContent& content, bool design_mode);

}  // namespace tvx::automation
