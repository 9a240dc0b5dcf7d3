#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

/// Pages to begin with: those that come with the program, in its language, and the user's own.
namespace tvx::htmled {

struct PageTemplate {
  QString name;
  QString file;
  bool own = false;  // the user's
};

/// Those of the program by their names, then those of the user by theirs.
/// `language` is what the program speaks.
std::vector<PageTemplate> page_templates(const QString& language);
/// The page's bytes: of the program's own its words in the program's language, of the user's with the whole
/// addresses of pictures that stand beside it. Empty where the file can't be read.
QByteArray content_of(const PageTemplate& chosen, const QString& language);

/// Where the user's own stand; made if it isn't there. Empty: it can't be.
QString own_templates_folder();
/// A page as it is to be in the file of a template: the pictures and style sheets beside it, in `folder`, are
/// copied into a folder beside that file.
QByteArray with_copies(const QByteArray& page, const QString& folder, const QString& file);
/// The file of the user's template of that name; empty where no file can be called so.
QString own_template_file(const QString& name);

}  // namespace tvx::htmled
