#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "tvx/browser/view/messages.h"
#include "tvx/dom/node.h"

namespace tvx::browser {

class Mirror;

/// What a node counts where parts of a document are compared: about the lines that it takes. A node counts
/// one, and one more for each 64 units of text.
std::size_t weight_of(const dom::Node& node);

/// How much of a document's body a view has, by weight. The document is gone through once, when the window is
/// filled: edits meanwhile make little difference.
class Progress {
 public:
  /// The view has nothing.
  void begin() { *this = {}; }
  void sent(const std::vector<PatchOperation>& operations);
  /// From 0 to 1; 0 as long as nothing of the body is there.
  double share(const dom::Document& document);

 private:
  struct Weights {
    std::size_t before_body, body;
  };
  std::optional<Weights> whole_;
  std::size_t sent_ = 0;
};

/// Where in the body a share of its weight ends: the element there that a view has in the end. Of the whole
/// it is the last one. Null: a document without a body.
dom::Element* element_at(const dom::Document& document, double share);
/// How much of the body's weight comes before an element.
double share_before(const dom::Document& document, const dom::Node& node);

}  // namespace tvx::browser
