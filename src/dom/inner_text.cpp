#include "tvx/dom/inner_text.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"

namespace tvx::dom {
namespace {

using style::ComputedValues;
using style::Display;
using style::StyleEngine;
using style::Visibility;
using style::WhiteSpace;

bool is_space(char16_t c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; }
bool keeps_spaces(WhiteSpace mode) {
  return mode == WhiteSpace::Pre || mode == WhiteSpace::PreWrap || mode == WhiteSpace::BreakSpaces;
}

/// Elements that show something else than their content, or nothing that is text.
bool shows_no_text(const Element& element) {
  switch (element.tag()) {
    case Tag::Img:
    case Tag::Input:
    case Tag::Textarea:
    case Tag::Iframe:
    case Tag::Audio:
    case Tag::Video:
    case Tag::Canvas:
    case Tag::Object:
    case Tag::Embed:
    case Tag::Meter:
    case Tag::Progress: return true;
    default: return false;
  }
}

bool is_inline_box(Display display) {
  return display == Display::InlineBlock || display == Display::InlineTable ||
         display == Display::InlineFlex || display == Display::InlineGrid;
}

/// CSS Display's "block-level".
bool is_block_level(Display display) {
  switch (display) {
    case Display::Block:
    case Display::ListItem:
    case Display::Table:
    case Display::Flex:
    case Display::Grid:
    case Display::FlowRoot: return true;
    default: return false;
  }
}

bool is_table_inside(Display display) {
  return display == Display::TableRowGroup || display == Display::TableHeaderGroup ||
         display == Display::TableFooterGroup || display == Display::TableRow ||
         display == Display::TableCell;
}

/// Whether anything but an inline box begins and ends lines of its own.
bool breaks_line(Display display) {
  return is_block_level(display) || is_table_inside(display) || display == Display::TableCaption;
}

/// Builds the text: white space as it is shown, and line breaks that are required around blocks, which join
/// with their neighbours and never stand at the ends.
class RenderedText {
 public:
  /// Where the text begins: on a new line (or after a blank) white space vanishes.
  explicit RenderedText(bool at_line_start) : at_line_start_(at_line_start) {}

  void add_text(std::u16string_view text, WhiteSpace mode) {
    if (keeps_spaces(mode)) {
      if (text.empty()) return;
      begin_content();
      write(text);
      at_line_start_ = text.back() == u'\n';
      return;
    }
    std::u16string piece;
    const auto flush = [&] {
      if (!piece.empty()) write(piece);
      piece.clear();
    };
    for (const char16_t c : text) {
      if (c == u'\n' && mode == WhiteSpace::PreLine) {
        flush();
        add_line_break();
      } else if (is_space(c)) {
        if (at_line_start_ || blank_pending_) continue;
        flush();
        blank_pending_ = true;
        blank_is_ours_ = recording_;
      } else {
        if (piece.empty()) begin_content();
        piece += c;
      }
    }
    flush();
  }

  /// A box in the line: an image, a field.
  void begin_content() {
    if (blank_pending_ && blank_is_ours_) write_always(u" ");
    blank_pending_ = at_line_start_ = false;
  }
  void add_line_break() {
    new_line();
    write(u"\n");
  }
  void add_tab() { write(u"\t"); }
  /// White space at the edge of a line is not shown.
  void new_line() {
    blank_pending_ = false;
    at_line_start_ = true;
  }
  void end_inline_box() { blank_pending_ = at_line_start_ = false; }
  void require_breaks(int count) {
    new_line();
    if (recording_) required_ = std::max(required_, count);
  }

  /// What is not recorded still decides how the next blank shows.
  void start_recording() { recording_ = true; }
  /// From here on only what the last blank becomes is still of interest.
  void stop_recording() { recording_ = false; }
  bool waits() const { return blank_pending_ && blank_is_ours_; }
  std::u16string take() { return std::move(text_); }

 private:
  void write(std::u16string_view text) {
    if (recording_) write_always(text);
  }
  void write_always(std::u16string_view text) {
    if (!text_.empty()) text_.append(required_, u'\n');
    required_ = 0;
    text_ += text;
  }

  std::u16string text_;
  int required_ = 0;
  bool recording_ = true;
  bool at_line_start_;
  bool blank_pending_ = false, blank_is_ours_ = false;
};

/// One end of a range, as a walk through the tree comes by.
class Edge {
 public:
  explicit Edge(const Boundary& place) : offset_(place.offset) {
    if (place.node->is_text()) {
      text_ = place.node;
    } else if (const Node* child = child_at(*place.node, place.offset)) {
      before_ = child;
    } else {
      end_of_ = place.node;
    }
  }
  bool is_before(const Node& node) const { return before_ == &node; }
  bool is_at_end_of(const Node& node) const { return end_of_ == &node; }
  std::optional<Offset> within(const Text& text) const {
    return text_ == &text ? std::optional(offset_) : std::nullopt;
  }

 private:
  const Node *text_ = nullptr, *before_ = nullptr, *end_of_ = nullptr;
  Offset offset_;
};

/// The walk of the "rendered text collection steps", with a list of the open elements in place of recursion.
class Collector {
 public:
  Collector(StyleEngine& engine, const Element& root, bool at_line_start)
      : engine_(engine), root_(root), text_(at_line_start) {}

  /// Only what is in the range is written; what stands before it is read for its white space.
  void limit_to(const Range& range) {
    start_.emplace(range.start);
    end_.emplace(range.end);
    start_node_ = range.start.node;
    text_.stop_recording();
  }

  std::u16string run() {
    const ComputedValues values = engine_.values(root_);
    open_.push_back({&root_, values});
    const Node* node = root_.first_child();
    while (node || !open_.empty()) {
      if (ended_ && !text_.waits()) return text_.take();
      if (!node) {
        const Open closed = open_.back();
        if (end_) pass_edges(closed.element, &Edge::is_at_end_of);
        open_.pop_back();
        if (closed.element == &root_) break;
        leave(closed);
        node = closed.element->next_sibling();
        continue;
      }
      const bool descend = enter(*node);
      node = descend ? node->first_child() : node->next_sibling();
    }
    if (text_.waits() && !breaks_line(values.display) && !is_inline_box(values.display)) look_behind_end();
    return text_.take();
  }

 private:
  struct Open {
    const Element* element;
    ComputedValues values;
    bool had_part = false;  // a row of this table, a cell of this row
  };

  void pass_edges(const Node* node, bool (Edge::*is_at)(const Node&) const) {
    if (((*start_).*is_at)(*node)) start();
    if (((*end_).*is_at)(*node)) end();
  }
  void start() {
    text_.start_recording();
    start_node_ = nullptr;
  }
  void end() {
    text_.stop_recording();
    ended_ = true;
  }

  // A text with the range's ends in it, in its parts.
  void add_parts(const Text& text, const ComputedValues& values) {
    const std::u16string_view data = text.data();
    Offset added = 0;
    const auto add_up_to = [&](Offset to) {
      add(data.substr(added, to - added), values);
      added = to;
    };
    if (const auto at = start_->within(text)) {
      add_up_to(*at);
      start();
    }
    if (const auto at = end_->within(text)) {
      add_up_to(*at);
      end();
    }
    add_up_to(data.size());
  }

  /// Returns whether the children are to be walked; then the node stands in the list.
  bool enter(const Node& node) {
    if (end_) pass_edges(&node, &Edge::is_before);
    if (const Text* text = as<Text>(&node)) {
      if (end_) {
        add_parts(*text, open_.back().values);
      } else {
        add(text->data(), open_.back().values);
      }
      return false;
    }
    const Element* element = as<Element>(&node);
    if (!element) return false;
    const ComputedValues values = engine_.values(*element);
    if (values.display == Display::None) return false;
    if (element->is(Tag::Br)) {
      if (values.visibility == Visibility::Visible) text_.add_line_break();
      return false;
    }
    if (start_node_ && breaks_line(values.display) && !is_inclusive_ancestor(node, *start_node_)) {
      text_.new_line();
      return false;
    }
    separate(values);
    require(*element, values);
    if (is_inline_box(values.display) || shows_no_text(*element)) {
      if (!breaks_line(values.display)) text_.begin_content();
      if (shows_no_text(*element)) {
        require(*element, values);
        return false;
      }
      text_.new_line();
    }
    open_.push_back({element, values});
    return true;
  }

  void leave(const Open& closed) {
    if (is_inline_box(closed.values.display)) {
      text_.end_inline_box();
    } else {
      require(*closed.element, closed.values);
    }
  }

  void require(const Element& element, const ComputedValues& values) {
    if (values.visibility != Visibility::Visible) {
      if (breaks_line(values.display)) text_.new_line();
    } else if (element.is(Tag::P)) {
      text_.require_breaks(2);
    } else if (is_block_level(values.display) || values.display == Display::TableCaption) {
      text_.require_breaks(1);
    } else if (is_table_inside(values.display)) {
      text_.new_line();
    }
  }

  /// A tab between cells and a line break between rows, written when the next one comes.
  void separate(const ComputedValues& values) {
    const bool cell = values.display == Display::TableCell, row = values.display == Display::TableRow;
    if (!cell && !row) return;
    for (auto open = open_.rbegin(); open != open_.rend(); ++open) {
      const Display display = open->values.display;
      const bool holder =
          cell ? display == Display::TableRow : display == Display::Table || display == Display::InlineTable;
      if (holder) {
        if (open->had_part) {
          text_.new_line();
          cell ? text_.add_tab() : text_.add_line_break();
        }
        open->had_part = true;
        return;
      }
      if (!is_table_inside(display)) return;
    }
  }

  void add(std::u16string_view text, const ComputedValues& values) {
    if (values.visibility != Visibility::Visible) return;
    switch (values.text_transform) {
      case style::TextTransform::None: return text_.add_text(text, values.white_space);
      case style::TextTransform::Uppercase: return text_.add_text(upper_cased(text), values.white_space);
      default: break;
    }
    std::u16string changed(text);
    bool in_word = false;
    for (char16_t& c : changed) {
      const bool letter = u_isalnum(c) || is_high_surrogate(c) || is_low_surrogate(c) || c == u'\'';
      if (values.text_transform == style::TextTransform::Lowercase) {
        c = is_high_surrogate(c) || is_low_surrogate(c) ? c : char16_t(u_tolower(c));
      } else if (letter && !in_word && !is_high_surrogate(c) && !is_low_surrogate(c)) {
        c = char16_t(u_totitle(c));
      }
      in_word = letter;
    }
    text_.add_text(changed, values.white_space);
  }

  /// A blank at the end is shown if anything comes after it in the same line.
  void look_behind_end() {
    text_.stop_recording();
    const Node* node = next_skipping_children(root_);
    const Node* before = &root_;
    while (node && text_.waits()) {
      // Leaving an element that begins and ends lines ends this one.
      for (const Element* parent = before->parent_element(); parent && parent != node->parent();
           parent = parent->parent_element()) {
        if (is_ancestor(*parent, *node)) break;
        if (ends_line(*parent)) return;
      }
      const Element* element = as<Element>(node);
      const Display display = element ? engine_.display(*element) : Display::Inline;
      if (element && (element->is(Tag::Br) || breaks_line(display))) return;
      if (const Text* text = as<Text>(node)) {
        if (const Element* parent = text->parent_element()) add(text->data(), engine_.values(*parent));
      } else if (element && display != Display::None && (is_inline_box(display) || shows_no_text(*element))) {
        return text_.begin_content();
      }
      before = node;
      const bool skip = display == Display::None || (element && shows_no_text(*element));
      node = skip ? next_skipping_children(*node) : next_in_order(*node);
    }
  }

  bool ends_line(const Element& element) {
    const Display display = engine_.display(element);
    return breaks_line(display) || is_inline_box(display);
  }

  StyleEngine& engine_;
  const Element& root_;
  RenderedText text_;
  std::vector<Open> open_;
  std::optional<Edge> start_, end_;
  const Node* start_node_ = nullptr;  // until the range has begun
  bool ended_ = false;
};

/// What stands before an inline element decides whether its first blank is shown. Looks back to the nearest
/// thing in the line.
bool begins_at_line_start(StyleEngine& engine, const Element& root) {
  const Node* node = &root;
  for (;;) {
    const Display own =
        node->is_element() ? engine.display(static_cast<const Element&>(*node)) : Display::Inline;
    if (node == &root && (breaks_line(own) || is_inline_box(own))) return true;
    const Node* previous = node->previous_sibling();
    if (!previous) {
      const Element* parent = node->parent_element();
      if (!parent) return true;
      const Display display = engine.display(*parent);
      if (breaks_line(display) || is_inline_box(display)) return true;
      node = parent;
      continue;
    }
    // Down to the last thing in what stands before.
    while (const Element* element = as<Element>(previous)) {
      const Display display = engine.display(*element);
      if (element->is(Tag::Br) || breaks_line(display)) return true;
      if (is_inline_box(display) || (display != Display::None && shows_no_text(*element))) return false;
      if (display == Display::None || !element->last_child()) break;
      previous = element->last_child();
    }
    const Text* text = as<Text>(previous);
    if (text && text->length() && text->parent_element()) {
      const WhiteSpace mode = engine.values(*text->parent_element()).white_space;
      const char16_t last = text->data().back();
      if (keeps_spaces(mode)) return last == u'\n';
      return is_space(last);
    }
    node = previous;
  }
}

bool is_rendered(StyleEngine& engine, const Element& element) {
  if (!is_connected(element)) return false;
  for (const Element* current = &element; current; current = current->parent_element()) {
    if (engine.display(*current) == Display::None) return false;
  }
  return true;
}

/// A piece of one text, without white space, is shown as it stands: nothing of the line around it has to be
/// read. Nothing for all else.
std::optional<std::u16string> piece_of_text(const Range& range) {
  const auto* text = as<Text>(range.start.node);
  const Element* parent = text ? text->parent_element() : nullptr;
  if (!parent || range.end.node != range.start.node) return std::nullopt;
  const std::u16string_view piece =
      std::u16string_view(text->data()).substr(range.start.offset, range.end.offset - range.start.offset);
  if (std::ranges::any_of(piece, is_space)) return std::nullopt;
  const ComputedValues& values = style::style_of(document_of(*text)).values(*parent);
  if (values.visibility != Visibility::Visible || values.text_transform != style::TextTransform::None)
    return std::nullopt;
  return std::u16string(piece);
}

}  // namespace

std::u16string inner_text(const Element& element) {
  StyleEngine& engine = style::style_of(document_of(element));
  if (!is_rendered(engine, element)) return text_content(element);
  return Collector(engine, element, begins_at_line_start(engine, element)).run();
}

std::u16string inner_text(const Range& range) {
  if (!range.start || range.collapsed()) return {};
  if (auto piece = piece_of_text(range)) return *std::move(piece);
  const Node* ancestor = common_ancestor(*range.start.node, *range.end.node);
  const Element* root = as<Element>(ancestor);
  if (!root) root = ancestor->parent_element();
  if (!root) root = first_child_element(*ancestor);
  if (!root) return {};
  StyleEngine& engine = style::style_of(document_of(*root));
  Collector collector(engine, *root, begins_at_line_start(engine, *root));
  collector.limit_to(range);
  return collector.run();
}

Ref<DocumentFragment> lines_of(Document& document, std::u16string_view text) {
  Ref<DocumentFragment> content = document.create_fragment();
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of(u"\r\n", at), text.size());
    if (end > at) Builder::insert(*content, document.create_text(std::u16string(text.substr(at, end - at))));
    if (end == text.size()) break;
    Builder::insert(*content, document.create_element(Tag::Br));
    at = text.substr(end, 2) == u"\r\n" ? end + 2 : end + 1;
  }
  return content;
}

void set_inner_text(Element& element, std::u16string_view text) {
  replace_children(element, lines_of(document_of(element), text));
}

}  // namespace tvx::dom
