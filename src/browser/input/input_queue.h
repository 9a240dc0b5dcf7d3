#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "tvx/browser/view/messages.h"
#include "tvx/platform/message_loop.h"

namespace tvx::browser {

/// Who acts on input, one item after the other. A handler that needs the view's word asks it and returns
/// the question: later input then waits for the answer.
class InputHandler {
 public:
  virtual ~InputHandler() = default;
  virtual std::optional<QuestionId> handle_key(const ViewKey& key) = 0;
  virtual void handle_text(const ViewText& text) = 0;
  /// A mouse event with what the page reported of it; nothing if it reported nothing in time.
  virtual std::optional<QuestionId> handle_mouse(const ViewTicket& ticket,
                                                 const std::vector<ViewMouse>& reports) = 0;
  virtual void handle_select(const ViewSelect& selection) = 0;
  virtual void handle_drag(const ViewDrag& drag) = 0;
  virtual std::optional<QuestionId> handle_drop(const ViewDrop& drop) = 0;
  /// The answer to the question; null: there is none. May ask again.
  virtual std::optional<QuestionId> handle_answer(const ViewAnswer* answer) = 0;
  /// Pings the view, which answers after all that it has to report by then.
  virtual QuestionId ask_for_ping() = 0;
  /// An item, or an answer, has been dealt with.
  virtual void handled() {}
  /// The user has stopped what an item or an answer led to: nothing has come of it.
  virtual void stopped() {}
};

/// All input of a document, in the order that the user gave it.
///
/// A mouse press goes to the page at once, and the page reports only later where it landed; a caret move by
/// lines is asked of the page. Input that comes meanwhile waits for that. The wait is a timer, never a loop.
///
/// How long it waits depends on the page. A press that nothing is heard of for the `deadline` may have been
/// swallowed on its way: the page is pinged, and if it answers before it has reported the press, no report
/// will come. While neither comes, the page is busy with a large change, or the machine is. What the user
/// typed is meant for the position that was pressed, so it waits on, up to the `patience`. A page that has
/// let that pass is given no more than the deadline until something is heard of it.
///
/// What comes too late is dropped: the last known caret holds then. No item is lost and none overtakes
/// another. While a handler runs a loop of its own (a dialog, a wait), later items wait for it to return.
class InputQueue {
 public:
  /// How long input waits for a view of which nothing is known, and for one that is busy. Milliseconds.
  static constexpr std::int64_t deadline = 250, patience = 2000;

  InputQueue(platform::MessageLoop& loop, InputHandler& handler);
  ~InputQueue();
  InputQueue(const InputQueue&) = delete;
  InputQueue& operator=(const InputQueue&) = delete;

  // --- what the user does ---
  void push(ViewKey key);
  void push(ViewText text);
  void push(ViewTicket ticket);
  void push(ViewSelect selection);
  void push(ViewDrag drag);
  void push(ViewDrop drop);

  // --- what the view says ---
  /// False: it comes too late, or nobody waits for it; it is dropped.
  bool reported(const ViewMouse& mouse);
  void answer(const ViewAnswer& answer);
  /// The view died: nobody will answer.
  void end_waiting();

  /// Forgets all input: it was meant for another document.
  void clear();
  /// A handler is at work.
  bool handling() const { return running_; }
  bool idle() const { return items_.empty() && !question_ && !running_; }

 private:
  struct Item {
    std::variant<ViewKey, ViewText, ViewTicket, ViewSelect, ViewDrag, ViewDrop> input;
    bool waits = false;  // a ticket without its report
    std::int64_t until = 0;
    std::vector<ViewMouse> reports = {};
  };
  void push_item(Item item);
  void push_before_release(Item item);
  void schedule();
  void run();
  bool waiting();
  bool may_still_report();
  void heard() { silent_ = false; }
  void wait_until(std::int64_t time);
  void act(const std::function<void()>& what);
  std::optional<QuestionId> handle(const Item& item);
  void begin_question(std::optional<QuestionId> question);
  void finish_question(const ViewAnswer* answer);

  platform::MessageLoop& loop_;
  InputHandler& handler_;
  std::deque<Item> items_;
  std::optional<QuestionId> question_;
  std::int64_t question_until_ = 0;
  std::optional<QuestionId> ping_;  // asked for, while the first item waits
  std::int64_t ping_until_ = 0;
  bool silent_ = false;  // nothing was heard since the patience was at its end
  platform::TimerId timer_ = platform::TimerId::none;
  bool scheduled_ = false, running_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::browser
