#pragma once

#include <map>
#include <memory>
#include <string_view>
#include <utility>

#include "tvx/base/text_file.h"
#include "tvx/browser/loading/http_client.h"
#include "tvx/browser/resource_policy.h"

namespace tvx::browser {

/// What the browser loads, wherever it lies.
class Resources {
 public:
  Resources(platform::MessageLoop& loop, HttpOptions options) : http_(loop, std::move(options)) {}
  /// Who stays alive while an answer from elsewhere is being dealt with, whatever a handler of it does.
  void set_owner(std::weak_ptr<void> owner) { owner_ = std::move(owner); }

  /// 0: the answer is already given.
  using Ticket = HttpClient::Number;
  using Done = HttpClient::Done;

  /// A local file is read at once: `done` is called before this returns. For anything else it is called from
  /// the message loop, and not at all once the load is cancelled.
  Ticket load_page(std::u16string_view address, Done done) {
    return load(address, accepted_of_pages, largest_document, std::move(done));
  }
  /// What a page brings in: a sheet, or the document of a frame. Nothing is found any more when the page has
  /// used up its budget.
  Ticket load_sheet(std::u16string_view address, Done done) {
    return load_part(address, "text/css,*/*;q=0.1", largest_sheet, std::move(done));
  }
  Ticket load_frame(std::u16string_view address, Done done) {
    return load_part(address, accepted_of_pages, largest_document, std::move(done));
  }
  /// Another page is there, which has used nothing.
  void begin_page() { used_ = std::make_shared<Used>(); }
  const ResourceBudget& budget() const { return budget_; }
  void set_budget(const ResourceBudget& budget) { budget_ = budget; }
  void cancel(Ticket ticket) {
    if (ticket == 0) return;
    parts_.erase(ticket);
    http_.cancel(ticket);
  }

 private:
  static constexpr std::string_view accepted_of_pages =
      "text/html,application/xhtml+xml,text/*;q=0.9,*/*;q=0.5";
  /// What the parts of one page have cost.
  struct Used {
    int requests = 0;
    std::size_t bytes = 0;
  };
  /// A part of a page that is on its way.
  struct Part {
    std::shared_ptr<Used> page;
    Done done;
  };
  Ticket load_part(std::u16string_view address, std::string_view accept, std::size_t limit, Done done);
  void give_up(const Used& page);
  /// `limit`: the most bytes of a local file.
  Ticket load(std::u16string_view address, std::string_view accept, std::size_t limit, Done done);

  HttpClient http_;
  std::weak_ptr<void> owner_;
  ResourceBudget budget_;
  std::shared_ptr<Used> used_ = std::make_shared<Used>();
  std::map<Ticket, Part> parts_;
};

/// Whether a page or a sheet of one address may bring in another by itself: one from elsewhere doesn't reach
/// into the user's files.
bool may_bring_in(std::u16string_view from, std::u16string_view address);

}  // namespace tvx::browser
