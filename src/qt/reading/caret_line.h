#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "tvx/editing/reading/accessible_tree.h"

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::qt {

class WebView;

/// The line that the caret stands in as the window wraps it. The page alone knows that: it is asked when the
/// caret has moved, and who is told of the move is told when the answer is there, or doesn't come.
class CaretLine {
 public:
  /// Both outlive this.
  CaretLine(WebView& view, platform::MessageLoop& loop) : view_(view), loop_(loop) {}
  ~CaretLine() { *alive_ = false; }
  CaretLine(const CaretLine&) = delete;
  CaretLine& operator=(const CaretLine&) = delete;

  /// `done` is called once, from a later turn, unless another question or forget() comes before.
  void ask(editing::AccessibleTree& tree, const editing::AccessibleTree::Place& caret,
           const dom::Boundary& position, std::function<void()> done);
  void forget();
  /// From the line's first unit to after its last; none where it isn't known, or not any more.
  std::optional<std::pair<Offset, Offset>> of(const editing::AccessibleTree& tree,
                                              const dom::Element& element) const;

 private:
  void answered(std::uint64_t number, editing::AccessibleTree* tree, const std::string& answer);
  void finish(std::uint64_t number);

  WebView& view_;
  platform::MessageLoop& loop_;
  std::uint64_t number_ = 0;  // of the last question
  std::function<void()> done_;
  dom::Ref<dom::Element> asked_, element_;
  std::uint64_t asked_version_ = 0, version_ = 0;
  Offset from_ = 0, to_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::qt
