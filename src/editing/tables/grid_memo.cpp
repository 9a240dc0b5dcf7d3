#include "tvx/editing/tables/grid_memo.h"

#include <utility>

#include "tvx/dom/document.h"

namespace tvx::editing {
namespace {

thread_local GridMemo* latest = nullptr;

}  // namespace

GridMemo::GridMemo() : before_(std::exchange(latest, this)) {}
GridMemo::~GridMemo() { latest = before_; }

std::shared_ptr<const TableGrid> grid_of(const dom::Element& table) {
  const dom::Document* document = table.document();
  const std::uint64_t version = document ? document->version() : 0;
  if (document && latest && latest->table_ == &table && latest->version_ == version) return latest->grid_;
  auto grid = std::make_shared<const TableGrid>(table);
  if (document && latest) {
    latest->table_ = dom::Ref<dom::Element>(const_cast<dom::Element&>(table));
    latest->version_ = version;
    latest->grid_ = grid;
  }
  return grid;
}

}  // namespace tvx::editing
