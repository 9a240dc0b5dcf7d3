#include "tvx/exported/services/host_watchers.h"

#include <set>
#include <utility>

#include "tvx/exported/module.h"
#include "tvx/services/subclass.h"

namespace tvx::exported {

using platform::Message;
using platform::MessageResult;
using platform::Parameter;
using platform::WindowHandle;
using services::EMsgResponse;

static_assert(TVX_emrConsume == static_cast<int>(EMsgResponse::emrConsume));
static_assert(TVX_emrPostProcess == static_cast<int>(EMsgResponse::emrPostProcess));
static_assert(TVX_emrPreprocess == static_cast<int>(EMsgResponse::emrPreprocess));

/// Stands before the kit for an object of the host's, as long as that is attached anywhere.
class HostWatcher final : public services::ISubclass {
 public:
  using Attachment = std::pair<WindowHandle, Message>;

  explicit HostWatcher(tvx_subclass& host) : host_(host) {}

  EMsgResponse MsgResponse() const override {
    if (attachments_.empty()) return last_response_;
    const Module::UnderWay under_way;
    std::int32_t response = TVX_emrConsume;
    if (host_.functions->GetMsgResponse(&host_, &response) == TVX_OK)
      last_response_ = static_cast<EMsgResponse>(response);
    return last_response_;
  }
  void set_MsgResponse(EMsgResponse response) override {
    if (!attachments_.empty()) host_.functions->SetMsgResponse(&host_, static_cast<std::int32_t>(response));
  }
  MessageResult WindowProc(WindowHandle hwnd, Message message, Parameter wParam, Parameter lParam) override {
    if (attachments_.empty()) return 0;
    const Module::UnderWay under_way;
    std::int32_t result = 0;
    host_.functions->WindowProc(&host_, platform::number_of(hwnd), static_cast<std::int32_t>(message), wParam,
                                lParam, &result);
    return result;
  }

  std::set<Attachment>& attachments() { return attachments_; }
  bool is_idle() {
    std::erase_if(attachments_, [](const Attachment& each) { return !platform::IsWindow(each.first); });
    return attachments_.empty();
  }

 private:
  tvx_subclass& host_;
  std::set<Attachment> attachments_;
  mutable EMsgResponse last_response_ = EMsgResponse::emrConsume;
};

HostWatchers& HostWatchers::only() {
  static HostWatchers watchers;
  return watchers;
}

HostWatchers::HostWatchers() = default;
HostWatchers::~HostWatchers() = default;

void HostWatchers::attach(tvx_subclass& host, WindowHandle window, Message message) {
  forget_idle();
  std::shared_ptr<HostWatcher>& watcher = watchers_[&host];
  if (!watcher) watcher = std::make_shared<HostWatcher>(host);
  services::GSubclass::AttachMessage(*watcher, window, message);
  watcher->attachments().emplace(window, message);
}

void HostWatchers::detach(tvx_subclass& host, WindowHandle window, Message message) {
  if (const auto found = watchers_.find(&host); found != watchers_.end()) {
    services::GSubclass::DetachMessage(*found->second, window, message);
    found->second->attachments().erase({window, message});
  }
  forget_idle();
}

// Within a delivery the kit may come back to one that has been detached: the host's code runs there in a call
// of ours around this one.
void HostWatchers::forget_idle() {
  if (!Module::only().is_outermost()) return;
  std::erase_if(watchers_, [](const auto& each) { return each.second->is_idle(); });
}

}  // namespace tvx::exported
