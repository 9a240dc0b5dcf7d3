#include <functional>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/core/htmled.h"
#include "tvx/document_file.h"
#include "tvx/files/document_file.h"

/// The file layer with a control at its other end.
namespace tvx {

class DocumentFile::Parts {
 public:
  files::DocumentFile file;
};

namespace {

/// Calls `act` with the document as it is to be saved, in whichever view the control is.
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

}  // namespace

DocumentFile::DocumentFile(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
DocumentFile::DocumentFile(DocumentFile&&) noexcept = default;
DocumentFile& DocumentFile::operator=(DocumentFile&&) noexcept = default;
DocumentFile::~DocumentFile() = default;

DocumentFile DocumentFile::open(std::u16string_view path) {
  auto parts = std::make_unique<Parts>();
  parts->file = files::DocumentFile::open(path);
  return DocumentFile(std::move(parts));
}

DocumentFile DocumentFile::untitled(std::u16string_view draft) {
  auto parts = std::make_unique<Parts>();
  parts->file = files::DocumentFile::untitled(draft);
  return DocumentFile(std::move(parts));
}

const std::u16string& DocumentFile::path() const { return parts_->file.path(); }
const std::u16string& DocumentFile::title() const { return parts_->file.title(); }
const std::u16string& DocumentFile::base_url() const { return parts_->file.base_url(); }
const std::string& DocumentFile::charset() const { return parts_->file.form().charset; }
bool DocumentFile::faithful() const { return parts_->file.faithful(); }
bool DocumentFile::changed_on_disk() const { return parts_->file.changed_on_disk(); }

void DocumentFile::open_in(core::HTMLed& control) const {
  files::DocumentFile& file = parts_->file;
  if (control.InCodeView()) control.show_Code();
  // The control writes both into what it opens: they are the file's own then.
  control.set_DocumentTitle(file.title());
  control.set_BaseURL(file.base_url());
  std::u16string source = file.source();
  {
    const browser::ParsedPage parsed = file.parsed();
    control.Open_document(source, true);
  }
  // What stays in the control must never be saved over the file that couldn't be loaded.
  const auto document = control.DOM();
  if (!document || document->url() != browser::document_address(file.source()))
    throw RuntimeError(errors::path_access, u"Can't open " + file.source());
  file.keep_head(document->tree());
}

std::string DocumentFile::bytes_of(core::HTMLed& control) const {
  std::string bytes;
  with_document(control, [&](const dom::Document& document) { bytes = parts_->file.bytes_of(document); });
  return bytes;
}

void DocumentFile::save(core::HTMLed& control, std::u16string_view path) {
  with_document(control, [&](const dom::Document& document) { parts_->file.save(document, path); });
}

}  // namespace tvx
