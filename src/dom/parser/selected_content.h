#pragma once

#include <unordered_map>

#include "dom/document.h"

namespace tvx::dom::parser {

/// Fills a select's `selectedcontent` element with a copy of the option that is selected, whenever such an
/// option ends (HTML standard, section 4.10.10 "maybe clone an option into selectedcontent").
class SelectedContent {
 public:
  /// A `selectedcontent` element was inserted.
  void element_made(Element& element);
  void option_closed(Element& option);

 private:
  struct Target {
    Ref<Element> select, place;
    bool filled = false;
  };
  std::unordered_map<const Element*, Target> targets_;  // by their select
};

}  // namespace tvx::dom::parser
