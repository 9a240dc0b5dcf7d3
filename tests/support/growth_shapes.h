#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "tvx/base/strings.h"
#include "tvx/dom/range.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/keyboard.h"

/// Documents of any size in the shapes that make editing slow: much of one thing, side by side or in one
/// another.
namespace tvx::growth {

struct Shape {
  std::u16string_view name, before, each, between, after;
  std::size_t levels = 0;  // nested: how many elements `each` opens, with as many of `after`

  bool nested() const { return levels > 0; }

  std::u16string of(std::size_t count) const {
    std::u16string html(nested() ? std::u16string_view() : before);
    for (std::size_t i = 0; i < count; ++i) html += each;
    html += between;
    for (std::size_t i = 0; i < (nested() ? count : 1); ++i) html += after;
    return html;
  }
};

inline constexpr Shape shapes[] = {
    {u"paragraphs", u"", u"<p>some words</p>", u"", u""},
    {u"paragraphs on lines", u"", u"<p>some words</p>\n", u"", u""},
    {u"headings and text", u"", u"<h2>head</h2>text", u"", u""},
    {u"lines", u"<p>", u"some words<br>", u"", u"</p>"},
    {u"lines in the body", u"", u"some words<br>", u"", u""},
    {u"words in bold", u"<p>", u"<b>bold</b> plain ", u"", u"</p>"},
    {u"links", u"<p>", u"<a href=x>link</a>", u"", u"</p>"},
    {u"links in the body", u"", u"<a href=x>link</a>", u"", u""},
    {u"links and blanks", u"<p>", u"<a href=x>link</a> ", u"", u"</p>"},
    {u"fonts", u"<p>", u"<font color=red>a</font><font size=5>b</font>", u"", u"</p>"},
    {u"spans with a style", u"<p>", u"<span style='color:red'>a</span> b", u"", u"</p>"},
    {u"images", u"<p>", u"<img src=x>", u"", u"</p>"},
    {u"images and words", u"<p>", u"<img src=x> word ", u"", u"</p>"},
    {u"comments", u"<p>x", u"<!-- c -->", u"", u"y</p>"},
    {u"comments on lines", u"<p>x</p>", u"\n<!-- c -->", u"", u"<p>y</p>"},
    {u"comments at the end", u"<p>x</p>", u"<!-- c -->", u"", u""},
    {u"scripts", u"<p>x</p>", u"<script></script>", u"", u"<p>y</p>"},
    {u"scripts at the end", u"<p>x</p>", u"<script></script>", u"", u""},
    {u"scripts in a line", u"<p>x ", u"<script></script>", u"", u" y</p>"},
    {u"style elements", u"<p>a</p>", u"<style>p{color:red}</style>", u"", u"<p>x</p>"},
    {u"hidden paragraphs", u"<p>x</p>", u"<p style='display:none'>h</p>", u"", u"<p>y</p>"},
    {u"hidden inputs", u"<p>x", u"<input type=hidden>", u"", u"y</p>"},
    {u"fields", u"<p>", u"<input> label ", u"", u"</p>"},
    {u"empty spans", u"<p>x", u"<span></span>", u"", u"y</p>"},
    {u"empty paragraphs", u"", u"<p><br></p>", u"", u""},
    {u"rules", u"", u"<hr>", u"", u""},
    {u"items", u"<ul>", u"<li>item</li>", u"", u"</ul>"},
    {u"items of paragraphs", u"<ol>", u"<li><p>item</p></li>", u"", u"</ol>"},
    {u"lists", u"", u"<ul><li>one</li></ul><p>text</p>", u"", u""},
    {u"lists side by side", u"", u"<ul><li>one</li></ul>", u"", u""},
    {u"quotes", u"", u"<blockquote>quote</blockquote>", u"", u""},
    {u"a quote", u"<blockquote>", u"<p>quoted</p>", u"", u"</blockquote>"},
    {u"rows", u"<table>", u"<tr><td>a<td>b</tr>", u"", u"</table>"},
    {u"tables", u"", u"<table><tr><td>a</table>", u"", u""},
    {u"divisions", u"", u"<div>a<div>b</div>c</div>", u"", u""},
    {u"terms", u"<dl>", u"<dt>t<dd>d", u"", u"</dl>"},
    {u"unknown elements", u"<p>", u"<foo>a</foo>", u"", u"</p>"},
    {u"unclosed pairs", u"<p>", u"<b>a<i>b</b>c</i>", u"", u"</p>"},
    {u"preformatted lines", u"<pre>", u"line of text\n", u"", u"</pre>"},
    {u"a long text", u"<p>", u"words after words ", u"", u"</p>"},
    {u"no-break spaces", u"<p>x", u"&nbsp; ", u"", u"y</p>"},
    {u"bold in bold", u"", u"<b>", u"x", u"</b>", 1},
    {u"text beside bold in bold", u"", u"<b>x", u"", u"</b>", 1},
    {u"spans in spans", u"", u"<span style='color:red'>", u"x", u"</span>", 1},
    {u"fonts in fonts", u"", u"<font size=5>a", u"", u"</font>", 1},
    {u"quotes in quotes", u"", u"<blockquote>", u"x", u"</blockquote>", 1},
    {u"lists in lists", u"", u"<ul><li>a", u"", u"</ul>", 2},
    {u"divisions in divisions", u"", u"<div>a", u"", u"</div>", 1},
    {u"tables in tables", u"", u"<table><tr><td>", u"x", u"</table>", 4},
};
/// Elements in one another. What is nested deeper than a few more becomes siblings when it is read.
inline constexpr std::size_t deepest = 480;
/// How many times the steps ten times as much may take.
inline constexpr double most_growth = 15;
/// As many as are asked for, of what is nested no more than can be.
inline std::size_t limited(const Shape& shape, std::size_t count) {
  return shape.nested() ? std::min(count, deepest / shape.levels) : count;
}

/// Commands that are asked of everything selected, each as a user meets it; some of what another one has
/// done.
struct Command {
  std::u16string_view name, value, first = {}, first_value = {};
};
inline constexpr Command commands[] = {
    {u"bold", u""},
    {u"italic", u""},
    {u"underline", u""},
    {u"strikethrough", u""},
    {u"subscript", u""},
    {u"superscript", u""},
    {u"foreColor", u"red"},
    {u"backColor", u"yellow"},
    {u"hiliteColor", u"yellow"},
    {u"fontName", u"Courier"},
    {u"fontSize", u"5"},
    {u"removeFormat", u""},
    {u"removeFormat", u"", u"bold"},
    {u"bold", u"", u"bold"},
    {u"createLink", u"x"},
    {u"unlink", u""},
    {u"unlink", u"", u"createLink", u"x"},
    {u"insertOrderedList", u""},
    {u"insertUnorderedList", u""},
    {u"insertOrderedList", u"", u"insertOrderedList"},
    {u"indent", u""},
    {u"outdent", u""},
    {u"outdent", u"", u"indent"},
    {u"justifyCenter", u""},
    {u"justifyFull", u""},
    {u"justifyLeft", u""},
    {u"justifyRight", u""},
    {u"formatBlock", u"h1"},
    {u"formatBlock", u"p"},
    {u"delete", u""},
    {u"forwardDelete", u""},
    {u"cut", u""},
    {u"copy", u""},
    {u"insertText", u"abc"},
    {u"insertParagraph", u""},
    {u"insertLineBreak", u""},
    {u"insertHTML", u"<p>one</p><p>two</p>"},
    {u"insertHorizontalRule", u""},
    {u"insertImage", u"x"},
    {u"InsertTextArea", u""},
    {u"", u""},
    {u"undo", u"", u"bold"},
    {u"undo", u"", u"delete"},
    {u"redo", u"", u"bold"},
};

inline std::string name_of(const Command& command) {
  std::string name = command.name.empty() ? "all questions" : to_utf8(command.name);
  if (!command.value.empty()) name += " " + to_utf8(command.value.substr(0, 8));
  if (!command.first.empty()) name += " of " + to_utf8(command.first);
  return name;
}
/// Selects everything, and does what comes before.
inline void prepare(editing::Editor& editor, const Command& command) {
  editor.execute(u"selectAll");
  if (!command.first.empty()) editor.execute(command.first, command.first_value);
  if (command.name == u"redo") editor.execute(u"undo");
}
/// With an empty name: asks what toolbars ask at each move of the caret.
inline void act(editing::Editor& editor, const Command& command) {
  if (!command.name.empty()) {
    editor.execute(command.name, command.value);
    return;
  }
  for (const std::u16string_view asked :
       {u"bold", u"underline", u"foreColor", u"fontName", u"fontSize", u"createLink", u"insertOrderedList",
        u"indent", u"justifyLeft", u"formatBlock", u"unlink"}) {
    editor.enabled(asked);
    editor.indeterminate(asked);
    editor.state(asked);
    editor.value(asked);
  }
}

/// Keys, pressed where a writer presses them.
enum class Where : std::uint8_t { All, Start, Middle, End };
struct Stroke {
  std::u16string_view key, text = {};
  bool control = false, shift = false;
};
inline constexpr Stroke strokes[] = {
    {u"x", u"x"},
    {u" ", u" "},
    {u"Enter"},
    {u"Enter", {}, false, true},
    {u"Backspace"},
    {u"Delete"},
    {u"Backspace", {}, true},
    {u"Delete", {}, true},
    {u"Tab"},
    {u"Tab", {}, false, true},
    {u"ArrowLeft"},
    {u"ArrowRight"},
    {u"ArrowLeft", {}, true},
    {u"ArrowRight", {}, true, true},
    {u"b", {}, true},
    {u"a", {}, true},
};

inline std::string name_of(const Stroke& stroke, Where where) {
  static constexpr const char* places[] = {"over all", "at the start", "in the middle", "at the end"};
  return std::string(stroke.control ? "Ctrl+" : "") + (stroke.shift ? "Shift+" : "") + to_utf8(stroke.key) +
         " " + places[std::size_t(where)];
}

inline void place_caret(editing::Editor& editor, Where where) {
  if (where == Where::All) {
    editor.execute(u"selectAll");
    return;
  }
  dom::Node* node = editor.document().body();
  while (node->has_children()) {
    if (where == Where::Middle)
      node = dom::child_at(*node, node->child_count() / 2);
    else
      node = where == Where::Start ? node->first_child() : node->last_child();
  }
  editor.selection().collapse({node, where == Where::End ? dom::length_of(*node) : 0});
}
inline void press(editing::Editor& editor, const Stroke& stroke) {
  editing::press_key(editor, {.key = std::u16string(stroke.key),
                              .text = std::u16string(stroke.text),
                              .control = stroke.control,
                              .shift = stroke.shift});
}

}  // namespace tvx::growth
