#pragma once

#include <string_view>

#include "tvx/browser/html_document.h"
#include "tvx/dom/document.h"

namespace tvx::browser {

/// A page that its program had to parse before it could be loaded. While this lives, the first load of a file
/// of these very bytes takes the tree that is there, and doesn't parse it once more.
class ParsedPage {
 public:
  /// The tree is that of the bytes, and nobody has touched it; null: there is none. The bytes outlive this.
  ParsedPage(std::string_view bytes, dom::Ref<dom::Document> tree, Encoding encoding);
  ~ParsedPage();
  ParsedPage(const ParsedPage&) = delete;
  ParsedPage& operator=(const ParsedPage&) = delete;

  /// The latest one of the thread that has the tree of these bytes; null if there is none.
  static ParsedPage* of(std::string_view bytes);
  dom::Ref<dom::Document> take_tree() { return std::move(tree_); }
  const Encoding& encoding() const { return encoding_; }

 private:
  std::string_view bytes_;
  dom::Ref<dom::Document> tree_;
  Encoding encoding_;
  ParsedPage* before_;
};

}  // namespace tvx::browser
