#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"

/// The two roads by which text gets a class of the style sheet.
namespace tvx::core {

bool HTMLed::host_allows_item(std::u16string_view item) {
  std::u16string name(item);
  bool cancel = false;
  raise([&](HTMLedEvents& host) { host.MenuClick(name, cancel); });
  return !cancel;
}

std::u16string HTMLed::style_class_at(std::int16_t index) const {
  const auto found = std::ranges::find(style_classes_, index, &StyleClass::index);
  if (found == style_classes_.end()) throw RuntimeError(errors::invalid_call, u"No such menu item");
  return found->name;
}

void HTMLed::mnuClass_Click(std::int16_t Index) {
  const KeepAlive alive(*this);
  if (!host_allows_item(u"DOMCSSClass")) return;
  attempt([&] {
    dom::Element* element = highlight_->element();
    if (!element) throw RuntimeError(errors::object_not_set, u"There is no current element");
    set_style_class(*element, Index == 0 ? std::u16string() : style_class_at(Index));
  });
  mark_changed();
}

void HTMLed::mnuMiscClass_Click(std::int16_t Index) {
  const KeepAlive alive(*this);
  if (!host_allows_item(u"ContextCSSClass")) return;
  const auto kept = docHTML_;
  const auto failure = failure_of(
      [&] { set_style_class(document().editor(), Index < 1 ? std::u16string() : style_class_at(Index)); });
  if (failure) return raise_error(4, u"When applying styles the selection cannot span control elements");
  mark_changed();
}

}  // namespace tvx::core
