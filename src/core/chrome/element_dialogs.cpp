#include "tvx/core/chrome/element_dialogs.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/chrome/element_code_dialog.h"
#include "tvx/core/chrome/table_tools.h"
#include "tvx/core/dialogs/image_settings.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/dom/tree.h"

namespace tvx::core {
namespace {

/// Fills the dialog. The base, if any, is taken off the element's address in the document itself, and that
/// stands whatever the user does: it is a tidying read, which belongs to the last step.
void show_tag(const dom::Ref<dom::Element>& element, const std::u16string& base, ElementCodeDialog& dialog) {
  if (!element) throw RuntimeError(errors::object_not_set, u"There is no current element");
  attempt([&] {
    const dom::UndoStep step(dom::document_of(*element).journal(), u"", dom::StepJoin::LastStep);
    make_address_relative(*element, base);
  });
  dialog.set_outerHTML(dom::outer_html(*element));
}

/// The number of an element among all; what has left the document counts as the first.
std::size_t place_in(browser::HTMLDocument& document, const dom::Element* element) {
  return element && dom::is_connected(*element) ? document.tree().source_index(*element) : 0;
}

dom::Ref<dom::Element> element_at(browser::HTMLDocument& document, std::size_t place) {
  const std::vector<dom::Element*>& all = document.tree().all();
  return place < all.size() ? all[place] : nullptr;
}

void replace_element(browser::HTMLDocument& document, std::size_t place, std::u16string_view html) {
  const dom::Ref<dom::Element> element = element_at(document, place);
  if (!element) throw RuntimeError(errors::object_not_set, u"There is no such element");
  const dom::UndoStep step(document.tree().journal(), u"Edit Tag");
  dom::assign_outer_html(*element, html);
}

}  // namespace

// The user edits the opening tag as text. By its number the element is found again when the dialog is closed:
// what stands there then is replaced, and the current element may be one that has left the document.
void ElementDialogs::edit_tag() {
  attempt([&] { highlight_.restore(); });
  std::size_t place = 0;
  attempt([&] { place = place_in(document(), highlight_.element()); });
  attempt([&] { highlight_.set_element(element_at(document(), place)); });
  const dom::Ref<dom::Element> element = highlight_.element();
  const std::u16string base = properties_.relativeURLs ? properties_.BaseURL : std::u16string();
  ElementCodeDialog dialog;
  attempt([&] { show_tag(element, base, dialog); });
  const bool refused = element && refuses_new_tag(ascii_lower(element->display_name()));
  if (!attempt([&] { context_.show_dialog(dialog.form(), u"ElementTagEdit"); }) || dialog.booCancel()) return;
  if (!refused) attempt([&] { replace_element(document(), place, dialog.outerHTML()); });
  mark_changed();
}

void ElementDialogs::edit_properties() {
  attempt([&] { highlight_.restore(); });
  bool changed = false;
  if (const dom::Ref<dom::Element> element = highlight_.element())
    changed =
        element->is(dom::Tag::Img) ? images_.EditImageProperties() : tables_.edit_properties_of(element);
  // The dialog may have changed the style: its border is what is saved now.
  highlight_.set_element(highlight_.element());
  if (changed) mark_changed();
}

}  // namespace tvx::core
