#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/failures.h"
#include "tvx/base/code_page.h"
#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/walk/marks.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"
#include "tvx/headless/menus.h"
#include "tvx/headless/property_bag.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"
#include "tvx/platform/special_folders.h"

namespace tvx::core {

/// A host that writes down what it hears, and does what a test wants done inside.
class RecordingHost : public HTMLedEvents {
 public:
  std::vector<std::string> heard;
  /// Runs inside every event, with its name.
  std::function<void(const std::string&)> inside;

  std::function<void(std::u16string&)> on_get_html;
  std::function<void(std::u16string&, bool&)> on_navigate;
  std::function<void(std::u16string&, bool&)> on_button;
  std::function<void(std::u16string&, bool&)> on_menu;
  std::function<void(bool&, bool&)> on_view_change;
  std::function<void(std::int32_t&)> on_key;
  std::vector<dom::Ref<dom::Element>> clicked;

  void Error(std::int32_t& number, std::u16string& text) override {
    say("Error", std::to_string(number) + " " + to_utf8(text));
  }
  void ASCIIKeyPress(std::int32_t& key, bool& shift, bool& control) override {
    if (on_key) on_key(key);
    say("ASCIIKeyPress", std::to_string(key) + (shift ? " shift" : "") + (control ? " control" : ""));
  }
  void ToolButtonClick(std::u16string& toolbar, std::int16_t& index, std::u16string& name,
                       bool& cancel) override {
    if (on_button) on_button(name, cancel);
    say("ToolButtonClick", to_utf8(toolbar) + " " + std::to_string(index) + " " + to_utf8(name));
  }
  void MenuClick(std::u16string& item, bool& cancel) override {
    if (on_menu) on_menu(item, cancel);
    say("MenuClick", to_utf8(item));
  }
  void BeforeCodeViewChange(bool& wysiwyg, bool& cancel) override {
    if (on_view_change) on_view_change(wysiwyg, cancel);
    say("BeforeCodeViewChange", wysiwyg ? "design" : "code");
  }
  void BeforeGetDocumentHTML(std::u16string& html) override {
    if (on_get_html) on_get_html(html);
    say("BeforeGetDocumentHTML", to_utf8(html));
  }
  void DocumentClick(dom::Ref<dom::Element>& element) override {
    clicked.push_back(element);
    say("DocumentClick", element ? to_utf8(element->display_name()) : "nothing");
  }
  void BeforeNavigate(std::u16string& url, std::u16string& frame, bool& cancel) override {
    if (on_navigate) on_navigate(url, cancel);
    say("BeforeNavigate", to_utf8(url) + (frame.empty() ? "" : " " + to_utf8(frame)));
  }

  std::size_t count(const std::string& name) const {
    return std::size_t(
        std::ranges::count_if(heard, [&](const auto& line) { return line.starts_with(name); }));
  }

 private:
  void say(const std::string& name, const std::string& what) {
    heard.push_back(name + ": " + what);
    if (inside) inside(name);
  }
};

inline std::string bytes_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// A control in a container without a screen, with its temporary files in a folder of its own.
class Control : public testing::Test {
 protected:
  Control() {
    folder = std::filesystem::temp_directory_path() /
             ("tvx-control-" + std::to_string(getpid()) + "-" + std::to_string(++folders));
    std::filesystem::create_directories(folder);
    platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, path(""));
  }
  ~Control() override {
    control.reset();
    loop.settle();
    clear_faults();
    platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, {});
    std::filesystem::remove_all(folder);
  }

  std::shared_ptr<HTMLed> make(platform::Container& in,
                               platform::WindowHandle hwnd = platform::WindowHandle(7654321)) {
    auto made = HTMLed::create({.loop = loop,
                                .container = in,
                                .dialogs = dialogs,
                                .hwnd = hwnd,
                                .geometry = &geometry,
                                .window = &window,
                                .clipboard = &clipboard,
                                .popups = &menus,
                                .forms = &forms});
    made->set_events(&host);
    made->UserControl_Initialize();
    return made;
  }
  /// A new instance, as its container has it before the first show.
  void create() {
    control = make(container);
    control->UserControl_InitProperties();
    control->set_size(9000, 6000);
    control->UserControl_Resize();
  }
  /// A new instance that is shown.
  void start() {
    create();
    control->UserControl_Show();
    host.heard.clear();
    container.clear_changed();
  }
  void start_with(std::u16string_view html) {
    start();
    control->set_DocumentHTML(html);
    host.heard.clear();
    container.clear_changed();
  }
  void start_at_design_time() {
    control = make(designer);
    control->UserControl_InitProperties();
    control->set_size(9000, 6000);
  }

  std::u16string body() const { return dom::inner_html(*control->DOM()->body()); }
  /// Puts content with selection marks into the body.
  void load(std::u16string_view marked) {
    editing::load_marked(control->DOM()->editor(), *control->DOM()->body(), marked);
  }
  std::u16string marked() const {
    return editing::dump_marked(control->DOM()->editor(), *control->DOM()->body(), dom::Letters::Upper);
  }
  dom::Element* element(dom::Tag tag) const { return control->DOM()->first(tag); }

  browser::KeyOutcome key(std::u16string name, int code, bool with_control = false, bool shift = false) {
    browser::KeyInput input;
    input.key = name;
    input.key_code = code;
    input.control = with_control;
    input.shift = shift;
    if (name.size() == 1 && !with_control) input.text = name;
    return control->DOM()->key_down(input);
  }
  browser::MouseInput at(dom::Element* target,
                         browser::MouseButton button = browser::MouseButton::Left) const {
    browser::MouseInput mouse;
    mouse.button = button;
    mouse.element = target;
    mouse.x = 3;
    if (target) {
      mouse.y = int(control->DOM()->tree().source_index(*target)) * headless::FixedGeometry::row_height;
      mouse.place = dom::Boundary{target, 0};
    } else {
      mouse.x = -1;
    }
    return mouse;
  }
  std::u16string path(const std::string& name) const { return from_utf8((folder / name).string()); }
  std::u16string write_file(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return path(name);
  }
  template <class Call>
  static int error_of(Call&& call) {
    return number_of_failure(call);
  }

  struct Window : browser::BrowserWindow {
    std::vector<std::string> told;
    bool printable = true;
    void focus() override { told.push_back("focus"); }
    void show_caret() override { told.push_back("caret"); }
    void scroll_to(int x, int y) override {
      told.push_back("scroll " + std::to_string(x) + " " + std::to_string(y));
    }
    bool can_print() override { return printable; }
    void print(bool with_dialog) override { told.push_back(with_dialog ? "print asking" : "print"); }
    void scroll_into_view(dom::Element& element) override {
      told.push_back("into view " + to_utf8(element.display_name()));
    }
  };

  std::filesystem::path folder;
  headless::VirtualTimeLoop loop;
  headless::Container container{true}, designer{false};
  headless::Dialogs dialogs;
  headless::Clipboard clipboard;
  headless::Menus menus;
  headless::Forms forms;
  headless::FixedGeometry geometry;
  Window window;
  RecordingHost host;
  std::shared_ptr<HTMLed> control;

 private:
  static inline int folders = 0;
};

}  // namespace tvx::core
