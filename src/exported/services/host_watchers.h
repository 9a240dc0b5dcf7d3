#pragma once

#include <memory>
#include <unordered_map>

#include "tvx/platform/message_window.h"
#include "tvx/tvxhtml.h"

namespace tvx::exported {

class HostWatcher;

/// The objects of hosts that watch messages. The kit knows each by one of ours, which calls it.
///
/// Ours live as long as the kit may ask them: a host that detaches its object within the object's own
/// WindowProc may have freed it when that returns.
class HostWatchers {
 public:
  static HostWatchers& only();
  HostWatchers();
  ~HostWatchers();

  /// As GSubclass does, whose errors it throws.
  void attach(tvx_subclass& watcher, platform::WindowHandle window, platform::Message message);
  void detach(tvx_subclass& watcher, platform::WindowHandle window, platform::Message message);

 private:
  void forget_idle();

  std::unordered_map<tvx_subclass*, std::shared_ptr<HostWatcher>> watchers_;
};

}  // namespace tvx::exported
