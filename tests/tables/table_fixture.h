#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>

#include "support/failures.h"
#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/browser/view/mirror_rules.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/print_tree.h"
#include "tvx/dom/tree.h"
#include "tvx/headless/shadow_tree.h"

namespace tvx::tables::test {

/// A document with tables and a view of it, and the one check that every case goes through.
class Tables : public ::testing::Test {
 protected:
  dom::Ref<dom::Document> document = dom::parse_document(u"<!DOCTYPE html><body>");
  std::optional<browser::Mirror> mirror{std::in_place, *document};
  headless::ShadowTree view;

  dom::Element& body() const { return *document->body(); }
  dom::Journal& journal() const { return document->journal(); }
  void load(std::string_view html) {
    const dom::MutationScope scope(*document, dom::MutationKind::Load);
    dom::set_inner_html(body(), from_utf8(html));
    journal().clear();
  }
  std::string html() const { return to_utf8(dom::inner_html(body())); }
  /// The n-th element of a name.
  dom::Element& the(dom::Tag tag, std::size_t number = 0) const {
    for (dom::Element* element : document->all())
      if (element->is(tag) && number-- == 0) return *element;
    throw std::out_of_range("no such element");
  }
  /// The element with the id "x", on which a case works.
  dom::Element& x() const {
    for (dom::Element* element : document->all())
      if (element->attribute_or_empty(dom::names::id) == u"x") return *element;
    throw std::out_of_range("no element is x");
  }

  /// Loads, acts on x, compares. Also: it was one step, undo brings back the first text to the letter and
  /// redo the second, the view was told of all of it, and the text has the tree that it was made of.
  void expect(std::string_view before, void (*act)(dom::Element&), std::string_view after) {
    load(before);
    const std::string first = html();
    act(x());
    EXPECT_EQ(html(), after) << "from " << before;
    EXPECT_LE(journal().depth(), 1u) << before;
    expect_sound(std::string(before));
    while (journal().undo()) {
    }
    EXPECT_EQ(html(), first) << "after undo";
    expect_sound("after undo");
    while (journal().redo()) {
    }
    EXPECT_EQ(html(), after) << "after redo";
    expect_sound("after redo");
  }

  void expect_sound(const std::string& where) {
    browser::Patch patch;
    patch.operations = mirror->flush(10'000'000);
    EXPECT_TRUE(view.apply(patch).empty()) << where;
    EXPECT_EQ(to_utf8(view.print()), to_utf8(browser::print_mirrored(*document))) << where;
    EXPECT_FALSE(journal().is_open()) << where;
    const auto again = dom::parse_document(u"<!DOCTYPE html><body>");
    dom::set_inner_html(*again->body(), dom::inner_html(body()));
    EXPECT_EQ(to_utf8(dom::print_tree(*again)), to_utf8(dom::print_tree(*document))) << where;
  }

  template <class Act>
  static int failure(Act&& act) {
    return number_of_failure(act);
  }
};

}  // namespace tvx::tables::test
