#include "core/control_fixture.h"

/// Two controls in one process share nothing.
namespace tvx::core {
namespace {

using testing::ElementsAre;

class TwoControls : public Control {
 protected:
  TwoControls() {
    start_with(u"<P>first</P>");
    second = make(second_container, platform::WindowHandle(7654322));
    second->set_events(&second_host);
    second->UserControl_InitProperties();
    second->UserControl_Show();
    second->set_DocumentHTML(u"<P>second</P>");
    second_host.heard.clear();
    second_container.clear_changed();
    host.heard.clear();
    container.clear_changed();
  }
  ~TwoControls() override { second.reset(); }

  headless::Container second_container{true};
  RecordingHost second_host;
  std::shared_ptr<HTMLed> second;
};

TEST_F(TwoControls, HaveFilesOfTheirOwn) {
  EXPECT_TRUE(std::filesystem::exists(folder / "7654321msHTMLEdit.html"));
  EXPECT_TRUE(std::filesystem::exists(folder / "7654322msHTMLEdit.html"));
  second->UserControl_Terminate();
  EXPECT_TRUE(std::filesystem::exists(folder / "7654321msHTMLEdit.html"));
  EXPECT_FALSE(std::filesystem::exists(folder / "7654322msHTMLEdit.html"));
}

TEST_F(TwoControls, HearOfTheirOwnEventsOnly) {
  key(u"x", 88);
  control->DocumentHTML();
  EXPECT_THAT(host.heard, ElementsAre("ASCIIKeyPress: 88", testing::StartsWith("BeforeGetDocumentHTML")));
  EXPECT_THAT(second_host.heard, ElementsAre());
  EXPECT_THAT(second_container.changed(), ElementsAre());
  EXPECT_TRUE(control->IsDirty());
  EXPECT_FALSE(second->IsDirty());
}

TEST_F(TwoControls, UndoTheirOwnStepsOnly) {
  control->selectText(0, 5);
  control->bold_document();
  second->undo_document();
  EXPECT_EQ(body(), u"<P><B>first</B></P>");
  control->undo_document();
  second->redo_document();
  EXPECT_EQ(body(), u"<P>first</P>");
  EXPECT_EQ(second->DocumentHTML(), u"<P>second</P>");
}

TEST_F(TwoControls, HaveSelectionsOfTheirOwn) {
  control->selectText(0, 3);
  second->selectText(2, 2);
  EXPECT_EQ(control->GetCurrentSelection(false), u"fir");
  EXPECT_EQ(second->GetCurrentSelection(false), u"co");
  EXPECT_NE(control->highlightElement(), second->highlightElement());
}

TEST_F(TwoControls, KeepTheirOwnPropertiesViewsAndSheets) {
  control->set_useEnterAsBR(true);
  control->set_CSShttp(false);
  control->set_CSSText(u".own { }");
  control->show_Code();
  EXPECT_FALSE(second->useEnterAsBR());
  EXPECT_TRUE(second->style_classes().empty());
  EXPECT_EQ(control->style_classes().size(), 1u);
  EXPECT_FALSE(second->InCodeView());
  EXPECT_TRUE(control->InCodeView());
}

TEST_F(TwoControls, NavigateEachForItself) {
  auto file = write_file("page.html", "<TITLE>t</TITLE><P>opened</P>");
  control->Open_document(file, true);
  EXPECT_EQ(body(), u"<P>opened</P>");
  EXPECT_EQ(second->DocumentHTML(), u"<P>second</P>");
}

TEST_F(TwoControls, OneMayWorkWithinTheOthersEvent) {
  host.inside = [&](const std::string&) {
    second->set_DocumentHTML(u"<P>from the other's event</P>");
    second->selectText(0, 4);
    second->italic_document();
  };
  key(u"x", 88);
  host.inside = {};
  EXPECT_EQ(second->DocumentHTML(), u"<P><I>from</I> the other's event</P>");
}

}  // namespace
}  // namespace tvx::core
