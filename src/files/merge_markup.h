#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tvx::files {

/// Carries the changes from `base` to `edited` over into `source`: tag by tag, word by word. `base` and
/// `source` are two ways to write the same page: tags that `source` leaves out stay out, and what wasn't
/// edited keeps its letters, quotes and references. A proposal: whoever needs the result to mean `edited`
/// looks whether it does.
std::u16string merge_markup(std::u16string_view base, std::u16string_view source, std::u16string_view edited);

/// The same, for who asks again: where tags cross, or ends are left out, an edit may mean something else in
/// `source` than it does in `base`. With more of what stands beside it, as `base` has it, it doesn't. The
/// texts outlive this.
class MarkupMerge {
 public:
  MarkupMerge(std::u16string_view base, std::u16string_view source, std::u16string_view edited);
  MarkupMerge(MarkupMerge&&) noexcept;
  ~MarkupMerge();

  /// With so many tags and words before and after each edit written as `edited` has them.
  std::u16string run(std::size_t before, std::size_t after) const;

 private:
  class Merge;
  std::unique_ptr<Merge> merge_;
};

}  // namespace tvx::files
