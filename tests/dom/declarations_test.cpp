#include "tvx/dom/style/declarations.h"

#include <gtest/gtest.h>

#include "dom/build_tree.h"
#include "tvx/base/strings.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {
namespace {

std::string utf8(std::u16string_view text) { return to_utf8(text); }

std::string value(std::u16string_view text, std::u16string_view name) {
  return utf8(Declarations(text).get(name));
}

std::string after_set(std::u16string_view text, std::u16string_view name, std::u16string_view value) {
  Declarations declarations(text);
  declarations.set(name, value);
  return utf8(declarations.css_text());
}

TEST(Declarations, KeepTheirText) {
  for (const char16_t* text :
       {u"", u" ", u";", u"color:red", u"color : RED ;", u"/* a */ color: red /* b */; ; x",
        u"foo bar; color: red", u"mso-list: l0 level1 lfo1; color: red", u"--My-Var:  { a: b; c } ;color:red",
        u"a:'x;y'; b: url(x;y); c:(;)", u"@x { a: b } color: red", u"color: red; background: url(",
        u"color: 'red\n; font-size: 2px", u"a:\\"}) {
    EXPECT_EQ(utf8(Declarations(text).css_text()), utf8(text));
  }
}

TEST(Declarations, ListWhatIsWritten) {
  const Declarations d(u"COLOR: Red !important; nonsense; mso-x: 1 2; --Custom: A; font-size:");
  ASSERT_EQ(d.length(), 3u);
  EXPECT_EQ(utf8(d.item(0).name), "color");
  EXPECT_EQ(utf8(d.item(0).value), "Red");
  EXPECT_TRUE(d.item(0).important);
  EXPECT_EQ(utf8(d.item(1).name), "mso-x");
  EXPECT_EQ(utf8(d.item(2).name), "--Custom");
}

TEST(Declarations, BadPartsNeverLoseTheGood) {
  EXPECT_EQ(value(u"}); color: red", u"color"), "red");
  EXPECT_EQ(value(u"color red; color: green; 12: 4", u"color"), "green");
  EXPECT_EQ(value(u"color: red; color: 12px", u"color"), "red");
  EXPECT_EQ(value(u"border: 1px solid red; border: big fat", u"border"), "1px solid red");
  EXPECT_EQ(value(u"@media x { color: blue } color: red", u"color"), "red");
  EXPECT_EQ(value(u"color: red; width: calc(1px", u"color"), "red");
}

struct Read {
  const char16_t *text, *name;
  const char* value;
};

TEST(Declarations, ReadLonghandsThroughShorthandsAndBack) {
  const Read reads[] = {
      {u"border: 1px solid red", u"border-style", "solid"},
      {u"border: 1px solid red", u"border-width", "1px"},
      {u"border: 1px solid red", u"border-left-color", "red"},
      {u"border: 1px solid red", u"border-left", "1px solid red"},
      {u"border: solid", u"border-width", "medium"},
      {u"border: solid", u"border-color", "currentcolor"},
      {u"border-left: 3px solid blue", u"border-style", ""},
      {u"border-left: 3px solid blue", u"border-left-style", "solid"},
      {u"border-width: 1px 2px 3px 4px", u"border-left-width", "4px"},
      {u"border-width: 1px 2px", u"border-left-width", "2px"},
      {u"border-top: 1px solid red; border-right: 1px solid red; border-bottom: 1px solid red; border-left: "
       u"1px "
       u"solid red",
       u"border", "1px solid red"},
      {u"border: 1px solid red; border-left-style: dotted", u"border-style", "solid solid solid dotted"},
      {u"border: 1px solid red; border-left-style: dotted", u"border", ""},
      {u"border: 1px solid rgb(1, 2, 3)", u"border-color", "rgb(1, 2, 3)"},
      {u"border: 1px solid red !important; border-style: dashed", u"border-style", "solid"},
      {u"margin: 1px auto", u"margin-left", "auto"},
      {u"margin: 1px 2px 3px 2px", u"margin", "1px 2px 3px 2px"},
      {u"margin-top:1px;margin-right:2px;margin-bottom:3px;margin-left:2px", u"margin", "1px 2px 3px"},
      {u"padding: -1px", u"padding", ""},
      {u"background: url(a.png) no-repeat fixed 10px 20px red", u"background-color", "red"},
      {u"background: url(a.png) no-repeat fixed 10px 20px red", u"background-position", "10px 20px"},
      {u"background: url(a), url(b) blue", u"background-image", "url(a), url(b)"},
      {u"background: red", u"background-image", "none"},
      {u"font: italic bold 12px/30px Georgia, 'Times New Roman', serif", u"font-family",
       "Georgia, 'Times New Roman', serif"},
      {u"font: italic bold 12px/30px Georgia, serif", u"line-height", "30px"},
      {u"font: italic bold 12px/30px Georgia, serif", u"font-weight", "bold"},
      {u"font: caption", u"font-size", ""},
      {u"font: caption", u"font", "caption"},
      {u"list-style: none", u"list-style-type", "none"},
      {u"list-style: square inside", u"list-style-position", "inside"},
      {u"text-decoration: underline line-through", u"text-decoration-line", "underline line-through"},
      {u"text-decoration: underline dotted red", u"text-decoration-color", "red"},
      {u"border: var(--b)", u"border-style", ""},
      {u"border: inherit", u"border-left-style", "inherit"},
      {u"unknown-thing: a b", u"unknown-thing", "a b"},
  };
  for (const Read& read : reads) {
    EXPECT_EQ(value(read.text, read.name), read.value) << utf8(read.text) << " / " << utf8(read.name);
  }
}

struct Write {
  const char16_t *text, *name, *value;
  const char* result;
};

TEST(Declarations, WriteOnlyWhatChanges) {
  const Write writes[] = {
      {u"", u"color", u"red", "color: red"},
      {u"a: b", u"color", u"red", "a: b; color: red"},
      {u"a: b;", u"color", u"red", "a: b; color: red;"},
      {u"a: b; ", u"color", u"red", "a: b; color: red; "},
      {u"COLOR :blue ; x:y", u"color", u"red", "COLOR :red ; x:y"},
      {u"border: red 1px solid", u"border-style", u"dashed", "border: red 1px dashed"},
      {u"border: 1px solid", u"border-color", u"red", "border: 1px solid red"},
      {u"border: 1px solid red", u"border-left-style", u"dashed",
       "border: 1px solid red; border-left-style: dashed"},
      {u"border: 1px solid red", u"border-style", u"", "border-width: 1px; border-color: red"},
      {u"x:y; border: 1px solid red; z:a", u"border-left", u"",
       "x:y; border-top: 1px solid red; border-right: 1px solid red; border-bottom: 1px solid red; z:a"},
      {u"margin: 1px 2px", u"margin-left", u"5px", "margin: 1px 2px 1px 5px"},
      {u"background: url(a) red", u"background-color", u"blue", "background: url(a) blue"},
      {u"background: red", u"background-color", u"", ""},
      {u"font: bold 12px Arial", u"font-size", u"14px", "font: bold 14px Arial"},
      {u"font: 12px Arial", u"font-weight", u"bold", "font: bold 12px Arial"},
      {u"text-decoration: underline", u"text-decoration", u"none", "text-decoration: none"},
      {u"color: red !important", u"color", u"blue", "color: blue"},
      {u"color: red", u"color", u"12px", "color: red"},
      {u"color: red", u"color", u"blue; x: y", "color: red"},
      {u"color: red", u"border-style", u"wobbly", "color: red"},
      {u"color: red", u"width", u"calc(1px", "color: red"},
      {u"color: red; background: url(x", u"width", u"1px", "color: red; width: 1px; background: url(x"},
      {u"a:b;color: red", u"a", u"", "color: red"},
      {u"a:b", u"a", u"", ""},
      {u"mso-x: 1 2;;bad; color: red", u"color", u"blue", "mso-x: 1 2;;bad; color: blue"},
  };
  for (const Write& write : writes) {
    EXPECT_EQ(after_set(write.text, write.name, write.value), write.result)
        << utf8(write.text) << " / " << utf8(write.name);
  }
}

TEST(Declarations, NothingIsWrittenIntoACommentThatNobodyEnds) {
  Declarations declarations(u"margin: 0/* x");
  declarations.set(u"margin", u"1px");
  declarations.set(u"color", u"red");
  EXPECT_EQ(utf8(declarations.css_text()), "color: red; margin: 1px/* x");
  Declarations parted(u"border: 1px solid red/* x");
  parted.set(u"border-left", u"");
  parted.set(u"color", u"blue");
  EXPECT_EQ(utf8(Declarations(parted.css_text()).get(u"color")), "blue") << utf8(parted.css_text());
}

// A selection border is drawn and taken away by the three properties; the text must come back.
TEST(Declarations, BorderDrawnAndRestoredLeavesTheSameText) {
  for (const char16_t* text :
       {u"", u"color: red", u"color: red;", u"border: 1px solid red", u"border: red solid 2px;color:blue",
        u"x:y; border: none", u"border-width: 1px 2px; border-style: solid; border-color: red",
        u"BORDER: 2px dotted rgb(1,2,3); mso-a:b", u"border: inherit", u"border-style: solid"}) {
    Declarations d(text);
    const std::u16string style = d.get(u"border-style"), width = d.get(u"border-width"),
                         color = d.get(u"border-color");
    d.set(u"border-width", u"1px");
    d.set(u"border-style", u"Dashed");
    d.set(u"border-color", u"RED");
    EXPECT_EQ(utf8(d.get(u"border-style")), "dashed") << utf8(text);
    EXPECT_EQ(utf8(d.get(u"border-color")), "red") << utf8(text);
    d.set(u"border-style", style);
    d.set(u"border-width", width);
    d.set(u"border-color", color);
    EXPECT_EQ(utf8(d.css_text()), utf8(text));
  }
}

// Writing a value and then the old one gives every longhand its old value, whatever the pair of names.
TEST(Declarations, WritingTheOldValueBackIsNoChange) {
  const char16_t* texts[] = {
      u"border: 1px solid red; margin: 1px 2px; padding-left: 3px",
      u"background: url(a) no-repeat red; font: bold 12px/2 Arial, serif",
      u"list-style: square inside; text-decoration: underline; border-left: 2px dotted blue"};
  const std::pair<const char16_t*, const char16_t*> changes[] = {{u"border-style", u"groove"},
                                                                 {u"border-left-style", u"inset"},
                                                                 {u"border-left", u"9px double green"},
                                                                 {u"margin-left", u"9px"},
                                                                 {u"padding-left", u"9px"},
                                                                 {u"background-color", u"green"},
                                                                 {u"font-size", u"9px"},
                                                                 {u"font-weight", u"normal"},
                                                                 {u"line-height", u"3"},
                                                                 {u"list-style-type", u"disc"},
                                                                 {u"text-decoration-line", u"overline"},
                                                                 {u"font-family", u"Courier"}};
  for (const char16_t* text : texts) {
    for (const auto& [name, changed] : changes) {
      Declarations d(text);
      const std::u16string old = d.get(name);
      if (old.empty() && d.get(u"border-left") != u"")
        continue;  // set on one side: no text says the old value
      d.set(name, changed);
      EXPECT_EQ(utf8(d.get(name)), utf8(changed)) << utf8(text) << " / " << utf8(name);
      d.set(name, old);
      const Declarations original(text);
      for (const auto& [other, unused] : changes) {
        EXPECT_EQ(utf8(d.get(other)), utf8(original.get(other)))
            << utf8(text) << " / " << utf8(name) << utf8(d.css_text());
      }
    }
  }
}

TEST(InlineStyle, NamesUnitsAndAttributes) {
  Ref<Document> document = test::document_with({test::element(Tag::P)});
  Element& p = *first_child_element(*document->body());
  InlineStyle style(p);
  style.set(u"borderWidth", u"");
  EXPECT_FALSE(p.has_attribute(names::style));
  style.set(u"borderWidth", u"1");
  style.set(u"backgroundColor", u"RED");
  style.set(u"lineHeight", u"2");
  EXPECT_EQ(utf8(style.css_text()), "border-width: 1px; background-color: red; line-height: 2");
  const std::uint64_t version = document->version();
  style.set(u"borderWidth", u"1");
  style.set(u"border-width", style.get(u"borderWidth"));
  style.set_css_text(style.css_text());
  EXPECT_EQ(document->version(), version);
  style.remove(u"borderWidth");
  style.remove(u"background-color");
  style.set(u"lineHeight", u"");
  EXPECT_FALSE(p.has_attribute(names::style));
  style.set(u"cssFloat", u"left");
  EXPECT_EQ(utf8(inline_value(p, u"float")), "left");
  EXPECT_EQ(inline_length(p), 1u);
}

}  // namespace
}  // namespace tvx::dom::style
