#pragma once

#include <functional>
#include <memory>

#include "tvx/browser/geometry.h"
#include "tvx/browser/input/display.h"
#include "tvx/browser/view/mark_display.h"
#include "tvx/browser/view/patch_stream.h"
#include "tvx/browser/view/scroll_request.h"
#include "tvx/browser/view/shown_context.h"
#include "tvx/browser/view/shown_marks.h"
#include "tvx/browser/view/shown_selection.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/selection.h"

namespace tvx::browser {

/// What goes out to a view: the tree, the selection, the mode and what an input method may know. Changes are
/// gathered and sent once a turn of the loop.
class DocumentOutput final : public Display,
                             public Viewport,
                             public MarkDisplay,
                             private dom::MutationObserver,
                             private editing::SelectionObserver {
 public:
  /// Both outlive this. `page_begins` is called when what the page before would have answered never comes.
  DocumentOutput(View& view, platform::MessageLoop& loop, std::function<void()> page_begins);
  ~DocumentOutput() override;
  DocumentOutput(const DocumentOutput&) = delete;
  DocumentOutput& operator=(const DocumentOutput&) = delete;

  /// Shows another document, or none.
  void show(std::shared_ptr<HTMLDocument> document);
  void set_editable(bool editable);

  // --- what becomes of it ---
  void patch_done(const PatchDone& done);
  void patch_failed(const PatchFailed& failure);
  /// What was on its way is lost.
  void lost() { patches_.lost(); }
  /// The view is to start over with the document.
  void begin_page();
  /// Nothing more is sent, until a page begins.
  void give_up() { given_up_ = true; }
  bool given_up() const { return given_up_; }

  bool settled() const;
  bool filled() const { return patches_.filled(); }
  const ShownMarks& marks() const { return marks_; }

  /// The user moves the scroll bar: what belongs there is sent before its turn.
  void scroll_bar_moved(const ViewScrollBar& bar);

  // Viewport
  void scroll_to(int x, int y) override;
  void scroll_into_view(dom::Element& element, bool at_top) override;
  void under_way_changed() override { schedule_flush(); }

  // MarkDisplay
  void mark(MarkKind kind, const dom::Text& text, std::vector<MarkedStretch> stretches) override;
  void clear_marks(MarkKind kind) override;
  bool is_busy() const override;
  void resource_policy_changed() override { begin_page(); }

  // Display
  const Mirror& mirror() const override { return *patches_.mirror(); }
  bool editable() const override { return mode_.editable; }
  bool answers() const override { return !given_up_; }
  QuestionId ask(ViewQuestion question) override;
  void flush() override;
  void schedule_flush() override;
  void reveal(bool reveal) override { selection_.reveal(reveal); }
  void selection_drawn(const ViewPlace& anchor, const ViewPlace& focus) override;
  void selection_unsure() override { selection_.unsure(); }
  void mouse_dealt_with(std::uint32_t number) override { selection_.mouse_dealt_with(number); }
  void composing(bool composing) override { context_.composing(composing); }
  void cancel_drag() override;

 private:
  void mutated(const dom::Mutation& mutation) override;
  void selection_changed() override;
  dom::Node* first_wanted() const;
  void resume_later();
  void send_mode(bool again);

  View& view_;
  platform::MessageLoop& loop_;
  std::function<void()> page_begins_;
  std::shared_ptr<HTMLDocument> document_;
  PatchStream patches_;
  ShownSelection selection_;
  ScrollRequest scroll_;
  ShownContext context_;
  ShownMarks marks_;
  ViewMode mode_;
  bool page_began_ = false;  // the page doesn't know the mode yet
  bool flush_scheduled_ = false, resume_posted_ = false;
  bool given_up_ = false;
  std::uint32_t last_question_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::browser
