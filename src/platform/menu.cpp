#include "tvx/platform/menu.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/work_count.h"

namespace tvx::platform {
namespace {

constexpr int no_such_array_item = 340, already_loaded = 360, cannot_unload = 362;

}  // namespace

Menu::Menu(std::u16string name, std::u16string caption)
    : Menu(nullptr, std::move(name), std::move(caption), {}) {}

Menu::Menu(Menu* parent, std::u16string name, std::u16string caption, std::optional<int> index)
    : parent_(parent), name_(std::move(name)), caption_(std::move(caption)), index_(index) {}

Menu::~Menu() = default;

void Menu::set_Caption(std::u16string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  tell_changed();
}

void Menu::set_Obstacle(std::u16string_view reason) {
  if (obstacle_ == reason) return;
  obstacle_ = reason;
  tell_changed();
}

void Menu::set_Enabled(bool enabled) {
  if (std::exchange(enabled_, enabled) != enabled) tell_changed();
}

void Menu::set_Visible(bool visible) {
  if (std::exchange(visible_, visible) != visible) tell_changed();
}

void Menu::set_Checked(bool checked) {
  if (std::exchange(checked_, checked) != checked) tell_changed();
}

// --- items ---

bool Menu::has_name(std::u16string_view name) const { return equals_ignoring_ascii_case(name_, name); }

Menu& Menu::Add(std::u16string name, std::u16string caption, std::optional<int> index) {
  items_.push_back(std::unique_ptr<Menu>(new Menu(this, std::move(name), std::move(caption), index)));
  Menu& item = *items_.back();
  if (index) arrays_[ascii_lower(item.name_)].emplace(*index, &item);
  tell_replaced();
  return item;
}

Menu* Menu::find(std::u16string_view name, std::optional<int> index) {
  for (Menu* item : all_items(*this))
    if (item->has_name(name) && (!index || item->index_ == index)) return item;
  return nullptr;
}

// --- menu arrays ---

const Menu::Array* Menu::array_called(std::u16string_view name) const {
  const auto found = arrays_.find(ascii_lower(name));
  return found == arrays_.end() ? nullptr : &found->second;
}

int Menu::UBound(std::u16string_view array) const {
  if (const Array* items = array_called(array)) return items->rbegin()->first;
  throw RuntimeError(no_such_array_item, u"No such menu array: " + std::u16string(array));
}

Menu& Menu::Item(std::u16string_view array, int index) {
  if (const Array* items = array_called(array)) {
    if (const auto found = items->find(index); found != items->end()) return *found->second;
  }
  throw RuntimeError(no_such_array_item, u"The menu array's element doesn't exist: " + std::u16string(array));
}

Menu& Menu::Load(std::u16string_view array, int index) {
  const auto found = arrays_.find(ascii_lower(array));
  if (found == arrays_.end())
    throw RuntimeError(no_such_array_item, u"No such menu array: " + std::u16string(array));
  if (found->second.contains(index)) throw RuntimeError(already_loaded, u"Object already loaded");
  // From the end: the array's last item is there or close by.
  const auto in_array = [&](const auto& item) {
    count_work();
    return item->index_ && item->has_name(array);
  };
  const auto behind_last = std::find_if(items_.rbegin(), items_.rend(), in_array).base();
  const Menu& first = *found->second.begin()->second;
  std::unique_ptr<Menu> item(new Menu(this, first.name_, first.caption_, index));
  item->enabled_ = first.enabled_;
  item->checked_ = first.checked_;
  item->visible_ = false;
  item->loaded_ = true;
  Menu& loaded = **items_.insert(behind_last, std::move(item));
  found->second.emplace(index, &loaded);
  tell_replaced();
  return loaded;
}

void Menu::Unload(std::u16string_view array, int index) {
  const Menu& item = Item(array, index);
  if (!item.loaded_) throw RuntimeError(cannot_unload, u"Can't unload controls created at design time");
  arrays_.find(ascii_lower(array))->second.erase(index);
  // From the end: whoever unloads a whole array takes its last item each time.
  const auto found = std::find_if(items_.rbegin(), items_.rend(), [&](const auto& each) {
    count_work();
    return each.get() == &item;
  });
  items_.erase(std::prev(found.base()));
  tell_replaced();
}

// --- use ---

bool Menu::has_visible_item() const {
  return std::ranges::any_of(items_,
                             [](const auto& item) { return item->visible_ && !item->is_separator(); });
}

bool Menu::choose() {
  if (!items_.empty() || is_separator()) return false;
  MenuHandler* handler = handler_;
  for (const Menu* menu = this; menu->parent_; menu = menu->parent_) {
    if (!menu->visible_ || !menu->enabled_) return false;
    if (!handler) handler = menu->parent_->handler_;
  }
  if (!parent_ || !handler) return false;
  handler->MenuItemClick(*this);
  return true;
}

void Menu::add_observer(MenuObserver& observer) { observers_.push_back(&observer); }
void Menu::remove_observer(MenuObserver& observer) { std::erase(observers_, &observer); }

void Menu::tell_changed() {
  for (Menu* menu = this; menu; menu = menu->parent_)
    for (std::size_t i = 0; i < menu->observers_.size(); ++i) menu->observers_[i]->item_changed(*this);
}

void Menu::tell_replaced() {
  for (Menu* menu = this; menu; menu = menu->parent_)
    for (std::size_t i = 0; i < menu->observers_.size(); ++i) menu->observers_[i]->items_replaced(*this);
}

std::u16string name_with_index(const Menu& item) {
  if (!item.Index()) return item.Name();
  return item.Name() + u"(" + from_utf8(std::to_string(*item.Index())) + u")";
}

std::vector<Menu*> all_items(Menu& menu) {
  std::vector<Menu*> all, open;
  const auto push = [&](const Menu& parent) {
    for (auto item = parent.items().rbegin(); item != parent.items().rend(); ++item)
      open.push_back(item->get());
  };
  push(menu);
  while (!open.empty()) {
    Menu* item = open.back();
    open.pop_back();
    all.push_back(item);
    push(*item);
  }
  return all;
}

void PopupMenus::PopupMenu(Menu& menu, WindowHandle owner, const std::optional<PopupPlace>& place) {
  if (!menu.has_visible_item()) return;
  if (Menu* chosen = show(menu, owner, place)) chosen->choose();
}

}  // namespace tvx::platform
