#include "tvx/files/page_properties.h"

#include "htmled/document/document_page.h"
#include "htmled/properties/properties_dialog.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/journal.h"
#include "tvx/htmled_widget.h"

/// The dialog about the page as a whole. What the user changes there is seen in the page at once; in the end
/// it is one step of undo, or nothing.
namespace tvx::htmled {

void DocumentPage::ask_properties() {
  change_page([this](dom::Document& document) {
    const files::PageProperties before = files::page_properties(document);
    PropertiesDialog dialog(before, name(), this);
    document.journal().open(u"Page properties");
    connect(&dialog, &PropertiesDialog::changed, this, [&] {
      document.journal().roll_back();
      if (dialog.shows_changes()) files::set_page_properties(document, dialog.properties());
    });
    const bool accepted = dialog.exec() == QDialog::Accepted;
    const files::PageProperties now = dialog.properties();
    document.journal().roll_back();
    if (accepted && now.charset != before.charset && now.charset != u"utf-8") file_.take_mark_away();
    if (accepted) files::set_page_properties(document, now);
    document.journal().close();
  });
}

}  // namespace tvx::htmled
