#include <stdexcept>

#include "core/control_fixture.h"

namespace tvx::core {

/// The tests' way to the door through which every event goes: for the events that belong to operations which
/// need a server or a dictionary.
struct Inside {
  static void raise(HTMLed& control, const std::function<void(HTMLedEvents&)>& event) {
    control.raise(event);
  }
};

namespace {

/// A host that does the same in every event.
class AnyEventHost : public HTMLedEvents {
 public:
  std::function<void(const std::string&)> inside;
  int times = 0;
  int errors = 0;

  void Error(std::int32_t&, std::u16string&) override { heard("Error"); }
  void FTPSuccess(std::int32_t&, std::u16string&) override { heard("FTPSuccess"); }
  void FTPError(std::int32_t&, std::u16string&) override { heard("FTPError"); }
  void ASCIIKeyPress(std::int32_t&, bool&, bool&) override { heard("ASCIIKeyPress"); }
  void FTPTransferProgress(std::int32_t&, std::int32_t&) override { heard("FTPTransferProgress"); }
  void SpellCheckComplete(bool&) override { heard("SpellCheckComplete"); }
  void ToolButtonClick(std::u16string&, std::int16_t&, std::u16string&, bool&) override {
    heard("ToolButtonClick");
  }
  void MenuClick(std::u16string&, bool&) override { heard("MenuClick"); }
  void BeforeLibraryInsert(std::u16string&, bool&) override { heard("BeforeLibraryInsert"); }
  void BeforeCodeViewChange(bool&, bool&) override { heard("BeforeCodeViewChange"); }
  void SpellCheckWord(bool&, std::u16string&, std::u16string&, bool&) override { heard("SpellCheckWord"); }
  void BeginImageUpload() override { heard("BeginImageUpload"); }
  void EndImageUpload() override { heard("EndImageUpload"); }
  void BeforeGetDocumentHTML(std::u16string&) override { heard("BeforeGetDocumentHTML"); }
  void DocumentClick(dom::Ref<dom::Element>&) override { heard("DocumentClick"); }
  void BeforeNavigate(std::u16string&, std::u16string&, bool& cancel) override {
    cancel = false;
    heard("BeforeNavigate");
  }

 private:
  void heard(const std::string& name) {
    if (inside) inside(name);
  }
};

/// What makes the control raise an event. The control may be gone when this returns.
using SetOff = void (*)(HTMLed& control, const browser::MouseInput& press);
struct EventCase {
  const char* name;
  SetOff set_off;
};

template <auto Event, class... Arguments>
void raise_it(HTMLed& control, const browser::MouseInput&) {
  Inside::raise(control, [](HTMLedEvents& host) {
    std::tuple<Arguments...> arguments;
    std::apply([&](auto&... argument) { (host.*Event)(argument...); }, arguments);
  });
}

using E = HTMLedEvents;
using Text = std::u16string;
using Number = std::int32_t;

const EventCase cases[] = {
    {"Error", [](HTMLed& control, const auto&) { control.WBrowser().events()->NavigateError({}, 0); }},
    {"FTPSuccess", raise_it<&E::FTPSuccess, Number, Text>},
    {"FTPError", raise_it<&E::FTPError, Number, Text>},
    {"ASCIIKeyPress",
     [](HTMLed& control, const auto&) {
       const auto document = control.DOM();
       document->key_down({u"x", u"x", 88});
     }},
    {"FTPTransferProgress", raise_it<&E::FTPTransferProgress, Number, Number>},
    {"SpellCheckComplete", raise_it<&E::SpellCheckComplete, bool>},
    {"ToolButtonClick", [](HTMLed& control, const auto&) { control.press(control.Toolbar1(), u"Bold"); }},
    {"MenuClick", [](HTMLed& control, const auto&) { control.mnuMiscClass_Click(0); }},
    {"BeforeLibraryInsert", raise_it<&E::BeforeLibraryInsert, Text, bool>},
    {"BeforeCodeViewChange", [](HTMLed& control, const auto&) { control.show_Code(); }},
    {"SpellCheckWord", raise_it<&E::SpellCheckWord, bool, Text, Text, bool>},
    {"BeginImageUpload", raise_it<&E::BeginImageUpload>},
    {"EndImageUpload", raise_it<&E::EndImageUpload>},
    {"BeforeGetDocumentHTML", [](HTMLed& control, const auto&) { control.DocumentHTML(); }},
    {"DocumentClick",
     [](HTMLed& control, const auto& press) {
       const auto document = control.DOM();
       document->click(press);
     }},
    {"BeforeNavigate",
     [](HTMLed& control, const auto&) { control.WBrowser().Navigate(u"http://127.0.0.1:1/"); }},
};

class EveryEvent : public Control, public testing::WithParamInterface<EventCase> {
 protected:
  EveryEvent() {
    start_with(u"<P>before</P>");
    load(u"<P>[before]</P>");
    control->set_events(&any);
    press = at(control->DOM()->body());
  }
  ~EveryEvent() override { any.inside = {}; }

  /// `act` runs in the event, the first time.
  void run(const std::function<void()>& act) {
    any.inside = [this, act](const std::string& name) {
      if (name == GetParam().name && ++any.times == 1) act();
    };
    HTMLed* raw = control.get();
    GetParam().set_off(*raw, press);
    loop.settle();
    EXPECT_EQ(std::min(any.times, 1), 1) << GetParam().name << " was not raised";
  }

  AnyEventHost any;
  browser::MouseInput press;
};

TEST_P(EveryEvent, AHostMayReadAndWriteTheDocument) {
  std::u16string read;
  run([&] {
    read = control->DocumentHTML();
    control->set_BaseURL(u"http://inside.example/");
    control->set_EditorEnabled(true);
    control->set_DocumentHTML(u"<P>inside</P>");
    control->selectText(0, 6);
    control->bold_document();
    control->InsertAtCursor(u"<I>more</I>", ed_InsertType::ed_InsertAfterSelection);
    control->undo_document();
    loop.pump(0);
    read += control->DocumentHTML();
  });
  EXPECT_TRUE(contains(read, u"before") || contains(read, u"B")) << to_utf8(read);
  EXPECT_TRUE(contains(read, u"inside")) << to_utf8(read);
  EXPECT_EQ(control->BaseURL(), u"http://inside.example/");
  control->set_DocumentHTML(u"<P>after</P>");
  if (control->InCodeView()) control->show_Code();
  EXPECT_EQ(control->DocumentHTML(), u"<P>after</P>") << "it works on";
}

TEST_P(EveryEvent, AHostMaySwitchTheView) {
  run([&] {
    control->show_Code();
    control->DocumentHTML();
    control->show_Code();
  });
  control->set_DocumentHTML(u"<P>after</P>");
  if (control->InCodeView()) control->show_Code();
  EXPECT_EQ(control->DocumentHTML(), u"<P>after</P>");
}

TEST_P(EveryEvent, AHostMayThrow) {
  EXPECT_NO_THROW(run([] { throw std::runtime_error("the host's own"); }));
  control->set_DocumentHTML(u"<P>after</P>");
  EXPECT_EQ(body(), u"<P>after</P>");
}

TEST_P(EveryEvent, AHostMayEndTheControl) {
  run([&] {
    control->UserControl_Terminate();
    control->DocumentHTML();
    control->set_DocumentHTML(u"<P>too late</P>");
  });
  EXPECT_EQ(control->DOM(), nullptr);
}

TEST_P(EveryEvent, AHostMayDropItsLastReference) {
  const std::weak_ptr<HTMLed> weak = control;
  run([&] { control.reset(); });
  EXPECT_TRUE(weak.expired());
}

TEST_P(EveryEvent, AHostMayOpenAndSaveFiles) {
  auto file = write_file("inside.html", "<TITLE>t</TITLE><P>from a file</P>");
  run([&] {
    control->Open_document(file, true);
    control->Save_document(path("saved.html"), false);
  });
  EXPECT_EQ(bytes_of(folder / "saved.html"), "<P>from a file</P>");
}

// Twice in each, as 2 to the power of the depth would take as long as no end.
TEST_P(EveryEvent, AHostMayRaiseTheEventWithinItself) {
  HTMLed* raw = control.get();
  any.inside = [this, raw](const std::string& name) {
    if (name == "Error") ++any.errors;
    constexpr int enough = 500;  // events that come from the message loop don't stand within one another
    if (name != GetParam().name || ++any.times > enough) return;
    for (int i = 0; i < 2; ++i) GetParam().set_off(*raw, press);
  };
  GetParam().set_off(*raw, press);
  loop.settle();
  EXPECT_GE(any.times, 1);
  if (GetParam().name == std::string("BeforeGetDocumentHTML")) {
    EXPECT_EQ(any.errors, 1) << "28, Out of stack space";
    EXPECT_EQ(any.times, 64);
  }
  any.inside = {};
  EXPECT_EQ(control->DocumentHTML().empty(), false) << "it works on";
}

INSTANTIATE_TEST_SUITE_P(Raised, EveryEvent, testing::ValuesIn(cases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(EventCases, AreAllSixteen) { EXPECT_EQ(std::size(cases), 16u); }

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
