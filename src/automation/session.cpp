#include "automation/session.h"

namespace tvx::automation {

Session::Session(Notify notify) : notify_(std::move(notify)) { add_instance({}); }

Session::~Session() = default;

Instance& Session::instance_of(const Params& params) {
  const auto found = instances_.find(params.number_or("instance", 1));
  if (found == instances_.end()) throw ProtocolError(ProtocolError::invalid_params, "No such instance");
  return *found->second;
}

Instance& Session::add_instance(InstanceOptions options) {
  const int number = ++last_instance_;
  return *(instances_[number] = std::make_unique<Instance>(number, std::move(options)));
}

void Session::remove_instance(int number) { instances_.erase(number); }

}  // namespace tvx::automation
