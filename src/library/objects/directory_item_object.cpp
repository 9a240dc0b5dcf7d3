#include "tvx/library/objects/directory_item_object.h"

#include <utility>

#include "tvx/library/objects/members_of.h"

namespace tvx::library {

namespace {

using transfer::clsDirectoryItem;

void assign(bool& field, const Value& value) { field = value.to_boolean(); }
void assign(double& field, const Value& value) { field = value.to_number(); }
void assign(std::int32_t& field, const Value& value) { field = value.to_integer32(); }
void assign(std::u16string& field, const Value& value) { field = value.to_text(); }

template <auto Field>
constexpr MemberOf<clsDirectoryItem> field(std::u16string_view name) {
  return {.name = name,
          .get = [](clsDirectoryItem& item) { return Value(item.*Field); },
          .set = [](clsDirectoryItem& item, const Value& value) { assign(item.*Field, value); }};
}

constexpr MemberOf<clsDirectoryItem> rows[] = {
#include "tvx/interface/clsDirectoryItem_rows.inc"
};

class DirectoryItemObject final : public Object {
 public:
  explicit DirectoryItemObject(clsDirectoryItem item) : item_(std::move(item)) {}

  std::u16string_view kind() const override { return u"directoryItem"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"Filename", item_.Filename}, {"FileSize", item_.FileSize}, {"Directory", item_.Directory}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override {
    return invoke_named(std::span<const MemberOf<clsDirectoryItem>>(rows), name, item_, arguments);
  }
  void set(std::u16string_view name, const Value& value) override {
    set_named(std::span<const MemberOf<clsDirectoryItem>>(rows), name, item_, value);
  }

 private:
  clsDirectoryItem item_;
};

}  // namespace

ObjectHandle directory_item_object(clsDirectoryItem item) {
  return std::make_shared<DirectoryItemObject>(std::move(item));
}

}  // namespace tvx::library
