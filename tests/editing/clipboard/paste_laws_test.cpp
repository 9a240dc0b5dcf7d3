#include <random>

#include "editing/editing_fixture.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/paste.h"

/// Random selections in random documents, from fixed seeds.
namespace tvx::editing {
namespace {

class Door final : public ClipboardDoor {
 public:
  std::u16string html;
  bool put(const CopiedContent& content) override {
    html = content.html;
    return true;
  }
  bool paste(Editor& editor) override {
    return paste_html(editor, u"<!--StartFragment-->" + html + u"<!--EndFragment-->");
  }
};

/// Documents as people write them: blocks in lists, quotations and cells, looks within lines.
class Writer {
 public:
  explicit Writer(std::uint32_t seed) : random_(seed) {}
  std::string document() {
    std::string html;
    for (int i = number(1, 5); i > 0; --i) html += block(2);
    return html;
  }
  int number(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }

 private:
  std::string word() {
    std::string word;
    for (int i = number(1, 5); i > 0; --i) word += static_cast<char>('a' + letter_++ % 26);
    return word;
  }
  std::string line(int depth) {
    std::string html = word();
    for (int i = number(0, 2); i > 0; --i) {
      static constexpr const char* looks[] = {"b", "i", "span class=\"c\"", "a href=\"#\"",
                                              "font color=\"red\""};
      const std::string look = looks[number(0, 4)];
      switch (number(0, depth > 0 ? 4 : 1)) {
        case 0: html += " " + word(); break;
        case 1: html += "<br>" + word(); break;
        case 2: html += "<img src=\"x\">" + word(); break;
        default:
          html += "<" + look + ">" + line(depth - 1) + "</" + look.substr(0, look.find(' ')) + ">" + word();
      }
    }
    return html;
  }
  std::string items() {
    std::string html;
    for (int i = number(1, 3); i > 0; --i) html += "<li>" + line(1) + "</li>";
    return html;
  }
  std::string table() {
    const int columns = number(1, 3);
    std::string html = "<table><tbody>";
    for (int row = number(1, 3); row > 0; --row) {
      html += "<tr>";
      for (int i = 0; i < columns; ++i) html += "<td>" + line(1) + "</td>";
      html += "</tr>";
    }
    return html + "</tbody></table>";
  }
  std::string block(int depth) {
    switch (number(0, depth > 0 ? 7 : 3)) {
      case 0:
      case 1: return "<p>" + line(2) + "</p>";
      case 2: return "<h2>" + line(1) + "</h2>";
      case 3: return "<p align=\"center\">" + line(1) + "</p>\n";
      case 4: return "<ul>" + items() + "</ul>";
      case 5: return "<ol>" + items() + "</ol>";
      case 6: return "<blockquote>" + block(depth - 1) + block(depth - 1) + "</blockquote>";
      default: return table();
    }
  }

  std::mt19937 random_;
  int letter_ = 0;
};

class PasteLaws : public test::EditingFixture {
 protected:
  PasteLaws() { editor.set_clipboard(&door); }
  ~PasteLaws() override { editor.set_clipboard(nullptr); }

  std::vector<dom::Text*> texts() const {
    std::vector<dom::Text*> found;
    for (dom::Node* node = host.first_child(); node; node = dom::next_in_order(*node, &host)) {
      auto* text = dom::as<dom::Text>(node);
      if (text && text->data().find(u'\n') == std::u16string::npos) found.push_back(text);
    }
    return found;
  }
  dom::Boundary place(Writer& writer) const {
    const std::vector<dom::Text*> all = texts();
    dom::Text* text = all[static_cast<std::size_t>(writer.number(0, int(all.size()) - 1))];
    return {text, static_cast<Offset>(writer.number(0, int(text->length())))};
  }
  void select_somewhere(Writer& writer) {
    const dom::Boundary a = place(writer), b = place(writer);
    editor.selection().set(a, b);
  }
  /// Without the layout of the source, which may go with the last line of what is replaced.
  std::string content() const {
    std::string text = html();
    std::erase(text, '\n');
    return text;
  }
  std::string dump() const { return html(); }
  /// The text alone, to see that nothing of it is lost or doubled.
  std::u16string letters() const {
    std::u16string found;
    for (char16_t c : dom::text_content(host))
      if (c >= u'a' && c <= u'z') found += c;
    return found;
  }

  Door door;
};

constexpr std::uint32_t rounds = 3000;

TEST_F(PasteLaws, PastedOverItsOwnPlaceNothingChanges) {
  int different = 0;
  for (std::uint32_t seed = 1; seed <= rounds; ++seed) {
    Writer writer(seed);
    load(writer.document());
    select_somewhere(writer);
    const std::string before = dump(), wanted = content(), first = marked();
    if (!run({"copy"})) continue;
    ASSERT_TRUE(run({"paste"})) << seed;
    if (content() != wanted && ++different <= 10)
      ADD_FAILURE() << "seed " << seed << "\nfrom   " << first << "\ncopied " << to_utf8(door.html)
                    << "\ngave   " << dump();
    while (document->journal().can_undo()) document->journal().undo();
    ASSERT_EQ(dump(), before) << "undone, seed " << seed;
    ASSERT_EQ(marked(), first) << "undone, seed " << seed;
  }
  EXPECT_EQ(different, 0);
}

bool stands_in_order(std::u16string_view wanted, std::u16string_view all) {
  for (char16_t c : all)
    if (!wanted.empty() && c == wanted[0]) wanted.remove_prefix(1);
  return wanted.empty();
}

TEST_F(PasteLaws, PastedElsewhereItIsAllThereAndWellFormed) {
  for (std::uint32_t seed = 1; seed <= rounds; ++seed) {
    Writer writer(seed);
    load(writer.document());
    select_somewhere(writer);
    if (!run({"copy"})) continue;
    const auto copied = dom::parse_fragment(*document, {}, door.html);
    std::u16string wanted;
    for (char16_t c : dom::text_content(*copied))
      if (c >= u'a' && c <= u'z') wanted += c;
    EXPECT_EQ(dom::serialise_children(*copied), door.html) << "seed " << seed;

    load(writer.document());
    select_somewhere(writer);
    const std::string before = dump(), first = marked();
    ASSERT_TRUE(run({"paste"})) << seed;
    const std::string after = dump();
    // Cells that fill cells stand among others.
    const bool fills_cells = door.html.starts_with(u"<TABLE") && contains(from_utf8(first), u"<TD>");
    EXPECT_TRUE(fills_cells ? stands_in_order(wanted, letters()) : contains(letters(), wanted))
        << "seed " << seed << "\nfrom   " << first << "\npasted " << to_utf8(door.html) << "\ngave   "
        << after;
    EXPECT_EQ(to_utf8(reparsed(after)), after)
        << "seed " << seed << "\nfrom   " << first << "\npasted " << to_utf8(door.html);
    for (const char* leftover : {"<UL></UL>", "<LI></LI>", "<OL></OL>", "<P></P>", "<B></B>", "<TR></TR>"})
      EXPECT_EQ(after.find(leftover), std::string::npos)
          << "seed " << seed << "\nfrom   " << first << "\npasted " << to_utf8(door.html) << "\ngave   "
          << after;
    while (document->journal().can_undo()) document->journal().undo();
    ASSERT_EQ(dump(), before) << "undone, seed " << seed;
    ASSERT_EQ(marked(), first) << "undone, seed " << seed;
    if (HasFailure() && seed > 400) break;
  }
}

}  // namespace
}  // namespace tvx::editing
