#include "tvx/browser/input/input_queue.h"

#include <algorithm>
#include <utility>

#include "tvx/base/interruption.h"

namespace tvx::browser {
namespace {

ViewTicket::Type ticket_type(ViewMouse::Type type) {
  return type == ViewMouse::Type::Press ? ViewTicket::Type::Press : ViewTicket::Type::Release;
}

/// The page may round a point that the window system gave in fractions.
bool is_near(const ViewTicket& ticket, const ViewMouse& mouse) {
  return std::abs(ticket.x - mouse.x) <= 2 && std::abs(ticket.y - mouse.y) <= 2;
}

}  // namespace

InputQueue::InputQueue(platform::MessageLoop& loop, InputHandler& handler) : loop_(loop), handler_(handler) {}

InputQueue::~InputQueue() {
  *alive_ = false;
  loop_.cancel(timer_);
}

void InputQueue::push(ViewKey key) { push_item({std::move(key)}); }
void InputQueue::push(ViewText text) { push_item({std::move(text)}); }
void InputQueue::push(ViewTicket ticket) { push_item({ticket, true, loop_.now() + deadline}); }

void InputQueue::push(ViewSelect selection) {
  heard();
  push_before_release({selection});
}
void InputQueue::push(ViewDrag drag) {
  heard();
  push_before_release({drag});
}
void InputQueue::push(ViewDrop drop) { push_item({std::move(drop)}); }

/// What a drag made belongs before the release that ended the drag, also if that was heard of first.
void InputQueue::push_before_release(Item item) {
  const auto is_open_release = [](const Item& other) {
    const auto* ticket = std::get_if<ViewTicket>(&other.input);
    return ticket && other.waits && ticket->type == ViewTicket::Type::Release;
  };
  items_.insert(std::find_if(items_.begin(), items_.end(), is_open_release), std::move(item));
  schedule();
}

void InputQueue::push_item(Item item) {
  items_.push_back(std::move(item));
  schedule();
}

bool InputQueue::reported(const ViewMouse& mouse) {
  heard();
  const bool follows = mouse.type == ViewMouse::Type::Click || mouse.type == ViewMouse::Type::DoubleClick;
  const auto fits = [&](const Item& item) {
    const auto* ticket = std::get_if<ViewTicket>(&item.input);
    if (!ticket || ticket->type != ticket_type(mouse.type)) return false;
    if (follows) return !item.waits && !item.reports.empty();
    return item.waits && ticket->button == mouse.button && is_near(*ticket, mouse);
  };
  const auto found = std::find_if(items_.begin(), items_.end(), fits);
  // Too late, or of a press that never came through here: the caret has moved on.
  if (found == items_.end()) return false;
  found->waits = false;
  found->reports.push_back(mouse);
  schedule();
  return true;
}

void InputQueue::answer(const ViewAnswer& answer) {
  heard();
  if (ping_ == answer.id && !items_.empty()) {
    // What it had to report it has reported by now.
    ping_.reset();
    items_.front().waits = false;
    schedule();
  }
  if (question_ != answer.id) return;
  finish_question(&answer);
}

void InputQueue::end_waiting() {
  ping_.reset();
  for (Item& item : items_) item.waits = false;
  if (question_) finish_question(nullptr);
  schedule();
}

void InputQueue::clear() {
  items_.clear();
  ping_.reset();
  silent_ = false;
  question_.reset();
}

void InputQueue::schedule() {
  if (std::exchange(scheduled_, true)) return;
  loop_.post([this, alive = alive_] {
    if (!*alive) return;
    scheduled_ = false;
    run();
  });
}

void InputQueue::run() {
  while (!running_ && !waiting() && !items_.empty()) {
    const Item item = std::move(items_.front());
    items_.pop_front();
    ping_.reset();
    running_ = true;
    const auto alive = alive_;
    struct Done {
      InputQueue& queue;
      std::shared_ptr<bool> alive;
      ~Done() {
        if (!*alive) return;
        queue.running_ = false;
        queue.schedule();  // also when an exception of a handler passes
      }
    } done{*this, alive};
    std::optional<QuestionId> question;
    act([&] { question = handle(item); });
    if (!*alive) return;
    begin_question(question);
  }
}

void InputQueue::act(const std::function<void()>& what) {
  const auto alive = alive_;
  const bool done = run_interruptible(what);
  if (*alive) done ? handler_.handled() : handler_.stopped();
}

/// Whether the first item, or the question before it, still has time to be answered; a timer then comes
/// back here.
bool InputQueue::waiting() {
  const std::int64_t now = loop_.now();
  if (question_) {
    if (now < question_until_) {
      wait_until(question_until_);
      return true;
    }
    silent_ = true;
    finish_question(nullptr);
    return true;  // what the handler asked anew, or the next turn
  }
  if (items_.empty() || !items_.front().waits) return false;
  const Item& first = items_.front();
  if (now >= first.until) return may_still_report();
  wait_until(first.until);
  return true;
}

/// The first item's deadline is over.
bool InputQueue::may_still_report() {
  if (silent_) return false;
  if (!ping_) {
    ping_ = handler_.ask_for_ping();
    ping_until_ = loop_.now() + patience - deadline;
  }
  if (loop_.now() >= ping_until_) {
    silent_ = true;
    return false;
  }
  wait_until(ping_until_);
  return true;
}

void InputQueue::wait_until(std::int64_t time) {
  loop_.cancel(timer_);
  timer_ = loop_.post_delayed(time - loop_.now(), [this, alive = alive_] {
    if (*alive) schedule();
  });
}

std::optional<QuestionId> InputQueue::handle(const Item& item) {
  if (const auto* key = std::get_if<ViewKey>(&item.input)) return handler_.handle_key(*key);
  if (const auto* ticket = std::get_if<ViewTicket>(&item.input)) {
    return handler_.handle_mouse(*ticket, item.reports);
  }
  if (const auto* drop = std::get_if<ViewDrop>(&item.input)) return handler_.handle_drop(*drop);
  if (const auto* text = std::get_if<ViewText>(&item.input)) {
    handler_.handle_text(*text);
  } else if (const auto* drag = std::get_if<ViewDrag>(&item.input)) {
    handler_.handle_drag(*drag);
  } else {
    handler_.handle_select(std::get<ViewSelect>(item.input));
  }
  return {};
}

void InputQueue::begin_question(std::optional<QuestionId> question) {
  question_ = question;
  question_until_ = loop_.now() + (silent_ ? deadline : patience);
  if (question_) wait_until(question_until_);
}

void InputQueue::finish_question(const ViewAnswer* answer) {
  question_.reset();
  if (running_) return;  // asked by a handler that is still inside a loop of its own: it asked too early
  running_ = true;
  const auto alive = alive_;
  std::optional<QuestionId> again;
  act([&] { again = handler_.handle_answer(answer); });
  if (!*alive) return;
  running_ = false;
  begin_question(again);
  schedule();
}

}  // namespace tvx::browser
