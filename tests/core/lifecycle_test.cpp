#include "core/control_fixture.h"
#include "tvx/core/content/templates.h"

namespace tvx::core {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(Control, TemplatesAreWhatTheyAreByteByByte) {
  const std::string_view plain = template_bytes(101), bare = template_bytes(102);
  EXPECT_EQ(plain.size(), 249u);
  EXPECT_EQ(bare.size(), 281u);
  EXPECT_EQ(plain,
            "<head>\r\n<title>tvxHTMLEdit</title>\r\n<BASE HREF=\"locahost\">\r\n"
            "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n"
            "<link href=\"file:///tvxStyleSheetFile\" rel=\"stylesheet\" type=\"text/css\">\r\n"
            "</HEAD>\r\n<body>\r\n<DIV></DIV>\r\n</body>\r\n</html>");
  std::string expected(plain);
  expected.replace(expected.find("<body>"), 6, "<body style=\"background-image: none;\">");
  EXPECT_EQ(bare, expected);
  EXPECT_EQ(error_of([] { template_bytes(103); }), errors::invalid_call);
}

TEST_F(Control, ANewInstanceHasNoDocumentUntilItsFirstShow) {
  create();
  EXPECT_EQ(control->DOM(), nullptr);
  control->UserControl_Show();
  ASSERT_NE(control->DOM(), nullptr);
  EXPECT_EQ(control->DOM()->readyState(), u"complete");
  EXPECT_EQ(control->DOM()->designMode(), u"On");
  EXPECT_EQ(control->DOM(), control->WBrowser().Document());
  const auto document = control->DOM();
  control->UserControl_Show();
  EXPECT_EQ(control->DOM(), document);
}

TEST_F(Control, ASavedInstanceHasItsDocumentBeforeItsFirstShow) {
  headless::PropertyBag bag;
  bag.put(u"DocumentHTML", std::u16string(u"<P>saved</P>"));
  control = make(container);
  control->UserControl_ReadProperties(bag);
  ASSERT_NE(control->DOM(), nullptr);
  EXPECT_EQ(body(), u"<P>saved</P>");
  EXPECT_EQ(control->txtCode().Text(), u"<P>saved</P>");
  EXPECT_EQ(control->originalHTML(), u"<P>saved</P>");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_THAT(container.changed(), ElementsAre(u"DocumentHTML"));
}

TEST_F(Control, WithNothingSavedTheDocumentIsTheTemplates) {
  control = make(container);
  control->UserControl_ReadProperties(headless::PropertyBag());
  const dom::Element* child = dom::first_child_element(*control->DOM()->body());
  ASSERT_NE(child, nullptr);
  EXPECT_EQ(child->tag(), dom::Tag::Div);
  EXPECT_FALSE(child->has_children());
  EXPECT_EQ(dom::next_element_sibling(*child), nullptr);
  EXPECT_THAT(container.changed(), ElementsAre());
}

TEST_F(Control, ThePlaceholderOfTheBranchToolbarStandsFromTheBeginning) {
  create();
  auto& toolbar = control->tlbDOM();
  ASSERT_EQ(toolbar.Count(), 1);
  EXPECT_EQ(toolbar.Item(1).Key(), u"KEY0");
  EXPECT_EQ(toolbar.Item(1).Caption(), u" ");
  EXPECT_EQ(toolbar.Item(1).Image(), u"Blank");
  EXPECT_EQ(toolbar.ButtonHeight(), 345);
  EXPECT_EQ(toolbar.ButtonWidth(), 500);
}

TEST_F(Control, ASheetByAddressLeavesNoStyleSheetFileBehindTheStart) {
  headless::PropertyBag bag;
  bag.put(u"CSSText", std::u16string(u"http://example.invalid/a.css"));
  control = make(container);
  control->UserControl_ReadProperties(bag);
  EXPECT_FALSE(std::filesystem::exists(folder / "7654321tvxStyle.css"));
  EXPECT_EQ(control->styleSheetPath(), u"");
  EXPECT_EQ(element(dom::Tag::Link)->attribute_or_empty(dom::names::href), u"http://example.invalid/a.css");
}

TEST_F(Control, ASheetByTextIsWrittenAsOnePrintedLine) {
  headless::PropertyBag bag;
  bag.put(u"CSShttp", false);
  bag.put(u"CSSText", std::u16string(u".a { color: red }"));
  control = make(container);
  control->UserControl_ReadProperties(bag);
  EXPECT_EQ(control->styleSheetPath(), path("7654321tvxStyle.css"));
  EXPECT_EQ(bytes_of(folder / "7654321tvxStyle.css"), ".a { color: red }\r\n");
  EXPECT_EQ(element(dom::Tag::Link)->attribute_or_empty(dom::names::href),
            u"file:///" + path("7654321tvxStyle.css"));
}

TEST_F(Control, TheDocumentFileIsTheExpandedTemplate) {
  headless::PropertyBag bag;
  bag.put(u"BaseURL", std::u16string(u"http://example.org/"));
  bag.put(u"showDocumentBackgroundImage", false);
  control = make(container);
  control->UserControl_ReadProperties(bag);
  const std::string text = bytes_of(folder / "7654321msHTMLEdit.html");
  EXPECT_THAT(text, HasSubstr("<BASE HREF=\"http://example.org/\">"));
  EXPECT_THAT(text, HasSubstr("<link href=\"\" rel"));
  EXPECT_THAT(text, HasSubstr("<body style=\"background-image: none;\">"));
  EXPECT_TRUE(text.ends_with("</html>\r\n"));
}

TEST_F(Control, AReadOnlyControlEndsInDesignModeOff) {
  headless::PropertyBag bag;
  bag.put(u"EditorEnabled", false);
  control = make(container);
  control->UserControl_ReadProperties(bag);
  EXPECT_EQ(control->DOM()->designMode(), u"Off");
  EXPECT_TRUE(control->DOM()->editor().absolute_position());
  EXPECT_TRUE(control->DOM()->editor().two_d_position());
}

TEST_F(Control, TwoInstancesInOneProcessWriteDifferentFiles) {
  start();
  headless::Container second_container{true};
  auto second = make(second_container, platform::WindowHandle(7654322));
  second->UserControl_InitProperties();
  second->UserControl_Show();
  EXPECT_TRUE(std::filesystem::exists(folder / "7654321msHTMLEdit.html"));
  EXPECT_TRUE(std::filesystem::exists(folder / "7654322msHTMLEdit.html"));
  control->set_DocumentHTML(u"<P>one</P>");
  second->set_DocumentHTML(u"<P>two</P>");
  EXPECT_EQ(control->DocumentHTML(), u"<P>one</P>");
  EXPECT_EQ(second->DocumentHTML(), u"<P>two</P>");
  second->UserControl_Terminate();
  EXPECT_TRUE(std::filesystem::exists(folder / "7654321msHTMLEdit.html"));
  EXPECT_FALSE(std::filesystem::exists(folder / "7654322msHTMLEdit.html"));
}

TEST_F(Control, HandlesOfTheControlsOwnDiffer) {
  auto first = make(container, platform::WindowHandle::none),
       second = make(container, platform::WindowHandle::none);
  EXPECT_NE(first->hwnd(), second->hwnd());
  EXPECT_GE(first->hwnd(), 1'000'000);
}

TEST_F(Control, CleanUpChangesNothing) {
  start_with(u"<P>text</P>");
  control->CleanUp();
  EXPECT_EQ(body(), u"<P>text</P>");
  EXPECT_TRUE(std::filesystem::exists(folder / "7654321msHTMLEdit.html"));
  EXPECT_THAT(container.changed(), ElementsAre());
}

TEST_F(Control, TerminatingRemovesBothFilesAndMissesNoneThatIsGone) {
  start();
  control->set_CSShttp(false);
  control->set_CSSText(u".a {}");
  ASSERT_TRUE(std::filesystem::exists(folder / "7654321tvxStyle.css"));
  std::filesystem::remove(folder / "7654321msHTMLEdit.html");
  control->UserControl_Terminate();
  EXPECT_FALSE(std::filesystem::exists(folder / "7654321tvxStyle.css"));
  EXPECT_FALSE(std::filesystem::exists(folder / "7654321msHTMLEdit.html"));
  EXPECT_EQ(control->DOM(), nullptr);
  control->UserControl_Show();
  EXPECT_EQ(control->DOM(), nullptr) << "a control that has ended doesn't begin again";
}

TEST_F(Control, AtDesignTimeNoDocumentIsMade) {
  start_at_design_time();
  control->set_DocumentHTML(u"<P>x</P>");
  control->UserControl_Show();
  loop.settle();
  EXPECT_EQ(control->DOM(), nullptr);
  EXPECT_EQ(control->WBrowser().ReadyState(), browser::ReadyState::Uninitialized);
  EXPECT_EQ(control->DocumentHTML(), u"<P>x</P>");
  EXPECT_EQ(control->DocumentText(), u"");
  EXPECT_EQ(control->allHTML(), u"");
  EXPECT_TRUE(control->txtCode().Text().starts_with(u"Orvel HTML Editor - version : 0."));
  EXPECT_FALSE(control->txtCode().Enabled());
  EXPECT_TRUE(control->txtCode().Visible());
  EXPECT_TRUE(std::filesystem::is_empty(folder));
  EXPECT_EQ(host.heard.size(), 0u);
}

TEST_F(Control, FocusMakesTheFirstChildCurrentAndLeavingNothing) {
  start_with(u"<P>a</P><DIV>b</DIV>");
  control->UserControl_EnterFocus();
  EXPECT_EQ(control->highlightElement(), element(dom::Tag::P));
  control->UserControl_ExitFocus();
  EXPECT_EQ(control->highlightElement(), nullptr);
  control->UserControl_ExitFocus();
  control->set_DocumentHTML(u"only text");
  control->UserControl_EnterFocus();
  EXPECT_EQ(control->highlightElement(), control->DOM()->body());
}

TEST_F(Control, AFolderThatCantBeWrittenReportsTheDocumentAsNotFound) {
  platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, u"/nowhere/at/all/");
  control = make(container);
  control->UserControl_InitProperties();
  control->UserControl_Show();
  EXPECT_THAT(host.heard,
              ElementsAre("Error: 20000 Cant find document : /nowhere/at/all/7654321msHTMLEdit.html"));
  ASSERT_NE(control->DOM(), nullptr);
  EXPECT_EQ(control->DOM()->readyState(), u"complete");
}

}  // namespace
}  // namespace tvx::core
