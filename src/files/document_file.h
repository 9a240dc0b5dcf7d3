#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/browser/loading/parsed_page.h"
#include "tvx/files/file_form.h"
#include "tvx/files/page_text.h"

namespace tvx::files {

/// A page in a file, kept whole: what the user doesn't edit comes back as it was, head, document type and
/// comments included, in the same character set and each line with the end that it has. Saved without an
/// edit, the file has the same bytes; saved with one, the lines that the edit didn't touch are written as
/// they were.
class DocumentFile {
 public:
  /// No page at all yet.
  DocumentFile() = default;
  /// Reads a file. Throws RuntimeError path_access if it can't be read.
  static DocumentFile open(std::u16string_view path);
  /// A page with nothing in it, in no file of the user's yet. Its text is written to `draft`, so that there
  /// is something to open. With a title it is a whole page of today, in a language if one is given.
  static DocumentFile untitled(std::u16string_view draft, std::u16string_view title = {},
                               std::u16string_view language = {});

  /// The same with a page that somebody has begun: these bytes, in the character set that they name.
  static DocumentFile from_template(std::u16string_view draft, std::string bytes);

  /// Empty: the page is in no file yet.
  const std::u16string& path() const { return path_; }
  /// What the control opens: the file, or the draft.
  const std::u16string& source() const { return source_; }
  /// The text of the page's title, white space collapsed, and the address of its base element; empty where
  /// there is none. A control must know both before it opens the page, since it writes them into it.
  const std::u16string& title() const { return title_; }
  const std::u16string& base_url() const { return base_url_; }
  const FileForm& form() const { return form_; }
  /// The form that a save would give the document: a character set that the page has come to name counts, but
  /// not against a byte order mark.
  FileForm form_of(const dom::Document& document) const;
  /// All lines end so, whatever the file had.
  void set_line_end(LineEnd end);
  /// What that was called with; nothing where the lines end as they do in the file.
  std::optional<LineEnd> chosen_line_end() const;
  /// Without a byte order mark the page's own word counts.
  void take_mark_away();
  /// Whether a save would spell the very same page with other bytes.
  bool respelled() const;
  /// False if the file is a picture, an archive or the like, in which nobody would find a text.
  bool is_text() const;
  /// False if some bytes of the file mean nothing in its character set; an edited page loses them.
  bool faithful() const { return faithful_; }

  /// For who has source() opened next, once: it was parsed to know the title and the base, and needn't be
  /// again. As long as that lives, this file stays as it is.
  browser::ParsedPage parsed();

  /// Puts title and base into the opened document again as the file has them, letter by letter. This is no
  /// edit: there is nothing to undo.
  void keep_head(dom::Document& document) const;

  /// The page as the file has it, and as the document is now, both in this program's way of writing.
  const std::u16string& page_text() const;
  std::u16string page_text(const dom::Document& document) const;

  /// Whether another program has written the file since it was opened or saved.
  bool changed_on_disk() const;
  /// The bytes that a save would write.
  std::string bytes_of(const dom::Document& document) const;
  /// Saves under `path`, which is the page's file from now on. Fails with RuntimeError path_access; whatever
  /// stood there is then untouched.
  void save(const dom::Document& document, std::u16string_view path);
  /// The page is that of a file which isn't there: saving writes it anew.
  void stand_for(std::u16string_view path) { path_ = path; }

 private:
  struct Written {
    std::string bytes;
    std::u16string source_text, page_text;
    LineEnds line_ends;
    FileForm form;
  };
  Written spelled(std::u16string_view source, std::u16string page, const FileForm& form) const;
  Written written(const dom::Document& document) const;
  void take(std::string bytes);

  /// A page's text as its writer has spelled it, and the same as this program would write it.
  struct Spelling {
    std::u16string source_text, page_text;
  };

  bool fresh_ = false;  // begun in this program, and not read from a file since
  std::u16string path_, source_;
  std::string bytes_;                               // as they stand in the file
  std::u16string source_text_;                      // what these bytes say, lines ending in LF
  LineEnds line_ends_;                              // of these lines, where they differ
  mutable std::optional<std::u16string> unedited_;  // the same as this program would write it
  // Of the source, until somebody takes it: of all copies of this.
  std::shared_ptr<dom::Ref<dom::Document>> tree_;
  // The source and that text as they were before the first save.
  std::optional<Spelling> opened_;
  FileForm form_, form_in_file_;
  bool mixed_in_file_ = false;    // the lines' ends
  std::string declared_in_file_;  // the character set that the page itself names
  PageShape shape_;
  bool faithful_ = true;
  std::u16string title_, base_url_;
  std::optional<std::u16string> title_as_written_, base_as_written_;
};

}  // namespace tvx::files
