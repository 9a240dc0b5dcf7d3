#include "tvx/headless/view.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/selection.h"
#include "tvx/headless/lines.h"

namespace tvx::headless {

using browser::ViewPlace;
using Operation = browser::PatchOperation;

dom::Element* FixedGeometry::element_at(const browser::HTMLDocument& document, int x, int y) const {
  if (x < 0 || y < 0) return nullptr;
  const auto& all = document.tree().all();
  const auto n = static_cast<std::size_t>(y / row_height);
  return n < all.size() ? all[n] : nullptr;
}

std::pair<int, int> FixedGeometry::caret_place(const browser::HTMLDocument& document) const {
  const editing::Selection& selection = const_cast<browser::HTMLDocument&>(document).editor().selection();
  const dom::Node* node = selection.control() ? selection.control() : selection.focus().node;
  while (node && !node->is_element()) node = node->parent();
  if (!node || !dom::is_connected(*node)) return {0, 0};
  const auto index = document.tree().source_index(static_cast<const dom::Element&>(*node));
  return {0, static_cast<int>(index) * row_height};
}

View::View(platform::MessageLoop& loop) : loop_(loop) {}

View::~View() { *alive_ = false; }

void View::set_receiver(std::function<void(browser::ViewMessage)> receive) { receive_ = std::move(receive); }

void View::tell(browser::ViewMessage message) {
  message.seen = last_patch_;
  loop_.post([this, alive = alive_, message = std::move(message)] {
    if (*alive && receive_) receive_(message);
  });
}

void View::apply(const browser::Patch& patch) {
  ++patches_;
  if (patch.reset) {
    ++pages_;
    compatibility_mode_ = patch.compatibility_mode;
    base_ = patch.base;
    selection_ = {};
    marks_ = {};
  }
  last_patch_ = patch.number;
  browser::Patch accepted = patch;
  if (!refused_.empty()) {
    const auto refused = std::stable_partition(accepted.operations.begin(), accepted.operations.end(),
                                               [this](const auto& one) { return one.name != refused_; });
    for (auto one = refused; one != accepted.operations.end(); ++one) {
      failures_.push_back(one->name);
      tell({.seen = {}, .what = browser::PatchFailed{one->node, u"refused"}});
    }
    accepted.operations.erase(refused, accepted.operations.end());
  }
  for (const dom::NodeId id : tree_.apply(accepted)) {
    failures_.push_back(u"no such node or place");
    tell({.seen = {}, .what = browser::PatchFailed{id, u"no such node or place"}});
  }
  if (!silent_) tell({.seen = {}, .what = browser::PatchDone{patch.number}});
}

void View::select(const browser::ViewSelection& selection) { selection_ = selection; }

void View::mark(const std::vector<browser::TextMarks>& marks) {
  for (const browser::TextMarks& text : marks) {
    if (text.stretches.empty())
      marks_[std::size_t(text.kind)].erase(text.text);
    else
      marks_[std::size_t(text.kind)][text.text] = text.stretches;
  }
}

void View::ask(const browser::ViewQuestion& question) {
  if (silent_) return;
  browser::ViewAnswer answer;
  answer.id = question.id;
  if (question.type == browser::ViewQuestion::Type::Hit) {
    answer.place = answer_hit(question.y, answer.element);
  } else if (question.type == browser::ViewQuestion::Type::Move) {
    answer.place = Lines(tree_).move(question.move, question.from);
  }
  tell({.seen = {}, .what = answer});
}

void View::scroll_to(int x, int y) {
  scrolls_.push_back({.x = x, .y = y});
  browser::ViewFacts facts;
  facts.scroll_x = x;
  facts.scroll_y = y;
  tell({.seen = {}, .what = facts});
}

void View::scroll_into_view(dom::NodeId element, bool at_top) {
  scrolls_.push_back({.element = element, .at_top = at_top});
}

void View::print(bool, std::function<void(bool)> done) {
  loop_.post([done = std::move(done)] {
    if (done) done(false);
  });
}

std::optional<ViewPlace> View::answer_hit(int y, dom::NodeId& element) const {
  int row = y / FixedGeometry::row_height;
  std::vector<const ShadowTree::Node*> open(tree_.page().children.rbegin(), tree_.page().children.rend());
  while (!open.empty()) {
    const ShadowTree::Node* node = open.back();
    open.pop_back();
    open.insert(open.end(), node->children.rbegin(), node->children.rend());
    if (node->type != Operation::Type::Element || row-- > 0) continue;
    element = node->id;
    return ViewPlace{node->id, 0};
  }
  return {};
}

// --- the user ---

void View::key(browser::KeyInput key) { tell({.seen = {}, .what = browser::ViewKey{std::move(key), true}}); }

void View::text(std::u16string text) { tell({.seen = {}, .what = browser::ViewText{std::move(text)}}); }

void View::input(browser::ViewText text) { tell({.seen = {}, .what = std::move(text)}); }

void View::press(dom::NodeId element, ViewPlace place) {
  tell({.seen = {}, .what = browser::ViewTicket{}});
  if (silent_) return;
  browser::ViewMouse mouse;
  mouse.element = element;
  mouse.place = mouse.anchor = mouse.focus = place;
  tell({.seen = {}, .what = mouse});
}

void View::click(dom::NodeId element, ViewPlace place) {
  press(element, place);
  tell({.seen = {}, .what = browser::ViewTicket{.type = browser::ViewTicket::Type::Release}});
  if (silent_) return;
  browser::ViewMouse mouse;
  mouse.element = element;
  mouse.place = mouse.anchor = mouse.focus = place;
  mouse.type = browser::ViewMouse::Type::Release;
  tell({.seen = {}, .what = mouse});
  mouse.type = browser::ViewMouse::Type::Click;
  tell({.seen = {}, .what = mouse});
}

void View::die() {
  tree_ = {};
  selection_ = {};
  tell({.seen = {}, .what = browser::ViewDied{}});
}

}  // namespace tvx::headless
