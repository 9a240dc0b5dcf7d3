#include "core/control_fixture.h"

/// The link that the user is asked for: by the operation, by the command with its dialog, and by Ctrl+K.
namespace tvx::core {
namespace {

class LinkDialog : public Control {
 protected:
  void SetUp() override {
    start();
    load(u"<P>one [two] three</P>");
  }
  void answer(std::u16string address) {
    dialogs.expect({.kind = headless::DialogKind::link,
                    .answer = std::move(address),
                    .while_open = [this](const headless::ShownDialog& shown) {
                      seen.push_back(std::get<platform::LinkDialog>(shown));
                    }});
  }
  void cancel() { dialogs.expect({.kind = headless::DialogKind::link}); }
  void press_ctrl_k() { key(u"k", 75, true); }

  std::vector<platform::LinkDialog> seen;
};

TEST_F(LinkDialog, TheOperationLinksWhatIsSelected) {
  answer(u"http://a.b/");
  control->insert_Link();
  EXPECT_EQ(body(), u"<P>one <A href=\"http://a.b/\">two</A> three</P>");
  ASSERT_EQ(seen.size(), 1u);
  EXPECT_EQ(seen[0].address, u"");
  EXPECT_EQ(seen[0].owner, platform::WindowHandle(7654321));
}

TEST_F(LinkDialog, ThePresentAddressIsFilledIn) {
  load(u"<P>a <A href=\"http://old.org/\">li[]nk</A></P>");
  answer(u"http://new.org/");
  EXPECT_TRUE(control->DOM()->execCommand(u"createlink", true, u""));
  EXPECT_EQ(seen.at(0).address, u"http://old.org/");
  EXPECT_EQ(body(), u"<P>a <A href=\"http://new.org/\">link</A></P>");
}

TEST_F(LinkDialog, CancelledLeavesEverything) {
  const std::u16string before = marked();
  cancel();
  EXPECT_FALSE(control->DOM()->execCommand(u"CreateLink", true, u"http://a.b/"));
  EXPECT_EQ(marked(), before);
  EXPECT_FALSE(control->DOM()->tree().journal().can_undo());
}

TEST_F(LinkDialog, CtrlKAsksAndTheLinkIsOneStep) {
  const std::u16string before = marked();
  answer(u"http://a.b/");
  press_ctrl_k();
  EXPECT_EQ(body(), u"<P>one <A href=\"http://a.b/\">two</A> three</P>");
  EXPECT_EQ(host.count("ASCIIKeyPress"), 1u);
  key(u"z", 90, true);
  EXPECT_EQ(marked(), before);
}

TEST_F(LinkDialog, WithoutTheDialogNobodyIsAsked) {
  EXPECT_TRUE(control->DOM()->execCommand(u"CreateLink", false, u"http://a.b/"));
  EXPECT_EQ(body(), u"<P>one <A href=\"http://a.b/\">two</A> three</P>");
}

TEST_F(LinkDialog, IsNotShownWhereNothingCanBeLinked) {
  answer(u"http://a.b/");
  control->DOM()->editor().selection().clear();
  EXPECT_FALSE(control->DOM()->execCommand(u"CreateLink", true, u""));
  EXPECT_TRUE(seen.empty());
}

// While the dialog is open its loop runs, and a host may do anything.
TEST_F(LinkDialog, TheSelectionMayGoWhileItIsOpen) {
  dialogs.expect(
      {.kind = headless::DialogKind::link,
       .answer = std::u16string(u"http://a.b/"),
       .while_open = [this](const headless::ShownDialog&) { control->set_DocumentHTML(u"<P>new</P>"); }});
  control->insert_Link();
  EXPECT_EQ(control->DOM()->first(dom::Tag::P)->first_child()->is_text(), true);
}

TEST_F(LinkDialog, TheControlMayGoWhileItIsOpen) {
  const auto document = control->DOM();
  dialogs.expect({.kind = headless::DialogKind::link,
                  .answer = std::u16string(u"http://a.b/"),
                  .while_open = [this](const headless::ShownDialog&) { control.reset(); }});
  document->execCommand(u"CreateLink", true, u"");
  loop.settle();
  EXPECT_FALSE(document->execCommand(u"CreateLink", true, u"")) << "there is nobody to ask";
}

}  // namespace
}  // namespace tvx::core
