#include "tvx/platform/menu.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"

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
  tell_replaced();
  return item;
}

Menu* Menu::find(std::u16string_view name, std::optional<int> index) {
  for (Menu* item : all_items(*this))
    if (item->has_name(name) && (!index || item->index_ == index)) return item;
  return nullptr;
}

// --- menu arrays ---

const Menu* Menu::array_item(std::u16string_view array, int index) const {
  for (const auto& item : items_)
    if (item->index_ == index && item->has_name(array)) return item.get();
  return nullptr;
}

int Menu::UBound(std::u16string_view array) const {
  std::optional<int> highest;
  for (const auto& item : items_)
    if (item->index_ && item->has_name(array))
      highest = std::max(highest.value_or(*item->index_), *item->index_);
  if (!highest) throw RuntimeError(no_such_array_item, u"No such menu array: " + std::u16string(array));
  return *highest;
}

Menu& Menu::Item(std::u16string_view array, int index) {
  if (const Menu* item = array_item(array, index)) return *const_cast<Menu*>(item);
  throw RuntimeError(no_such_array_item, u"The menu array's element doesn't exist: " + std::u16string(array));
}

Menu& Menu::Load(std::u16string_view array, int index) {
  if (array_item(array, index)) throw RuntimeError(already_loaded, u"Object already loaded");
  const auto in_array = [&](const auto& item) { return item->index_ && item->has_name(array); };
  const auto first = std::ranges::find_if(items_, in_array);
  if (first == items_.end())
    throw RuntimeError(no_such_array_item, u"No such menu array: " + std::u16string(array));
  std::unique_ptr<Menu> item(new Menu(this, (*first)->name_, (*first)->caption_, index));
  item->enabled_ = (*first)->enabled_;
  item->checked_ = (*first)->checked_;
  item->visible_ = false;
  item->loaded_ = true;
  const auto behind_last = std::find_if(items_.rbegin(), items_.rend(), in_array).base();
  Menu& loaded = **items_.insert(behind_last, std::move(item));
  tell_replaced();
  return loaded;
}

void Menu::Unload(std::u16string_view array, int index) {
  const Menu& item = Item(array, index);
  if (!item.loaded_) throw RuntimeError(cannot_unload, u"Can't unload controls created at design time");
  std::erase_if(items_, [&](const auto& each) { return each.get() == &item; });
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
