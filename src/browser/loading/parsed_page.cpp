#include "tvx/browser/loading/parsed_page.h"

#include <utility>

namespace tvx::browser {
namespace {

thread_local ParsedPage* latest = nullptr;

}  // namespace

ParsedPage::ParsedPage(std::string_view bytes, dom::Ref<dom::Document> tree, Encoding encoding)
    : bytes_(bytes),
      tree_(std::move(tree)),
      encoding_(std::move(encoding)),
      before_(std::exchange(latest, this)) {}

ParsedPage::~ParsedPage() { latest = before_; }

ParsedPage* ParsedPage::of(std::string_view bytes) {
  for (ParsedPage* page = latest; page; page = page->before_)
    if (page->tree_ && page->bytes_ == bytes) return page;
  return nullptr;
}

}  // namespace tvx::browser
