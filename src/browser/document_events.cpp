#include <algorithm>
#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/browser/input/gesture.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/control.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/gestures/cell_selection.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/gestures/typing.h"

/// The order of events: what a key, a press or a change of the selection sets off.
namespace tvx::browser {

using dom::Element;
using dom::Tag;

namespace {

bool types_text(const KeyInput& key) {
  return (!key.text.empty() && !key.control && !key.alt) || key.key == u"Enter";
}

bool is_modifier(const KeyInput& key) {
  constexpr std::u16string_view names[] = {u"Shift", u"Control", u"Alt", u"AltGraph", u"Meta", u"CapsLock"};
  return std::find(std::begin(names), std::end(names), key.key) != std::end(names);
}

bool asks_for_menu(const KeyInput& key) {
  return key.key == u"ContextMenu" || (key.key == u"F10" && key.shift && !key.control && !key.alt);
}

std::optional<ViewMove> view_move(const KeyInput& key) {
  constexpr std::pair<std::u16string_view, ViewMove> moves[] = {
      {u"ArrowUp", ViewMove::LineUp}, {u"ArrowDown", ViewMove::LineDown}, {u"Home", ViewMove::LineStart},
      {u"End", ViewMove::LineEnd},    {u"PageUp", ViewMove::PageUp},      {u"PageDown", ViewMove::PageDown},
      {u"ArrowLeft", ViewMove::Left}, {u"ArrowRight", ViewMove::Right}};
  for (const auto& [name, move] : moves)
    if (key.key == name) return move;
  return {};
}

}  // namespace

// --- delivery ---

void HTMLDocument::deliver(Event& event, const std::function<void(DocumentHandler&)>& call) {
  const auto self = shared_from_this();
  if (!handler_) return;
  events_.push_back({&event, tree_->structure_version()});
  struct Pop {
    std::vector<Living>& events;
    ~Pop() { events.pop_back(); }
  } pop{events_};
  call(*handler_);
}

bool HTMLDocument::ask_handler(Event event, bool (DocumentHandler::*question)()) {
  bool answer = true;
  deliver(event, [&](DocumentHandler& handler) { answer = (handler.*question)(); });
  return answer;
}

const Event* HTMLDocument::event() const { return events_.empty() ? nullptr : events_.back().event; }

void HTMLDocument::set_event_key_code(int key_code) {
  if (!events_.empty()) events_.back().event->key_code = key_code;
}

Element* HTMLDocument::element_from_point(int x, int y) const {
  if (!events_.empty()) {
    const Living& living = events_.back();
    if (living.event->client_x == x && living.event->client_y == y &&
        living.structure == tree_->structure_version())
      return living.event->target.get();
  }
  return geometry_ ? geometry_->element_at(*this, x, y) : nullptr;
}

void HTMLDocument::tell_user_change() {
  const auto self = shared_from_this();
  if (handler_) handler_->onuserchange();
}

// --- the selection's news ---

HTMLDocument::Gesture::~Gesture() {
  --document_->gestures_;
  if (!finished_ && document_->gestures_ == 0 && std::exchange(document_->selection_moved_, false))
    document_->deliver_selection_change(document_->event_at_caret());
}

void HTMLDocument::Gesture::finish_with(Event event) {
  finished_ = true;
  document_->selection_moved_ = false;
  document_->deliver_selection_change(std::move(event));
}

void HTMLDocument::selection_changed() {
  selection_moved_ = true;
  if (gestures_ > 0 || telling_selection_) return;
  selection_moved_ = false;
  deliver_selection_change(event_at_caret());
}

// A handler that moves the selection itself would hear of that within its own call, without end. It hears of
// it when it has returned, and a few times at most.
void HTMLDocument::deliver_selection_change(Event event) {
  if (telling_selection_) {
    selection_moved_ = true;
    return;
  }
  const auto self = shared_from_this();
  telling_selection_ = true;
  for (int times = 0; times < 4; ++times) {
    event.type = u"selectionchange";
    deliver(event, [](DocumentHandler& handler) { handler.onselectionchange(); });
    if (!std::exchange(selection_moved_, false)) break;
    event = event_at_caret();
  }
  telling_selection_ = false;
}

void HTMLDocument::select(const std::function<void(editing::Selection&)>& set) {
  Gesture gesture(*this);
  composition_->accept();
  set(editor_->selection());
}

// --- events as snapshots ---

dom::Ref<Element> HTMLDocument::focus_element() const {
  const editing::Selection& selection = editor_->selection();
  if (Element* control = selection.control()) return control;
  dom::Node* node = selection.focus().node;
  if (!node) return body();
  return node->is_element() ? static_cast<Element*>(node) : node->parent_element();
}

Event HTMLDocument::event_at_caret() const {
  Event event;
  event.type = u"selectionchange";
  event.target = focus_element();
  if (geometry_) std::tie(event.client_x, event.client_y) = geometry_->caret_place(*this);
  return event;
}

Event HTMLDocument::event_of(const MouseInput& mouse, std::u16string_view type) const {
  Event event;
  event.type = type;
  event.target = mouse.element;
  event.client_x = mouse.x;
  event.client_y = mouse.y;
  event.button = mouse.button;
  event.shift = mouse.shift;
  event.control = mouse.control;
  event.alt = mouse.alt;
  return event;
}

Event HTMLDocument::event_of(const KeyInput& key, std::u16string_view type) const {
  Event event = event_at_caret();
  event.type = type;
  event.key_code = key.key_code;
  event.shift = key.shift;
  event.control = key.control;
  event.alt = key.alt;
  return event;
}

// --- keys ---

KeyOutcome HTMLDocument::key_down(const KeyInput& key) {
  const auto self = shared_from_this();
  const KeyOutcome outcome = deliver_key(key);
  if (outcome.link) ask_for_link();
  return outcome;
}

KeyOutcome HTMLDocument::deliver_key(const KeyInput& key) {
  Gesture gesture(*this);
  KeyOutcome outcome;
  Event down = event_of(key, u"keydown");
  deliver(down, [](DocumentHandler& handler) { handler.onkeydown(); });
  if (down.key_code == 0) {
    outcome.taken = true;
    return outcome;
  }
  if (types_text(key)) {
    Event press = event_of(key, u"keypress");
    press.key_code = key.text.empty() ? 13 : key.text.front();
    bool allowed = true;
    deliver(press, [&](DocumentHandler& handler) { allowed = handler.onkeypress(); });
    if (!allowed || press.key_code == 0) {
      outcome.taken = true;
      return outcome;
    }
  }
  default_action(key, outcome);
  return outcome;
}

void HTMLDocument::default_action(const KeyInput& key, KeyOutcome& outcome) {
  if (asks_for_menu(key)) {
    // As a right press at the caret, which leaves the selection alone.
    outcome.taken = true;
    Event event = event_at_caret();
    event.button = MouseButton::Right;
    deliver_selection_change(event);
    event.type = u"mousedown";
    return deliver(event, [](DocumentHandler& handler) { handler.onmousedown(); });
  }
  if (!is_modifier(key)) composition_->accept();
  if (!user_may_edit()) return;
  const dom::Boundary focus = editor_->selection().focus();
  if (!focus || !editing::editing_host_of(*focus.node)) return;
  const editing::KeyPress press{key.key, key.text, key.control, key.shift, key.alt};
  switch (editing::press_key(*editor_, press)) {
    case editing::KeyResult::Done: outcome.taken = true; break;
    case editing::KeyResult::NotMine: break;
    case editing::KeyResult::AskLink: outcome.taken = outcome.link = true; break;
    case editing::KeyResult::AskView:
      outcome.taken = true;
      outcome.ask = view_move(key);
      outcome.extend = key.shift;
      break;
  }
}

void HTMLDocument::key_up(const KeyInput& key) {
  Event up = event_of(key, u"keyup");
  deliver(up, [](DocumentHandler& handler) { handler.onkeyup(); });
}

/// Raises the key that stands for an input method's text. False: a handler takes it away, or no text may go
/// where the caret is.
bool HTMLDocument::may_input() {
  KeyInput key;
  key.key = u"Process";
  key.key_code = 229;
  Event down = event_of(key, u"keydown");
  deliver(down, [](DocumentHandler& handler) { handler.onkeydown(); });
  const dom::Boundary focus = editor_->selection().focus();
  return down.key_code != 0 && user_may_edit() && focus && editing::editing_host_of(*focus.node);
}

void HTMLDocument::input_text(std::u16string_view text) {
  const auto self = shared_from_this();
  Gesture gesture(*this);
  if (std::exchange(composition_refused_, false)) return;
  if (composition_->active()) {
    if (!user_may_edit()) return composition_->accept();
    composition_->cancel();
  } else if (!may_input()) {
    return;
  }
  editing::type_text(*editor_, text);
}

void HTMLDocument::compose(std::u16string_view text, Offset cursor) {
  const auto self = shared_from_this();
  Gesture gesture(*this);
  if (text.empty()) composition_refused_ = false;
  if (composition_refused_) return;
  if (!composition_->active() && !text.empty() && !may_input()) {
    composition_refused_ = true;
    return;
  }
  if (!user_may_edit()) return composition_->accept();
  composition_->update(text, cursor);
}

void HTMLDocument::move_caret_to(dom::Boundary place, bool extend) {
  Gesture gesture(*this);
  tree_->journal().end_typing_run();
  editing::Selection& selection = editor_->selection();
  if (extend && selection.anchor()) {
    selection.set(selection.anchor(), place);
    editing::take_whole_cells(*editor_);
  } else {
    selection.collapse(place);
  }
}

// --- the mouse ---

void HTMLDocument::mouse_press(const MouseInput& mouse) {
  const auto self = shared_from_this();
  const Event event = event_of(mouse, u"mousedown");
  {
    Gesture gesture(*this);
    composition_->accept();
    tree_->journal().end_typing_run();
    Event start = event;
    start.type = u"selectstart";
    const bool allowed =
        mouse.button != MouseButton::Left || ask_handler(start, &DocumentHandler::onselectstart);
    if (allowed && editor_->design_mode()) set_selection_by_press(mouse);
    gesture.finish_with(event);
  }
  Event down = event;
  deliver(down, [](DocumentHandler& handler) { handler.onmousedown(); });
}

void HTMLDocument::set_selection_by_press(const MouseInput& mouse) {
  editing::Selection& selection = editor_->selection();
  const dom::Ref<Element> whole(mouse.whole     ? mouse.whole.get()
                                : mouse.element ? editing::control_at(*mouse.element)
                                                : nullptr);
  if (whole) {
    if (selection.control() == whole.get()) return;
    const dom::SelectionRecord before = selection.capture();
    selection.select_control(*whole);
    if (!ask_handler(event_of(mouse, u"controlselect"), &DocumentHandler::oncontrolselect))
      selection.restore(before);
    return;
  }
  if (mouse.held && mouse.button == MouseButton::Left) return;
  if (!mouse.place) return;
  if (mouse.button == MouseButton::Right && selection.type() == editing::SelectionType::Text &&
      !selection.collapsed()) {
    const dom::Range range = selection.range();
    if (compare(range.start, *mouse.place) <= 0 && compare(*mouse.place, range.end) <= 0) return;
  }
  if (mouse.shift && selection.anchor())
    selection.set(selection.anchor(), *mouse.place);
  else
    selection.set(mouse.anchor.value_or(*mouse.place), *mouse.place);
}

void HTMLDocument::mouse_select(const MouseInput& mouse) {
  if (!mouse.place || !editor_->design_mode()) return;
  Gesture gesture(*this);
  composition_->accept();
  editor_->selection().set(mouse.anchor.value_or(*mouse.place), *mouse.place);
  gesture.finish_with(event_of(mouse, u"selectionchange"));
}

bool HTMLDocument::click(const MouseInput& mouse) {
  const auto self = shared_from_this();
  if (!ask_handler(event_of(mouse, u"click"), &DocumentHandler::onclick)) return false;
  // With an anchor it is the end of a drag over the link.
  if (mouse.button != MouseButton::Left || mouse.shift || mouse.control || mouse.alt || mouse.anchor ||
      !follow_link_)
    return true;
  const Element* link = mouse.element ? dom::enclosing(*mouse.element, Tag::A) : nullptr;
  if (!link && mouse.element) link = dom::enclosing(*mouse.element, Tag::Area);
  if (!link || !link->has_attribute(dom::names::href)) return true;
  const LinkFollower follow = follow_link_;
  follow(absolute_url(link->attribute_or_empty(dom::names::href)),
         std::u16string(link->attribute_or_empty(dom::Name(u"target"))));
  return true;
}

bool HTMLDocument::double_click(const MouseInput& mouse) {
  return ask_handler(event_of(mouse, u"dblclick"), &DocumentHandler::ondblclick);
}

bool HTMLDocument::drag_start(const MouseInput& mouse) {
  return ask_handler(event_of(mouse, u"dragstart"), &DocumentHandler::ondragstart);
}

bool HTMLDocument::context_menu(const MouseInput& mouse) {
  return ask_handler(event_of(mouse, u"contextmenu"), &DocumentHandler::oncontextmenu);
}

}  // namespace tvx::browser
