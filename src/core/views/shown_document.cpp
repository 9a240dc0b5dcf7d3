#include "tvx/core/views/shown_document.h"

#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"

namespace tvx::core {

ShownDocument::ShownDocument(HTMLed& control, browser::DocumentView& view) : control_(control), view_(view) {
  control_.add_observer(*this);
}

ShownDocument::~ShownDocument() {
  control_.remove_observer(*this);
  view_.show(nullptr);
}

void ShownDocument::document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) {
  view_.show(document);
}

void ShownDocument::editor_enabled_changed(bool enabled) { view_.set_editable(enabled); }

}  // namespace tvx::core
