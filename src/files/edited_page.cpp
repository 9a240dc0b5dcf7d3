#include "tvx/files/edited_page.h"

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/core/htmled.h"
#include "tvx/files/document_file.h"

namespace tvx::files {

bool open_in(core::HTMLed& control, DocumentFile& file) {
  if (control.InCodeView()) control.show_Code();
  // The control writes both into what it opens: they are the file's own then.
  control.set_DocumentTitle(file.title());
  control.set_BaseURL(file.base_url());
  std::u16string source = file.source();
  {
    const browser::ParsedPage parsed = file.parsed();
    control.Open_document(source, true);
  }
  const auto document = control.DOM();
  if (!document || document->url() != browser::document_address(file.source())) return false;
  file.keep_head(document->tree());
  return true;
}

void with_document(core::HTMLed& control, const std::function<void(const dom::Document&)>& act) {
  struct DesignView {
    explicit DesignView(core::HTMLed& of) : control(of), left(of.InCodeView()) {
      if (left) control.show_Code();
    }
    ~DesignView() {
      if (left) attempt([this] { control.show_Code(); });
    }
    core::HTMLed& control;
    const bool left;
  };
  const DesignView view(control);
  control.UserControl_ExitFocus();  // the border of the selected element is no part of the document
  const auto document = control.DOM();
  if (!document) throw RuntimeError(errors::object_not_set, u"There is no document");
  act(document->tree());
}

}  // namespace tvx::files
