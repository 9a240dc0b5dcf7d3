#include "tvx/localise/xml_document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tvx/base/strings.h"

namespace tvx::localise {
namespace {

/// An element as it was read: name[attributes]'text'(children).
std::string shown(const XmlElement& element) {
  std::string out = to_utf8(element.name());
  for (const XmlAttribute& attribute : element.attributes())
    out += "[" + to_utf8(attribute.name) + "=" + to_utf8(attribute.value) + "]";
  out += "'" + to_utf8(element.text()) + "'";
  for (const XmlElement* child : element.children()) out += "(" + shown(*child) + ")";
  return out;
}

std::string parsed(std::string_view bytes) {
  XmlDocument document;
  if (!document.loadXML(bytes)) return "refused: " + to_utf8(document.parseError().reason);
  return shown(*document.documentElement());
}

std::string place(std::string_view bytes) {
  XmlDocument document;
  EXPECT_FALSE(document.loadXML(bytes));
  EXPECT_EQ(document.documentElement(), nullptr);
  return std::to_string(document.parseError().line) + ":" + std::to_string(document.parseError().linepos);
}

TEST(XmlDocument, HasElementsAttributesAndTextsInTheirOrder) {
  EXPECT_EQ(parsed("<a><b z='1' y='2'>one</b><c>t<d>w</d>o</c></a>"),
            "a'onetwo'(b[z=1][y=2]'one')(c'two'(d'w'))");
}

TEST(XmlDocument, WhatStandsBetweenElementsIsNoChild) {
  EXPECT_EQ(
      parsed("<?xml version='1.0'?><!-- head --><a>\n  <!-- one -->\n  <b>x</b> stray <?pi?>\n  <c/></a>\n"),
      "a'x stray'(b'x')(c'')");
}

TEST(XmlDocument, TextsLoseTheWhiteSpaceAtTheirEndsAlone) {
  EXPECT_EQ(parsed("<a>\n\t two  words \r\n</a>"), "a'two  words'");
  EXPECT_EQ(parsed("<a>&#160;x\u3000</a>"), "a'\u00A0x\u3000'");
}

TEST(XmlDocument, CommentsInATextAreNotPartOfIt) { EXPECT_EQ(parsed("<a>on<!-- not -->e</a>"), "a'one'"); }

TEST(XmlDocument, SectionsOfCharactersAndReferencesAreText) {
  EXPECT_EQ(parsed("<a><![CDATA[<b> & ]]>&lt;&amp;&gt;&quot;&apos;&#x263A;&#128512;</a>"),
            "a'<b> & <&>\"'☺😀'");
}

TEST(XmlDocument, NamesAreAsWrittenWithTheirPrefix) {
  EXPECT_EQ(parsed("<x:a xmlns:x='urn:y' x:b='1'/>"), "x:a[xmlns:x=urn:y][x:b=1]''");
}

TEST(XmlDocument, ChildrenAreFoundByPlaceAndByName) {
  XmlDocument document;
  ASSERT_TRUE(document.loadXML("<a><b>1</b><c/><b>2</b></a>"));
  const XmlElement& root = *document.documentElement();
  EXPECT_EQ(root.child(2)->text(), u"2");
  EXPECT_EQ(root.child(3), nullptr);
  EXPECT_EQ(root.child_named(u"b"), root.child(0));
  EXPECT_EQ(root.child_named(u"B"), nullptr);
}

// --- characters ---

TEST(XmlDocument, ByteOrderMarksTellTheEncoding) {
  EXPECT_EQ(parsed("\xEF\xBB\xBF<a>ü</a>"), "a'ü'");
  EXPECT_EQ(parsed(std::string_view("\xFF\xFE<\0a\0>\0\xFC\0<\0/\0a\0>\0", 18)), "a'ü'");
  EXPECT_EQ(parsed(std::string_view("\xFE\xFF\0<\0a\0>\0\xFC\0<\0/\0a\0>", 18)), "a'ü'");
}

TEST(XmlDocument, CodePagesOfOneByteACharacterAreRead) {
  EXPECT_EQ(parsed("<?xml version='1.0' encoding='iso-8859-1'?><a>\xFC</a>"), "a'ü'");
  EXPECT_EQ(parsed("<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>"), "a'€'");
  EXPECT_EQ(parsed("<?xml version='1.0' encoding='Windows-1251'?><a>\xE6</a>"), "a'ж'");
}

TEST(XmlDocument, OtherEncodingsAreRefused) {
  EXPECT_EQ(parsed("<?xml version='1.0' encoding='shift_jis'?><a/>"), "refused: unknown encoding");
  EXPECT_EQ(parsed("<?xml version='1.0' encoding='klingon'?><a/>"), "refused: unknown encoding");
  EXPECT_EQ(parsed("<a>\xFC</a>"), "refused: not well-formed (invalid token)");
}

// --- what is no document ---

TEST(XmlDocument, MalformedTextsAreRefusedWithTheirPlace) {
  EXPECT_EQ(place(""), "1:1");
  EXPECT_EQ(place("<a>\n  <b>\n</a>"), "3:3");
  EXPECT_EQ(place("<a><b></a>"), "1:9");
  EXPECT_EQ(place("<a/>\n<b/>"), "2:1");
  EXPECT_EQ(place("<a>\nx & y</a>"), "2:4");
  EXPECT_EQ(place("<a b='1' b='2'/>"), "1:10");
  EXPECT_EQ(place("no markup"), "1:1");
}

TEST(XmlDocument, PlacesCountCharactersAndNotBytes) { EXPECT_EQ(place("<a>äöü& </a>"), "1:8"); }

TEST(XmlDocument, ARefusedTextTakesTheFormerDocumentAway) {
  XmlDocument document;
  ASSERT_TRUE(document.loadXML("<a/>"));
  EXPECT_FALSE(document.loadXML("<a>"));
  EXPECT_EQ(document.documentElement(), nullptr);
  ASSERT_TRUE(document.loadXML("<b/>"));
  EXPECT_EQ(document.parseError().reason, u"");
  EXPECT_EQ(document.parseError().line, 0u);
}

TEST(XmlDocument, ADocumentTypeIsNamedButNothingOfItIsLoaded) {
  EXPECT_EQ(parsed("<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a>x</a>"), "a'x'");
  EXPECT_EQ(parsed("<!DOCTYPE a PUBLIC '-//X' 'http://127.0.0.1:9/x.dtd'><a>x</a>"), "a'x'");
  EXPECT_EQ(parsed("<!DOCTYPE a [<!ELEMENT a ANY>]><a>x</a>"), "a'x'");
}

TEST(XmlDocument, EntitiesCantBeDeclared) {
  for (const char* declaration : {"<!ENTITY b 'bold'>", "<!ENTITY b SYSTEM 'file:///etc/passwd'>",
                                  "<!ENTITY % p 'x'>", "<!ENTITY a '&b;&b;'><!ENTITY b '&a;&a;'>"})
    EXPECT_EQ(parsed("<!DOCTYPE a [" + std::string(declaration) + "]><a>x</a>"),
              "refused: entities can't be declared here")
        << declaration;
}

// A default value stands in every element of that name: 64 KB of file took 400 MB of memory.
TEST(XmlDocument, AttributesCantBeDeclared) {
  for (const char* declaration : {"<!ATTLIST a b CDATA 'value'>", "<!ATTLIST a b CDATA #IMPLIED>",
                                  "<!ATTLIST a b (x|y) 'x'>", "<!ATTLIST c b CDATA #FIXED 'x'>"})
    EXPECT_EQ(parsed("<!DOCTYPE a [" + std::string(declaration) + "]><a>x</a>"),
              "refused: attributes can't be declared here")
        << declaration;
}

TEST(XmlDocument, UnknownEntitiesAreRefusedAlsoWhereATypeMightDeclareThem) {
  EXPECT_EQ(parsed("<a>&nbsp;</a>"), "refused: undefined entity");
  EXPECT_EQ(parsed("<!DOCTYPE a SYSTEM 'x.dtd'><a>&nbsp;</a>"), "refused: unknown entity nbsp");
  // What stands after a parameter entity that isn't read is no declaration either.
  EXPECT_EQ(parsed("<!DOCTYPE a SYSTEM 'x.dtd' [%more; <!ENTITY b 'x'>]><a>&b;</a>"),
            "refused: unknown entity b");
}

TEST(XmlDocument, DeepNestingIsNoTrouble) {
  constexpr int depth = 20'000;
  std::string text;
  for (int i = 0; i < depth; ++i) text += "<a>";
  text += "x";
  for (int i = 0; i < depth; ++i) text += "</a>";
  XmlDocument document;
  ASSERT_TRUE(document.loadXML(text));
  EXPECT_EQ(document.documentElement()->text(), u"x");
}

TEST(XmlDocument, OversizedTextsAreRefused) {
  const std::string frame = "<a></a>";
  std::string text = "<a>" + std::string(XmlDocument::largest_file - frame.size(), 'x') + "</a>";
  XmlDocument document;
  EXPECT_TRUE(document.loadXML(text));
  text.insert(3, "x");
  EXPECT_FALSE(document.loadXML(text));
  EXPECT_EQ(document.parseError().reason, u"the file is too large");
  EXPECT_EQ(document.parseError().line, 0u);
}

// --- files ---

class XmlFile : public testing::Test {
 protected:
  ~XmlFile() override { std::filesystem::remove(path); }
  std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("tvx-xml-" + std::to_string(getpid()) + ".xml");
  std::u16string name() const { return from_utf8(path.string()); }
  XmlDocument document;
};

TEST_F(XmlFile, IsRead) {
  std::ofstream(path) << "<a>x</a>";
  ASSERT_TRUE(document.load(name()));
  EXPECT_EQ(shown(*document.documentElement()), "a'x'");
}

TEST_F(XmlFile, OneThatCantBeReadIsToldOf) {
  EXPECT_FALSE(document.load(name()));
  EXPECT_EQ(document.parseError().reason, u"the file can't be read");
}

// A file of that size with nothing in it takes no room on the disk; it isn't read either.
TEST_F(XmlFile, AnOversizedOneIsNotEvenRead) {
  std::ofstream(path) << "<a/>";
  std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
  EXPECT_FALSE(document.load(name()));
  EXPECT_EQ(document.parseError().reason, u"the file is too large");
}

}  // namespace
}  // namespace tvx::localise
