#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/commands/selection_operations.h"
#include "tvx/core/htmled.h"
#include "tvx/core/keep_alive.h"

/// The selection as a host works with it: inserting at it, reading it, setting it by characters.
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

void HTMLed::InsertAtCursor(std::u16string_view HTMLText, ed_InsertType insertWhere) {
  const KeepAlive alive(*this);
  if (!HTMLText.empty()) {
    const auto kept = browser_->Document();
    bool inserted = false;
    const auto failure = failure_of([&] {
      editing::Editor& editor = browser_document().editor();
      inserted = insert_at_selection(editor, HTMLText, place_of(insertWhere));
    });
    if (failure) return raise_error(993, u"InsertAtCursor failed " + failure->text());
    if (!inserted) raise_error(993, u"InsertAtCursor failed : Can not insert over a single control element");
  }
  // Also where nothing was inserted; and the flag first, other than everywhere else.
  properties_.IsDirty = true;
  PropertyChanged(u"DocumentHTML");
}

std::optional<std::u16string> HTMLed::GetCurrentSelection(bool HTMLText) {
  const KeepAlive alive(*this);
  const auto form = HTMLText ? SelectionForm::Html : SelectionForm::Text;
  std::optional<std::u16string> content;
  const auto failure = failure_of([&] { content = selected_content(document().editor(), form); });
  if (failure) raise_error(6, u"Current Selection could not be retreived : " + failure->text());
  return content;
}

std::u16string HTMLed::selectText(std::int32_t SelStartPos, std::int32_t SelLength) {
  const KeepAlive alive(*this);
  const auto kept = docHTML_;
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
