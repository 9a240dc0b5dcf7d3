#pragma once

#include <QString>

namespace tvx::browser {
class HTMLDocument;
}

namespace tvx::htmled {

/// The text of the first heading that a file could be named by; empty: there is none.
QString first_heading(const browser::HTMLDocument& document);

/// A file's name for a document that has none yet, "Summer fair.html": its first heading, else its title.
QString proposed_name(const browser::HTMLDocument& document);

}  // namespace tvx::htmled
