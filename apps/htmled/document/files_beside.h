#pragma once

#include <QStringList>

namespace tvx::dom {
class Document;
}

namespace tvx::htmled {

/// Pictures, style sheets and other files that a page in that folder shows by relative addresses, as far as
/// they are there: their paths from it on. Those outside of the folder aren't among them.
QStringList files_beside(const dom::Document& document, const QString& folder);

/// Copies such files into another folder, which may have some of them already. The one that couldn't be
/// copied; empty: all could.
QString copy_files(const QStringList& files, const QString& from, const QString& to);

}  // namespace tvx::htmled
