#include "tvx/browser/view/scroll_request.h"

#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/view.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {

void ScrollRequest::to(int x, int y) { wanted_ = Wanted{.x = x, .y = y, .element = {}}; }

void ScrollRequest::into_view(dom::Element& element, bool at_top) {
  wanted_ = Wanted{.element = element, .at_top = at_top};
}

void ScrollRequest::send(View& view, const Mirror& mirror) {
  if (!wanted_) return;
  const bool whole = !mirror.loading();
  if (!wanted_->element) {
    if (!whole) return;
    view.scroll_to(wanted_->x, wanted_->y);
  } else {
    const dom::Node* shown = wanted_->element.get();
    if (!whole && dom::is_connected(*shown) && !mirror.knows(*shown)) return;
    while (shown && !(shown->is_element() && mirror.knows(*shown))) shown = shown->parent();
    if (shown) view.scroll_into_view(shown->id(), wanted_->at_top);
  }
  wanted_.reset();
}

}  // namespace tvx::browser
