#include "tvx/browser/view/scroll_request.h"

#include <cmath>
#include <utility>

#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/progress.h"
#include "tvx/browser/view/view.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

// Of a document: by how much the scroll bar may be off, as heights are estimated.
constexpr double near_enough = 0.05;

}  // namespace

void ScrollRequest::to(int x, int y) { wanted_ = Wanted{.x = x, .y = y, .element = {}}; }

void ScrollRequest::into_view(dom::Element& element, bool at_top) {
  wanted_ = Wanted{.element = element, .at_top = at_top};
}

// As long as the view has all up to some point, what is there is what belongs there: only what comes after it
// is missing. Else the bar may stand where another part of the document is shown.
void ScrollRequest::find(const dom::Document& document, const Mirror& mirror) {
  if (!bar_) return;
  const ViewScrollBar bar = *std::exchange(bar_, {});
  const dom::Node* shown = mirror.node(bar.shown);
  if (shown && !mirror.is_torn()) return;
  if (shown && std::abs(share_before(document, *shown) - bar.share) < near_enough) return;
  if (dom::Element* element = element_at(document, bar.share)) into_view(*element, bar.share < 1);
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
