#pragma once

#include <QString>

namespace tvx::browser {
class HTMLDocument;
}

namespace tvx::htmled {

/// A file's name for a document that has none yet, "Summer fair.html": its first heading, else its title.
QString proposed_name(const browser::HTMLDocument& document);

}  // namespace tvx::htmled
