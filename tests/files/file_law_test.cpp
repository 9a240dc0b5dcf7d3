#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "support/documentation_files.h"
#include "support/random_edits.h"
#include "tvx/base/strings.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/loading/encoding.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"
#include "tvx/dom/tree.h"
#include "tvx/files/document_file.h"
#include "tvx/source/source_text.h"

/// A file that is edited in the code view has these edits afterwards, and is as it was, to the byte,
/// everywhere else.
namespace tvx::files {
namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

Lines lines_of(const std::string& bytes) {
  Lines lines;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
    lines.push_back(bytes.substr(at, end - at));
    at = end;
  }
  return lines;
}

/// A file as people and programs write them: the same seed gives the same file.
class WrittenFile {
 public:
  explicit WrittenFile(std::uint64_t seed) : random_(seed) {
    end_ = one_of({"\n", "\n", "\r\n"});
    mixed_ = seed % 5 == 0;
    upper_ = below(3) == 0;
    whole_ = below(4) != 0;
    indent_ = one_of({"", "", "  ", "\t"});
  }
  std::string bytes() {
    if (whole_) {
      line("<!DOCTYPE html>");
      line(tag("html"));
      line(tag("head") + tag("title") + "A title &amp; more" + end("title"));
      line("<meta name=author content='no one'>");
      line(end("head"));
      line(tag("body"));
    }
    for (std::size_t i = 3 + below(12); i > 0; --i) block();
    if (whole_ && below(5) != 0) {
      line(end("body"));
      line(end("html"));
    }
    if (below(4) == 0) text_.resize(text_.size() - end_.size());
    return text_;
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }
  std::string one_of(std::initializer_list<const char*> texts) { return texts.begin()[below(texts.size())]; }
  std::string cased(std::string name) const {
    if (upper_)
      for (char& c : name) c = char(std::toupper(c));
    return name;
  }
  std::string tag(const std::string& name) { return "<" + cased(name) + ">"; }
  std::string tag_with_attributes(const std::string& name) {
    return "<" + cased(name) +
           one_of({"", "", " class=c", " ID = 'x y'", " title=\"a > b\"", " align=LEFT nowrap"}) + ">";
  }
  std::string end(const std::string& name) { return "</" + cased(name) + ">"; }
  std::string perhaps(const std::string& text) { return below(2) == 0 ? text : std::string(); }
  std::string word() {
    return "w" + std::to_string(++words_) + one_of({"one", "two", "three", "caf&eacute;", "b&amp;b"});
  }
  std::string words(std::size_t most) {
    std::string result = word();
    for (std::size_t i = below(most); i > 0; --i) result += one_of({" ", " ", " ", "  "}) + word();
    return result;
  }
  void line(const std::string& text) {
    if (mixed_) end_ = one_of({"\n", "\r\n"});
    text_ += indent_ + text + end_;
  }

  void block() {
    switch (below(11)) {
      case 0: return line(tag_with_attributes("p") + words(6));
      case 1: return line(tag("p") + words(6) + end("p"));
      case 2:
        line(tag_with_attributes("p") + words(4));
        line(words(5));
        return line(words(3) + perhaps(end("p")));
      case 3:
        line(tag_with_attributes("ul"));
        for (std::size_t i = 1 + below(4); i > 0; --i) line("  " + tag("li") + words(3) + perhaps(end("li")));
        return line(end("ul"));
      case 4:
        line(tag_with_attributes("table"));
        for (std::size_t i = 1 + below(3); i > 0; --i)
          line(tag("tr") + tag_with_attributes("td") + words(2) + perhaps(end("td")) + tag("td") + words(2));
        return line(end("table"));
      case 5:
        line(tag("pre") + words(2));
        line("\t" + word() + "  " + word());
        line("");
        return line(words(2) + end("pre"));
      case 6: line("<!-- " + words(2)); return line("   " + word() + " -->");
      case 7:
        line(tag("script"));
        line("  if (a < b) c('" + word() + "');");
        return line(end("script"));
      case 8: return line("");
      case 9: return line(tag_with_attributes("h2") + words(3) + "<b>" + word() + "</B>" + end("h2"));
      default:
        return line("<" + cased("hr") + "><div>" + words(2) + "<br>" + words(2) +
                    "<img src=a.png ALT=" + word() + "></div>");
    }
  }

  std::mt19937_64 random_;
  std::string end_, indent_, text_;
  bool upper_ = false, whole_ = true, mixed_ = false;
  std::size_t words_ = 0;
};

/// The same edits in the code and in the file. They are made where code and file say the same, once each: in
/// words of text and of attributes, and in lines.
class FileEdits {
 public:
  FileEdits(const std::string& bytes, std::string code, std::uint64_t seed)
      : lines_(lines_of(bytes)), bytes_(bytes), old_code_(code), code_(std::move(code)), random_(seed) {}

  std::size_t make(std::size_t most) {
    std::size_t made = 0;
    for (std::size_t tries = 0; tries < 8 * most && made < most; ++tries) {
      const std::size_t i = random_() % lines_.size();
      // Edits that touch in the code are one edit there.
      if (edited_.contains(i) || edited_.contains(i + 1) || (i > 0 && edited_.contains(i - 1))) continue;
      if (random_() % 4 == 0 ? delete_line(i) : edit_word(i)) {
        edited_.insert(i);
        ++made;
      }
    }
    return made;
  }
  const std::string& code() const { return code_; }
  /// All other lines are there to the byte, and the edited ones where they were, with the edit in them.
  bool agree_with(const std::string& saved) const {
    const Lines now = lines_of(saved);
    std::size_t at = 0;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      if (lines_[i].empty()) continue;
      if (at == now.size()) return false;
      const auto edit = words_.find(i);
      const bool is_right = edit == words_.end()
                                ? now[at] == lines_[i]
                                : now[at].find(edit->second) != std::string::npos &&
                                      now[at].ends_with("\r\n") == lines_[i].ends_with("\r\n");
      if (!is_right) return false;
      ++at;
    }
    return at == now.size();
  }

 private:
  static bool stands_once(const std::string& text, const std::string& part) {
    const std::size_t at = text.find(part);
    return at != text.npos && text.find(part, at + 1) == text.npos;
  }
  static std::string trimmed_line(const std::string& line) { return to_utf8(trimmed(from_utf8(line))); }

  bool edit_word(std::size_t i) {
    std::vector<std::string> words;
    std::string word;
    for (const char c : lines_[i] + " ") {
      // The name of a reference goes with its ampersand.
      if (std::isalnum(static_cast<unsigned char>(c)) || c == '&') {
        word += c;
      } else {
        if (word.size() > 3 && word.find('&') == word.npos && stands_once(bytes_, word) &&
            stands_once(old_code_, word) && stands_once(code_, word))
          words.push_back(word);
        word.clear();
      }
    }
    if (words.empty()) return false;
    word = words[random_() % words.size()];
    const std::size_t at = code_.find(word);
    std::string now;
    switch (random_() % 4) {
      case 0: now = word + (is_in_text(at) ? " new" : "new"); break;
      case 1: now = word.substr(0, 2) + "x" + word.substr(2); break;
      case 2: now = word.substr(0, 1) + word.substr(3); break;
      default: now = is_in_text(at) ? "<U>" + word + "</U>" : "x" + word + "y";
    }
    code_.replace(at, word.size(), now);
    words_[i] = now.starts_with("<U>") ? word : now;
    return true;
  }
  // Not in a tag, a comment or raw text.
  bool is_in_text(std::size_t at) const {
    const std::size_t line = code_.rfind('\n', at) + 1;
    const std::string before = code_.substr(line, at - line), all = code_.substr(0, at);
    const auto is_open = [&](const char* start, const char* end) {
      const std::size_t from = all.rfind(start);
      return from != all.npos && all.find(end, from) == all.npos;
    };
    return !is_open("<", ">") && !is_open("<!--", "-->") && !is_open("<SCRIPT", "</SCRIPT") &&
           !is_open("<STYLE", "</STYLE") && !is_open("<TEXTAREA", "</TEXTAREA") &&
           !is_open("<TITLE", "</TITLE") && before.find('>') != before.npos;
  }

  bool delete_line(std::size_t i) {
    const std::string text = trimmed_line(lines_[i]);
    // A line that opens or ends an element which goes on elsewhere changes more than itself; and so does a
    // paragraph after one that isn't closed, whose end is then where the next line starts.
    const std::string before = i > 0 ? trimmed_line(lines_[i - 1]) : std::string();
    const bool is_paragraph = text.starts_with("<p") && text.ends_with("</p>") && before.ends_with(">") &&
                              before.find("</", before.rfind('<')) != before.npos;
    const bool is_whole = text.find_first_of("<>") == text.npos || is_paragraph;
    if (text.size() < 6 || !is_whole || !stands_once(bytes_, text)) return false;
    for (const std::string& line : lines_of(code_)) {
      if (!equals_ignoring_ascii_case(from_utf8(trimmed_line(line)), from_utf8(text))) continue;
      if (!stands_once(code_, line)) return false;
      code_.erase(code_.find(line), line.size());
      lines_[i].clear();
      return true;
    }
    return false;
  }

  Lines lines_;  // a deleted one is empty
  std::map<std::size_t, std::string> words_;
  const std::string bytes_, old_code_;
  std::string code_;
  std::mt19937_64 random_;
  std::set<std::size_t> edited_;
};

class FileLaw : public testing::Test {
 protected:
  FileLaw() {
    std::string name = (fs::temp_directory_path() / "htmled-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  ~FileLaw() override { fs::remove_all(folder_); }

  void try_edits(const std::string& bytes, std::uint64_t seed, const std::string& name) {
    const fs::path path = folder_ / "page.html";
    std::ofstream(path, std::ios::binary) << bytes;
    const DocumentFile file = DocumentFile::open(from_utf8(path.string()));
    const auto tree = dom::parse_document(browser::decode_page(bytes).text);
    if (!tree->body() || !file.faithful()) return;
    ASSERT_TRUE(file.bytes_of(*tree) == bytes) << name << ": not edited";
    const auto text =
        source::SourceText::formatted(std::make_shared<const std::u16string>(dom::inner_html(*tree->body())));
    FileEdits edits(bytes, to_utf8(*text.code()), seed);
    const std::size_t made = edits.make(1 + seed % 10);
    if (made == 0) return;
    ++files_;
    edits_ += made;
    dom::set_inner_html(*tree->body(), text.markup_after(from_utf8(edits.code())));
    const std::string saved = file.bytes_of(*tree);
    ASSERT_TRUE(dom::print_tree(*dom::parse_document(browser::decode_page(saved).text)) ==
                dom::print_tree(*tree))
        << name << ", seed " << seed << ": read again\n"
        << bytes.substr(0, 2000) << edits.code().substr(0, 2000) << saved.substr(0, 2000);
    if (edits.agree_with(saved)) return;
    if (++others_ > 8) return;
    ADD_FAILURE() << name << ", seed " << seed << "\n--- file\n"
                  << bytes.substr(0, 1500) << "\n--- code\n"
                  << edits.code().substr(0, 1500) << "\n--- saved\n"
                  << saved.substr(0, 1500);
  }

  void report() const {
    std::cout << "files: " << files_ << ", edits: " << edits_ << ", other than expected: " << others_ << "\n";
    EXPECT_EQ(others_, 0u);
  }

  fs::path folder_;
  std::size_t files_ = 0, edits_ = 0, others_ = 0;
};

TEST_F(FileLaw, HoldsOnRandomFiles) {
  for (std::uint64_t seed = 1; seed <= 2'000 * test::law_factor(); ++seed)
    ASSERT_NO_FATAL_FAILURE(try_edits(WrittenFile(seed).bytes(), seed, "random"));
  report();
}

TEST_F(FileLaw, HoldsOnRealFiles) {
  const auto files = test::files_of_packages(300);
  if (files.empty()) GTEST_SKIP() << "no HTML files in /usr/share/doc";
  std::uint64_t seed = 0;
  for (const auto& path : files) {
    const std::string bytes = read_bytes(from_utf8(path.string())).value_or("");
    if (bytes.size() > 60'000 * test::law_factor()) continue;
    ASSERT_NO_FATAL_FAILURE(try_edits(bytes, ++seed, path.string()));
  }
  report();
}

}  // namespace
}  // namespace tvx::files
