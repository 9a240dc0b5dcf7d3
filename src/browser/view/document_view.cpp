#include "tvx/browser/view/document_view.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Tag;

constexpr std::int64_t deaths_count_within = 10'000;
constexpr Offset context_length = 400;

PatchNumber next(PatchNumber number) { return PatchNumber(static_cast<std::uint32_t>(number) + 1); }

bool same(const ViewSelection& a, const ViewSelection& b) {
  return a.type == b.type && a.anchor == b.anchor && a.focus == b.focus && a.control == b.control &&
         a.composing == b.composing && a.composing_length == b.composing_length;
}

/// Operations after which the view's own selection may stand elsewhere.
bool moves_selection(const PatchOperation& operation) {
  using Type = PatchOperation::Type;
  return operation.type == Type::Detach || operation.type == Type::Place || operation.type == Type::Forget ||
         operation.type == Type::Data;
}

}  // namespace

DocumentView::DocumentView(View& view, platform::MessageLoop& loop)
    : view_(view), loop_(loop), queue_(loop, *this) {
  view_.set_receiver([this, alive = alive_](const ViewMessage& message) {
    if (*alive) receive(message);
  });
}

DocumentView::~DocumentView() {
  *alive_ = false;
  view_.set_receiver(nullptr);
  show(nullptr);
}

void DocumentView::show(std::shared_ptr<HTMLDocument> document) {
  if (document_) {
    document_->set_geometry(nullptr);
    document_->set_viewport(nullptr);
    document_->tree().remove_observer(*this);
    document_->editor().selection().remove_observer(*this);
  }
  queue_.clear();
  mirror_.reset();
  deaths_.clear();
  notice_ = false;
  input_changed_tree_ = false;
  last_hit_ = {};
  drag_ = {};
  scroll_.reset();
  document_ = std::move(document);
  if (!document_) return;
  mirror_ = std::make_unique<Mirror>(document_->tree());
  document_->tree().add_observer(*this);
  document_->editor().selection().add_observer(*this);
  document_->set_geometry(this);
  document_->set_viewport(this);
  begin_anew();
}

void DocumentView::set_editable(bool editable) {
  if (mode_.editable == editable) return;
  mode_.editable = editable;
  view_.set_mode(mode_);
  schedule_flush();
}

/// A mode of the editor changes without a word to anybody: it is looked at with each flush.
void DocumentView::send_mode() {
  ViewMode mode = mode_;
  mode.free_placement = document_->editor().two_d_position();
  if (mode == mode_) return;
  mode_ = mode;
  view_.set_mode(mode_);
}

bool DocumentView::settled() const {
  if (!document_ || notice_) return queue_.idle();
  return last_done_ == last_sent_ && !reset_ && !flush_scheduled_ && !mirror_->dirty() &&
         !mirror_->loading() && !scroll_ && queue_.idle();
}

// --- down: what the view is to show ---

void DocumentView::begin_anew() {
  queue_.end_waiting();  // the page that would have told is no more
  mouse_seen_ = 0;
  mirror_->reset();
  reset_ = true;
  slice_.reset();
  slice_size_ = {};
  shown_selection_ = {};
  compatibility_mode_ = document_->tree().compatibility_mode();
  base_ = base();
  base_may_differ_ = false;
  first_patch_ = next(last_sent_);
  mirror_->set_patch(first_patch_);
  schedule_flush();
}

/// The address that the page is loaded under, so that relative ones in the tree mean what they mean here.
std::u16string DocumentView::base() const {
  std::u16string address = document_->absolute_url(u".");
  return contains(address, u":") ? address : document_->url();
}

void DocumentView::mutated(const dom::Mutation& mutation) {
  if (mutation.node->is(Tag::Base)) base_may_differ_ = true;
  if (queue_.handling() && mutation.kind == dom::MutationKind::Step) input_changed_tree_ = true;
  schedule_flush();
}

void DocumentView::selection_changed() {
  reveal_ = true;
  scroll_.reset();
  schedule_flush();
}

void DocumentView::schedule_flush() {
  if (std::exchange(flush_scheduled_, true)) return;
  loop_.post([this, alive = alive_] {
    if (*alive) flush();
  });
}

void DocumentView::flush() {
  flush_scheduled_ = false;
  if (!document_ || notice_) return;
  if (std::exchange(base_may_differ_, false) && base() != base_) begin_anew();
  if (document_->tree().compatibility_mode() != compatibility_mode_) begin_anew();
  const bool load = !slice_;
  std::vector<PatchOperation> operations = mirror_->flush(load ? slice_size_.nodes() : 0);
  const bool again = reset_ || std::any_of(operations.begin(), operations.end(), moves_selection);
  if (reset_ || !operations.empty()) {
    // Any patch that is on its way counts as the slice: the next one waits until the view has caught up.
    if (load && mirror_->loading()) {
      slice_ = next(last_sent_);
      slice_sent_ = loop_.now();
    }
    send_patch(std::move(operations));
  }
  send_mode();
  send_selection(again);
  send_scroll();
  send_input_context();
}

void DocumentView::send_patch(std::vector<PatchOperation> operations) {
  Patch patch;
  patch.number = last_sent_ = next(last_sent_);
  patch.reset = std::exchange(reset_, false);
  patch.compatibility_mode = compatibility_mode_;
  if (patch.reset) patch.base = base_;
  patch.operations = std::move(operations);
  mirror_->set_patch(next(last_sent_));
  view_.apply(patch);
  if (patch.reset) view_.set_mode(mode_);
}

void DocumentView::send_selection(bool again) {
  ViewSelection wanted = wanted_selection();
  wanted.reveal = std::exchange(reveal_, false) && wanted.type != ViewSelection::Type::None;
  again = std::exchange(selection_unsure_, false) || again;
  if (!again && same(wanted, shown_selection_)) return;
  shown_selection_ = wanted;
  wanted.mouse = mouse_seen_;
  view_.select(wanted);
}

ViewSelection DocumentView::wanted_selection() const {
  const editing::Selection& selection = document_->editor().selection();
  ViewSelection wanted;
  if (const Element* control = selection.control()) {
    if (!mirror_->knows(*control)) return wanted;
    wanted.type = ViewSelection::Type::Control;
    wanted.control = control->id();
  } else if (selection.type() == editing::SelectionType::Text) {
    const auto anchor = view_place(selection.anchor()), focus = view_place(selection.focus());
    if (!anchor || !focus) return wanted;
    wanted.type = ViewSelection::Type::Text;
    wanted.anchor = *anchor;
    wanted.focus = *focus;
  }
  const auto composed = document_->composed();
  if (composed && mirror_->knows(*composed->text)) {
    wanted.composing = {composed->text->id(), static_cast<std::uint32_t>(composed->start)};
    wanted.composing_length = static_cast<std::uint32_t>(composed->length);
  }
  return wanted;
}

void DocumentView::scroll_to(int x, int y) {
  scroll_ = Scroll{.x = x, .y = y, .element = {}};
  reveal_ = false;
  schedule_flush();
}

void DocumentView::scroll_into_view(Element& element, bool at_top) {
  scroll_ = Scroll{.element = element, .at_top = at_top};
  reveal_ = false;
  schedule_flush();
}

/// A page that is still coming is too short for the point, and may lack the element: both wait. What isn't
/// shown itself stands where that stands which holds it.
void DocumentView::send_scroll() {
  if (!scroll_) return;
  const bool whole = !mirror_->loading();
  if (!scroll_->element) {
    if (!whole) return;
    view_.scroll_to(scroll_->x, scroll_->y);
  } else {
    const Node* shown = scroll_->element.get();
    if (!whole && dom::is_connected(*shown) && !mirror_->knows(*shown)) return;
    while (shown && !(shown->is_element() && mirror_->knows(*shown))) shown = shown->parent();
    if (shown) view_.scroll_into_view(shown->id(), scroll_->at_top);
  }
  scroll_.reset();
}

/// None where the view has nothing yet. A place inside what isn't shown is the place before that.
std::optional<ViewPlace> DocumentView::view_place(Boundary boundary) const {
  for (Node* node = boundary.node; node; node = node->parent()) {
    const auto* element = dom::as<Element>(node);
    if (element && !mirrors_children(*element) && boundary.node->parent()) boundary = dom::before(*node);
  }
  if (!boundary.node || !mirror_->knows(*boundary.node)) return {};
  return ViewPlace{boundary.node->id(), static_cast<std::uint32_t>(boundary.offset)};
}

/// What stands around the caret. An input method counts without the text that it is composing.
void DocumentView::send_input_context() {
  InputContext context;
  context.enabled = mode_.editable && document_->editor().design_mode();
  context.interruptions = context_.interruptions;
  if (std::exchange(input_composes_, document_->is_composing()) && !document_->is_composing())
    ++context.interruptions;
  const editing::Selection& selection = document_->editor().selection();
  Boundary focus = selection.focus(), anchor = selection.anchor();
  if (const auto* text = dom::as<dom::Text>(focus.node)) {
    const auto composed = document_->composed();
    const Offset left_out = composed && composed->text == text ? composed->length : 0;
    if (left_out > 0) focus.offset = anchor.offset = composed->start;
    const Offset begin = focus.offset > context_length ? focus.offset - context_length : 0;
    context.text = text->data().substr(begin, 2 * context_length + left_out);
    context.text.erase(focus.offset - begin, left_out);
    context.cursor = static_cast<std::uint32_t>(focus.offset - begin);
    context.anchor = context.cursor;
    if (anchor.node == text && anchor.offset >= begin && anchor.offset - begin <= context.text.size()) {
      context.anchor = static_cast<std::uint32_t>(anchor.offset - begin);
    }
  }
  if (context == context_) return;
  context_ = context;
  view_.set_input_context(context_);
}

// --- up: what the view tells ---

void DocumentView::receive(const ViewMessage& message) {
  seen_ = message.seen;
  if (const auto* done = std::get_if<PatchDone>(&message.what)) return patch_done(done->number);
  if (const auto* failure = std::get_if<PatchFailed>(&message.what)) return patch_failed(*failure);
  if (std::get_if<ViewDied>(&message.what)) return view_died();
  if (const auto* facts = std::get_if<ViewFacts>(&message.what)) {
    facts_ = *facts;
  } else if (const auto* key = std::get_if<ViewKey>(&message.what)) {
    queue_.push(*key);
  } else if (const auto* text = std::get_if<ViewText>(&message.what)) {
    queue_.push(*text);
  } else if (const auto* ticket = std::get_if<ViewTicket>(&message.what)) {
    queue_.push(*ticket);
  } else if (const auto* mouse = std::get_if<ViewMouse>(&message.what)) {
    ViewMouse seen = *mouse;
    seen.seen = message.seen;
    if (!queue_.told(seen)) forget_mouse(seen);
  } else if (const auto* select = std::get_if<ViewSelect>(&message.what)) {
    queue_.push(ViewSelect{select->anchor, select->focus, message.seen});
  } else if (const auto* drag = std::get_if<ViewDrag>(&message.what)) {
    ViewDrag seen = *drag;
    seen.seen = message.seen;
    queue_.push(seen);
  } else if (const auto* drop = std::get_if<ViewDrop>(&message.what)) {
    queue_.push(*drop);
  } else if (const auto* answer = std::get_if<ViewAnswer>(&message.what)) {
    ViewAnswer seen = *answer;
    seen.seen = message.seen;
    queue_.answer(seen);
  } else if (const auto* focus = std::get_if<ViewFocus>(&message.what)) {
    if (on_focus_) on_focus_(focus->focused);
  } else if (std::get_if<ViewReady>(&message.what) && document_ && notice_) {
    notice_ = false;
    deaths_.clear();
    view_.show_notice({});
    begin_anew();
  }
}

void DocumentView::patch_done(PatchNumber number) {
  last_done_ = std::max(last_done_, number);
  if (!slice_ || number < *slice_) return;
  slice_size_.took(loop_.now() - slice_sent_);
  slice_.reset();
  if (mirror_ && mirror_->loading()) schedule_flush();
}

void DocumentView::patch_failed(const PatchFailed& failure) {
  if (!mirror_) return;
  if (!mirror_->failed(failure.node)) {
    std::clog << "htmled: a node can't be shown and is left out of the view: " << to_utf8(failure.reason)
              << '\n';
  }
  schedule_flush();
}

void DocumentView::view_died() {
  queue_.end_waiting();
  if (!document_) return;
  const std::int64_t now = loop_.now();
  std::erase_if(deaths_, [now](std::int64_t death) { return now - death > deaths_count_within; });
  deaths_.push_back(now);
  last_done_ = last_sent_;
  if (deaths_.size() < 2) {
    begin_anew();
    return;
  }
  notice_ = true;
  view_.show_notice(
      u"This document can't be shown at the moment: the view has ended twice while showing it. Nothing is "
      u"lost; the document can be edited as code and saved.");
}

Element* DocumentView::element_at(const HTMLDocument&, int x, int y) const {
  const bool known = last_hit_.element && last_hit_.x == x && last_hit_.y == y;
  return known && dom::is_connected(*last_hit_.element) ? last_hit_.element.get() : nullptr;
}

std::pair<int, int> DocumentView::caret_place(const HTMLDocument&) const {
  return {facts_.caret_left, facts_.caret_top};
}

}  // namespace tvx::browser
