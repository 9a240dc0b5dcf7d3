#include "tvx/dom/name.h"

#include <array>
#include <memory>
#include <unordered_map>

#include "tvx/base/strings.h"

namespace tvx::dom {
namespace {

class NameTable {
 public:
  NameTable() {
#define TVX_TAG(enumerator, name) add(name, Tag::enumerator);
#include "tvx/dom/tags.inc"
#undef TVX_TAG
    by_tag_[0] = add(u"", Tag::Unknown);
  }

  const Name::Entry* intern(std::u16string_view text) {
    const auto found = entries_.find(text);
    return found != entries_.end() ? found->second.get() : add(text, Tag::Unknown);
  }

  const Name::Entry* of(Tag tag) const { return by_tag_[static_cast<std::size_t>(tag)]; }

 private:
  const Name::Entry* add(std::u16string_view text, Tag tag) {
    auto entry = std::make_unique<Name::Entry>(Name::Entry{std::u16string(text), ascii_upper(text), tag});
    const Name::Entry* address = entry.get();
    entries_.emplace(address->text, std::move(entry));
    if (tag != Tag::Unknown) by_tag_[static_cast<std::size_t>(tag)] = address;
    return address;
  }

  std::unordered_map<std::u16string_view, std::unique_ptr<Name::Entry>> entries_;
  std::array<const Name::Entry*, static_cast<std::size_t>(Tag::Count)> by_tag_{};
};

// Never destroyed: nodes and names of other translation units may outlive any order of destruction.
NameTable& table() {
  static NameTable& instance = *new NameTable;
  return instance;
}

}  // namespace

Name::Name() : entry_(table().of(Tag::Unknown)) {}
Name::Name(std::u16string_view text) : entry_(table().intern(text)) {}
Name::Name(Tag tag) : entry_(table().of(tag)) {}

}  // namespace tvx::dom
