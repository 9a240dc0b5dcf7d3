#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/http_server.h"
#include "tvx/base/fault.h"
#include "tvx/base/strings.h"
#include "tvx/browser/browser.h"
#include "tvx/dom/inner_html.h"
#include "tvx/headless/message_loop.h"

namespace tvx::browser {

/// A browser, a web server, and a list of what the browser told: each event with the ready state that it
/// found.
class Web : public testing::Test, protected BrowserEvents {
 protected:
  Web() {
    setenv("no_proxy", "*", 1);
    folder = std::filesystem::temp_directory_path() / ("tvx-web-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    make_browser();
  }
  ~Web() override {
    browser.reset();
    clear_faults();
    std::filesystem::remove_all(folder);
  }

  void make_browser(HttpOptions options = {}) {
    browser = std::make_unique<Browser>(loop, options);
    browser->set_events(this);
  }
  /// Pumps until it holds; false if it doesn't for long.
  bool wait_for(const std::function<bool()>& condition) {
    const std::int64_t end = loop.now() + 30'000;
    while (!condition()) {
      if (loop.now() > end) return false;
      loop.pump(20);
    }
    return true;
  }
  /// Runs what is pending, so that what must not come has had its chance.
  void settle() {
    for (int i = 0; i < 5; ++i) loop.pump(10);
  }
  std::u16string at(std::string_view path) const { return from_utf8(server.url(path)); }
  std::u16string file(const std::string& name, const std::string& bytes) {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return from_utf8((folder / name).string());
  }
  bool ready() const { return browser->ReadyState() == ReadyState::Complete; }
  void go(const std::u16string& url) {
    browser->Navigate(url);
    ASSERT_TRUE(wait_for([&] { return ready(); }));
    settle();
  }
  std::string body() const { return to_utf8(dom::inner_html(*browser->Document()->body())); }
  std::size_t count(const std::string& name) const {
    std::size_t found = 0;
    for (const std::string& line : told) found += line.starts_with(name + " ");
    return found;
  }

  void say(const std::string& what) {
    told.push_back(what + " " + std::to_string(int(browser ? browser->ReadyState() : ReadyState::Complete)));
    if (inside) inside(what);
  }
  void BeforeNavigate2(const Navigation& navigation, bool& cancel) override {
    cancel = refuse && refuse(navigation);
    say(navigation.top ? "BeforeNavigate2" : "BeforeNavigate2 of " + to_utf8(navigation.target_frame));
  }
  void NavigateComplete2(bool top, const std::u16string& url) override {
    addresses.push_back(url);
    say(top ? "NavigateComplete2" : "NavigateComplete2 of a frame");
  }
  void DocumentComplete(bool top, const std::u16string& url) override {
    addresses.push_back(url);
    say(top ? "DocumentComplete" : "DocumentComplete of a frame");
  }
  void DownloadBegin() override { say("DownloadBegin"); }
  void DownloadComplete() override { say("DownloadComplete"); }
  void NavigateError(const Navigation& navigation, std::int32_t status) override {
    failed = navigation;
    this->status = status;
    say(navigation.top ? "NavigateError" : "NavigateError of " + to_utf8(navigation.target_frame));
  }

  HttpServer server;
  std::filesystem::path folder;
  headless::MessageLoop loop;
  std::unique_ptr<Browser> browser;
  std::vector<std::string> told;
  std::vector<std::u16string> addresses;
  std::function<void(const std::string&)> inside;
  std::function<bool(const Navigation&)> refuse;
  Navigation failed;
  std::int32_t status = 0;
};

inline std::int32_t number_of(LoadFailure failure) { return static_cast<std::int32_t>(failure); }

}  // namespace tvx::browser
