#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string_view>

#include "automation/instance.h"
#include "automation/json.h"

namespace tvx::automation {

/// What the requests of one conversation share: the controls, by number, and the way back to the client.
class Session {
 public:
  using Notify = std::function<void(std::string_view method, Json params)>;

  explicit Session(Notify notify);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// The control that a request is for: its "instance", 1 where it names none.
  /// Throws ProtocolError(-32602) if there is none of that number.
  Instance& instance_of(const Params& params);
  Instance& add_instance(InstanceOptions options);
  void remove_instance(int number);

  void notify(std::string_view method, Json params) { notify_(method, std::move(params)); }

 private:
  Notify notify_;
  std::map<int, std::unique_ptr<Instance>> instances_;
  int last_instance_ = 0;
};

}  // namespace tvx::automation
