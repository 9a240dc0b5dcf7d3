#pragma once

#include <functional>

namespace tvx::core {
class HTMLed;
}
namespace tvx::dom {
class Document;
}

/// A file's page with a control at its other end.
namespace tvx::files {

class DocumentFile;

/// Opens the page in the control, with the title and the base that the file has. False: the control has
/// another page still, which must never be saved over the file.
bool open_in(core::HTMLed& control, DocumentFile& file);

/// Calls `act` with the document as it is to be saved, in whichever view the control is. Throws RuntimeError
/// object_not_set where there is none.
void with_document(core::HTMLed& control, const std::function<void(const dom::Document&)>& act);

}  // namespace tvx::files
