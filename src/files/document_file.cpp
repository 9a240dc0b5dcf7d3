#include "tvx/files/document_file.h"

#include <algorithm>
#include <utility>

#include "tvx/base/code_page.h"
#include "tvx/base/file_replacement.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/files/declared_charset.h"
#include "tvx/files/merge_lines.h"
#include "tvx/files/merge_markup.h"
#include "tvx/files/source_lines.h"

namespace tvx::files {
namespace {

constexpr std::string_view empty_page =
    "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n</head>\n<body>\n<p></p>\n</body>\n</html>\n";

std::string escaped(std::u16string_view text) {
  std::string result;
  for (const char c : to_utf8(text))
    result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : std::string(1, c);
  return result;
}

bool is_written_leftwards(std::u16string_view language) {
  constexpr std::u16string_view leftward[] = {u"ar", u"ckb", u"dv", u"fa", u"he", u"iw",
                                              u"ps", u"sd",  u"ug", u"ur", u"yi"};
  const std::u16string_view name = language.substr(0, language.find_first_of(u"-_"));
  return std::ranges::any_of(
      leftward, [&](std::u16string_view each) { return equals_ignoring_ascii_case(each, name); });
}

std::string new_page(std::u16string_view title, std::u16string_view language) {
  const std::string direction = is_written_leftwards(language) ? " dir=\"rtl\"" : "";
  const std::string tag =
      language.empty() ? "<html>" : "<html lang=\"" + escaped(language) + "\"" + direction + ">";
  return "<!DOCTYPE html>\n" + tag +
         "\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"viewport\" content=\"width=device-width, "
         "initial-scale=1\">\n<title>" +
         escaped(title) + "</title>\n</head>\n<body>\n<p></p>\n</body>\n</html>\n";
}

dom::Element* first(const dom::Document& document, dom::Tag tag) {
  for (const dom::Node* node = &document; node; node = dom::next_in_order(*node))
    if (node->is(tag)) return const_cast<dom::Element*>(static_cast<const dom::Element*>(node));
  return nullptr;
}

std::u16string collapsed(std::u16string_view text) {
  std::u16string result;
  for (const std::u16string_view word : split_on_space(text)) {
    if (!result.empty()) result += u' ';
    result += word;
  }
  return result;
}

}  // namespace

DocumentFile DocumentFile::open(std::u16string_view path) {
  DocumentFile file;
  file.path_ = file.source_ = path;
  file.take(read_all_bytes(path));
  sweep_unfinished_saves(file_system_path(path));
  return file;
}

DocumentFile DocumentFile::untitled(std::u16string_view draft, std::u16string_view title,
                                    std::u16string_view language) {
  return from_template(draft, title.empty() ? std::string(empty_page) : new_page(title, language));
}

DocumentFile DocumentFile::from_template(std::u16string_view draft, std::string bytes) {
  save_atomically(draft, bytes);
  DocumentFile file;
  file.source_ = draft;
  file.fresh_ = true;
  file.take(std::move(bytes));
  return file;
}

void DocumentFile::take(std::string bytes) {
  FileContent content = read_form(bytes);
  const dom::Ref<dom::Document> tree = dom::parse_document(content.text);
  tree_ = std::make_shared<dom::Ref<dom::Document>>(tree);
  form_ = form_in_file_ = std::move(content.form);
  mixed_in_file_ = !content.line_ends.empty();
  declared_in_file_ = declared_charset(*tree);
  faithful_ = content.faithful;
  shape_ = shape_of(content.text, *tree);
  unedited_.reset();
  source_text_ = std::move(content.text);
  line_ends_ = std::move(content.line_ends);
  bytes_ = std::move(bytes);
  title_as_written_.reset();
  base_as_written_.reset();
  if (const dom::Element* title = first(*tree, dom::Tag::Title))
    title_as_written_ = dom::text_content(*title);
  if (const dom::Element* base = first(*tree, dom::Tag::Base))
    if (const std::u16string* href = base->attribute(dom::names::href)) base_as_written_ = *href;
  title_ = collapsed(title_as_written_.value_or(u""));
  base_url_ = base_as_written_.value_or(u"");
}

// Nothing but ASCII, and no word of a character set: a page is read as UTF-8 then.
browser::ParsedPage DocumentFile::parsed() {
  const bool is_ascii = form_in_file_.charset == "us-ascii";
  browser::Encoding encoding{is_ascii ? "utf-8" : form_in_file_.charset, form_in_file_.byte_order_mark};
  return {bytes_, tree_ ? std::exchange(*tree_, nullptr) : nullptr, std::move(encoding)};
}

void DocumentFile::keep_head(dom::Document& document) const {
  const dom::MutationScope scope(document, dom::MutationKind::Load);
  if (dom::Element* title = first(document, dom::Tag::Title)) {
    const std::u16string text = title_as_written_.value_or(u"");
    if (!title_as_written_)
      dom::remove(*title);
    else if (text.empty())
      dom::clear(*title);
    else if (dom::text_content(*title) != text)
      dom::replace_children(*title, document.create_text(text));
  }
  if (dom::Element* base = first(document, dom::Tag::Base)) {
    if (base_as_written_)
      dom::set_attribute(*base, dom::names::href, *base_as_written_);
    else
      dom::remove_attribute(*base, dom::names::href);
  }
}

// A stray control character is no reason to keep a page from its writer.
bool DocumentFile::is_text() const {
  constexpr std::size_t looked_at = 64 * 1024, letters_for_each = 200;
  const std::u16string_view start = std::u16string_view(source_text_).substr(0, looked_at);
  if (start.starts_with(u"%PDF-")) return false;
  if (trimmed(start).starts_with(u'<') || start.find(u'\0') == start.npos) return true;
  const auto controls = std::ranges::count_if(
      start, [](char16_t c) { return c == 0xFFFD || (c < u' ' && !is_ascii_space(c)); });
  return std::size_t(controls) * letters_for_each < start.size();
}

bool DocumentFile::changed_on_disk() const {
  if (path_.empty()) return false;
  const std::optional<std::string> now = read_bytes(path_);
  return now && *now != bytes_;
}

// Most pages are opened and looked at: what they would be written as is worked out when it is first asked
// for.
const std::u16string& DocumentFile::page_text() const {
  if (!unedited_) unedited_ = page_text(tree_ && *tree_ ? **tree_ : *dom::parse_document(source_text_));
  return *unedited_;
}

// Nobody has laid out the source of a page that was begun here.
std::u16string DocumentFile::page_text(const dom::Document& document) const {
  std::u16string text = files::page_text(document, shape_);
  return fresh_ ? with_source_lines(std::move(text)) : text;
}

// An edited page is written anew as a whole, in this program's way. So that a file under version control
// shows what was edited and nothing else, what wasn't is then taken from the file: word by word, with more
// and more of what stands beside the edits where these would mean something else, at last line by line. What
// was taken out, saved and brought back by undo is taken from the file as it was opened.
DocumentFile::Written DocumentFile::written(const dom::Document& document) const {
  std::u16string text = page_text(document);
  const FileForm form = form_of(document);
  if (text == page_text() && !respelled()) return {bytes_, source_text_, std::move(text), line_ends_, form};
  std::vector<std::pair<std::u16string_view, std::u16string_view>> spellings;
  if (opened_) spellings.emplace_back(opened_->page_text, opened_->source_text);
  spellings.emplace_back(page_text(), source_text_);
  const auto checked = [&](const std::u16string& source) -> std::optional<Written> {
    Written found = spelled(source, text, form);
    if (page_text(*dom::parse_document(found.source_text)) != text) return {};
    return found;
  };
  std::vector<MarkupMerge> merges;
  for (const auto& [page, source] : spellings) merges.emplace_back(page, source, text);
  constexpr std::pair<std::size_t, std::size_t> beside[] = {{0, 0}, {1, 0}, {0, 1},   {2, 2},
                                                            {4, 4}, {9, 9}, {20, 20}, {60, 60}};
  for (const auto& [before, after] : beside)
    for (const MarkupMerge& merge : merges)
      if (auto found = checked(merge.run(before, after))) return *std::move(found);
  for (const auto& [page, source] : spellings)
    if (auto found = checked(merge_lines(page, source, text))) return *std::move(found);
  return spelled(text, text, form);
}

// What the character set can't hold becomes references, so that the file's text is read from its bytes.
DocumentFile::Written DocumentFile::spelled(std::u16string_view source, std::u16string page,
                                            const FileForm& form) const {
  LineEnds ends;
  if (!line_ends_.empty()) ends = line_ends_after(source_text_, line_ends_, source);
  std::string bytes = write_form(source, form, ends);
  std::u16string text = read_form(bytes).text;
  return {std::move(bytes), std::move(text), std::move(page), std::move(ends), form};
}

// --- the form ---

FileForm DocumentFile::form_of(const dom::Document& document) const {
  FileForm form = form_;
  const std::string declared = declared_charset(document);
  if (form.byte_order_mark || declared == declared_in_file_) return form;
  if (!declared.empty()) form.charset = declared;
  form.declared = !declared.empty();
  return form;
}

std::optional<LineEnd> DocumentFile::chosen_line_end() const {
  const bool unites = mixed_in_file_ && line_ends_.empty();
  if (form_.line_end == form_in_file_.line_end && !unites) return {};
  return form_.line_end;
}

bool DocumentFile::respelled() const {
  return chosen_line_end() || form_.byte_order_mark != form_in_file_.byte_order_mark;
}

void DocumentFile::set_line_end(LineEnd end) {
  form_.line_end = end;
  line_ends_.clear();
}

void DocumentFile::take_mark_away() {
  if (!form_.byte_order_mark) return;
  form_.byte_order_mark = false;
  form_.charset = "utf-8";
}

std::string DocumentFile::bytes_of(const dom::Document& document) const { return written(document).bytes; }

void DocumentFile::save(const dom::Document& document, std::u16string_view path) {
  Written now = written(document);
  save_atomically(path, now.bytes);
  path_ = source_ = path;
  if (!opened_ && !fresh_) opened_ = Spelling{source_text_, page_text()};
  bytes_ = std::move(now.bytes);
  tree_.reset();
  source_text_ = std::move(now.source_text);
  unedited_ = std::move(now.page_text);
  line_ends_ = std::move(now.line_ends);
  form_ = form_in_file_ = std::move(now.form);
  mixed_in_file_ = !line_ends_.empty();
  declared_in_file_ = declared_charset(document);
}

}  // namespace tvx::files
