#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "tvx/browser/html_document.h"
#include "tvx/browser/input/input_queue.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/slice_size.h"
#include "tvx/browser/view/view.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/selection.h"
#include "tvx/editing/tables/table_sizes.h"

namespace tvx::browser {

/// Shows a document in a view and brings the user's input back to it.
///
/// Changes of the tree, the selection and the mode are gathered and sent once a turn of the loop. A new
/// document goes in slices: the next one is sent when the view has laid out the one before, so that it is
/// never busy for long. What the view says of places is read against the tree that it was showing then.
class DocumentView final : public HTMLDocument::Geometry,
                           public HTMLDocument::Viewport,
                           private InputHandler,
                           private dom::MutationObserver,
                           private editing::SelectionObserver {
 public:
  /// Both outlive this.
  DocumentView(View& view, platform::MessageLoop& loop);
  ~DocumentView() override;
  DocumentView(const DocumentView&) = delete;
  DocumentView& operator=(const DocumentView&) = delete;

  /// Shows another document, or none. Input that waited for the one before is dropped.
  void show(std::shared_ptr<HTMLDocument> document);
  const std::shared_ptr<HTMLDocument>& document() const { return document_; }
  void set_editable(bool editable);

  /// Everything is sent, laid out, and no input waits.
  bool settled() const;
  /// The window is filled, though more may follow.
  bool filled() const { return last_done_ >= first_patch_; }
  /// Whether the view gave up on this document after dying of it twice.
  bool shows_notice() const { return notice_; }
  const ViewFacts& facts() const { return facts_; }
  /// Called when the view's process has died, for whoever counts.
  void set_on_focus(std::function<void(bool)> on_focus) { on_focus_ = std::move(on_focus); }

  // HTMLDocument::Geometry: as the view last reported.
  dom::Element* element_at(const HTMLDocument& document, int x, int y) const override;
  std::pair<int, int> caret_place(const HTMLDocument& document) const override;

  // HTMLDocument::Viewport: what was asked for last counts, the selection's place included. It is done when
  // the view has what it means.
  void scroll_to(int x, int y) override;
  void scroll_into_view(dom::Element& element, bool at_top) override;

 private:
  // InputHandler
  std::optional<QuestionId> handle_key(const ViewKey& key) override;
  void handle_text(const ViewText& input) override;
  std::optional<QuestionId> handle_mouse(const ViewTicket& ticket,
                                         const std::vector<ViewMouse>& told) override;
  void handle_select(const ViewSelect& selection) override;
  void handle_drag(const ViewDrag& drag) override;
  std::optional<QuestionId> handle_drop(const ViewDrop& drop) override;
  std::optional<QuestionId> handle_answer(const ViewAnswer* answer) override;
  QuestionId ask_for_sign() override;
  void handled() override;

  void mutated(const dom::Mutation& mutation) override;
  void selection_changed() override;

  void receive(const ViewMessage& message);
  void patch_done(PatchNumber number);
  void patch_failed(const PatchFailed& failure);
  void view_died();
  void begin_anew();

  void schedule_flush();
  void flush();
  void send_patch(std::vector<PatchOperation> operations);
  void send_selection(bool again);
  void send_input_context();
  void send_mode();
  void send_scroll();
  std::u16string base() const;

  ViewSelection wanted_selection() const;
  std::optional<ViewPlace> view_place(dom::Boundary boundary) const;
  /// A place that the view named when it had applied `seen`; none if the tree has changed there since.
  std::optional<dom::Boundary> boundary(const std::optional<ViewPlace>& place) const;
  std::optional<dom::Boundary> nearest_boundary(const std::optional<ViewPlace>& place) const;
  MouseInput mouse_input(const ViewMouse& mouse) const;
  std::optional<QuestionId> deliver_mouse();
  void forget_mouse(const ViewMouse& mouse);
  void deliver_release(HTMLDocument& document, const MouseInput& input);
  void deliver_drop(const ViewDrop& drop, const std::optional<ViewPlace>& at);
  bool may_drop(const ViewDrop& drop);
  void select_around_caret(HTMLDocument& document, std::int32_t from, std::uint32_t length);
  void begin_drag(const ViewDrag& drag);
  void end_drag(const ViewDrag& drag);
  void cancel_drag();
  editing::ColumnEdge column_edge(dom::Element& before, const ViewDrag::Edge& edge) const;
  QuestionId ask(ViewQuestion question);

  View& view_;
  platform::MessageLoop& loop_;
  std::shared_ptr<HTMLDocument> document_;
  std::unique_ptr<Mirror> mirror_;
  InputQueue queue_;

  bool input_changed_tree_ = false;
  bool flush_scheduled_ = false;
  bool reset_ = false;  // the next patch begins a page
  bool reveal_ = false;
  bool place_lost_ = false;  // the tree moved under the view's own selection
  dom::CompatibilityMode compatibility_mode_{};
  std::u16string base_;
  bool base_may_differ_ = false;
  PatchNumber last_sent_{}, last_done_{};
  PatchNumber seen_{};  // of the message that is being handled

  PatchNumber first_patch_{};         // the one that began the page
  std::optional<PatchNumber> slice_;  // on its way
  std::int64_t slice_sent_ = 0;
  SliceSize slice_size_;

  struct Scroll {
    int x = 0, y = 0;
    dom::Ref<dom::Element> element;  // or none: the point
    bool at_top = true;
  };
  std::optional<Scroll> scroll_;  // asked for, and not sent

  ViewSelection shown_selection_;
  InputContext context_;
  ViewMode mode_;
  ViewFacts facts_;
  struct Hit {
    int x = 0, y = 0;
    dom::Ref<dom::Element> element;
  } last_hit_;

  std::uint32_t last_question_ = 0;
  struct {
    bool extend = false;
    std::vector<ViewMouse> mouse;  // whose places were of an older tree: asked again
    int tries = 0;
    std::optional<ViewDrop> drop;  // that waits for its place
  } open_;
  struct {
    bool active = false;  // the mouse is carrying something
    dom::Ref<dom::Element> element;
  } drag_;
  bool input_composes_ = false;    // the input method holds text that isn't committed
  bool held_ = false;              // the last press was on what is selected
  bool selection_unsure_ = false;  // what the page shows of it is to be told again
  std::uint32_t mouse_seen_ = 0;   // the last press or release that is dealt with

  std::vector<std::int64_t> deaths_;
  bool notice_ = false;
  std::function<void(bool)> on_focus_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::browser
