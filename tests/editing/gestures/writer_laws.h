#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tvx/dom/document.h"
#include "tvx/editing/editor.h"

/// What a writer may rely on, whatever keys are pressed.
namespace tvx::editing::test {

enum class GestureKind : std::uint8_t {
  Type,
  Enter,
  LineBreak,
  Delete,  // by one character
  DeleteWord,
  Move,
  Command,  // of a button or a shortcut
  Paste,
  Journal,  // undo and redo
  Other
};

/// What is known of a document before a gesture.
struct Moment {
  std::string html;
  std::size_t steps = 0, unknown_letters = 0;
  std::size_t letters = 0;  // that the gesture must leave
  bool collapsed = false, in_heading = false, in_pre = false, in_link = false, in_gap = false;
  dom::NodeId line{};  // the block of the caret
  bool beside_blocks = false;
  bool bare = false;  // a line of the page that stands in no block of its own
  std::map<std::u16string, std::u16string> style;
  /// What isn't selected and must stay: comments, what may not be edited, elements that nobody knows.
  std::vector<dom::Ref<dom::Node>> kept;

  static Moment of(Editor& editor, dom::Element& host, GestureKind next);
};

/// The first law that the document breaks after a gesture; empty if all hold.
std::string broken_law(Editor& editor, dom::Element& host, const Moment& before, GestureKind done);

/// Every position that can be clicked can be reached by arrow keys, to the right and to the left. Moves the
/// caret.
std::string broken_law_of_moves(Editor& editor, dom::Element& host);

}  // namespace tvx::editing::test
