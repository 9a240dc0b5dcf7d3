#include "tvx/platform/list_view.h"

#include <algorithm>
#include <utility>

#include "tvx/base/text.h"

namespace tvx::platform {

std::u16string_view ListItem::in_column(int column) const {
  if (column == 0) return text;
  const auto place = static_cast<std::size_t>(column - 1);
  return place < sub_items.size() ? std::u16string_view(sub_items[place]) : std::u16string_view();
}

// One of them may go while it hears of it.
template <class News>
void ListView::tell(const News& news) {
  const std::vector<ListViewObserver*> observers = observers_;
  for (ListViewObserver* observer : observers)
    if (std::ranges::find(observers_, observer) != observers_.end()) news(*observer);
}

void ListView::hide_column(int column, bool hidden) {
  bool& now = columns_[static_cast<std::size_t>(column)].hidden;
  if (std::exchange(now, hidden) != hidden)
    tell([](ListViewObserver& observer) { observer.columns_changed(); });
}

// --- rows ---

std::u16string ListView::key_of(const ListItem& item) const { return upper_cased(item.in_column(sort_key_)); }

int ListView::add(ListItem item) {
  auto owned = std::make_unique<ListItem>(std::move(item));
  auto place = items_.end();
  if (sorted_) {
    const std::u16string key = key_of(*owned);
    place = std::partition_point(items_.begin(), items_.end(), [&](const auto& other) {
      return descending_ ? key_of(*other) >= key : key_of(*other) <= key;
    });
  }
  place = items_.insert(place, std::move(owned));
  const int row = static_cast<int>(place - items_.begin());
  tell([row](ListViewObserver& observer) { observer.row_inserted(row); });
  return row;
}

void ListView::clear() {
  selected_ = nullptr;
  items_.clear();
  tell([](ListViewObserver& observer) { observer.rows_replaced(); });
}

int ListView::find(std::u16string_view text) const {
  const auto found = std::ranges::find_if(items_, [&](const auto& item) { return item->text == text; });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ListView::set_picture(std::u16string_view text, const std::shared_ptr<const std::string>& file) {
  const int row = find(text);
  if (row < 0) return;
  items_[static_cast<std::size_t>(row)]->has_picture = true;
  tell([&](ListViewObserver& observer) { observer.picture_came(row, file); });
}

void ListView::sort(int column, bool descending) {
  sort_key_ = column;
  descending_ = descending;
  sorted_ = true;
  std::vector<std::pair<std::u16string, std::unique_ptr<ListItem>>> keyed;
  keyed.reserve(items_.size());
  for (auto& item : items_) {
    std::u16string key = key_of(*item);
    keyed.emplace_back(std::move(key), std::move(item));
  }
  std::ranges::stable_sort(keyed, [descending](const auto& a, const auto& b) {
    return descending ? b.first < a.first : a.first < b.first;
  });
  std::ranges::transform(keyed, items_.begin(), [](auto& entry) { return std::move(entry.second); });
  tell([](ListViewObserver& observer) { observer.rows_replaced(); });
}

int ListView::selected() const {
  const auto found = std::ranges::find_if(items_, [&](const auto& item) { return item.get() == selected_; });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ListView::select(int row) {
  const ListItem* item = row >= 0 && row < count() ? items_[static_cast<std::size_t>(row)].get() : nullptr;
  if (std::exchange(selected_, item) != item)
    tell([](ListViewObserver& observer) { observer.selection_changed(); });
}

void ListView::set_note(std::u16string_view words, std::u16string_view detail) {
  if (note_ == words && note_detail_ == detail) return;
  note_ = words;
  note_detail_ = detail;
  tell([](ListViewObserver& observer) { observer.note_changed(); });
}

// --- what the user does ---

void ListView::click_column(int column) {
  if (handler_ && column >= 0 && column < static_cast<int>(columns_.size()))
    handler_->ColumnClick(*this, column);
}

void ListView::double_click(int row) {
  if (row < 0 || row >= count()) return;
  select(row);
  if (handler_) handler_->DblClick(*this);
}

bool ListView::drag_over(const TransferSource& source) {
  return handler_ && handler_->OLEDragOver(*this, source);
}

bool ListView::drop(const TransferSource& source) {
  if (!drag_over(source)) return false;
  handler_->OLEDragDrop(*this, source);
  return true;
}

void ListView::see_rows(int first, int last) {
  if (handler_) handler_->rows_seen(*this, first, last);
}

}  // namespace tvx::platform
