#include "tvx/editing/tables/grid_memo.h"

#include <gtest/gtest.h>

#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"

namespace tvx::editing {
namespace {

class GridMemos : public testing::Test {
 protected:
  dom::Element& table(int number = 0) {
    dom::Node* node = document_->body()->first_child();
    while (number-- > 0) node = node->next_sibling();
    return *dom::as<dom::Element>(node);
  }
  dom::Element& cell() { return *grid_of(table())->cells().front().cell; }

  dom::Ref<dom::Document> document_ =
      dom::parse_document(u"<table><tr><td>1<td>2</table><table><tr><td>3</table>");
};

TEST_F(GridMemos, AGridIsMadeOnceWhileAMemoLives) {
  EXPECT_NE(grid_of(table()), grid_of(table()));
  const GridMemo memo;
  const auto grid = grid_of(table());
  EXPECT_EQ(grid_of(table()), grid);
  EXPECT_EQ(grid->columns(), 2u);
}

TEST_F(GridMemos, EachTableHasItsOwn) {
  const GridMemo memo;
  const auto first = grid_of(table(0)), second = grid_of(table(1));
  EXPECT_EQ(first->columns(), 2u);
  EXPECT_EQ(second->columns(), 1u);
  EXPECT_EQ(grid_of(table(0))->columns(), 2u);
}

TEST_F(GridMemos, WhatChangesIsSeen) {
  const GridMemo memo;
  EXPECT_EQ(grid_of(table())->columns(), 2u);
  dom::set_attribute(cell(), dom::Name(u"colspan"), u"3");
  EXPECT_EQ(grid_of(table())->columns(), 4u);
  dom::remove(cell());
  EXPECT_EQ(grid_of(table())->columns(), 1u);
}

TEST_F(GridMemos, OneWithinAnother) {
  const GridMemo outer;
  const auto grid = grid_of(table());
  {
    const GridMemo inner;
    EXPECT_NE(grid_of(table()), grid);
  }
  EXPECT_EQ(grid_of(table()), grid);
}

}  // namespace
}  // namespace tvx::editing
