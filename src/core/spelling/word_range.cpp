#include "tvx/core/spelling/word_range.h"

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/dom/inner_text.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/editing/ranges/markup_pointer.h"
#include "tvx/editing/walk/caret.h"
#include "tvx/editing/walk/content_walk.h"

namespace tvx::core {

using dom::Boundary;
using editing::Content;
using editing::ContentKind;
using editing::ContentWalk;
using editing::Direction;
using editing::ElementAdjacency;
using editing::MarkupPointer;
using editing::MoveUnitAction;

namespace {

bool comes_near_length(const dom::Element& body, std::int32_t number, std::int32_t step) {
  const auto length = static_cast<std::int64_t>(dom::inner_text(body).size());
  return step + std::int64_t(number) > length - 1;
}

dom::Range between(const Boundary& first, const Boundary& second) {
  return dom::compare(second, first) < 0 ? dom::Range{second, first} : dom::Range{first, second};
}

dom::Range word_by_pointers(browser::HTMLDocument& document, std::int32_t wordIndex, std::int32_t step) {
  if (!document.body()) throw RuntimeError(errors::object_not_set, u"The document has no body");
  dom::Element& body = *document.body();
  editing::empty_selection(document.editor());
  MarkupPointer start(document.tree()), end(document.tree());
  start.MoveToContainer(document.tree(), true);
  end.MoveToContainer(document.tree(), true);
  start.MoveAdjacentToElement(body, ElementAdjacency::AfterBegin);
  end.MoveAdjacentToElement(body, ElementAdjacency::AfterBegin);
  for (std::int32_t passed = 0; passed < wordIndex; ++passed) {
    start.MoveUnit(MoveUnitAction::NextWordBegin);
    end.MoveUnit(MoveUnitAction::NextWordEnd);
  }
  if (comes_near_length(body, wordIndex, step)) {
    end.MoveAdjacentToElement(body, ElementAdjacency::BeforeEnd);
    if (!end.CurrentScope()) throw RuntimeError(errors::invalid_call, u"The text is at its end");
  }
  start.SetGravity(editing::PointerGravity::Right);
  editing::MoveToCaretPlace(start);
  document.editor().selection().collapse(start.place());
  return between(start.place(), end.place());
}

}  // namespace

std::optional<dom::Range> GetWordRange(browser::HTMLDocument& document, std::int32_t wordIndex,
                                       std::int32_t step) {
  std::optional<dom::Range> range;
  attempt([&] { range = word_by_pointers(document, wordIndex, step); });
  return range;
}

WordRanges::WordRanges(browser::HTMLDocument& document) : document_(document), index_(document.tree()) {}

// Each word is of one unit at least: with two more after this one, the text is longer than the number says,
// and its length needn't be known.
bool WordRanges::is_near_end(std::int32_t number, const Boundary& end) {
  ContentWalk walk(end, Direction::Forward);
  std::size_t more = 0;
  for (Content met = walk.next(); met.kind != ContentKind::End; met = walk.next()) {
    if (met.kind != ContentKind::Text) continue;
    for (Offset at = met.from; at < met.to; ++at)
      if (!is_ascii_space(met.text().data()[at]) && ++more == 2) return false;
  }
  return comes_near_length(*document_.body(), number, 1);
}

std::optional<dom::Range> WordRanges::word(std::int32_t number) {
  dom::Element* body = document_.body();
  if (!body) return std::nullopt;
  dom::Range range{{body, 0}, {body, 0}};
  if (number > 0) {
    const auto word = index_.word(static_cast<std::size_t>(number));
    if (!word) return std::nullopt;
    range = *word;
  }
  if (is_near_end(number, range.end)) range.end = {body, dom::length_of(*body)};
  return between(editing::normalized_caret_place(range.start), range.end);
}

// --- the sentence ---

namespace {

constexpr std::size_t longest_side = 160;

bool ends_sentence(std::u16string_view text, std::size_t at) {
  static constexpr std::u16string_view marks = u".!?\u2026\u3002\uFF01\uFF1F\u061F";
  if (marks.find(text[at]) == marks.npos) return false;
  return text[at] > 0x2FFF || at + 1 == text.size() || text[at + 1] == u' ' || text[at + 1] == u'\n';
}

/// A line's text on one side of a position, each run of white space a blank.
std::u16string side(const Boundary& from, Direction direction) {
  const bool on = direction == Direction::Forward;
  std::u16string text;
  ContentWalk walk(from, direction);
  for (Content met = walk.next(); met.kind == ContentKind::Text && text.size() < longest_side;
       met = walk.next()) {
    const std::u16string& data = met.text().data();
    for (Offset passed = 0; passed < met.to - met.from && text.size() < longest_side; ++passed) {
      char16_t unit = data[on ? met.from + passed : met.to - 1 - passed];
      if (is_ascii_space(unit)) unit = u' ';
      if (unit != u' ' || text.empty() || text.back() != u' ') text += unit;
    }
  }
  if (!on) text = {text.rbegin(), text.rend()};
  return text;
}

}  // namespace

spelling::Sentence sentence_around(const dom::Range& word) {
  std::u16string before = side(word.start, Direction::Backward);
  std::u16string after = side(word.end, Direction::Forward);
  for (std::size_t at = before.size(); at-- > 0;) {
    if (!ends_sentence(before, at)) continue;
    before.erase(0, at + 1);
    break;
  }
  for (std::size_t at = 0; at < after.size(); ++at) {
    if (!ends_sentence(after, at)) continue;
    after.erase(at + 1);
    break;
  }
  before.erase(0, std::min(before.find_first_not_of(u' '), before.size()));
  after.erase(after.find_last_not_of(u' ') + 1);
  spelling::Sentence sentence;
  const std::u16string middle = dom::inner_text(word);
  sentence.from = before.size();
  sentence.length = middle.size();
  sentence.text = before + middle + after;
  return sentence;
}

}  // namespace tvx::core
