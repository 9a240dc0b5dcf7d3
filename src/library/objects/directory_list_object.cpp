#include "tvx/library/objects/directory_list_object.h"

#include <utility>

#include "tvx/library/objects/directory_item_object.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::library {
namespace {

class DirectoryListObject final : public Object {
 public:
  explicit DirectoryListObject(std::shared_ptr<const transfer::clsDirectoryList> list)
      : list_(std::move(list)) {}

  std::u16string_view kind() const override { return u"directoryList"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"count", list_->count()}};
  }

  bool is_operation(std::u16string_view name) const override {
    return equals_ignoring_ascii_case(name, u"count");
  }
  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"count")) return expect_arguments(arguments, 0, 0), list_->count();
    if (equals_ignoring_ascii_case(name, u"item")) return item(arguments);
    unknown_member(name);
  }

  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    return directory_item_object(arguments[0].is_text() ? list_->item(arguments[0].to_text())
                                                        : list_->item(arguments[0].to_integer32()));
  }

 private:
  std::shared_ptr<const transfer::clsDirectoryList> list_;
};

}  // namespace

Value directory_list_object(std::shared_ptr<const transfer::clsDirectoryList> list) {
  if (!list) return {};
  return ObjectHandle(std::make_shared<DirectoryListObject>(std::move(list)));
}

}  // namespace tvx::library
