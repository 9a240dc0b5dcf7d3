#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tvx::core {
class HTMLed;
}

namespace tvx {

/// A page in a file, kept whole while an editor edits it: what the user doesn't touch comes back as it was,
/// head, document type and comments included, in the same character set and with the same line ends. Saved
/// without an edit, the file has the same bytes; saved with one, the lines that the edit didn't touch are
/// written as they were.
///
/// `Editor` is HTMLed or HTMLedWidget. Paths and texts are UTF-16. What fails throws RuntimeError.
class DocumentFile {
 public:
  /// Reads a file. Throws RuntimeError(75) if it can't be read.
  static DocumentFile open(std::u16string_view path);
  /// A page with nothing in it, in no file of the user's yet. Its text is written to `draft`, so that there
  /// is something to open; throws RuntimeError(75) if that can't be written.
  static DocumentFile untitled(std::u16string_view draft);
  DocumentFile(DocumentFile&&) noexcept;
  DocumentFile& operator=(DocumentFile&&) noexcept;
  ~DocumentFile();

  /// Empty: the page is in no file yet.
  const std::u16string& path() const;
  /// The text of the page's title, white space collapsed; empty where there is none.
  const std::u16string& title() const;
  /// The address of the page's base element; empty where there is none.
  const std::u16string& base_url() const;
  /// The name that the Encoding standard has for the file's character set, in lower case.
  const std::string& charset() const;
  /// False if some bytes of the file mean nothing in its character set; an edited page loses them.
  bool faithful() const;
  /// Whether another program has written the file since it was opened or saved.
  bool changed_on_disk() const;

  /// Opens the page in an editor that has been started, in the design view. Sets its DocumentTitle and
  /// BaseURL to those of the page. Throws RuntimeError(75) if the editor doesn't open it; it then shows what
  /// it showed.
  template <class Editor>
  void open_in(Editor& editor) const {
    open_in(editor.control());
  }
  /// The bytes that a save would write of what the editor shows now.
  template <class Editor>
  std::string bytes_of(Editor& editor) const {
    return bytes_of(editor.control());
  }
  /// Saves what the editor shows under `path`, which is the page's file from now on. Throws RuntimeError(75)
  /// if that fails, and RuntimeError(91) if the editor has no document; what stood in the file is then
  /// untouched.
  template <class Editor>
  void save(Editor& editor, std::u16string_view path) {
    save(editor.control(), path);
  }

 private:
  class Parts;
  explicit DocumentFile(std::unique_ptr<Parts> parts);
  void open_in(core::HTMLed& control) const;
  std::string bytes_of(core::HTMLed& control) const;
  void save(core::HTMLed& control, std::u16string_view path);

  std::unique_ptr<Parts> parts_;
};

}  // namespace tvx
