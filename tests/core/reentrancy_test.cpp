#include <stdexcept>

#include "control_fixture.h"

namespace tvx::core {
namespace {

class EveryEvent : public Control {
 protected:
  void set_off(const std::string& event) {
    if (event == "ASCIIKeyPress") key(u"x", 88);
    if (event == "BeforeGetDocumentHTML") control->DocumentHTML();
    if (event == "BeforeCodeViewChange") control->show_Code();
    if (event == "ToolButtonClick") control->press(control->Toolbar1(), u"Bold");
    if (event == "DocumentClick") control->DOM()->click(at(control->DOM()->body()));
    if (event == "Error") control->WBrowser().events()->NavigateError({}, 0);
    if (event == "BeforeNavigate") {
      control->WBrowser().Navigate(u"http://example.org/");
      loop.settle();
    }
  }
  static inline const std::vector<std::string> events{
      "ASCIIKeyPress", "BeforeGetDocumentHTML", "BeforeCodeViewChange", "ToolButtonClick", "DocumentClick",
      "Error",         "BeforeNavigate"};
};

TEST_F(EveryEvent, AHostMayCallBack) {
  for (const std::string& event : events) {
    start_with(u"<P>before</P>");
    load(u"<P>[before]</P>");
    int times = 0;
    host.inside = [&](const std::string& name) {
      if (name != event || ++times > 1) return;
      control->set_BaseURL(u"http://inside.example/");
      control->set_EditorEnabled(true);
      control->set_DocumentHTML(u"<P>inside</P>");
      control->bold_document();
      loop.pump(0);
    };
    set_off(event);
    host.inside = {};
    EXPECT_GE(times, 1) << event;
    EXPECT_EQ(control->BaseURL(), u"http://inside.example/") << event;
    EXPECT_TRUE(contains(body(), u"inside")) << event << " " << to_utf8(body());
  }
}

TEST_F(EveryEvent, AHostMayThrow) {
  for (const std::string& event : events) {
    start_with(u"<P>x</P>");
    load(u"<P>[x]</P>");
    host.inside = [&](const std::string& name) {
      if (name == event) throw std::runtime_error("the host's own");
    };
    EXPECT_NO_THROW(set_off(event)) << event;
    host.inside = {};
  }
}

TEST_F(EveryEvent, AHostMayEndTheControl) {
  for (const std::string& event : events) {
    start_with(u"<P>x</P>");
    load(u"<P>[x]</P>");
    host.inside = [&](const std::string& name) {
      if (name == event) control->UserControl_Terminate();
    };
    set_off(event);
    host.inside = {};
    EXPECT_EQ(control->DOM(), nullptr) << event;
    loop.settle();
  }
}

TEST_F(EveryEvent, AHostMayDropItsLastReference) {
  for (const std::string& event : events) {
    start_with(u"<P>x</P>");
    load(u"<P>[x]</P>");
    const std::weak_ptr<HTMLed> weak = control;
    host.inside = [&](const std::string& name) {
      if (name == event) control.reset();
    };
    // What sets the event off is the control itself: keep nothing of it here.
    HTMLed* raw = control.get();
    const auto document = control->DOM();
    const auto target = at(document->body());
    if (event == "ASCIIKeyPress") document->key_down({u"x", u"x", 88});
    if (event == "BeforeGetDocumentHTML") raw->DocumentHTML();
    if (event == "BeforeCodeViewChange") raw->show_Code();
    if (event == "ToolButtonClick") raw->press(raw->Toolbar1(), u"Bold");
    if (event == "DocumentClick") document->click(target);
    if (event == "Error") raw->WBrowser().events()->NavigateError({}, 0);
    if (event == "BeforeNavigate") raw->WBrowser().Navigate(u"http://example.org/");
    loop.settle();
    host.inside = {};
    EXPECT_TRUE(weak.expired()) << event;
  }
}

TEST_F(Control, DroppingTheControlDuringTheStartIsNoHarm) {
  platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, u"/nowhere/at/all/");
  create();
  host.inside = [&](const std::string&) { control.reset(); };
  HTMLed* raw = control.get();
  raw->UserControl_Show();
  loop.settle();
  EXPECT_EQ(control, nullptr);
}

TEST_F(Control, ContentGivenWhileThePageIsStillLoadingArrives) {
  create();
  // A second call of the host, from a timer inside the start's wait.
  loop.post([&] { control->set_DocumentHTML(u"<P>nested</P>"); });
  control->UserControl_Show();
  loop.settle();
  EXPECT_EQ(body(), u"<P>nested</P>");
}

}  // namespace
}  // namespace tvx::core
