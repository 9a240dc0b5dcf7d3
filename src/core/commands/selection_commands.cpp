#include "tvx/core/commands/selection_commands.h"

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/browser/browser.h"
#include "tvx/core/commands/selection_operations.h"
#include "tvx/editing/gestures/typing.h"

namespace tvx::core {
namespace {

InsertPlace place_of(ed_InsertType where) {
  switch (where) {
    case ed_InsertType::ed_InsertBeforeSelection: return InsertPlace::BeforeSelection;
    case ed_InsertType::ed_InsertAfterSelection: return InsertPlace::AfterSelection;
    case ed_InsertType::ed_InsertReplaceSelection: break;
  }
  return InsertPlace::InsteadOfSelection;
}

}  // namespace

void SelectionCommands::InsertAtCursor(std::u16string_view HTMLText, ed_InsertType insertWhere) {
  const KeepAlive alive(context_);
  if (!HTMLText.empty()) {
    const auto kept = browser().Document();
    bool inserted = false;
    const auto failure = failure_of([&] {
      editing::Editor& editor = browser_document().editor();
      inserted = insert_at_selection(editor, HTMLText, place_of(insertWhere));
    });
    if (failure) return raise_error(993, u"InsertAtCursor failed " + failure->text());
    if (!inserted) raise_error(993, u"InsertAtCursor failed : Can not insert over a single control element");
  }
  // Also where nothing was inserted.
  tell_inserted();
}

// The flag first, other than everywhere else.
void SelectionCommands::tell_inserted() {
  properties_.IsDirty = true;
  context_.PropertyChanged(u"DocumentHTML");
  context_.state_changed();
}

// What is typed after it would make a blank of a space that was only put in.
void SelectionCommands::insert_hard_space() {
  const KeepAlive alive(context_);
  const auto kept = browser().Document();
  const auto typed = [&] {
    editing::Editor& editor = browser_document().editor();
    return editor.selection().type() == editing::SelectionType::Text && editing::type_text(editor, u"\u00A0");
  };
  bool done = false;
  attempt([&] { done = typed(); });
  if (!done) return InsertAtCursor(u"&nbsp;", ed_InsertType::ed_InsertReplaceSelection);
  tell_inserted();
}

void SelectionCommands::FormatSelection(std::u16string_view OpeningTag, std::u16string_view ClosingTag) {
  const KeepAlive alive(context_);
  const auto kept = DOM();
  const auto failure = failure_of([&] { wrap_selection(document().editor(), OpeningTag, ClosingTag); });
  if (failure) return raise_error(5, u"Selection fomatting could not be applied : " + failure->text());
  mark_changed();
}

void SelectionCommands::insert_HR() {
  const KeepAlive alive(context_);
  InsertAtCursor(u"<HR>", ed_InsertType::ed_InsertReplaceSelection);
  mark_changed();
}

std::optional<std::u16string> SelectionCommands::GetCurrentSelection(bool HTMLText) {
  const KeepAlive alive(context_);
  const auto form = HTMLText ? SelectionForm::Html : SelectionForm::Text;
  std::optional<std::u16string> content;
  const auto failure = failure_of([&] { content = selected_content(document().editor(), form); });
  if (failure) raise_error(6, u"Current Selection could not be retreived : " + failure->text());
  return content;
}

std::u16string SelectionCommands::selectText(std::int32_t SelStartPos, std::int32_t SelLength) {
  const KeepAlive alive(context_);
  const auto kept = DOM();
  std::u16string selected;
  attempt([&] {
    // One piece of news of the selection, when it stands.
    document().select([&](editing::Selection&) {
      selected = select_characters(document().editor(), SelStartPos, SelLength);
    });
  });
  return selected;
}

}  // namespace tvx::core
