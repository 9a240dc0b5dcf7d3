#include "tvx/browser/input/document_input.h"

#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/browser/input/display.h"
#include "tvx/browser/input/drags.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/positions.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/gestures/line_moves.h"

namespace tvx::browser {

using dom::Boundary;

namespace {

/// With the patch that the message names.
template <class Input>
Input with_patch(Input input, PatchNumber seen) {
  input.seen = seen;
  return input;
}

bool is_line_move(ViewMove move) { return move == ViewMove::LineUp || move == ViewMove::LineDown; }

editing::Direction direction_of(ViewMove move) {
  return move == ViewMove::LineUp ? editing::Direction::Backward : editing::Direction::Forward;
}

/// Units that an input method means to replace, counted from the caret or from what it composes.
void select_around_caret(HTMLDocument& document, std::int32_t from, std::uint32_t length) {
  document.compose({}, 0);
  const Boundary caret = document.editor().selection().focus();
  const auto* text = dom::as<dom::Text>(caret.node);
  const std::int64_t start = static_cast<std::int64_t>(caret.offset) + from;
  if (!text || start < 0 || static_cast<Offset>(start) + length > text->length()) return;
  const auto at = static_cast<Offset>(start);
  document.select([&](editing::Selection& selection) {
    selection.set({caret.node, at}, {caret.node, at + length});
  });
}

}  // namespace

DocumentInput::DocumentInput(Display& display, platform::MessageLoop& loop)
    : display_(display), drags_(display), mouse_(display, drags_), queue_(loop, *this) {}

void DocumentInput::show(std::shared_ptr<HTMLDocument> document) {
  queue_.clear();
  changes_.clear();
  if (document_) document_->tree().remove_observer(*this);
  document_ = std::move(document);
  if (document_) document_->tree().add_observer(*this);
  drags_.show(document_);
  mouse_.show(document_);
  drop_.reset();
}

void DocumentInput::receive(const ViewMessage& message) {
  if (const auto* key = std::get_if<ViewKey>(&message.what)) {
    queue_.push(*key);
  } else if (const auto* text = std::get_if<ViewText>(&message.what)) {
    queue_.push(*text);
  } else if (const auto* ticket = std::get_if<ViewTicket>(&message.what)) {
    queue_.push(*ticket);
  } else if (const auto* mouse = std::get_if<ViewMouse>(&message.what)) {
    const ViewMouse report = with_patch(*mouse, message.seen);
    if (!queue_.reported(report)) mouse_.missed(report);
  } else if (const auto* select = std::get_if<ViewSelect>(&message.what)) {
    queue_.push(with_patch(*select, message.seen));
  } else if (const auto* drag = std::get_if<ViewDrag>(&message.what)) {
    queue_.push(with_patch(*drag, message.seen));
  } else if (const auto* drop = std::get_if<ViewDrop>(&message.what)) {
    queue_.push(*drop);
  } else if (const auto* answer = std::get_if<ViewAnswer>(&message.what)) {
    queue_.answer(with_patch(*answer, message.seen));
  }
}

void DocumentInput::mutated(const dom::Mutation& mutation) {
  if (queue_.handling() && mutation.kind == dom::MutationKind::Step) changes_.note(mutation);
}

// The one door for what the user changes: all input comes through the queue, and this is after each item.
void DocumentInput::handled() {
  const bool changed = changes_.any();
  changes_.clear();
  if (const auto document = document_; document && changed) document->tell_user_change();
}

// --- questions ---

/// One question is open at most; what was asked before is no longer waited for.
QuestionId DocumentInput::ask(ViewQuestion question) {
  mouse_.forget();
  extend_ = question.extend;
  return display_.ask(std::move(question));
}

QuestionId DocumentInput::ask_for_ping() { return display_.ask({.type = ViewQuestion::Type::Ping}); }

std::optional<QuestionId> DocumentInput::handle_answer(const ViewAnswer* answer) {
  const auto document = document_;
  if (!document) return {};
  if (mouse_.asks()) {
    const auto question = mouse_.answer(answer);
    if (!question) changes_.clear();  // as in handle_mouse()
    return question;
  }
  if (const auto drop = std::exchange(drop_, {})) {
    deliver_drop(*drop, answer ? answer->place : std::nullopt);
    return {};
  }
  if (!answer) return {};
  const auto place = boundary_seen(display_.mirror(), answer->place, answer->seen);
  if (place && is_line_move(move_)) {
    // From past an island there may be no further line: then there is none from the caret either.
    const bool none = islands_passed_ > 0 && answer->place == asked_from_;
    if (const auto further = handle_line(none ? document->editor().selection().focus() : *place))
      return further;
  } else if (place) {
    document->move_caret_to(*place, extend_);
  }
  display_.reveal(true);
  display_.schedule_flush();
  return {};
}

/// The view has told where the next line is. The caret goes there, or to where it can stand on the way.
std::optional<QuestionId> DocumentInput::handle_line(const Boundary& line) {
  constexpr int most_islands = 100;
  const Boundary from = document_->editor().selection().focus();
  const editing::Direction direction = direction_of(move_);
  Boundary to = line;
  if (const auto passed = editing::past_island(to, direction)) {
    if (!passed->in_line && ++islands_passed_ <= most_islands)
      if (const auto question = ask_for_move(move_, passed->place)) return question;
    to = passed->in_line ? passed->place : from;
  }
  document_->move_caret_to(editing::gap_between_lines(from, to, direction).value_or(to), extend_);
  return {};
}

// --- keys and text ---

std::optional<QuestionId> DocumentInput::handle_key(const ViewKey& key) {
  const auto document = document_;
  if (!document) return {};
  if (key.down && key.key.key == u"Escape" && drags_.cancel()) return {};
  display_.reveal(true);
  if (!key.down) {
    document->key_up(key.key);
    return {};
  }
  const KeyOutcome outcome = document->key_down(key.key);
  if (!outcome.ask || document != document_ || !display_.answers()) return {};
  drop_.reset();
  extend_ = outcome.extend;
  islands_passed_ = 0;
  return ask_for_move(*outcome.ask, document->editor().selection().focus());
}

std::optional<QuestionId> DocumentInput::ask_for_move(ViewMove move, const Boundary& from) {
  display_.flush();  // the view is asked about the tree as it is now
  const auto place = view_place(display_.mirror(), from);
  if (!place) return {};
  move_ = move;
  asked_from_ = *place;
  return ask({.type = ViewQuestion::Type::Move, .move = move, .from = *place, .extend = extend_});
}

void DocumentInput::handle_text(const ViewText& input) {
  const auto document = document_;
  if (!document) return;
  display_.reveal(true);
  display_.composing(!input.composing.empty());
  if (input.replaced_length > 0) select_around_caret(*document, input.replaced_from, input.replaced_length);
  if (!input.text.empty()) document->input_text(input.text);
  if (document == document_) document->compose(input.composing, input.cursor);
  display_.schedule_flush();
}

// --- the mouse ---

std::optional<QuestionId> DocumentInput::handle_mouse(const ViewTicket&,
                                                      const std::vector<ViewMouse>& reports) {
  if (!document_ || reports.empty()) return {};
  drop_.reset();
  const auto question = mouse_.handle(reports);
  // A press edits nothing; what a menu did that it opened has been reported.
  if (!question) changes_.clear();
  return question;
}

void DocumentInput::handle_select(const ViewSelect& select) {
  if (!document_) return;
  const Mirror& mirror = display_.mirror();
  const auto anchor = boundary_seen(mirror, select.anchor, select.seen),
             focus = boundary_seen(mirror, select.focus, select.seen);
  if (!anchor || !focus) return;
  display_.selection_drawn(select.anchor, select.focus);
  MouseInput input;
  input.anchor = anchor;
  input.place = focus;
  document_->mouse_select(input);
  display_.reveal(false);
}

void DocumentInput::handle_drag(const ViewDrag& drag) {
  if (!document_) return;
  mouse_.drag_follows();
  drags_.handle(drag);
}

// --- drops ---

std::optional<QuestionId> DocumentInput::handle_drop(const ViewDrop& drop) {
  if (!document_ || !display_.answers() || !display_.editable()) return {};
  display_.flush();
  drop_ = drop;
  return ask({.type = ViewQuestion::Type::Hit, .x = drop.x, .y = drop.y});
}

/// Where the view doesn't say in time what is under the mouse, the last known caret takes it.
void DocumentInput::deliver_drop(const ViewDrop& drop, const std::optional<ViewPlace>& at) {
  const auto document = document_;
  if (!may_drop(drop) || document != document_) return;
  const Boundary place =
      nearest_boundary(display_.mirror(), at).value_or(document->editor().selection().focus());
  if (drop.way == ViewDrop::Way::MiddlePress)
    paste_at(*document, place, drop.data);
  else
    drop_data(*document, place, drop.data);
  display_.schedule_flush();
}

bool DocumentInput::may_drop(const ViewDrop& drop) {
  if (drop.way == ViewDrop::Way::MiddlePress) return true;
  MouseInput input;
  input.x = drop.x;
  input.y = drop.y;
  return document_->drag_start(input);
}

}  // namespace tvx::browser
