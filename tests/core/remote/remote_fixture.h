#pragma once

#include "core/control_fixture.h"
#include "transfer/fake_network.h"
#include "tvx/platform/loaded_dialogs.h"
#include "tvx/transfer/directory_list.h"

namespace tvx::core {

using testing::ElementsAre;
using testing::IsEmpty;

/// A host that also hears of transfers.
class TransferHost : public RecordingHost {
 public:
  /// What it has heard of transfers, in order.
  std::vector<std::string> transfers;
  std::function<void(const std::string&)> within;

  void FTPSuccess(std::int32_t& id, std::u16string& text) override {
    tell(std::to_string(id) + " " + to_utf8(text));
  }
  void FTPError(std::int32_t& number, std::u16string& text) override {
    tell("error " + std::to_string(number) + " " + to_utf8(text));
  }
  void FTPTransferProgress(std::int32_t& current, std::int32_t& total) override {
    tell("progress " + std::to_string(current) + " " + std::to_string(total));
  }
  void BeginImageUpload() override { tell("begin"); }
  void EndImageUpload() override { tell("end"); }

 private:
  void tell(const std::string& line) {
    transfers.push_back(line);
    if (within) within(line);
  }
};

/// A control with a server in memory.
class Remote : public Control {
 protected:
  ~Remote() override {
    transfer_host.within = nullptr;
    server.before = nullptr;
  }

  void start_with(std::u16string_view html = u"<P>text</P>") {
    control = HTMLed::create({.loop = loop,
                              .container = container,
                              .dialogs = dialogs,
                              .hwnd = platform::WindowHandle(7654321),
                              .geometry = &geometry,
                              .window = &window,
                              .clipboard = &clipboard,
                              .popups = &menus,
                              .forms = &forms,
                              .network = &network});
    control->set_events(&transfer_host);
    control->UserControl_Initialize();
    control->UserControl_InitProperties();
    control->set_size(9000, 6000);
    control->UserControl_Show();
    control->set_DocumentHTML(html);
    control->set_FTPHost(u"server");
    control->set_FTPSaveToURL(u"http://example.org/pics");
    container.clear_changed();
  }
  std::vector<std::string> heard() { return std::exchange(transfer_host.transfers, {}); }
  /// What was heard but for the connection's own notes.
  std::vector<std::string> heard_of_files() {
    std::vector<std::string> lines = heard();
    std::erase_if(lines, [](const std::string& line) {
      return line.starts_with("0 ") || line == "1 Connected to Server" || line.starts_with("25 ") ||
             line.starts_with("2 ");
    });
    return lines;
  }
  std::u16string image_of(const std::string& name) const { return u"file://" + path(name); }

  transfer::FakeServer server;
  transfer::FakeNetwork network{server};
  TransferHost transfer_host;
};

}  // namespace tvx::core
