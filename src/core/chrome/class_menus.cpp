#include "tvx/core/chrome/class_menus.h"

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/veto.h"
#include "tvx/core/content/style_sheet.h"
#include "tvx/core/views/selection_highlight.h"

namespace tvx::core {

void ClassMenus::give_to_element(std::int16_t index) {
  const KeepAlive alive(context_);
  if (!host_allows_item(context_, u"DOMCSSClass")) return;
  attempt([&] {
    dom::Element* element = highlight_.element();
    if (!element) throw RuntimeError(errors::object_not_set, u"There is no current element");
    set_style_class(*element, index == 0 ? std::u16string() : sheet_.class_at(index));
  });
  mark_changed();
}

void ClassMenus::give_to_selection(std::int16_t index) {
  const KeepAlive alive(context_);
  if (!host_allows_item(context_, u"ContextCSSClass")) return;
  const auto kept = DOM();
  const auto failure = failure_of(
      [&] { set_style_class(document().editor(), index < 1 ? std::u16string() : sheet_.class_at(index)); });
  if (failure) return raise_error(4, u"When applying styles the selection cannot span control elements");
  mark_changed();
}

}  // namespace tvx::core
