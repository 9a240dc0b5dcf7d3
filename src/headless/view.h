#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tvx/browser/geometry.h"
#include "tvx/browser/view/view.h"
#include "tvx/headless/shadow_tree.h"
#include "tvx/platform/message_loop.h"

namespace tvx::headless {

/// The fixed geometry of a document without a screen: the element with sourceIndex n owns the points with
/// floor(y / 20) = n and x >= 0; all else is nothing.
class FixedGeometry final : public browser::Geometry {
 public:
  static constexpr int row_height = 20;
  dom::Element* element_at(const browser::HTMLDocument& document, int x, int y) const override;
  /// Of the caret's parent, or of the selected control.
  std::pair<int, int> caret_place(const browser::HTMLDocument& document) const override;
};

/// A view that answers by simple rules and can print what it was given to show. A block is a line: Up and
/// Down go to the block before or after and keep the column, Home and End to its ends.
///
/// It stands in for a browser in tests as well: patches can be held back, answers withheld, and it can die.
class View final : public browser::View {
 public:
  explicit View(platform::MessageLoop& loop);
  ~View() override;

  void set_receiver(std::function<void(browser::ViewMessage)> receive) override;
  void apply(const browser::Patch& patch) override;
  void select(const browser::ViewSelection& selection) override;
  void ask(const browser::ViewQuestion& question) override;
  void mark(const std::vector<browser::TextMarks>& marks) override;
  void set_policy(const browser::ResourcePolicy& policy) override { policy_ = policy; }
  void set_mode(const browser::ViewMode& mode) override { mode_ = mode; }
  void cancel_drag() override { ++cancelled_drags_; }
  void set_input_context(const browser::InputContext& context) override { context_ = context; }
  void show_notice(std::u16string_view text) override { notice_ = text; }
  void scroll_to(int x, int y) override;
  void scroll_into_view(dom::NodeId element, bool at_top) override;
  /// There is nothing to print on.
  void print(bool with_dialog, std::function<void(bool)> done) override;

  /// What it was asked to bring into sight: a point, or an element.
  struct Scroll {
    int x = 0, y = 0;
    dom::NodeId element{};
    bool at_top = false;
    friend bool operator==(const Scroll&, const Scroll&) = default;
  };

  // --- what it was given ---
  const std::vector<Scroll>& scrolls() const { return scrolls_; }
  const ShadowTree& tree() const { return tree_; }
  const browser::ViewSelection& selection() const { return selection_; }
  /// The stretches of texts that have a wave, by the texts' ids; none of texts that have none.
  const std::map<dom::NodeId, std::vector<browser::MarkedStretch>>& marks() const {
    return marks_[std::size_t(browser::MarkKind::WrongWord)];
  }
  /// Those that are marked as hits, or as the one in hand.
  const std::map<dom::NodeId, std::vector<browser::MarkedStretch>>& marks(browser::MarkKind kind) const {
    return marks_[std::size_t(kind)];
  }
  const browser::ResourcePolicy& policy() const { return policy_; }
  const browser::ViewMode& mode() const { return mode_; }
  const browser::InputContext& input_context() const { return context_; }
  const std::u16string& notice() const { return notice_; }
  dom::CompatibilityMode compatibility_mode() const { return compatibility_mode_; }
  const std::u16string& base() const { return base_; }
  std::size_t patches() const { return patches_; }
  std::size_t pages() const { return pages_; }
  std::size_t cancelled_drags() const { return cancelled_drags_; }
  std::vector<std::u16string> failures() const { return failures_; }
  /// Nodes that it refuses to make, by name.
  void refuse(std::u16string name) { refused_ = std::move(name); }

  // --- what a user does ---
  void key(browser::KeyInput key);
  void text(std::u16string text);
  void input(browser::ViewText text);
  /// A press and its release with the click; the page reports them in later turns.
  void click(dom::NodeId element, browser::ViewPlace place);
  void press(dom::NodeId element, browser::ViewPlace place);

  // --- what can go wrong ---
  void withhold_answers(bool withhold) { silent_ = withhold; }
  void die();
  void tell(browser::ViewMessage message);

 private:
  std::optional<browser::ViewPlace> answer_hit(int y, dom::NodeId& element) const;

  platform::MessageLoop& loop_;
  std::function<void(browser::ViewMessage)> receive_;
  ShadowTree tree_;
  browser::ViewSelection selection_;
  std::array<std::map<dom::NodeId, std::vector<browser::MarkedStretch>>, 4> marks_;  // by kind
  browser::ViewMode mode_;
  browser::ResourcePolicy policy_;
  browser::InputContext context_;
  std::u16string notice_, base_, refused_;
  dom::CompatibilityMode compatibility_mode_{};
  browser::PatchNumber last_patch_{};
  std::vector<std::u16string> failures_;
  std::vector<Scroll> scrolls_;
  std::size_t patches_ = 0, pages_ = 0, cancelled_drags_ = 0;
  bool silent_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::headless
