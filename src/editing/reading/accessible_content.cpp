#include "tvx/editing/reading/accessible_content.h"

#include <algorithm>

#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/rendering.h"
#include "tvx/editing/reading/accessible_kind.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using Kind = AccessibleKind;

namespace {

/// Units that show nothing between two letters.
bool is_unseen(char16_t unit) { return unit == 0xAD || unit == 0x200B; }

bool holds_no_text(const Node& node) {
  return node.is(dom::Tag::Table) || node.is(dom::Tag::Colgroup) ||
         (is_table_part(node) && !node.is(dom::Tag::Td) && !node.is(dom::Tag::Th));
}

}  // namespace

class AccessibleContent::Reading {
 public:
  explicit Reading(AccessibleContent& content) : content_(content), top_(*content.top_) {}

  void run() {
    const Kind kind = accessible_kind(top_);
    if (!is_thing(kind)) read_below();
    end_line();
    // What is empty holds a caret, but a list or a table does not.
    const bool may_be_empty = !is_thing(kind) && kind != Kind::List && kind != Kind::Table;
    content_.has_text_ = own_ || (content_.children_.empty() && may_be_empty);
    if (content_.has_text_) return;
    content_.text_.clear();
    content_.runs_.clear();
  }

 private:
  void read_below() {
    Node* node = top_.first_child();
    while (node) {
      const bool into = take(*node);
      if (into && node->first_child()) {
        node = node->first_child();
        continue;
      }
      while (node && !node->next_sibling()) node = leave(*node);
      if (!node) return;
      if (node == link_) link_ = nullptr;
      node = node->next_sibling();
    }
  }

  /// The parent, null at the top.
  Node* leave(Node& node) {
    if (&node == link_) link_ = nullptr;
    return node.parent() == &top_ ? nullptr : node.parent();
  }

  /// Whether what is below it is read on.
  bool take(Node& node) {
    if (auto* text = dom::as<dom::Text>(&node)) {
      take_text(*text);
      return false;
    }
    auto* element = dom::as<Element>(&node);
    if (!element || display_of(*element) == Display::None) return false;
    if (element->is(dom::Tag::Br)) {
      take_break(*element);
      return false;
    }
    const Kind kind = accessible_kind(*element);
    if (kind == Kind::None) return true;
    if (!link_) content_.children_.push_back(element);
    if (kind == Kind::Link) {
      if (!link_) link_ = element;
      return true;
    }
    take_child(*element, is_block(kind));
    return false;
  }

  void take_child(Element& child, bool block) {
    if (block) end_line();
    content_.runs_.push_back({&child, 0, content_.text_.size(), 1});
    content_.text_ += object;
    after_blank_ = false;
    at_start_ = block;
    if (!block) own_ = true;
  }

  void take_break(Element& line_break) {
    own_ = true;
    if (is_collapsed_line_break(line_break)) return;
    end_line();
    content_.runs_.push_back({&line_break, 0, content_.text_.size(), 1});
    content_.text_ += u'\n';
    at_start_ = true;
  }

  void end_line() {
    // A blank at the end of a line isn't seen.
    if (after_blank_) {
      content_.text_.pop_back();
      if (--content_.runs_.back().length == 0) content_.runs_.pop_back();
    }
    after_blank_ = false;
    at_start_ = true;
  }

  void take_text(dom::Text& node) {
    if (node.parent() != parent_) {
      parent_ = node.parent();
      collapsing_ = collapses(node);
      nothing_ = holds_no_text(*parent_);
    }
    if (nothing_) return;
    bool open = false;  // the last run goes on
    const std::u16string& data = node.data();
    for (Offset at = 0; at < data.size(); ++at) {
      const char16_t unit = data[at];
      const bool blank = collapsing_ && is_ascii_space(unit);
      if (is_unseen(unit) || (blank && (after_blank_ || at_start_))) {
        open = false;
        continue;
      }
      if (!open) content_.runs_.push_back({&node, at, content_.text_.size(), 0});
      open = true;
      content_.text_ += blank ? u' ' : unit;
      ++content_.runs_.back().length;
      after_blank_ = blank;
      at_start_ = false;
      own_ = true;
    }
  }

  AccessibleContent& content_;
  Element& top_;
  const Node* link_ = nullptr;  // what is in it is its own
  const Node* parent_ = nullptr;
  bool collapsing_ = true, nothing_ = false;
  bool after_blank_ = false, at_start_ = true;
  bool own_ = false;  // something of a line was met
};

AccessibleContent::AccessibleContent(Element& top) : top_(&top) { Reading(*this).run(); }

const AccessibleContent::Run* AccessibleContent::run_at(Offset offset) const {
  const auto after = std::ranges::upper_bound(runs_, offset, {}, &Run::start);
  if (after == runs_.begin()) return nullptr;
  const Run& run = *std::prev(after);
  return offset < run.start + run.length ? &run : nullptr;
}

Offset AccessibleContent::offset_of(const Boundary& place) const {
  const auto end_of = [](const Run& run) {
    return run.is_text() ? Boundary{run.node, run.from + run.length} : dom::after(*run.node);
  };
  const auto run = std::ranges::partition_point(
      runs_, [&](const Run& earlier) { return dom::compare(end_of(earlier), place) <= 0; });
  if (run == runs_.end()) return text_.size();
  const bool within = run->is_text() && run->node == place.node && place.offset > run->from;
  return within ? run->start + place.offset - run->from : run->start;
}

Boundary AccessibleContent::position(Offset offset) const {
  if (runs_.empty()) return {top_, 0};
  // After a text rather than before the next one: there a caret goes on writing as before.
  const Run* before = offset > 0 ? run_at(std::min(offset, text_.size()) - 1) : nullptr;
  if (before && before->is_text()) return {before->node, before->from + offset - before->start};
  const Run* next = run_at(offset);
  if (next) return next->is_text() ? Boundary{next->node, next->from} : dom::before(*next->node);
  return dom::after(*runs_.back().node);
}

dom::Range AccessibleContent::range_of(Offset from, Offset to) const {
  const Run *first = run_at(from), *last = to > 0 ? run_at(to - 1) : nullptr;
  if (from >= to || !first || !last) return {position(from), position(from)};
  const Boundary start =
      first->is_text() ? Boundary{first->node, first->from + from - first->start} : dom::before(*first->node);
  const Boundary end =
      last->is_text() ? Boundary{last->node, last->from + to - last->start} : dom::after(*last->node);
  return {start, end};
}

std::pair<Offset, Offset> AccessibleContent::line_at(Offset offset) const {
  const auto ends_line = [this](Offset unit) {
    if (text_[unit] == u'\n') return true;
    if (text_[unit] != object) return false;
    const Run* run = run_at(unit);
    const auto* element = run ? dom::as<Element>(run->node) : nullptr;
    return element && is_block(accessible_kind(*element));
  };
  const auto is_block_unit = [&](Offset unit) { return text_[unit] == object && ends_line(unit); };
  Offset from = std::min(offset, text_.size()), to = from;
  while (from > 0 && !ends_line(from - 1) && !(from < text_.size() && is_block_unit(from))) --from;
  while (to < text_.size() && !(to > from && is_block_unit(to)) && !ends_line(to)) ++to;
  if (to < text_.size() && (text_[to] == u'\n' || to == from)) ++to;
  return {from, to};
}

}  // namespace tvx::editing
