#include <utility>

#include "tvx/base/error.h"
#include "tvx/core/htmled.h"
#include "tvx/document_file.h"
#include "tvx/files/document_file.h"
#include "tvx/files/edited_page.h"

/// The file layer with a control at its other end.
namespace tvx {

class DocumentFile::Parts {
 public:
  files::DocumentFile file;
};

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
  if (!files::open_in(control, parts_->file))
    throw RuntimeError(errors::path_access, u"Can't open " + parts_->file.source());
}

std::string DocumentFile::bytes_of(core::HTMLed& control) const {
  std::string bytes;
  files::with_document(control,
                       [&](const dom::Document& document) { bytes = parts_->file.bytes_of(document); });
  return bytes;
}

void DocumentFile::save(core::HTMLed& control, std::u16string_view path) {
  files::with_document(control, [&](const dom::Document& document) { parts_->file.save(document, path); });
}

}  // namespace tvx
