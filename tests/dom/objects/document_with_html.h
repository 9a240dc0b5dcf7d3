#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/failures.h"
#include "tvx/base/error.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::test {

/// A document whose body is written in the test, for objects around its elements.
class Objects : public ::testing::Test {
 protected:
  void load(std::string_view body) { document = parse_document(u"<!DOCTYPE html><body>" + from_utf8(body)); }
  std::string html() const { return to_utf8(inner_html(*document->body())); }
  /// The n-th element of a name.
  Element& the(Tag tag, std::size_t number = 0) const {
    for (Element* element : document->all())
      if (element->is(tag) && number-- == 0) return *element;
    throw std::out_of_range("no such element");
  }
  std::size_t steps() const { return document->journal().depth(); }

  template <class Act>
  static int failure(Act&& act) {
    return number_of_failure(act);
  }

  Ref<Document> document;
};

}  // namespace tvx::dom::test
