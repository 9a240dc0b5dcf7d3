#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/gestures/keyboard.h"
#include "tvx/editing/gestures/typing.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/virtual_time_loop.h"

/// What a host and a user ask of the whole control, with content of any size: for a bench that measures time
/// and a test that counts steps.
namespace tvx::growth {

/// A control without a screen.
struct Stage {
  Stage() {
    control->UserControl_Initialize();
    control->UserControl_InitProperties();
    control->set_CSShttp(false);  // what is put into CSSText is a sheet, not the address of one
    control->UserControl_Show();
  }
  ~Stage() { control->UserControl_Terminate(); }
  dom::Element& body() { return *control->DOM()->body(); }
  editing::Editor& editor() { return control->DOM()->editor(); }

  headless::VirtualTimeLoop loop;
  headless::Container container{true};
  headless::Dialogs dialogs;
  headless::Clipboard clipboard;
  std::shared_ptr<core::HTMLed> control = core::HTMLed::create(
      {.loop = loop, .container = container, .dialogs = dialogs, .clipboard = &clipboard});
};

inline std::u16string repeated(std::size_t count, const std::function<std::u16string(std::size_t)>& piece) {
  std::u16string text;
  for (std::size_t i = 0; i < count; ++i) text += piece(i);
  return text;
}
inline std::u16string classes(std::size_t count) {
  return repeated(count, [](std::size_t i) { return u".c" + to_text(i) + u" { color: red }\n"; });
}
inline std::u16string attributes(std::size_t count) {
  return u"<P" + repeated(count, [](std::size_t i) { return u" a" + to_text(i) + u"=\"v\""; }) + u">x</P>";
}
inline std::u16string paragraphs(std::size_t count) {
  return repeated(count,
                  [](std::size_t i) { return u"<P>Some words of paragraph " + to_text(i) + u"</P>\n"; });
}
inline std::u16string repeated(std::u16string_view piece, std::size_t count) {
  return repeated(count, [piece](std::size_t) { return std::u16string(piece); });
}
/// From a program that says nothing of itself, over all that there is.
inline void copy_html(Stage& stage, const std::u16string& html) {
  stage.clipboard.put({{"text/html", to_utf8(html)}});
  stage.control->set_DocumentHTML(u"<P>here</P>");
  stage.editor().execute(u"selectAll");
}
inline void copy_paragraphs(Stage& stage, std::size_t count) {
  stage.control->set_DocumentHTML(paragraphs(count));
  stage.editor().execute(u"selectAll");
  stage.control->copy_document();
  stage.control->set_DocumentHTML(u"<P>here</P>");
  stage.editor().execute(u"selectAll");
}

enum class Does : std::uint8_t { Edit, Other };

struct Case {
  const char* name;
  std::size_t count;
  std::function<void(Stage&, std::size_t)> before, act;
  Does does = Does::Other;
};

/// The user writes a source of one piece repeated, and goes back.
inline Case source_of(const char* name, std::u16string_view piece) {
  return {name, 2'000, [](Stage& stage, std::size_t) { stage.control->show_Code(); },
          [piece](Stage& stage, std::size_t n) {
            stage.control->txtCode().TextBox1().set_SelText(repeated(piece, n));
            stage.control->show_Code();
          },
          Does::Edit};
}
/// The document has such a source; a letter is put at its start.
inline Case source_through(const char* name, std::u16string_view piece) {
  return {name, 2'000,
          [piece](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(repeated(piece, n)); },
          [](Stage& stage, std::size_t) {
            stage.control->show_Code();
            stage.control->txtCode().TextBox1().set_SelText(u"x");
            stage.control->show_Code();
          },
          Does::Edit};
}

inline const Case control_cases[] = {
    {"CSSText put", 2'000, [](Stage&, std::size_t) {},
     [](Stage& stage, std::size_t n) { stage.control->set_CSSText(classes(n)); }},
    {"CSSText put over another", 2'000,
     [](Stage& stage, std::size_t n) { stage.control->set_CSSText(classes(n)); },
     [](Stage& stage, std::size_t n) { stage.control->set_CSSText(classes(n) + u".d {}"); }},
    {"class menu, the last item", 2'000,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<P>word</P>");
       stage.control->set_CSSText(classes(n));
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t n) { stage.control->mnuMiscClass_Click(std::int16_t(n - 1)); }, Does::Edit},
    {"class on many paragraphs", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.control->set_CSSText(u".a {}");
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->mnuMiscClass_Click(1); }, Does::Edit},
    {"style elements in DocumentHTML", 300, [](Stage&, std::size_t) {},
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<P>x</P>" + repeated(n, [](std::size_t i) {
                                         return u"<STYLE>.s" + to_text(i) + u" {}</STYLE>";
                                       }));
     }},
    {"attributes in DocumentHTML", 5'000, [](Stage&, std::size_t) {},
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(attributes(n)); }},
    {"attributes asked for one by one", 5'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(attributes(n)); },
     [](Stage& stage, std::size_t n) {
       const dom::Element& element = *dom::first_child_element(stage.body());
       for (std::size_t i = 0; i < n; ++i) (void)element.attribute(dom::Name(u"a" + to_text(i)));
     }},
    {"attributes removed from the front", 2'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(attributes(n)); },
     [](Stage& stage, std::size_t n) {
       dom::Element& element = *dom::first_child_element(stage.body());
       for (std::size_t i = 0; i < n; ++i) dom::remove_attribute(element, dom::Name(u"a" + to_text(i)));
     },
     Does::Edit},
    {"DocumentHTML put", 2'000, [](Stage&, std::size_t) {},
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(paragraphs(n)); }},
    {"DocumentHTML read", 2'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(paragraphs(n)); },
     [](Stage& stage, std::size_t) { (void)stage.control->DocumentHTML(); }},
    {"code view and back with an edit", 500,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(paragraphs(n)); },
     [](Stage& stage, std::size_t) {
       stage.control->show_Code();
       stage.control->txtCode().TextBox1().set_SelText(u"x");
       stage.control->show_Code();
     },
     Does::Edit},
    {"selectText to the end", 2'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(paragraphs(n)); },
     [](Stage& stage, std::size_t n) { stage.control->selectText(0, std::int32_t(n * 20)); }},
    {"InsertAtCursor", 1'000, [](Stage& stage, std::size_t) { stage.editor().execute(u"selectAll"); },
     [](Stage& stage, std::size_t n) {
       stage.control->InsertAtCursor(paragraphs(n), core::ed_InsertType::ed_InsertReplaceSelection);
     },
     Does::Edit},
    {"FormatSelection", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->FormatSelection(u"<A href=x>", u"</A>"); }, Does::Edit},
    {"copy", 1'000,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->copy_document(); }},
    {"paste of paragraphs", 1'000, copy_paragraphs,
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"paste of plain text", 1'000,
     [](Stage& stage, std::size_t n) {
       stage.clipboard.SetText(repeated(n, [](std::size_t) { return u"a line of text\n"; }));
       stage.control->set_DocumentHTML(u"<P>here</P>");
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"paste of another program's paragraphs", 500,
     [](Stage& stage, std::size_t n) {
       stage.clipboard.put(
           {{"text/html", "<style>.m { color: red }</style>" + to_utf8(repeated(n, [](std::size_t) {
                            return u"<p class=m><span style='font-weight:bold'>w</span> x";
                          }))}});
       stage.control->set_DocumentHTML(u"<P>here</P>");
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"paste of unclosed pairs", 100,
     [](Stage& stage, std::size_t n) { copy_html(stage, repeated(u"<b><i></b>", n)); },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }},
    {"paste of unclosed pairs with text", 100,
     [](Stage& stage, std::size_t n) { copy_html(stage, repeated(u"<b>a<i>b</b>c", n)); },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"paste of unknown elements in one another", 45,
     [](Stage& stage, std::size_t n) { copy_html(stage, repeated(u"<foo>a", n)); },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"paste of unknown elements", 500,
     [](Stage& stage, std::size_t n) { copy_html(stage, repeated(u"<foo>a</foo>", n)); },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"paste of lists in lists", 20,
     [](Stage& stage, std::size_t n) { copy_html(stage, repeated(u"<ul><li>a", n)); },
     [](Stage& stage, std::size_t) { stage.control->paste_document(); }, Does::Edit},
    {"all selected, then the code view", 1'000,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->show_Code(); }},
    {"numbered list over links", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(repeated(u"<a href=x>link</a> ", n));
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.control->numbered_list(); }, Does::Edit},
    {"typing after scripts", 1'000,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<p>a" + repeated(u"<script></script>", n) + u"</p>");
       dom::Node* paragraph = stage.body().first_child();
       stage.editor().selection().collapse({paragraph, paragraph->child_count()});
     },
     [](Stage& stage, std::size_t) {
       for (int i = 0; i < 5; ++i) editing::type_text(stage.editor(), u"b");
     },
     Does::Edit},
    {"delete all over comments", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<p>x</p>" + repeated(u"\n<!-- c -->", n) + u"<p>y</p>");
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.editor().execute(u"delete"); }, Does::Edit},
    {"delete all over scripts", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<p>x</p>" + repeated(u"<script></script>", n) + u"<p>y</p>");
       stage.editor().execute(u"selectAll");
     },
     [](Stage& stage, std::size_t) { stage.editor().execute(u"delete"); }, Does::Edit},
    {"sheets of one rule, styles asked", 100,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<p>x</p>" + repeated(u"<style>.a{color:red}</style>", n));
     },
     [](Stage& stage, std::size_t) {
       stage.editor().execute(u"selectAll");
       stage.editor().execute(u"bold");
     },
     Does::Edit},
    {"sheets of one rule put in one by one", 100,
     [](Stage& stage, std::size_t) { stage.control->set_DocumentHTML(u"<p>x</p>"); },
     [](Stage& stage, std::size_t n) {
       for (std::size_t i = 0; i < n; ++i) {
         auto sheet = stage.editor().document().create_element(dom::Tag::Style);
         dom::insert(*sheet, stage.editor().document().create_text(u".a{color:red}"));
         dom::insert(stage.body(), sheet);
       }
     },
     Does::Edit},
    {"a key beside a long style attribute", 2'000,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<p style=\"" + repeated(u"color:red;margin:1px;", n) + u"\">ab</p>");
       dom::Node* text = stage.body().first_child()->first_child();
       stage.editor().selection().collapse({text, 1});
     },
     [](Stage& stage, std::size_t) { editing::type_text(stage.editor(), u"b"); }, Does::Edit},
    {"Return beside a long style attribute", 2'000,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(u"<p style=\"" + repeated(u"color:red;margin:1px;", n) + u"\">ab</p>");
       dom::Node* text = stage.body().first_child()->first_child();
       stage.editor().selection().collapse({text, 1});
     },
     [](Stage& stage, std::size_t) { stage.editor().execute(u"insertParagraph"); }, Does::Edit},
    {"a source of nothing but <", 20'000, [](Stage& stage, std::size_t) { stage.control->show_Code(); },
     [](Stage& stage, std::size_t n) {
       stage.control->txtCode().TextBox1().set_SelText(std::u16string(n, u'<'));
       stage.control->show_Code();
     },
     Does::Edit},
    source_of("unclosed tags, out of the code view", u"<a"),
    source_through("unclosed tags, into the code view and out with an edit", u"<a"),
    source_of("unclosed values, out of the code view", u"<a b=\""),
    source_through("unclosed values, into the code view and out with an edit", u"<a b=\""),
    source_of("comments that don't end, out of the code view", u"<!--"),
    source_through("comments that don't end, into the code view and out with an edit", u"<!--"),
    source_of("end tags, out of the code view", u"</"),
    source_through("end tags, into the code view and out with an edit", u"</"),
    source_of("scripts that don't end, out of the code view", u"<script>"),
    source_through("scripts that don't end, into the code view and out with an edit", u"<script>"),
    source_of("character references, out of the code view", u"&amp"),
    source_through("character references, into the code view and out with an edit", u"&amp"),
    source_of("declarations, out of the code view", u"<!x"),
    source_through("declarations, into the code view and out with an edit", u"<!x"),
    source_of("open elements, out of the code view", u"<i>"),
    source_through("open elements, into the code view and out with an edit", u"<i>"),
    source_of("words and breaks, out of the code view", u"a<br>b "),
    source_through("words and breaks, into the code view and out with an edit", u"a<br>b "),
    {"into the code view of nothing but <", 20'000,
     [](Stage& stage, std::size_t n) { stage.control->set_DocumentHTML(repeated(u"&lt;", n)); },
     [](Stage& stage, std::size_t) { stage.control->show_Code(); }},
    {"undo and redo of all", 500,
     [](Stage& stage, std::size_t n) {
       stage.control->set_DocumentHTML(paragraphs(n));
       stage.editor().execute(u"selectAll");
       stage.control->bold_document();
       stage.control->numbered_list();
     },
     [](Stage& stage, std::size_t) {
       stage.control->undo_document();
       stage.control->undo_document();
       stage.control->redo_document();
       stage.control->redo_document();
     },
     Does::Edit},
};

}  // namespace tvx::growth
