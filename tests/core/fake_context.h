#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/control_fixture.h"
#include "tvx/browser/browser.h"
#include "tvx/core/context.h"
#include "tvx/core/observer.h"
#include "tvx/dom/inner_html.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/container.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"
#include "tvx/headless/menus.h"
#include "tvx/headless/virtual_time_loop.h"
#include "tvx/platform/form.h"

namespace tvx::core {

/// A control's surroundings and document without a control, for tests of one part. It writes down what the
/// part told; tests set the rest.
class FakeContext final : public Context {
 public:
  FakeContext() {
    browser_.Navigate(u"about:blank");
    loop.settle();
    document_ = browser_.Document();
  }

  Properties& properties() override { return values; }
  const Surroundings& surroundings() const override { return around; }
  bool run_time() const override { return at_run_time; }
  bool terminated() const override { return ended; }
  const std::shared_ptr<browser::HTMLDocument>& DOM() const override { return document_; }
  void set_DOM(std::shared_ptr<browser::HTMLDocument> document) override { document_ = std::move(document); }
  browser::Browser& browser() const override { return browser_; }
  void raise(const std::function<void(HTMLedEvents&)>& event) override { event(*host_); }
  void tell(const std::function<void(HTMLedObserver&)>& news) override { news(*observer); }
  void PropertyChanged(std::u16string_view key) override { changed.emplace_back(to_utf8(key)); }
  void Wait() override {
    if (++waits > 100) throw RuntimeError(errors::object_not_set, u"Waited in vain");
    if (on_wait) on_wait();
  }
  void show_dialog(platform::Form& dialog, std::u16string_view section) override {
    shown.emplace_back(to_utf8(section));
    if (on_dialog)
      on_dialog(dialog);
    else
      dialog.cancel();
  }
  std::shared_ptr<const void> hold() override { return {}; }

  dom::Element& body() { return *document().body(); }
  std::string html() { return to_utf8(dom::inner_html(body())); }
  void load(std::u16string_view html) { document().load_body(html); }

  headless::VirtualTimeLoop loop;
  headless::Container container{true};
  headless::Dialogs dialogs;
  headless::Clipboard clipboard;
  headless::Menus menus;
  headless::Forms forms;
  Surroundings around{.loop = loop,
                      .container = container,
                      .dialogs = dialogs,
                      .hwnd = platform::WindowHandle(4711),
                      .clipboard = &clipboard,
                      .popups = &menus,
                      .forms = &forms};
  Properties values;
  RecordingHost host;
  /// Another one, that hears more.
  void set_host(HTMLedEvents& other) { host_ = &other; }
  HTMLedObserver nobody;
  HTMLedObserver* observer = &nobody;
  bool at_run_time = true, ended = false;
  int waits = 0;
  std::vector<std::string> changed, shown;
  std::function<void()> on_wait;
  std::function<void(platform::Form&)> on_dialog;

 private:
  HTMLedEvents* host_ = &host;
  mutable browser::Browser browser_{loop};
  std::shared_ptr<browser::HTMLDocument> document_;
};

}  // namespace tvx::core
