#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/parts.h"
#include "tvx/platform/form.h"

/// Lists with columns by the names of their members. Rows and columns count from 1.
namespace tvx::library {

using platform::FormControl;
using platform::ListView;

namespace {

constexpr int no_such_index = 35600;

/// From 1 as scripts count, to 0.
int place_of(const Value& number, std::size_t count) {
  const std::int32_t place = number.to_integer32();
  if (place < 1 || static_cast<std::size_t>(place) > count)
    throw RuntimeError(no_such_index, u"Index out of bounds");
  return place - 1;
}

class ListItemObject final : public Object {
 public:
  ListItemObject(const ListView& list, int row) : list_(list), row_(row) {}
  std::u16string_view kind() const override { return u"listItem"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"Index", std::int32_t{row_ + 1}}, {"Text", item().text}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override;

 private:
  const platform::ListItem& item() const {
    if (row_ >= list_.count()) throw RuntimeError(no_such_index, u"Index out of bounds");
    return list_.item(row_);
  }
  const ListView& list_;
  const int row_;
};

Value ListItemObject::invoke(std::u16string_view name, Values& arguments) {
  if (equals_ignoring_ascii_case(name, u"SubItems")) {
    expect_arguments(arguments, 1, 1);
    const int place = place_of(arguments[0], item().sub_items.size());
    return item().sub_items[static_cast<std::size_t>(place)];
  }
  expect_arguments(arguments, 0, 0);
  if (equals_ignoring_ascii_case(name, u"Text")) return item().text;
  if (equals_ignoring_ascii_case(name, u"Index")) return std::int32_t{row_ + 1};
  if (equals_ignoring_ascii_case(name, u"SmallIcon")) return std::int32_t{item().small_icon};
  if (equals_ignoring_ascii_case(name, u"HasPicture")) return item().has_picture;
  unknown_member(name);
}

Value item_object(const ListView& list, int row) {
  return ObjectHandle(std::make_shared<ListItemObject>(list, row));
}

class ListItemsObject final : public Object {
 public:
  explicit ListItemsObject(const ListView& list) : list_(list) {}
  std::u16string_view kind() const override { return u"listItems"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"Count", std::int32_t{list_.count()}}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"Item")) return item(arguments);
    if (!equals_ignoring_ascii_case(name, u"Count")) unknown_member(name);
    expect_arguments(arguments, 0, 0);
    return std::int32_t{list_.count()};
  }
  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    return item_object(list_, place_of(arguments[0], static_cast<std::size_t>(list_.count())));
  }

 private:
  const ListView& list_;
};

class ColumnObject final : public Object {
 public:
  explicit ColumnObject(const platform::ListColumn& column) : column_(column) {}
  std::u16string_view kind() const override { return u"columnHeader"; }
  std::vector<std::pair<std::string, Value>> description() const override {
    return {{"Text", column_.caption}};
  }
  Value invoke(std::u16string_view name, Values& arguments) override {
    expect_arguments(arguments, 0, 0);
    if (equals_ignoring_ascii_case(name, u"Text")) return column_.caption;
    // How wide it is the desktop decides; a hidden one is told by its width.
    if (equals_ignoring_ascii_case(name, u"Width")) return std::int32_t{column_.hidden ? 0 : usual_width};
    unknown_member(name);
  }

 private:
  static constexpr std::int32_t usual_width = 1440;
  const platform::ListColumn& column_;
};

class ColumnsObject final : public Object {
 public:
  explicit ColumnsObject(const ListView& list) : list_(list) {}
  std::u16string_view kind() const override { return u"columnHeaders"; }
  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"Item")) return item(arguments);
    if (!equals_ignoring_ascii_case(name, u"Count")) unknown_member(name);
    return static_cast<std::int32_t>(list_.columns().size());
  }
  Value item(Values& arguments) override {
    expect_arguments(arguments, 1, 1);
    const int place = place_of(arguments[0], list_.columns().size());
    return ObjectHandle(std::make_shared<ColumnObject>(list_.columns()[static_cast<std::size_t>(place)]));
  }

 private:
  const ListView& list_;
};

}  // namespace

Value list_items(const FormControl& control) {
  return ObjectHandle(std::make_shared<ListItemsObject>(control.list_view()));
}

Value column_headers(const FormControl& control) {
  return ObjectHandle(std::make_shared<ColumnsObject>(control.list_view()));
}

Value selected_item(const FormControl& control) {
  const ListView& list = control.list_view();
  return list.selected() < 0 ? Value() : item_object(list, list.selected());
}

void select_item(const FormControl& control, const Value& row) {
  ListView& list = control.list_view();
  list.select(row.is_null() ? -1 : place_of(row, static_cast<std::size_t>(list.count())));
}

void click_column(const FormControl& control, const Value& column) {
  ListView& list = control.list_view();
  list.click_column(place_of(column, list.columns().size()));
}

bool drop_files(const FormControl& control, const Values& paths) {
  std::string list;
  for (const Value& path : paths) list += to_utf8(file_url(path.to_text())) + "\r\n";
  return control.list_view().drop(
      platform::TransferItemSource({{std::string(platform::targets::files), std::move(list)}}));
}

}  // namespace tvx::library
