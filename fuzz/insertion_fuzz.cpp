// Odd fragments, put together from pieces that editing treats in ways of their own: hidden, displayed as
// something else, parts of lists, tables and ruby. They are inserted and pasted at random places of a page
// and followed by commands. The tree stays sound, each of them is one step, and undo and redo give the trees
// before and after.

#include "fuzz_choices.h"
#include "tree_laws.h"
#include "tvx/base/error.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/editing/clipboard/paste.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/ranges/control_range.h"

namespace {

using namespace tvx;
using namespace tvx::dom;

constexpr std::u16string_view pages[] = {
    u"<p>one <b>two <i>three</i></b></p><ul><li>4<li>5<ul><li>6</ul></ul><p>end",
    u"bare <a href=x>link</a><br>text<hr><div><p>8</p>tail</div><blockquote><p>q</p></blockquote>",
    u"<table><caption>c</caption><tr><td>7<td><p>8</p><tr><th>9<td></table><pre>\n a  b\n</pre>after",
    u"<dl><dt>t<dd>d</dl><ol><li><p>a</p><p>b</p></ol><ruby>r<rt>t</ruby><div "
    u"contenteditable=false>no</div>x",
    u"",
};

constexpr std::u16string_view names[] = {
    u"p",      u"div",     u"b",          u"i",       u"u",       u"font",       u"span",     u"a",
    u"br",     u"hr",      u"img",        u"ul",      u"ol",      u"li",         u"dl",       u"dt",
    u"dd",     u"dir",     u"menu",       u"table",   u"tbody",   u"tr",         u"td",       u"th",
    u"pre",    u"h1",      u"blockquote", u"main",    u"section", u"figure",     u"ruby",     u"rb",
    u"rt",     u"rp",      u"form",       u"input",   u"select",  u"option",     u"textarea", u"fieldset",
    u"legend", u"caption", u"col",        u"details", u"summary", u"figcaption", u"center",   u"unknown",
    u"object", u"svg",
};

constexpr std::u16string_view attributes[] = {
    u"",
    u"",
    u"",
    u" hidden",
    u" style=\"display:none\"",
    u" style=\"display:block\"",
    u" style=\"display:inline\"",
    u" style=\"display:list-item\"",
    u" style=\"display:table-cell\"",
    u" style=\"display:contents\"",
    u" style=\"white-space:pre\"",
    u" style=\"visibility:hidden;position:absolute\"",
    u" contenteditable=false",
    u" contenteditable=true",
    u" dir=rtl",
    u" align=center class=c id=i",
};

constexpr std::u16string_view texts[] = {u"x",  u"ab cd", u" ",        u"&nbsp;",
                                         u"\n", u"",      u"<!--c-->", u"\u05D0\u0301"};

constexpr std::pair<std::u16string_view, std::u16string_view> commands[] = {
    {u"bold", u""},
    {u"italic", u""},
    {u"underline", u""},
    {u"superscript", u""},
    {u"fontSize", u"5"},
    {u"foreColor", u"#ff0000"},
    {u"backColor", u"yellow"},
    {u"removeFormat", u""},
    {u"createLink", u"http://example.org/"},
    {u"unlink", u""},
    {u"formatBlock", u"<h2>"},
    {u"formatBlock", u"<p>"},
    {u"indent", u""},
    {u"outdent", u""},
    {u"insertOrderedList", u""},
    {u"insertUnorderedList", u""},
    {u"justifyCenter", u""},
    {u"justifyLeft", u""},
    {u"delete", u""},
    {u"forwardDelete", u""},
    {u"insertHorizontalRule", u""},
    {u"insertLineBreak", u""},
    {u"insertParagraph", u""},
    {u"insertText", u"y"},
    {u"insertImage", u"i.png"},
    {u"selectAll", u""},
    {u"undo", u""},
    {u"redo", u""},
};

template <class Value, std::size_t count>
const Value& one_of(const Value (&values)[count], fuzz::Choices& choices) {
  return values[choices.below(count)];
}

/// Open and close tags and texts in any order: the parser mends what doesn't fit.
std::u16string fragment(fuzz::Choices& choices) {
  std::u16string markup;
  for (std::size_t pieces = 1 + choices.below(8); pieces > 0; --pieces) {
    const std::size_t kind = choices.below(8);
    if (kind < 4) {
      markup += u'<';
      markup += one_of(names, choices);
      markup += one_of(attributes, choices);
      markup += u'>';
    } else if (kind < 6) {
      markup += one_of(texts, choices);
    } else {
      markup += u"</";
      markup += one_of(names, choices);
      markup += u'>';
    }
  }
  return markup;
}

Boundary any_place(Document& document, fuzz::Choices& choices) {
  std::size_t steps = choices.below(60);
  Node* node = document.body();
  while (steps-- > 0)
    if (Node* next = next_in_order(*node, document.body())) node = next;
  return {node, choices.below(length_of(*node) + 1)};
}

void select_somewhere(editing::Editor& editor, fuzz::Choices& choices) {
  const std::size_t how = choices.below(8);
  if (how < 3) return;
  if (how == 3) {
    editor.execute(u"selectAll");
    return;
  }
  Range range{any_place(editor.document(), choices), any_place(editor.document(), choices)};
  if (how < 6) range.end = range.start;
  if (compare(range.start, range.end) > 0) std::swap(range.start, range.end);
  editor.selection().set(range);
}

void act(editing::Editor& editor, fuzz::Choices& choices) {
  select_somewhere(editor, choices);
  switch (choices.below(8)) {
    case 0:
    case 1: editor.execute(u"insertHTML", fragment(choices)); return;
    case 2: editing::paste_html(editor, fragment(choices)); return;
    case 3: editing::create_text_range(editor).paste_html(fragment(choices)); return;
    default: {
      const auto& [name, value] = one_of(commands, choices);
      editor.execute(name, value);
    }
  }
}

void require_sound(Document& document) {
  fuzz::require_sound_links(document);
  fuzz::require_sound_order(document);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Choices choices(data, size);
  const std::u16string page = u"<!DOCTYPE html><body>" + std::u16string(one_of(pages, choices));
  const Ref<Document> document = parse_document(page);
  editing::Editor editor(*document);
  editor.set_design_mode(true);
  editor.set_style_with_css(choices.below(4) == 0);
  editor.execute(u"selectAll");
  const std::u16string first = print_tree(*document);
  for (int round = 0; round < 12 && choices.left(); ++round) {
    attempt([&] { act(editor, choices); });
    require_sound(*document);
  }
  while (document->journal().redo()) {
  }
  const std::u16string last = print_tree(*document);
  while (document->journal().undo()) fuzz::require_sound_links(*document);
  fuzz::require(print_tree(*document) == first, "undoing all gives the first tree");
  while (document->journal().redo()) fuzz::require_sound_links(*document);
  fuzz::require(print_tree(*document) == last, "redoing all gives the last tree");
  return 0;
}
