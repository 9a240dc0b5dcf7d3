#include "tvx/core/spelling/spelling_marks.h"

#include <unicode/uchar.h>

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/spelling/speller.h"
#include "tvx/core/spelling/word_surroundings.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/ranges/text_range.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/word_bounds.h"
#include "tvx/platform/message_loop.h"
#include "tvx/spelling/spell.h"
#include "tvx/spelling/word_list.h"
#include "tvx/spelling/word_rules.h"

namespace tvx::core {

using browser::MarkedStretch;
using dom::Boundary;
using dom::Mutation;
using editing::Content;
using editing::ContentKind;
using editing::ContentWalk;
using editing::Direction;

namespace {

constexpr std::chrono::milliseconds budget_of_a_turn{5};
/// Between two turns while the document is still coming into the view, which waits for this loop meanwhile.
constexpr std::int64_t pause_milliseconds = 45;
/// Until the dictionary is read, where a document has only begun to come: the page and its caret come first.
constexpr std::int64_t start_milliseconds = 250;
/// With more places than these the whole document is checked instead.
constexpr std::size_t most_regions = 32;
constexpr std::size_t most_offered = 5;

/// The nearest position on that side that no word goes over: beside white space, or at the line's edge.
Boundary beside_words(Boundary from, Direction direction) {
  const bool on = direction == Direction::Forward;
  Boundary place = from;
  ContentWalk walk(from, direction);
  for (Content met = walk.next(); met.kind == ContentKind::Text; met = walk.next()) {
    const std::u16string& data = met.text().data();
    for (Offset passed = 0; passed < met.to - met.from; ++passed) {
      const Offset at = on ? met.from + passed : met.to - 1 - passed;
      if (u_isUWhiteSpace(data[at])) return {met.node, on ? at : at + 1};
    }
    place = {met.node, on ? met.to : met.from};
  }
  return place;
}

/// The texts that a word stands in, each with its stretch.
std::vector<std::pair<dom::Text*, MarkedStretch>> pieces_of(const dom::Range& word) {
  auto* first = dom::as<dom::Text>(word.start.node);
  if (first && first == word.end.node) return {{first, {word.start.offset, word.end.offset}}};
  std::vector<std::pair<dom::Text*, MarkedStretch>> pieces;
  ContentWalk walk(word.start, Direction::Forward);
  for (Content met = walk.next(); met.kind == ContentKind::Text; met = walk.next()) {
    const bool last = met.node == word.end.node;
    pieces.push_back({&met.text(), {met.from, last ? word.end.offset : met.to}});
    if (last) break;
  }
  return pieces;
}

std::u16string text_of(const dom::Range& word) {
  std::u16string text;
  for (const auto& [node, piece] : pieces_of(word))
    text.append(node->data(), piece.from, piece.to - piece.from);
  return text;
}

bool in_document(const dom::Node& node, const dom::Document& document) {
  return &dom::root_of(node) == &document;
}

}  // namespace

SpellingMarks::SpellingMarks(Context& context, Speller& speller) : Part(context), speller_(speller) {}

SpellingMarks::~SpellingMarks() {
  *alive_ = false;
  forget_document();
  if (application_) attempt([&] { application_->Quit(false); });
}

bool SpellingMarks::wanted() const {
  return run_time() && !context_.terminated() && properties_.CheckSpellingAsYouType;
}

void SpellingMarks::apply() {
  const std::shared_ptr<browser::HTMLDocument> document = wanted() ? DOM() : nullptr;
  if (document == document_) return;
  forget_document();
  if (document) follow(document);
}

bool SpellingMarks::start_application() {
  if (application_) return true;
  // Where there is no speller no word is wrong.
  attempt([&] {
    application_ = speller_.application()();
    application_->set_Visible(false);
    if (application_->Documents_count() == 0) application_->Documents_Add();
  });
  return application_ != nullptr;
}

void SpellingMarks::follow(const std::shared_ptr<browser::HTMLDocument>& document) {
  document_ = document;
  document_->tree().add_observer(*this);
  document_->editor().selection().add_observer(*this);
  note_all();
}

void SpellingMarks::forget_document() {
  if (!document_) return;
  document_->tree().remove_observer(*this);
  document_->editor().selection().remove_observer(*this);
  if (auto* display = dynamic_cast<browser::MarkDisplay*>(document_->viewport()))
    display->clear_marks(browser::MarkKind::WrongWord);
  regions_.clear();
  held_.clear();
  marks_.clear();
  changed_.clear();
  document_.reset();
}

void SpellingMarks::check_again() {
  if (document_) note_all();
}

std::vector<MarkedStretch> SpellingMarks::marks_of(const dom::Text& text) const {
  const auto entry = marks_.find(&text);
  return entry == marks_.end() ? Stretches() : entry->second.stretches;
}

// --- what is to be checked ---

void SpellingMarks::note(const dom::Range& range, bool typed) {
  // In the midst of a change, where nodes are moved and ranges may be put aside, none goes: where there are
  // too many, one more at their end has all.
  if (regions_.size() < most_regions)
    regions_.push_front(std::make_unique<Region>(document_->tree(), range, typed));
  else if (dom::Element* body = document_->body();
           body && (regions_.size() == most_regions || regions_.back()->begun))
    regions_.push_back(std::make_unique<Region>(document_->tree(),
                                                dom::Range{{body, 0}, {body, dom::length_of(*body)}}, false));
  schedule();
}

void SpellingMarks::note_all() {
  dom::Element* body = document_->body();
  if (!body) return;
  const dom::Range all{{body, 0}, {body, dom::length_of(*body)}};
  regions_.clear();
  held_.clear();
  regions_.push_back(std::make_unique<Region>(document_->tree(), all, false));
  language_ = speller_.language();
  schedule();
}

void SpellingMarks::mutated(const Mutation& mutation) {
  if (mutation.kind == dom::MutationKind::Overlay) return;
  dom::Document& tree = document_->tree();
  if (mutation.type == Mutation::Type::Remove) {
    drop_marks_below(*mutation.node);
    if (!in_document(*mutation.parent, tree)) return;
    const Boundary gap = mutation.before && mutation.before->parent()
                             ? dom::before(*mutation.before)
                             : Boundary{mutation.parent.get(), dom::length_of(*mutation.parent)};
    return note({gap, gap}, true);
  }
  if (!in_document(*mutation.node, tree)) return;
  if (mutation.type == Mutation::Type::ReplaceData) {
    if (!mutation.node->is_text()) return;
    shift_marks(mutation);
    return note({{mutation.node.get(), mutation.offset},
                 {mutation.node.get(), mutation.offset + mutation.inserted.size()}},
                mutation.kind == dom::MutationKind::Step);
  }
  const bool moves_words = mutation.type == Mutation::Type::Insert || mutation.attribute.text() == u"lang" ||
                           mutation.attribute.text() == u"spellcheck";
  if (!moves_words || mutation.node->is(dom::Tag::Body)) return moves_words ? note_all() : void();
  note({{mutation.node.get(), 0}, {mutation.node.get(), dom::length_of(*mutation.node)}},
       mutation.type == Mutation::Type::Insert && mutation.kind == dom::MutationKind::Step);
}

void SpellingMarks::selection_changed() {
  for (std::size_t at = held_.size(); at-- > 0;) {
    const dom::Range word = held_[at]->range();
    if (is_being_typed(word)) continue;
    held_.erase(held_.begin() + static_cast<std::ptrdiff_t>(at));
    if (word.start && in_document(*word.start.node, document_->tree())) note(word, false);
  }
}

bool SpellingMarks::is_being_typed(const dom::Range& word) const {
  const Boundary caret = document_->editor().selection().focus();
  if (!caret || !word.start || &dom::root_of(*caret.node) != &dom::root_of(*word.start.node)) return false;
  if (dom::compare(word.start, caret) > 0) return false;
  if (dom::compare(caret, word.end) <= 0) return true;
  // It may have grown.
  const auto present = editing::word_at(caret);
  return present && present->start == word.start;
}

// --- turns of the loop ---

void SpellingMarks::schedule() {
  if (std::exchange(scheduled_, true)) return;
  const auto task = [this, alive = alive_] {
    if (*alive) turn();
  };
  const auto* display = dynamic_cast<browser::MarkDisplay*>(document_->viewport());
  const bool more = std::exchange(more_waits_, false);
  if (display && display->is_busy() && (more || !application_))
    surroundings().loop.post_delayed(application_ ? pause_milliseconds : start_milliseconds, task);
  else
    surroundings().loop.post(task);
}

void SpellingMarks::turn() {
  scheduled_ = false;
  if (!document_) return;
  const KeepAlive alive(context_);
  const std::shared_ptr<bool> self_at_start = alive_;
  const bool started = start_application();
  if (!*self_at_start || !document_) return;
  if (!started) return forget_document();
  Turn turn{Clock::now() + budget_of_a_turn};
  while (!regions_.empty()) {
    // Checking may tell the host of a broken dictionary, and the host may do anything.
    const std::shared_ptr<bool> self = alive_;
    Region& region = *regions_.front();
    const bool done = check(region, turn);
    if (!*self || !document_) return;
    if (!done) break;
    if (!regions_.empty() && regions_.front().get() == &region) regions_.pop_front();
  }
  show_changed();
  if (regions_.empty()) return;
  more_waits_ = true;
  schedule();
}

bool SpellingMarks::check(Region& region, Turn& turn) {
  const dom::Range noted = region.place.range();
  if (!noted.start || !in_document(*noted.start.node, document_->tree())) return true;
  if (!region.begun) {
    region.begun = true;
    region.place.set(
        {beside_words(noted.start, Direction::Backward), beside_words(noted.end, Direction::Forward)});
  }
  const dom::Range place = region.place.range();
  editing::WordReader reader(place.start);
  for (;;) {
    const auto word = reader.next();
    if (!word || dom::compare(word->start, place.end) >= 0) return true;
    if (reader.given_since() == 1 && turn.any && Clock::now() > turn.end) {
      region.place.set({reader.checkpoint(), place.end});
      return false;
    }
    judge(region, *word);
    turn.any = true;
  }
}

void SpellingMarks::judge(Region& region, const dom::Range& word) {
  // Old marks go where the walk comes by, so that those ahead stay until then.
  for (const auto& [text, piece] : pieces_of(word)) {
    if (region.entered == text) continue;
    region.entered = text;
    const dom::Range place = region.place.range();
    const Offset from = place.start.node == text ? place.start.offset : 0;
    drop_marks(*text, from, place.end.node == text ? place.end.offset : text->length());
  }
  if (region.typed && is_being_typed(word)) return hold(word);
  if (is_wrong(word, text_of(word))) add_mark(word);
}

void SpellingMarks::hold(const dom::Range& word) {
  std::erase_if(held_, [&](const auto& shorter) { return shorter->start() == word.start; });
  held_.push_back(std::make_unique<dom::LiveRange>(document_->tree(), word));
}

bool SpellingMarks::is_wrong(const dom::Range& word, const std::u16string& text) {
  if (!spelling::is_asked(text) || ignored_.contains(text) || is_in_address(word)) return false;
  const auto is_right = [this](const std::u16string& form) {
    const spelling::SpellingApplication::Argument arguments[] = {
        form, std::u16string(), {}, {}, properties_.CustomDictionaryFilename};
    return application_->CheckSpelling(arguments);
  };
  bool right = true;
  attempt([&] {
    application_->set_language(Speller::language_of(*word.start.node, language_));
    right = is_right(text) || is_right_with_hyphen(word, is_right);
  });
  return !right;
}

// --- the marks ---

void SpellingMarks::drop_marks(const dom::Text& text, Offset from, Offset to) {
  const auto entry = marks_.find(&text);
  if (entry == marks_.end()) return;
  Stretches& stretches = entry->second.stretches;
  const auto gone = std::erase_if(
      stretches, [&](const MarkedStretch& stretch) { return stretch.from <= to && stretch.to >= from; });
  if (gone == 0) return;
  changed_.emplace(&text, entry->second.text);
  if (stretches.empty()) marks_.erase(entry);
}

void SpellingMarks::drop_marks_below(dom::Node& top) {
  if (marks_.empty()) return;
  for (dom::Node* node = &top; node;) {
    if (const auto* text = dom::as<dom::Text>(node)) drop_marks(*text, 0, text->length());
    dom::Node* next = node->first_child();
    while (!next && node != &top) {
      next = node->next_sibling();
      if (!next) node = node->parent();
    }
    node = next;
  }
}

void SpellingMarks::shift_marks(const Mutation& mutation) {
  const auto& text = static_cast<const dom::Text&>(*mutation.node);
  const auto entry = marks_.find(&text);
  if (entry == marks_.end()) return;
  const Offset from = mutation.offset, to = from + mutation.removed.size();
  drop_marks(text, from, to);
  const auto left = marks_.find(&text);
  if (left == marks_.end()) return;
  for (MarkedStretch& stretch : left->second.stretches) {
    if (stretch.from < to) continue;
    stretch.from = stretch.from - mutation.removed.size() + mutation.inserted.size();
    stretch.to = stretch.to - mutation.removed.size() + mutation.inserted.size();
  }
}

void SpellingMarks::add_mark(const dom::Range& word) {
  for (const auto& [text, piece] : pieces_of(word)) {
    Entry& entry = marks_.try_emplace(text, Entry{text, {}}).first->second;
    const auto after = std::ranges::upper_bound(entry.stretches, piece.from, {}, &MarkedStretch::from);
    if (after != entry.stretches.begin() && *std::prev(after) == piece) continue;
    entry.stretches.insert(after, piece);
    changed_.emplace(text, text);
  }
}

void SpellingMarks::show_changed() {
  auto* display = dynamic_cast<browser::MarkDisplay*>(document_->viewport());
  if (display != display_) {
    // Somebody else shows the document now.
    display_ = display;
    for (const auto& [text, entry] : marks_) changed_.emplace(text, entry.text);
  }
  if (display)
    for (const auto& [text, held] : changed_)
      display->mark(browser::MarkKind::WrongWord, *text, marks_of(*text));
  changed_.clear();
}

// --- the word at the caret ---

std::optional<SpellingMarks::MarkedWord> SpellingMarks::word_at_caret() const {
  if (!document_) return std::nullopt;
  const Boundary caret = document_->editor().selection().focus();
  if (!caret) return std::nullopt;
  const auto word = editing::word_at(caret);
  const auto* first = word ? dom::as<dom::Text>(word->start.node) : nullptr;
  if (!first) return std::nullopt;
  const Stretches stretches = marks_of(*first);
  const bool marked =
      std::ranges::find(stretches, word->start.offset, &MarkedStretch::from) != stretches.end();
  return marked ? std::optional(MarkedWord{*word, text_of(*word)}) : std::nullopt;
}

std::vector<std::u16string> SpellingMarks::suggestions(const MarkedWord& word) {
  std::vector<std::u16string> all;
  attempt([&] {
    application_->set_language(Speller::language_of(*word.range.start.node, language_));
    all = application_->GetSpellingSuggestions(word.text);
  });
  if (all.size() > most_offered) all.resize(most_offered);
  return all;
}

void SpellingMarks::change_word(const std::u16string& text) {
  const auto word = word_at_caret();
  if (!word) return;
  editing::TextRange range(document_->editor(), word->range);
  range.follow_with_selection();
  const dom::UndoStep step(document_->tree().journal(), u"Spelling");
  range.set_text(text);
  mark_changed();
}

void SpellingMarks::add_word() {
  const auto word = word_at_caret();
  if (word && spelling::add_to_user_words(word->text)) check_again();
}

void SpellingMarks::ignore_word() {
  const auto word = word_at_caret();
  if (!word) return;
  ignored_.insert(word->text);
  check_again();
}

}  // namespace tvx::core
