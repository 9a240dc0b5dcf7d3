#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/walk/marks.h"

namespace tvx::editing::test {

struct Command {
  std::string name;
  std::string value = "";
};

/// A document with an editing host, and the one check that every case goes through.
///
/// Documents are written with the selection in them: `[` `]` in text, `{` `}` between nodes.
class EditingFixture : public ::testing::Test {
 protected:
  EditingFixture() { editor.set_paragraph_separator(u"p"); }

  dom::Ref<dom::Document> document =
      dom::parse_document(u"<!DOCTYPE html><body><div contenteditable></div><p>test");
  dom::Element& host = *dom::first_child_element(*document->body());
  Editor editor{*document};

  void load(std::string_view marked) { load_marked(editor, host, from_utf8(marked)); }
  std::string html() const { return to_utf8(dom::serialise_children(host)); }
  std::string marked() const { return to_utf8(dump_marked(editor, host, dom::Letters::Upper)); }
  bool run(const Command& command) {
    return editor.execute(from_utf8(command.name), from_utf8(command.value));
  }

  void expect_edit(std::string_view before, const Command& command, std::string_view after) {
    expect_edits(before, {command}, after);
  }

  /// Loads, runs, compares. Also: undo brings back the first text and selection, redo the second, what
  /// stands beside the host stays, and the text comes back from its own HTML.
  void expect_edits(std::string_view before, const std::vector<Command>& commands, std::string_view after) {
    load(before);
    const std::string first = marked();
    for (const Command& command : commands) run(command);
    EXPECT_EQ(marked(), after) << "from " << before;
    expect_laws(first);
  }

  void expect_laws(const std::string& first) {
    const std::string second = marked();
    const std::string html_after = html();
    dom::Journal& journal = document->journal();
    while (journal.can_undo()) journal.undo();
    EXPECT_EQ(marked(), first) << "after undo";
    while (journal.can_redo()) journal.redo();
    EXPECT_EQ(marked(), second) << "after redo";
    EXPECT_EQ(to_utf8(dom::serialise_node(*host.next_sibling(), dom::Letters::Lower)), "<p>test</p>");
    EXPECT_EQ(to_utf8(reparsed(html_after)), html_after) << "parsed again";
  }

  std::u16string reparsed(std::string_view text) const {
    const auto fragment = dom::parse_fragment(*document, dom::context_of(host), from_utf8(text));
    return dom::serialise_children(*fragment);
  }
};

}  // namespace tvx::editing::test
