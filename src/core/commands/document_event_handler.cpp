#include "tvx/core/commands/document_event_handler.h"

#include "tvx/base/error.h"
#include "tvx/browser/browser.h"
#include "tvx/core/chrome/element_path.h"
#include "tvx/core/chrome/menu_commands.h"
#include "tvx/core/commands/clipboard_commands.h"
#include "tvx/core/commands/formatting.h"
#include "tvx/core/commands/selection_commands.h"
#include "tvx/core/dialogs/field_settings.h"
#include "tvx/core/events.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/gestures/autoformat.h"
#include "tvx/platform/loaded_dialogs.h"

namespace tvx::core {
namespace {

constexpr int key_enter = 13, key_space = 32, key_c = 67, key_v = 86, key_x = 88;

}  // namespace

void DocumentEventHandler::fetch_last_event() {
  last_event_.reset();
  if (const browser::Event* event = document().event())
    last_event_ = std::make_unique<browser::Event>(*event);
}

void DocumentEventHandler::onkeydown() {
  const KeepAlive alive(context_);
  attempt([&] { fetch_last_event(); });
  attempt([&] {
    if (!last_event_) return;
    std::int32_t key_code = last_event_->key_code;
    bool shift = last_event_->shift, control = last_event_->control;
    raise([&](HTMLedEvents& host) { host.ASCIIKeyPress(key_code, shift, control); });
    // What the host wrote into the arguments counts for nothing; what it did to the event does.
    if (const browser::Event* event = document().event())
      act_on_key(event->key_code, event->shift, event->control);
  });
  mark_changed();
}

// Setting the key code to 0 is how a key is taken away from the document.
void DocumentEventHandler::act_on_key(int key_code, bool shift, bool control) {
  if (!user_may_edit() && !(control && key_code == key_c)) return;
  if (key_code == key_enter && properties_.AutoFormat)
    attempt([&] { editing::link_what_was_typed(document().editor()); });
  if (key_code == key_enter && (properties_.isAccessContained || properties_.useEnterAsBR)) {
    document().set_event_key_code(0);
    parts_.formatting.press_enter();
  } else if (key_code == key_space && shift) {
    document().set_event_key_code(0);
    parts_.selection.insert_hard_space();
  } else if (control && (key_code == key_v || key_code == key_c || key_code == key_x)) {
    if (key_code == key_v)
      parts_.clipboard.paste();
    else if (key_code == key_c)
      parts_.clipboard.copy();
    else
      parts_.clipboard.cut();
    document().set_event_key_code(0);
  }
}

// The event and the element are those of the last selection change, which every press brings about.
void DocumentEventHandler::onmousedown() {
  const KeepAlive alive(context_);
  parts_.menus.forget_pending_command();
  if (!properties_.EditorEnabled) return;
  attempt([&] {
    parts_.element_path.BuildBranchToolbar();
    if (last_event_ && last_event_->button == browser::MouseButton::Right) parts_.menus.open();
  });
}

// What the browser's own menu would need is never there: that menu stays away.
bool DocumentEventHandler::oncontextmenu() { return false; }

void DocumentEventHandler::onkeyup() { mark_changed(); }

void DocumentEventHandler::onuserchange() {
  const KeepAlive alive(context_);
  if (properties_.AutoFormat && properties_.EditorEnabled)
    attempt([&] { editing::format_what_was_typed(document().editor()); });
  mark_changed();
}

bool DocumentEventHandler::ondragstart() {
  mark_changed();
  return true;
}

bool DocumentEventHandler::user_may_edit() const { return properties_.EditorEnabled; }

bool DocumentEventHandler::onselectstart() { return properties_.EditorEnabled; }

bool DocumentEventHandler::onclick() {
  const KeepAlive alive(context_);
  attempt([&] { raise_document_click(); });
  return properties_.EditorEnabled;
}

bool DocumentEventHandler::oncontrolselect() {
  const KeepAlive alive(context_);
  attempt([&] { raise_document_click(); });
  if (browser().ReadyState() == browser::ReadyState::Complete) parts_.element_path.BuildBranchToolbar();
  return properties_.EditorEnabled;
}

void DocumentEventHandler::raise_document_click() {
  dom::Ref<dom::Element> element;
  if (const browser::Event* event = document().event())
    element = document().element_from_point(event->client_x, event->client_y);
  raise([&](HTMLedEvents& host) { host.DocumentClick(element); });
}

// A hand that moves by a pixel between the press and the end of the click leaves the view nothing to say of
// the press's place; the press itself knows what was there.
dom::Ref<dom::Element> DocumentEventHandler::element_of_last_event() const {
  if (!last_event_) throw RuntimeError(errors::object_not_set, u"There is no event");
  if (dom::Element* found = document().element_from_point(last_event_->client_x, last_event_->client_y))
    return found;
  const dom::Ref<dom::Element>& target = last_event_->target;
  return target && dom::is_connected(*target) ? target : nullptr;
}

// The coordinates are those of the last key or selection event, not of the double click.
bool DocumentEventHandler::ondblclick() {
  const KeepAlive alive(context_);
  dom::Ref<dom::Element> field;
  if (const browser::Event* event = document().event(); event && user_may_edit())
    field = FieldSettings::field_of(event->target.get());
  attempt([&] {
    parts_.highlight.set_element(element_of_last_event());
    if (!field && user_may_edit()) parts_.menus.edit_image();
  });
  if (field) attempt([&] { parts_.field_settings.edit_field(field); });
  return false;
}

void DocumentEventHandler::onselectionchange() {
  const KeepAlive alive(context_);
  // The spelling run moves the selection from word to word, with its dialog open.
  if (platform::IsDialogLoaded(u"frmSpelling")) return;
  if (browser().ReadyState() == browser::ReadyState::Complete) follow_selection();
  parts_.formatting.show_state();
}

void DocumentEventHandler::follow_selection() {
  attempt([&] { fetch_last_event(); });
  attempt([&] { parts_.highlight.restore(); });
  dom::Ref<dom::Element> element;
  attempt([&] {
    if (last_event_) element = document().element_from_point(last_event_->client_x, last_event_->client_y);
  });
  parts_.highlight.set_element(element);
  if (properties_.HighlightDOMSelectionOnClick) attempt([&] { parts_.element_path.draw_selection_border(); });
  parts_.element_path.BuildBranchToolbar();
}

}  // namespace tvx::core
