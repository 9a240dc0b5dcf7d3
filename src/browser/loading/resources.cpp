#include "tvx/browser/loading/resources.h"

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
  return load(address, accept, limit, [used = used_, done = std::move(done)](HttpAnswer answer) {
    used->bytes += answer.body.size();
    done(std::move(answer));
  });
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
