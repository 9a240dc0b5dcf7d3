#pragma once

#include <string>
#include <string_view>

#include "tvx/dom/node.h"
#include "tvx/platform/form.h"

namespace tvx::core {

/// `frmEleCode`: the opening tag of an element as text. The content and the end tag stay out of the user's
/// reach; a ">" within an attribute's value ends the opening tag early.
class ElementCodeDialog final : private platform::FormHandler {
 public:
  ElementCodeDialog();

  platform::Form& form() { return form_; }
  bool booCancel() const { return booCancel_; }

  /// Takes an element's markup and shows the tag, on one line.
  void set_outerHTML(std::u16string_view html);
  /// The markup with the tag as it was edited. A tag that nobody touched keeps its line breaks.
  std::u16string outerHTML() const;

 private:
  void Click(platform::FormControl& button) override;

  platform::Form form_{u"frmEleCode", u"Edit Tag"};
  std::u16string tag_, remainder_;  // the tag as it was, and all after it
  std::u16string shown_;
  bool booCancel_ = false;
};

/// Whether an element of that name, in lower case, keeps its tag: the parts of tables and of documents.
bool refuses_new_tag(std::u16string_view tag);

/// Takes `base` off the address that elements of this kind are edited with, in any letters and wherever it
/// stands: of links, images, image fields and scripts.
void make_address_relative(dom::Element& element, std::u16string_view base);

}  // namespace tvx::core
