#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "tvx/automation/instance.h"
#include "tvx/automation/json.h"
#include "tvx/headless/clipboard.h"

namespace tvx::automation {

/// What the requests of one conversation share: the controls, by number, and the way back to the client.
class Session {
 public:
  using Notify = std::function<void(std::string_view method, Json params)>;

  /// `loop` outlives the session. Instance 1 exists at once: at run time, with nothing stored, and shown.
  /// `make_stage` gives each control the place where it lives.
  Session(platform::MessageLoop& loop, Notify notify, StageFactory make_stage = headless_stage);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// The control that a request is for: its "instance", 1 where it names none.
  /// Throws ProtocolError(-32602) if there is none of that number.
  Instance& instance_of(const Params& params);
  Instance& add_instance(const InstanceOptions& options);
  /// Ends the control at once; what surrounds it goes at the end of the outermost request.
  void remove_instance(int number);
  /// The outermost request is done: nothing of a removed instance is in use any more.
  void bury() { removed_.clear(); }

  platform::MessageLoop& loop() { return loop_; }
  /// Runs what a request has set going, so that what it caused is told before its answer.
  void settle();
  /// Lets the message loop run for that long.
  void pump(std::int64_t milliseconds);

  void notify(std::string_view method, Json params) { notify_(method, std::move(params)); }

 private:
  platform::MessageLoop& loop_;
  Notify notify_;
  StageFactory make_stage_;
  headless::Clipboard clipboard_;
  std::map<int, std::unique_ptr<Instance>> instances_;
  std::vector<std::unique_ptr<Instance>> removed_;
  int last_instance_ = 0;
};

}  // namespace tvx::automation
