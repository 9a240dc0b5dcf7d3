#include "tvx/automation/session.h"

#include "tvx/automation/server.h"
#include "tvx/platform/message_loop.h"

namespace tvx::automation {

Session::Session(platform::MessageLoop& loop, Notify notify, StageFactory make_stage)
    : loop_(loop), notify_(std::move(notify)), make_stage_(std::move(make_stage)) {
  add_instance({}).control().UserControl_Show();
  settle();
}

Session::~Session() = default;

Instance& Session::instance_of(const Params& params) {
  const auto found = instances_.find(params.number_or("instance", 1));
  if (found == instances_.end()) throw ProtocolError(ProtocolError::invalid_params, "No such instance");
  found->second->take_turn();
  return *found->second;
}

Instance& Session::add_instance(const InstanceOptions& options) {
  const int number = ++last_instance_;
  InstanceOptions complete = options;
  if (!complete.clipboard) complete.clipboard = &clipboard_;
  auto instance =
      std::make_unique<Instance>(number, complete, loop_, make_stage_, notify_,
                                 [this](const Json& request) { return answer_request(*this, request); });
  return *(instances_[number] = std::move(instance));
}

void Session::remove_instance(int number) {
  const auto found = instances_.find(number);
  found->second->terminate();
  removed_.push_back(std::move(found->second));
  instances_.erase(found);
}

void Session::settle() {
  // What a task posts runs in the next round. A few are enough for a gesture, and a page that goes on
  // posting for ever holds nobody up.
  constexpr int rounds = 8;
  for (int round = 0; round < rounds; ++round) loop_.pump(0);
}

void Session::pump(std::int64_t milliseconds) {
  const std::int64_t end = loop_.now() + milliseconds;
  loop_.pump(0);
  for (std::int64_t left; (left = end - loop_.now()) > 0;) loop_.pump(left);
}

}  // namespace tvx::automation
