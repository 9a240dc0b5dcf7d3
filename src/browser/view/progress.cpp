#include "tvx/browser/view/progress.h"

#include <algorithm>

#include "tvx/base/work_count.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

using dom::Element;
using dom::Node;

std::size_t weight_of_text(std::size_t length) { return length / 64; }

/// The next node in the order of the tree that a view has in the end.
const Node* next_mirrored(const Node& node, const Node& top) {
  const Node* at = &node;
  do {
    const auto* element = dom::as<Element>(at);
    const bool enters = is_mirrored(*at) && (!element || mirrors_children(*element));
    at = enters ? dom::next_in_order(*at, &top) : dom::next_skipping_children(*at, &top);
  } while (at && !is_mirrored(*at));
  return at;
}

std::size_t weight_within(const Node& top, const Node* end) {
  std::size_t weight = 0;
  for (const Node* node = &top; node && node != end; node = next_mirrored(*node, top)) {
    count_work();
    weight += weight_of(*node);
  }
  return weight;
}

}  // namespace

std::size_t weight_of(const Node& node) {
  const auto* data = dom::as<dom::CharacterData>(&node);
  return 1 + (data ? weight_of_text(data->length()) : 0);
}

void Progress::sent(const std::vector<PatchOperation>& operations) {
  using Type = PatchOperation::Type;
  for (const PatchOperation& one : operations)
    if (one.type == Type::Element || one.type == Type::Text || one.type == Type::Comment)
      sent_ += 1 + weight_of_text(one.text.size());
}

double Progress::share(const dom::Document& document) {
  if (!whole_) {
    const Element* body = document.body();
    if (!body) return 0;
    whole_ = {weight_within(document, body) - weight_of(document), weight_within(*body, nullptr)};
  }
  if (sent_ <= whole_->before_body) return 0;
  const auto part = static_cast<double>(sent_ - whole_->before_body);
  return std::min(1.0, part / static_cast<double>(whole_->body));
}

Element* element_at(const dom::Document& document, double share) {
  Element* body = document.body();
  if (!body) return nullptr;
  const double wanted = share * static_cast<double>(weight_within(*body, nullptr));
  std::size_t weight = 0;
  const Node* found = body;
  for (const Node* node = body; node; node = next_mirrored(*node, *body)) {
    if (node->is_element()) found = node;
    weight += weight_of(*node);
    if (static_cast<double>(weight) > wanted) break;
  }
  return const_cast<Element*>(static_cast<const Element*>(found));
}

double share_before(const dom::Document& document, const Node& node) {
  const Element* body = document.body();
  if (!body || !dom::is_inclusive_ancestor(*body, node)) return 0;
  return static_cast<double>(weight_within(*body, &node)) /
         static_cast<double>(weight_within(*body, nullptr));
}

}  // namespace tvx::browser
