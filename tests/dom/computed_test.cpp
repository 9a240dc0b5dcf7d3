#include <gtest/gtest.h>

#include "tvx/base/strings.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/presentational_hints.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {
namespace {

std::string utf8(std::u16string_view text) { return to_utf8(text); }

Element* by_id(const Document& document, std::u16string_view id) {
  for (Element* element : document.all()) {
    if (element->attribute_or_empty(names::id) == id) return element;
  }
  return nullptr;
}

/// The value for the element with the id "x" of a standards-mode page with that body.
std::string value(std::u16string_view body, Property property, std::u16string_view sheet = {}) {
  std::u16string html = u"<!DOCTYPE html><html><head><style>";
  html += sheet;
  html += u"</style></head><body>";
  html += body;
  const Ref<Document> document = parse_document(html);
  Element* element = by_id(*document, u"x");
  if (!element) return "no such element";
  return utf8(computed_value(*element, property));
}

struct Case {
  const char16_t *body, *sheet;
  Property property;
  const char* result;
};

void check(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    EXPECT_EQ(value(c.body, c.property, c.sheet), c.result) << utf8(c.body) << "  {" << utf8(c.sheet) << "}";
  }
}

TEST(Computed, DefaultLooks) {
  check({{u"<p id=x>", u"", Property::Display, "block"},
         {u"<b id=x>", u"", Property::Display, "inline"},
         {u"<ul><li id=x>", u"", Property::Display, "list-item"},
         {u"<table id=x>", u"", Property::Display, "table"},
         {u"<table><td id=x>", u"", Property::Display, "table-cell"},
         {u"<input id=x>", u"", Property::Display, "inline-block"},
         {u"<input id=x type=HIDDEN>", u"#x { display: block !important }", Property::Display, "none"},
         {u"<script id=x>", u"", Property::Display, "none"},
         {u"<p id=x hidden>", u"", Property::Display, "none"},
         {u"<p id=x hidden>", u"p { display: block }", Property::Display, "block"},
         {u"<b id=x>", u"", Property::FontWeight, "700"},
         {u"<h1><b id=x>", u"", Property::FontWeight, "900"},
         {u"<table><th id=x>", u"", Property::FontWeight, "700"},
         {u"<table><th id=x>", u"", Property::TextAlign, "center"},
         {u"<div align=right><table><th id=x>", u"", Property::TextAlign, "right"},
         {u"<table><td id=x>", u"", Property::VerticalAlign, "middle"},
         {u"<cite id=x>", u"", Property::FontStyle, "italic"},
         {u"<del id=x>", u"", Property::TextDecorationLine, "line-through"},
         {u"<u><b id=x>", u"", Property::TextDecorationLine, "none"},
         {u"<a id=x>", u"", Property::TextDecorationLine, "none"},
         {u"<a id=x href=a>", u"", Property::TextDecorationLine, "underline"},
         {u"<a id=x href=a>", u"", Property::Color, "rgb(0, 0, 238)"},
         {u"<h1 id=x>", u"", Property::FontSize, "32px"},
         {u"<small id=x>", u"", Property::FontSize, "13px"},
         {u"<sup id=x>", u"", Property::VerticalAlign, "super"},
         {u"<pre><b id=x>", u"", Property::WhiteSpace, "pre"},
         {u"<tt id=x>", u"", Property::FontFamily, "monospace"},
         {u"<p id=x>", u"", Property::FontFamily, "serif"},
         {u"<p id=x>", u"", Property::BackgroundColor, "rgba(0, 0, 0, 0)"},
         {u"<p id=x>", u"", Property::TextAlign, "start"},
         {u"<ol id=x>", u"", Property::ListStyleType, "decimal"},
         {u"<ol><ul><li id=x>", u"", Property::ListStyleType, "circle"},
         {u"<ul><ul><ul id=x>", u"", Property::ListStyleType, "square"},
         {u"<bdo id=x dir=rtl>", u"", Property::Direction, "rtl"},
         {u"<p id=x dir=auto>&#x5d0;abc", u"", Property::Direction, "rtl"}});
}

TEST(Computed, PresentationalAttributes) {
  check(
      {{u"<font id=x color=red>", u"", Property::Color, "rgb(255, 0, 0)"},
       {u"<font id=x color=ff0000>", u"", Property::Color, "rgb(255, 0, 0)"},
       {u"<font id=x color=red>", u"font { color: blue }", Property::Color, "rgb(0, 0, 255)"},
       {u"<font id=x face=\"Times New Roman, Arial\">", u"", Property::FontFamily, "Times New Roman, Arial"},
       {u"<font id=x size=1>", u"", Property::FontSize, "10px"},
       {u"<font id=x size=7>", u"", Property::FontSize, "48px"},
       {u"<font id=x size=+1>", u"", Property::FontSize, "18px"},
       {u"<font id=x size=-9>", u"", Property::FontSize, "10px"},
       {u"<font id=x size=four>", u"", Property::FontSize, "16px"},
       {u"<p id=x align=CENTER>", u"", Property::TextAlign, "center"},
       {u"<center><p id=x>", u"", Property::TextAlign, "center"},
       {u"<table><td id=x nowrap>", u"", Property::WhiteSpace, "nowrap"},
       {u"<table><td id=x bgcolor=#0f0 valign=top>", u"", Property::BackgroundColor, "rgb(0, 255, 0)"},
       {u"<table><tr valign=top><td id=x>", u"", Property::VerticalAlign, "top"},
       {u"<img id=x align=left>", u"", Property::Float, "left"},
       {u"<img id=x align=left>", u"", Property::Display, "block"},
       {u"<img id=x align=absmiddle>", u"", Property::VerticalAlign, "middle"},
       {u"<ol type=A><li id=x>", u"", Property::ListStyleType, "upper-alpha"}});
}

TEST(Computed, Cascade) {
  check(
      {{u"<p id=x class=a>", u".a { color: red } p { color: blue }", Property::Color, "rgb(255, 0, 0)"},
       {u"<p id=x class=a>", u"#x { color: lime } .a { color: red }", Property::Color, "rgb(0, 255, 0)"},
       {u"<p id=x class=a>", u".a { color: red } .a { color: blue }", Property::Color, "rgb(0, 0, 255)"},
       {u"<p id=x style='color:blue'>", u"#x { color: red }", Property::Color, "rgb(0, 0, 255)"},
       {u"<p id=x style='color:blue'>", u"p { color: red !important }", Property::Color, "rgb(255, 0, 0)"},
       {u"<p id=x style='color:blue!important'>", u"p { color: red !important }", Property::Color,
        "rgb(0, 0, 255)"},
       {u"<div style='color:red'><p id=x style='color:inherit'>", u"p { color: blue }", Property::Color,
        "rgb(255, 0, 0)"},
       {u"<div style='color:red'><p id=x style='color:initial'>", u"", Property::Color, "rgb(0, 0, 0)"},
       {u"<div style='color:red'><p id=x style='color:unset'>", u"", Property::Color, "rgb(255, 0, 0)"},
       {u"<b id=x style='font-weight:revert'>", u"b { font-weight: 300 }", Property::FontWeight, "700"},
       {u"<p style='font-weight:300'><b id=x>", u"", Property::FontWeight, "400"},
       {u"<b><span id=x style='font-weight:lighter'>", u"", Property::FontWeight, "400"},
       {u"<div style='font-size:20px'><p id=x style='font-size:1.5em'>", u"", Property::FontSize, "30px"},
       {u"<div style='font-size:20px'><p id=x style='font-size:50%'>", u"", Property::FontSize, "10px"},
       {u"<div style='font-size:20px'><p id=x style='font-size:2rem'>", u"html { font-size: 10px }",
        Property::FontSize, "20px"},
       {u"<p id=x style='font-size:12pt'>", u"", Property::FontSize, "16px"},
       {u"<p id=x style='font-size:larger'>", u"", Property::FontSize, "18px"},
       {u"<p id=x style='font: italic bold 12px/1 Arial, \"A B\"'>", u"", Property::FontFamily,
        "Arial, \"A B\""},
       {u"<p id=x style='font: italic bold 12px/1 Arial'>", u"", Property::FontStyle, "italic"},
       {u"<p id=x style='background: url(a) #abc'>", u"", Property::BackgroundColor, "rgb(170, 187, 204)"},
       {u"<p id=x style='color: rgba(1,2,3,.5)'>", u"", Property::Color, "rgba(1, 2, 3, 0.5)"},
       {u"<p id=x style='color: hsl(120, 100%, 25%)'>", u"", Property::Color, "rgb(0, 128, 0)"},
       {u"<p id=x style='color: red; background: currentcolor'>", u"", Property::BackgroundColor,
        "rgb(255, 0, 0)"},
       {u"<p id=x style='text-decoration: underline line-through'>", u"", Property::TextDecorationLine,
        "underline line-through"},
       {u"<p id=x style='text-decoration-line: underline; text-decoration-line: none overline'>", u"",
        Property::TextDecorationLine, "underline"},
       {u"<p id=x style='text-decoration-line: underline; text-decoration-line: sideways'>", u"",
        Property::TextDecorationLine, "underline"},
       {u"<span id=x style='float:left'>", u"", Property::Display, "block"},
       {u"<span id=x style='position:absolute'>", u"", Property::Display, "block"},
       {u"<span id=x style='vertical-align: 2em'>", u"", Property::VerticalAlign, "32px"},
       {u"<p id=x>", u"p { color: red; } bad rule } p { color: blue } i {}", Property::Color,
        "rgb(255, 0, 0)"},
       {u"<p id=x>", u"p { color: red; colour: blue; color: nonsense; }", Property::Color, "rgb(255, 0, 0)"},
       {u"<p id=x>", u"p:unknown-thing, p { color: red }", Property::Color, "rgb(0, 0, 0)"},
       {u"<p id=x>", u"@media print { p { color: red } }", Property::Color, "rgb(0, 0, 0)"},
       {u"<p id=x>", u"@media screen and (min-width: 100px) { p { color: red } }", Property::Color,
        "rgb(255, 0, 0)"}});
}

TEST(Computed, QuirksModeTablesAndLengths) {
  const Ref<Document> document =
      parse_document(u"<div style='font-size:20; font-weight:bold'><table><td id=x>1</table>");
  document->set_compatibility_mode(CompatibilityMode::Quirks);
  Element& cell = *by_id(*document, u"x");
  EXPECT_EQ(utf8(computed_value(cell, Property::FontSize)), "16px");
  EXPECT_EQ(utf8(computed_value(*enclosing(cell, Tag::Div), Property::FontSize)), "20px");
  EXPECT_EQ(utf8(computed_value(cell, Property::FontWeight)), "400");
  document->set_compatibility_mode(CompatibilityMode::NoQuirks);
  EXPECT_EQ(utf8(computed_value(cell, Property::FontWeight)), "700");
}

TEST(Computed, ExtraSheetOutsideTheTree) {
  const Ref<Document> document = parse_document(
      u"<!DOCTYPE html><p><span class=underline-and-line-through id=a></span><a href=x id=b></a><b "
      u"class=notbold id=c>"
      u"</b><span id=purple></span><dfn id=d></dfn>");
  const std::uint64_t version = document->version();
  style_of(*document).set_extra_sheets(
      {u"b, strong, .bold { font-weight: bold } .notbold { font-weight: normal } dfn { font-style: italic }"
       u"#purple { color: purple } .underline-and-line-through { text-decoration: underline line-through }"
       u":link, :visited { color: blue } quasit { text-align: inherit }"});
  const auto get = [&](const char16_t* id, Property property) {
    return utf8(computed_value(*by_id(*document, id), property));
  };
  EXPECT_EQ(get(u"a", Property::TextDecorationLine), "underline line-through");
  EXPECT_EQ(get(u"b", Property::Color), "rgb(0, 0, 255)");
  EXPECT_EQ(get(u"c", Property::FontWeight), "400");
  EXPECT_EQ(get(u"purple", Property::Color), "rgb(128, 0, 128)");
  EXPECT_EQ(document->version(), version);
  EXPECT_TRUE(style_of(*document).sheets().empty());
}

/// Every computed value of every element of the tree, as one text.
std::string everything(StyleEngine& engine, Document& document) {
  std::string text;
  for (Element* element : document.all()) {
    text += utf8(element->display_name()) + ":";
    for (std::size_t i = 0; i < std::size_t(Property::Count); ++i) {
      text += ' ';
      text += utf8(engine.computed(*element, Property(i)));
    }
    text += "\n";
  }
  return text;
}

// The answers that are kept must be those that a fresh engine gives, whatever happened.
TEST(Computed, KeptAnswersFollowMutations) {
  const char16_t* sheets[] = {
      u".a { color: red } div p { font-style: italic } [lang] { color: green }",
      u"p:first-child { color: red } p + p { font-weight: bold } b:empty { color: blue }",
      u":nth-child(2n+1) { font-size: 20px } b ~ i { color: red }"};
  for (const char16_t* sheet : sheets) {
    std::u16string html = u"<!DOCTYPE html><style>";
    html += sheet;
    html +=
        u"</style><div id=d><p>1<b></b><i>2</i></p><p id=q>3<b>4</b></p></div><div id=e dir=auto>abc</div>";
    const Ref<Document> document = parse_document(html);
    Element *d = by_id(*document, u"d"), *q = by_id(*document, u"q"), *e = by_id(*document, u"e");
    Ref<Element> style = enclosing(*document->head()->first_child(), Tag::Style);
    const auto agree = [&](const char* step) {
      StyleEngine fresh(*document);
      EXPECT_EQ(everything(style_of(*document), *document), everything(fresh, *document)) << step;
    };
    agree("at first");
    set_attribute(*d, names::class_, u"a");
    agree("class");
    set_attribute(*q, names::style, u"font-size: 2em; display: inline");
    agree("style");
    insert(*e, q);
    agree("moved");
    insert(*d, q, d->first_child());
    agree("moved in front");
    replace_data(*as<Text>(e->first_child()), 0, 3, u"אבג");
    agree("text with another direction");
    set_attribute(*q, names::lang, u"en");
    agree("an attribute that a selector asks for");
    Ref<Element> b = document->create_element(Tag::B);
    insert(*q, b);
    agree("an empty element");
    insert(*b, document->create_text(u"x"));
    agree("no longer empty");
    set_attribute(*document->body(), Name(u"text"), u"red");
    agree("body");
    replace_children(*style, document->create_text(u"b { color: lime }"));
    agree("another sheet");
    remove(*style);
    agree("no sheet");
    remove(*d);
    insert(*document->body(), d);
    agree("taken out and put back");
  }
}

TEST(Computed, ElementsOutsideTheTree) {
  const Ref<Document> document = parse_document(u"<p style='color:red'>");
  Ref<Element> b = document->create_element(Tag::B), font = document->create_element(Tag::Font);
  Builder::insert(*b, font);
  EXPECT_EQ(utf8(computed_value(*font, Property::FontWeight)), "700");
  Builder::add_attribute(*font, {names::size, u"5"});
  EXPECT_EQ(utf8(computed_value(*font, Property::FontSize)), "24px");
}

TEST(Computed, DeepTreesAndManyQuestions) {
  const Ref<Document> document = parse_document(u"<!DOCTYPE html><body>");
  Element* place = document->body();
  Ref<Element> top = document->create_element(Tag::Span);
  Element* current = top.get();
  for (int i = 0; i < 100000; ++i) {
    Ref<Element> next = document->create_element(Tag::Span);
    Builder::insert(*current, next);
    current = next.get();
  }
  insert(*place, top);
  set_attribute(*document->body(), names::style, u"color: red");
  EXPECT_EQ(utf8(computed_value(*current, Property::Color)), "rgb(255, 0, 0)");
  set_attribute(*document->body(), names::style, u"color: lime");
  EXPECT_EQ(utf8(computed_value(*current, Property::Color)), "rgb(0, 255, 0)");
}

TEST(Colors, Text) {
  const std::pair<const char16_t*, const char*> cases[] = {
      {u"red", "rgb(255, 0, 0)"},
      {u"RebeccaPurple", "rgb(102, 51, 153)"},
      {u"#f00", "rgb(255, 0, 0)"},
      {u"#F008", "rgba(255, 0, 0, 0.533)"},
      {u"#00ff0080", "rgba(0, 255, 0, 0.502)"},
      {u"rgb(1,2,3)", "rgb(1, 2, 3)"},
      {u"rgb(1 2 3 / 50%)", "rgba(1, 2, 3, 0.5)"},
      {u"rgb(100%, 0%, 50%)", "rgb(255, 0, 128)"},
      {u"rgb(300, -5, 0)", "rgb(255, 0, 0)"},
      {u"rgba(1, 2, 3, 1)", "rgb(1, 2, 3)"},
      {u"hsl(240deg 100% 50%)", "rgb(0, 0, 255)"},
      {u"hsla(0.5turn, 100%, 50%, .25)", "rgba(0, 255, 255, 0.25)"},
      {u"transparent", "rgba(0, 0, 0, 0)"}};
  for (const auto& [text, result] : cases) {
    const auto color = parse_color(text);
    ASSERT_TRUE(color) << utf8(text);
    EXPECT_EQ(utf8(to_text(*color)), result) << utf8(text);
  }
  for (const char16_t* bad : {u"", u"reddish", u"#ff", u"#ggg", u"rgb(1,2)", u"rgb(1 2,3)", u"rgb(1,2,3",
                              u"hsl(1,2,3)", u"rgb(1,2,3,)", u"currentcolor", u"rgb(1px,2,3)"}) {
    EXPECT_FALSE(parse_color(bad)) << utf8(bad);
  }
}

// HTML standard, section 2.3.6 "Colors".
TEST(Colors, LegacyAttribute) {
  const std::pair<const char16_t*, const char*> cases[] = {{u"red", "#ff0000"},
                                                           {u" #f00 ", "#ff0000"},
                                                           {u"ff0000", "#ff0000"},
                                                           {u"chucknorris", "#c00000"},
                                                           {u"#12", "#010200"},
                                                           {u"x", "#000000"},
                                                           {u"00112233445566778899aabb", "#004488"},
                                                           {u"sick", "#00c000"}};
  for (const auto& [text, result] : cases) {
    const auto color = parse_legacy_color(text);
    ASSERT_TRUE(color) << utf8(text);
    EXPECT_EQ(utf8(to_hex(*color)), result) << utf8(text);
  }
  EXPECT_FALSE(parse_legacy_color(u""));
  EXPECT_FALSE(parse_legacy_color(u"Transparent"));
}

}  // namespace
}  // namespace tvx::dom::style
