#include "tvx/browser/input/net_change.h"

namespace tvx::browser {

using dom::Mutation;

namespace {

/// A command on a whole document makes a hundred thousand, and nobody takes these back on the way.
constexpr std::size_t most = 1000;

bool takes_back(const Mutation& later, const Mutation& earlier) {
  using Type = Mutation::Type;
  if (later.node != earlier.node.get()) return false;
  const bool in_and_out = (later.type == Type::Insert && earlier.type == Type::Remove) ||
                          (later.type == Type::Remove && earlier.type == Type::Insert);
  if (in_and_out) return later.parent == earlier.parent.get() && later.before == earlier.before.get();
  if (later.type != earlier.type) return false;
  if (later.type == Type::ReplaceData)
    return later.offset == earlier.offset && later.removed == earlier.inserted &&
           later.inserted == earlier.removed;
  return later.attribute == earlier.attribute && later.old_value == earlier.new_value &&
         later.new_value == earlier.old_value;
}

}  // namespace

void NetChange::note(const Mutation& mutation) {
  if (many_) return;
  if (!open_.empty() && takes_back(mutation, open_.back())) return open_.pop_back();
  if (open_.size() < most) return open_.push_back(mutation);
  open_.clear();
  many_ = true;
}

void NetChange::clear() {
  open_.clear();
  many_ = false;
}

}  // namespace tvx::browser
