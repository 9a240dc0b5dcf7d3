#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/transfer_data.h"

/// A list with columns, as a model: a desktop draws it, a script reads it, a user picks from it.
namespace tvx::platform {

class ListView;

/// What a column's texts are; whoever draws it may write them as the user is used to.
enum class ColumnContent : std::uint8_t {
  Text,
  Bytes,  // a number of bytes
  Stamp   // year, month, day, hour and minute: "202611220730"
};

struct ListColumn {
  std::u16string caption;
  ColumnContent content = ColumnContent::Text;
  bool hidden = false;
};

/// A row. Text is that of the first column, sub-items are those of the others.
struct ListItem {
  std::u16string text;
  std::vector<std::u16string> sub_items = {};
  int small_icon = 0;        // 0: none
  bool has_picture = false;  // its own, in place of the icon

  std::u16string_view in_column(int column) const;
};

/// Who acts on what happens in a list. Columns and rows count from 0.
class ListViewHandler {
 public:
  virtual ~ListViewHandler() = default;
  virtual void ColumnClick(ListView&, int /*column*/) {}
  /// A row was double-clicked.
  virtual void DblClick(ListView&) {}
  /// Whether it takes what is dragged over it.
  virtual bool OLEDragOver(ListView&, const TransferSource&) { return false; }
  virtual void OLEDragDrop(ListView&, const TransferSource&) {}
  /// The user sees these rows now; none where the first is after the last.
  virtual void rows_seen(ListView&, int /*first*/, int /*last*/) {}
};

/// Who draws a list.
class ListViewObserver {
 public:
  virtual ~ListViewObserver() = default;
  virtual void row_inserted(int /*row*/) {}
  /// The file of a row's picture; whoever draws it keeps what it needs of it.
  virtual void picture_came(int /*row*/, const std::shared_ptr<const std::string>& /*file*/) {}
  /// All rows, or their order, are others.
  virtual void rows_replaced() {}
  virtual void columns_changed() {}
  virtual void selection_changed() {}
  virtual void note_changed() {}
};

class ListView {
 public:
  explicit ListView(std::vector<ListColumn> columns) : columns_(std::move(columns)) {}
  ListView(const ListView&) = delete;
  ListView& operator=(const ListView&) = delete;

  const std::vector<ListColumn>& columns() const { return columns_; }
  void hide_column(int column, bool hidden);

  // --- rows, as they are seen from above ---
  int count() const { return static_cast<int>(items_.size()); }
  const ListItem& item(int row) const { return *items_[static_cast<std::size_t>(row)]; }
  /// Into its position where the list is sorted, else below all others. The row.
  int add(ListItem item);
  void clear();
  /// The picture of the row with that text, as a file's bytes; nothing happens where there is no such row.
  void set_picture(std::u16string_view text, const std::shared_ptr<const std::string>& file);
  /// Of rows with that text the first; -1 if there is none.
  int find(std::u16string_view text) const;

  // --- sorting: by the texts of a column, without regard to case; equal ones stay as they were ---
  int SortKey() const { return sort_key_; }
  bool descending() const { return descending_; }
  bool Sorted() const { return sorted_; }
  void sort(int column, bool descending);

  // --- the chosen row; -1: none ---
  int selected() const;
  void select(int row);

  /// What there is to say about the rows, as why there are none: words of the program, and after them what a
  /// server or the system says.
  const std::u16string& note() const { return note_; }
  const std::u16string& note_detail() const { return note_detail_; }
  void set_note(std::u16string_view words, std::u16string_view detail = {});

  // --- what the user does ---
  void click_column(int column);
  /// On a row; it is chosen then.
  void double_click(int row);
  bool drag_over(const TransferSource& source);
  /// False: it doesn't take that.
  bool drop(const TransferSource& source);
  void see_rows(int first, int last);

  void set_handler(ListViewHandler* handler) { handler_ = handler; }
  void add_observer(ListViewObserver& observer) { observers_.push_back(&observer); }
  void remove_observer(ListViewObserver& observer) { std::erase(observers_, &observer); }

 private:
  std::u16string key_of(const ListItem& item) const;
  template <class News>
  void tell(const News& news);

  std::vector<ListColumn> columns_;
  std::vector<std::unique_ptr<ListItem>> items_;
  const ListItem* selected_ = nullptr;
  int sort_key_ = 0;
  bool sorted_ = false, descending_ = true;  // so that the first click on a column sorts upwards
  std::u16string note_, note_detail_;
  ListViewHandler* handler_ = nullptr;
  std::vector<ListViewObserver*> observers_;
};

}  // namespace tvx::platform
