#include "tvx/browser/loading/resources.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/browser/loading/page_source.h"

namespace tvx::browser {

namespace {

bool fails_on_request() {
  bool fails = true;
  attempt([&] { fails = fault_point(u"ReadPage").has_value(); });
  return fails;
}

}  // namespace

Resources::Ticket Resources::load_part(std::u16string_view address, std::string_view accept,
                                       std::size_t limit, Done done) {
  if (used_->requests >= budget_.requests || used_->bytes >= budget_.bytes) {
    done({static_cast<std::int32_t>(LoadFailure::NotFound)});
    return 0;
  }
  ++used_->requests;
  if (!is_remote(address))
    return load(address, accept, limit, [used = used_, done = std::move(done)](HttpAnswer answer) {
      used->bytes += answer.body.size();
      done(std::move(answer));
    });
  const auto ticket = std::make_shared<Ticket>(0);
  *ticket = load(address, accept, limit, [this, ticket](HttpAnswer answer) {
    const auto found = parts_.find(*ticket);
    if (found == parts_.end()) return;  // it failed before it began, which is told below
    const Part part = std::move(found->second);
    parts_.erase(found);
    part.page->bytes += answer.body.size();
    if (part.page->bytes > budget_.bytes) answer = {static_cast<std::int32_t>(LoadFailure::NotFound)};
    if (part.page->bytes >= budget_.bytes) give_up(*part.page);
    part.done(std::move(answer));
  });
  if (*ticket == 0)
    done({static_cast<std::int32_t>(LoadFailure::NotFound)});
  else
    parts_.emplace(*ticket, Part{used_, std::move(done)});
  return *ticket;
}

// All parts that a page names are ordered at once: when the first of them have used up what it may bring in,
// the others are on their way.
void Resources::give_up(const Used& page) {
  const auto find = [&] {
    return std::find_if(parts_.begin(), parts_.end(),
                        [&](const auto& entry) { return entry.second.page.get() == &page; });
  };
  // Who is told of one may cancel others.
  for (auto next = find(); next != parts_.end(); next = find()) {
    const Part part = std::move(next->second);
    http_.cancel(next->first);
    parts_.erase(next);
    part.done({static_cast<std::int32_t>(LoadFailure::NotFound)});
  }
}

Resources::Ticket Resources::load(std::u16string_view address, std::string_view accept, std::size_t limit,
                                  Done done) {
  if (fails_on_request()) {
    done({static_cast<std::int32_t>(LoadFailure::NotFound)});
    return 0;
  }
  if (is_remote(address)) {
    return http_.fetch(address, accept, [owner = owner_, done = std::move(done)](HttpAnswer answer) {
      if (const auto alive = owner.lock()) done(std::move(answer));
    });
  }
  done(read_local(address, limit));
  return 0;
}

bool may_bring_in(std::u16string_view from, std::u16string_view address) {
  return !is_remote(from) || is_remote(address) || is_blank_address(address);
}

}  // namespace tvx::browser
