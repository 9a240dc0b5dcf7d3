#include <algorithm>

#include "editing/editing_fixture.h"
#include "tvx/dom/print_tree.h"
#include "tvx/editing/clipboard/clipboard_door.h"
#include "tvx/editing/clipboard/paste.h"

/// Tables and pieces of tables from the clipboard: whatever they meet, no table is left malformed.
namespace tvx::editing {
namespace {

using dom::Node;
using dom::Tag;

class Door final : public ClipboardDoor {
 public:
  std::u16string html;
  bool put(const CopiedContent& content) override {
    html = content.html;
    return true;
  }
  bool paste(Editor& editor) override { return paste_html(editor, html); }
};

bool is_one_of(const Node& node, std::initializer_list<Tag> tags) {
  return std::any_of(tags.begin(), tags.end(), [&](Tag tag) { return node.is(tag); });
}

/// HTML standard, sections 4.9.1 to 4.9.10: what may stand in each part of a table.
bool fits_in(const Node& node, const Node& parent) {
  if (parent.is(Tag::Table))
    return is_one_of(node, {Tag::Caption, Tag::Colgroup, Tag::Thead, Tag::Tbody, Tag::Tfoot});
  if (is_one_of(parent, {Tag::Thead, Tag::Tbody, Tag::Tfoot})) return node.is(Tag::Tr);
  if (parent.is(Tag::Tr)) return is_one_of(node, {Tag::Td, Tag::Th});
  if (parent.is(Tag::P)) return !node.is(Tag::Table);
  return !is_one_of(
      node, {Tag::Caption, Tag::Colgroup, Tag::Thead, Tag::Tbody, Tag::Tfoot, Tag::Tr, Tag::Td, Tag::Th});
}

class PastedTables : public test::EditingFixture {
 protected:
  PastedTables() { editor.set_clipboard(&door); }
  ~PastedTables() override { editor.set_clipboard(nullptr); }

  void expect_sound(const std::string& what) {
    for (Node* node = host.first_child(); node; node = dom::next_in_order(*node, &host))
      EXPECT_TRUE(fits_in(*node, *node->parent())) << what << "\ngave " << html();
  }
  /// Pastes; the result is sound, comes back from its own HTML, and undo and redo lead to both states.
  void expect_paste(std::string_view fragment, std::string_view before, std::string_view after) {
    door.html = from_utf8(fragment);
    expect_edits(before, {{"paste"}}, after);
    expect_sound(std::string(fragment) + " into " + std::string(before));
  }

  Door door;
};

constexpr const char* fragments[] = {
    "<tr><td>x</td><td>y</td></tr>",
    "<tr><td>x</td></tr><tr><td>y</td></tr>",
    "<td>x</td><td>y</td>",
    "<th>x</th>",
    "<tbody><tr><td>x</td></tr></tbody>",
    "<thead><tr><th>x</th></tr></thead><tbody><tr><td>y</td></tr></tbody>",
    "<table><tr><td>x</td><td>y</td></tr></table>",
    "<table><tbody><tr><td>x</td></tr></tbody></table>",
    "<p>w</p><table><tr><td>x</table><p>z</p>",
    "<table>w<tr>x<td>y</table>",
    "<table><caption>w</caption><colgroup><col><col></colgroup><tr><th>x<td>y</table>",
    "w<tr><td>x</td></tr>z",
    "<caption>w</caption>",
    "<col width=5><col>",
    "<table></table>",
    "<table><tr></tr></table>",
    "<table><tr><td><table><tr><td>x</table></table>",
    "<html><body><!--StartFragment--><tr><td>x</td><td>y</td></tr><!--EndFragment--></body></html>",
    "<html><body><table><!--StartFragment--><tr><td>x</td></tr><!--EndFragment--></table></body></html>",
    "<html><body><table><tr><!--StartFragment--><td>x</td><td>y</td><!--EndFragment--></tr></table></body></"
    "html>",
};
constexpr const char* places[] = {
    "<p>a[]b</p>",
    "<p>a</p>{}",
    "<p>{}<br></p>",
    "<p>a[b</p><p>c]d</p>",
    "<ul><li>a[]b</li></ul>",
    "<h1><b>a[]b</b></h1>",
    "<table><tbody><tr><td>a[]b</td><td>c</td></tr></tbody></table>",
    "<table><tbody><tr><td>{}<br></td><td>c</td></tr></tbody></table>",
    "<table><tbody><tr><td>a[b</td><td>c]d</td></tr></tbody></table>",
    "<table><tbody><tr><td>[a</td><td>b]</td></tr><tr><td>c</td><td>d</td></tr></tbody></table>",
    "<table><tbody><tr><td>a[b</td></tr><tr><td>c]d</td></tr></tbody></table>",
    "<table><thead><tr><th>a[]</th></tr></thead><tbody><tr><td>c</td></tr></tbody></table>",
    "<table><caption>a[]b</caption><tbody><tr><td>c</td></tr></tbody></table>",
    "<p>a[b</p><table><tbody><tr><td>c]d</td><td>e</td></tr></tbody></table>",
    "<table><tbody><tr><td>a[b</td></tr></tbody></table><p>c]d</p>",
    "<table><tbody><tr><td><p>a[]b</p></td></tr></tbody></table>",
};

TEST_F(PastedTables, AnyPieceAnywhereLeavesTablesSound) {
  for (const char* fragment : fragments) {
    for (const char* place : places) {
      SCOPED_TRACE(std::string(fragment) + " into " + place);
      load(place);
      const std::string first = marked();
      door.html = from_utf8(fragment);
      run({"paste"});
      expect_sound(fragment);
      expect_laws(first);
    }
  }
}

TEST_F(PastedTables, RowsAndCellsWithoutATableGetOne) {
  const std::string grid = "<TABLE><TBODY><TR><TD>x</TD><TD>y</TD></TR></TBODY></TABLE>";
  const std::string after = "<P>a</P>" + grid + "<P>[]b</P>";
  for (const std::string piece :
       {"<tr><td>x</td><td>y</td></tr>", "<td>x</td><td>y</td>", " \r\n<TBODY ><TR><TD>x<TD>y",
        "<meta charset='utf-8'><tr><td>x</td><td>y</td></tr>",
        "<html><body>\r\n<!--StartFragment--><td>x</td><td>y</td><!--EndFragment--></body></html>"})
    expect_paste(piece, "<p>a[]b</p>", after);
}

TEST_F(PastedTables, CellsInACellFillTheCells) {
  expect_paste("<td>x</td><td>y</td>", "<table><tbody><tr><td>a[]b</td><td>c</td></tr></tbody></table>",
               "<TABLE><TBODY><TR><TD>x</TD><TD>y[]</TD></TR></TBODY></TABLE>");
  expect_paste("<table><tr><th>x</table>", "<table><tbody><tr><td>{}<br></td></tr></tbody></table>",
               "<TABLE><TBODY><TR><TD>x[]</TD></TR></TBODY></TABLE>");
}

TEST_F(PastedTables, APartOfATableKeepsItsTable) {
  expect_paste(
      "<html><body><table "
      "border=1><!--StartFragment--><col><tr><td>x</td></tr><tr><td>y</td></tr><!--EndFragment--></table></"
      "body></html>",
      "<p>a[]b</p>",
      "<P>a</P><TABLE "
      "border=\"1\"><COLGROUP><COL></COLGROUP><TBODY><TR><TD>x</TD></TR><TR><TD>y</TD></TR></TBODY></"
      "TABLE><P>[]b</P>");
}

TEST_F(PastedTables, TextBesideAnElementThatIsNoPartOfATableStaysText) {
  expect_paste("<track>x", "<p>a[]b</p>", "<P>a<TRACK>x[]b</P>");
  expect_paste("w<tr><td>x</td></tr>", "<p>a[]b</p>", "<P>awx[]b</P>");
  expect_paste("<", "<p>a[]b</p>", "<P>a&lt;[]b</P>");
}

}  // namespace
}  // namespace tvx::editing
