#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "tvx/files/file_addresses.h"

namespace tvx::dom {
class Document;
}
namespace tvx::files {
class DocumentFile;
}

namespace tvx::htmled {

/// What has become of files from elsewhere in a page, by their paths: the copy that it shows, or nothing
/// where the user left them where they are. Undo brings their addresses back, and nobody wants to be asked
/// again.
using SettledFiles = std::map<std::u16string, QString>;

/// The files of this computer that a page names, and how the page's own file writes their addresses: seen
/// from its folder where they lie in it, so that both can be moved together; and in another folder they still
/// mean the same files. Whole addresses that stand in the file already stay so. The document that is being
/// edited keeps its addresses: they are right as long as it stands where it was opened.
class FilesOfPage {
 public:
  /// The page of `file` for `target`. The document stands in `opened`, a path; empty: in no folder of the
  /// user's.
  FilesOfPage(const files::DocumentFile& file, const QString& opened, const QString& target,
              SettledFiles& settled);

  /// Reads which files the page names now.
  void look(dom::Document& page);
  /// What it shows from the old folder and the new one hasn't got: paths from the folders on.
  const QStringList& along() const { return along_; }
  /// What it shows from anywhere else, and didn't before.
  const QStringList& elsewhere() const { return elsewhere_; }
  /// The name of the folder beside the page that those are copied to.
  QString folder_of_copies() const;

  /// Both give the file that couldn't be copied; empty: all could.
  QString copy_along();
  QString copy_elsewhere();
  void leave_elsewhere();
  /// The page shows the copies of files from elsewhere from now on. That is no step of undo: files are where
  /// they are.
  void show_copies(dom::Document& page);

  /// Calls `act` while the page has the addresses that its file is to have.
  void as_filed(dom::Document& page, const std::function<void()>& act);

 private:
  std::optional<std::u16string> address_of(const files::FileAddress& address) const;
  std::optional<std::u16string> moved(const files::FileAddress& address) const;
  bool is_new(const files::FileAddress& address) const;
  bool is_settled(const std::u16string& path) const;
  void read_known();

  std::u16string old_page_, old_address_;  // empty: it is in no file yet
  QString from_, to_, target_;
  const files::DocumentFile& file_;
  std::optional<std::set<std::u16string>> known_;  // whole addresses in the file
  QStringList along_, elsewhere_;
  SettledFiles& settled_;
};

}  // namespace tvx::htmled
