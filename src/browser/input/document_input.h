#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "tvx/browser/input/drag_session.h"
#include "tvx/browser/input/input_queue.h"
#include "tvx/browser/input/mouse_reports.h"
#include "tvx/browser/input/net_change.h"
#include "tvx/dom/mutation.h"

namespace tvx::browser {

/// What comes in from a view: keys, text, the mouse's reports, drags and drops, and the answers to questions.
/// All of it acts on the document in the order in which the user did it.
class DocumentInput final : private InputHandler, private dom::MutationObserver {
 public:
  /// Both outlive this.
  DocumentInput(Display& display, platform::MessageLoop& loop);
  ~DocumentInput() override { show(nullptr); }
  DocumentInput(const DocumentInput&) = delete;
  DocumentInput& operator=(const DocumentInput&) = delete;

  /// Input that waited for the document before is dropped.
  void show(std::shared_ptr<HTMLDocument> document);
  /// Messages about anything else than input are passed over.
  void receive(const ViewMessage& message);
  /// What the page would have answered never comes.
  void end_waiting() { queue_.end_waiting(); }
  bool idle() const { return queue_.idle(); }
  /// The element that the last mouse report named for this point.
  dom::Element* element_at(int x, int y) const { return mouse_.element_at(x, y); }

 private:
  // InputHandler
  std::optional<QuestionId> handle_key(const ViewKey& key) override;
  void handle_text(const ViewText& input) override;
  std::optional<QuestionId> handle_mouse(const ViewTicket& ticket,
                                         const std::vector<ViewMouse>& reports) override;
  void handle_select(const ViewSelect& selection) override;
  void handle_drag(const ViewDrag& drag) override;
  std::optional<QuestionId> handle_drop(const ViewDrop& drop) override;
  std::optional<QuestionId> handle_answer(const ViewAnswer* answer) override;
  QuestionId ask_for_ping() override;
  void handled() override;
  void stopped() override { changes_.clear(); }
  void mutated(const dom::Mutation& mutation) override;

  QuestionId ask(ViewQuestion question);
  std::optional<QuestionId> ask_for_move(ViewMove move, const dom::Boundary& from);
  std::optional<QuestionId> handle_line(const dom::Boundary& line);
  void deliver_drop(const ViewDrop& drop, const std::optional<ViewPlace>& at);
  bool may_drop(const ViewDrop& drop);

  Display& display_;
  std::shared_ptr<HTMLDocument> document_;
  DragSession drags_;
  MouseReports mouse_;
  InputQueue queue_;
  NetChange changes_;             // of what is being handled
  bool extend_ = false;           // the move that is asked for extends the selection
  ViewMove move_{};               // which it is
  ViewPlace asked_from_{};        // and from where it was asked for
  int islands_passed_ = 0;        // on its way
  std::optional<ViewDrop> drop_;  // waits for its position
};

}  // namespace tvx::browser
