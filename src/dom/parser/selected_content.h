#pragma once

#include <unordered_map>

#include "tvx/dom/document.h"

namespace tvx::dom::parser {

/// Fills a select's `selectedcontent` element with a copy of the option that is selected, whenever such an
/// option ends (HTML standard, section 4.10.10 "maybe clone an option into selectedcontent").
/// OURS: the copies have a budget. Options hold tables, which hold selects again, and each level would double
/// what the text says.
class SelectedContent {
 public:
  /// A `selectedcontent` element was inserted.
  void element_made(Element& element);
  /// `allowance`: how many nodes and 16-bit units of text all copies so far may have.
  void option_closed(Element& option, Offset allowance);

 private:
  struct Target {
    Ref<Element> select, place;
    bool filled = false;
  };
  bool spend(const Element& option, Offset allowance);

  std::unordered_map<const Element*, Target> targets_;  // by their select
  Offset spent_ = 0;
};

}  // namespace tvx::dom::parser
