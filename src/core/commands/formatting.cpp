#include "tvx/core/commands/formatting.h"

#include <variant>

#include "tvx/base/error.h"
#include "tvx/base/relative_address.h"
#include "tvx/browser/browser.h"
#include "tvx/browser/input/writer_command.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/core/views/edit_window.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/typing.h"
#include "tvx/editing/gestures/writer_state.h"

namespace tvx::core {
namespace {

struct StateRow {
  int button;
  std::u16string_view query;
};

/// Those that hosts know to follow the selection, in the order in which they are set.
constexpr StateRow known_rows[] = {
    {button_bold, u"BOLD"},           {button_italic, u"Italic"},
    {button_underline, u"Underline"}, {button_strike, u"StrikeThrough"},
    {button_copy, u"Copy"},           {button_cut, u"Cut"},
    {button_paste, u"Paste"},
};

/// Those that tell of the paragraph.
constexpr StateRow paragraph_rows[] = {
    {button_left, u"JustifyLeft"},
    {button_center, u"JustifyCenter"},
    {button_right, u"JustifyRight"},
    {button_numbers, u"InsertOrderedList"},
    {button_bullets, u"InsertUnorderedList"},
};

}  // namespace

void Formatting::execute(std::u16string_view command, AskedBy by) {
  const auto kept = browser().Document();
  attempt([&] {
    if (by == AskedBy::Writer)
      browser::press_command(browser_document(), command);
    else
      browser_document().execCommand(command, false, u"true");
  });
}

void Formatting::run_command(std::u16string_view command, AskedBy by) {
  execute(command, by);
  show_paragraph_state();
  mark_changed();
}

void Formatting::act_on_cells(std::u16string_view command) {
  const std::uint64_t before = document().tree().structure_version();
  execute(command, AskedBy::Writer);
  show_paragraph_state();
  if (document().tree().structure_version() != before) mark_changed();
}

void Formatting::show_pressed(int button, std::u16string_view query) {
  attempt([&] {
    const browser::CommandValue value = document().queryCommandValue(query);
    const bool* told = std::get_if<bool>(&value);
    const bool pressed = told && (*told || editing::state_as_writer(document().editor(), query));
    toolbars_.Toolbar1.Item(button).set_Value(pressed ? 1 : 0);
  });
}

// The queries keep their letters, "BOLD" beside "Bold": hosts see them in what they trace.
void Formatting::run_toggle(std::u16string_view command, AskedBy by, bool guarded, int button,
                            std::u16string_view query) {
  bool enabled = !guarded;
  if (guarded) attempt([&] { enabled = browser_document().queryCommandEnabled(command); });
  if (!enabled) return;
  execute(command, by);
  show_pressed(button, query);
  mark_changed();
}

void Formatting::bold(AskedBy by) { run_toggle(u"Bold", by, true, button_bold, u"BOLD"); }
void Formatting::italic(AskedBy by) { run_toggle(u"Italic", by, true, button_italic, u"Italic"); }
void Formatting::underline(AskedBy by) { run_toggle(u"Underline", by, true, button_underline, u"Underline"); }
void Formatting::strike(AskedBy by) {
  run_toggle(u"strikethrough", by, false, button_strike, u"StrikeThrough");
}

void Formatting::show_state() {
  for (const StateRow& row : known_rows) show_pressed(row.button, row.query);
  show_paragraph_state();
  context_.state_changed();
}

void Formatting::show_paragraph_state() {
  for (const StateRow& row : paragraph_rows)
    attempt([&] {
      const bool pressed = editing::state_as_writer(document().editor(), row.query);
      toolbars_.Toolbar1.Item(row.button).set_Value(pressed ? 1 : 0);
    });
}

void Formatting::undo() {
  if (!code_.in_front()) return run_command(u"undo");
  code_.box().Undo();
  mark_changed();
}

void Formatting::redo() {
  if (!code_.in_front()) return run_command(u"redo");
  code_.box().Redo();
  mark_changed();
}

void Formatting::insert_Link() {
  const KeepAlive alive(context_);
  if (properties_.relativeURLs) attempt([&] { make_link_under_mouse_relative(); });
  attempt([&] { browser_document().execCommand(u"CreateLink", true, u""); });
  mark_changed();
}

// The dialog shows the address that is there: within the site, it shall be one of the site's. What is written
// stands also where the dialog is cancelled: it is tidying, which belongs to the last step of undo.
void Formatting::make_link_under_mouse_relative() {
  const browser::Event* event = document().event();
  if (!event) return;
  dom::Element* element = document().element_from_point(event->x(), event->y());
  while (element && !element->is(dom::Tag::A) && !element->is(dom::Tag::Body))
    element = element->parent_element();
  if (!element || !element->is(dom::Tag::A)) return;
  const std::u16string* written = element->attribute(dom::names::href);
  if (!written) return;
  const std::u16string address = without_base(*written, properties_.BaseURL).value_or(*written);
  const std::size_t hash = address.rfind(u'#');
  const dom::Ref<dom::Element> link(element);
  const dom::UndoStep step(document().tree().journal(), u"", dom::StepJoin::LastStep);
  dom::set_attribute(*link, dom::names::href, hash == address.npos ? address : address.substr(hash));
}

namespace {

/// The break that a caret stands before.
dom::Ref<dom::Node> break_after(const dom::Boundary& caret) {
  dom::Node* next =
      caret.node->is_text() ? caret.node->next_sibling() : dom::child_at(*caret.node, caret.offset);
  return dom::Ref<dom::Node>(next && next->is(dom::Tag::Br) ? next : nullptr);
}

// A line break and nothing else, wherever the caret stands: Backspace holds the line that it has emptied open
// with a break of its own.
bool break_as_told(editing::Editor& editor) {
  // What is selected as a whole is no text to break, and Backspace would take it away.
  if (editor.selection().type() == editing::SelectionType::Control) return false;
  const dom::UndoStep step(editor.document().journal(), u"Line break");
  attempt([&] { editor.execute(u"insertHTML", u"<BR>&nbsp;"); });
  if (!editor.selection().focus()) return true;
  const dom::Ref<dom::Node> present = break_after(editor.selection().focus());
  editing::delete_backward(editor);
  const dom::Boundary caret = editor.selection().focus();
  const dom::Ref<dom::Node> holder = break_after(caret);
  if (!holder || holder == present || caret.node->is_text()) return true;
  if (caret.offset > 0)
    dom::remove(*holder);
  else
    editor.selection().collapse(dom::after(*holder));
  return true;
}

}  // namespace

void Formatting::sendCR(bool bBR) { type(bBR ? break_as_told : editing::press_enter); }

void Formatting::press_enter() {
  type(properties_.useEnterAsBR ? editing::press_shift_enter : editing::press_enter);
}

// Keys go to the document's typing at once. As messages they would come back as an onkeydown of Enter, which
// isAccessContained would send again, without end.
void Formatting::type(bool (*key)(editing::Editor&)) {
  edit_window_.FindEditWindow();
  attempt([&] {
    const auto kept = DOM();
    key(document().editor());
  });
}

}  // namespace tvx::core
