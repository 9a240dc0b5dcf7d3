#include "tvx/core/dialogs/form_elements.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/dialogs/form_dialog.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/tree/surgery.h"

namespace tvx::core {
namespace {

struct FieldRow {
  std::u16string_view key, command, id;
};

// There is no counter: a second text field has the id of the first, until its user gives it another.
constexpr FieldRow fields[] = {{u"textfield", u"InsertInputText", u"Textbox1"},
                               {u"textarea", u"InsertTextArea", u"TextArea1"},
                               {u"filefield", u"InsertInputFileUpload", u"Upload1"},
                               {u"hiddenfield", u"InsertInputHidden", u"Hidden1"},
                               {u"imagefield", u"InsertInputImage", u"Image1"},
                               {u"checkbox", u"InsertInputCheckbox", u"Check1"},
                               {u"dropdown", u"InsertSelectDropdown", u"Select1"},
                               {u"button", u"InsertInputButton", u"Button1"},
                               {u"submit", u"InsertInputSubmit", u"Submit"},
                               {u"reset", u"InsertInputReset", u"Reset"},
                               {u"radio", u"InsertInputRadio", u"Radio1"}};

}  // namespace

bool FormElements::insert_field(std::u16string_view key) {
  const auto row = std::ranges::find(fields, key, &FieldRow::key);
  if (row == std::end(fields)) return false;
  browser_document().execCommand(row->command, false, row->id);
  return true;
}

// The nodes move and aren't made anew: the caret stays where it is, and what is inserted next stands within
// the form.
bool FormElements::wrap_body() {
  dom::Element& body = body_of(document());
  if (document().first(dom::Tag::Form)) return false;
  dom::Document& tree = document().tree();
  document().select([&](editing::Selection& selection) {
    const dom::UndoStep step(tree.journal(), u"Insert form");
    const dom::Ref<dom::Element> form = tree.create_element(dom::Tag::Form);
    dom::set_attribute(*form, dom::names::name, u"FORM1");
    const editing::NodeList content = editing::children_of(body);
    dom::insert(body, form);
    editing::move_run_preserving_ranges(content, *form, nullptr);
    if (selection.range().start.node == &body) selection.collapse({form.get(), 0});
  });
  return true;
}

// As hosts know it: the parent has what was in the form, and nothing else any more.
void FormElements::remove_form(dom::Element& form) {
  const dom::Ref<dom::Element> parent = form.parent_element();
  if (!parent) throw RuntimeError(errors::object_not_set, u"The form stands nowhere");
  dom::assign_inner_html(*parent, dom::inner_html(form));
}

void FormElements::insert_Form() {
  const KeepAlive alive(context_);
  const auto kept = DOM();
  bool wrapped = false;
  attempt([&] { wrapped = wrap_body(); });
  dom::Ref<dom::Element> form;
  attempt([&] { form = document().first(dom::Tag::Form); });
  if (form) edit(form, wrapped);
}

// What came before the dialog and what it leads to is one step, unless something else has come in between.
void FormElements::edit(const dom::Ref<dom::Element>& form, bool wrapped) {
  const KeepAlive alive(context_);
  dom::Journal& journal = dom::document_of(*form).journal();
  const std::size_t depth = journal.depth();
  dialogs::FormDialog dialog(*form);
  if (!attempt([&] { context_.show_dialog(dialog.form(), u"FormSettings"); })) return;
  if (dialog.cancelled()) return;
  const bool joins = wrapped && journal.depth() == depth;
  const dom::UndoStep step(journal, u"Form Properties",
                           joins ? dom::StepJoin::LastStep : dom::StepJoin::Never);
  if (dialog.removes()) {
    attempt([&] { remove_form(*form); });
  } else {
    dialog.write();
    mark_changed();
  }
}

}  // namespace tvx::core
