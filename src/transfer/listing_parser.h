#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "tvx/platform/remote_network.h"
#include "tvx/transfer/directory_list.h"

namespace tvx::transfer {

struct ListedEntry {
  DirectoryFacts facts;
  std::u16string name;
};

/// Reads what a server prints of a folder, as it arrives: facts (MLSD), and lines in the forms of Unix and
/// DOS. Dates without a zone are taken as they stand, those of facts are in UTC. What makes no sense is
/// skipped and counted; so are names that lead out of a folder.
class ListingParser {
 public:
  /// `now` in seconds since 1970: Unix leaves the year out where it was lately.
  ListingParser(platform::ListingForm form, std::int64_t now) : form_(form), now_(now) {}

  void add(std::string_view bytes);
  /// The last line may have no end.
  void finish();
  /// What has been read and not yet taken.
  std::deque<ListedEntry>& entries() { return entries_; }
  int skipped() const { return skipped_; }

 private:
  void add_line(std::string_view line);

  const platform::ListingForm form_;
  const std::int64_t now_;
  std::string rest_;
  std::deque<ListedEntry> entries_;
  int skipped_ = 0;
};

}  // namespace tvx::transfer
