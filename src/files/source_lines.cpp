#include "tvx/files/source_lines.h"

#include <algorithm>
#include <array>

#include "tvx/base/strings.h"

namespace tvx::files {
namespace {

/// Blocks that stand on lines of their own; cells stay on the line of their row.
constexpr std::array<std::u16string_view, 38> blocks = {
    u"p",       u"h1",      u"h2",     u"h3",         u"h4",       u"h5",     u"h6",      u"ul",
    u"ol",      u"li",      u"dl",     u"dt",         u"dd",       u"table",  u"caption", u"colgroup",
    u"thead",   u"tbody",   u"tfoot",  u"tr",         u"div",      u"pre",    u"hr",      u"blockquote",
    u"form",    u"section", u"header", u"footer",     u"article",  u"main",   u"aside",   u"nav",
    u"address", u"center",  u"figure", u"figcaption", u"fieldset", u"details"};
/// Of these the tags themselves stand on lines of their own.
constexpr std::array<std::u16string_view, 20> containers = {
    u"ul",     u"ol",     u"dl",      u"table", u"colgroup",   u"thead",   u"tbody",
    u"tfoot",  u"tr",     u"div",     u"nav",   u"blockquote", u"form",    u"section",
    u"header", u"footer", u"article", u"main",  u"aside",      u"fieldset"};
/// What is in these is text, or keeps its lines.
constexpr std::array<std::u16string_view, 7> kept = {u"pre", u"textarea", u"script", u"style",
                                                     u"xmp", u"title",    u"listing"};

struct Tag {
  std::u16string name;  // in small letters; empty: a comment or the like
  bool closes = false;
};

template <std::size_t count>
bool is_among(const Tag& tag, const std::array<std::u16string_view, count>& names) {
  return std::ranges::find(names, std::u16string_view(tag.name)) != names.end();
}

class LineMaker {
 public:
  explicit LineMaker(std::u16string page) : page_(std::move(page)) {}

  std::u16string run() {
    while (at_ < page_.size()) {
      if (page_[at_] != u'<') {
        take(page_.find(u'<', at_));
        before_ = {};
        continue;
      }
      const std::size_t start = at_;
      const Tag tag = read_tag();
      if (parts(before_, tag)) result_ += u'\n';
      result_.append(page_, start, at_ - start);
      before_ = tag;
      if (!tag.closes && is_among(tag, kept)) take_kept(tag);
    }
    return std::move(result_);
  }

 private:
  void take(std::size_t end) {
    end = std::min(end, page_.size());
    result_.append(page_, at_, end - at_);
    at_ = end;
  }

  void take_kept(const Tag& tag) {
    const std::u16string end = u"</" + tag.name;
    std::size_t found = at_;
    while (found < page_.size() &&
           !equals_ignoring_ascii_case(std::u16string_view(page_).substr(found, end.size()), end))
      found = std::min(page_.find(u'<', found + 1), page_.size());
    take(found);
    before_ = {};
  }

  Tag read_tag() {
    if (page_.compare(at_, 4, u"<!--") == 0) {
      const std::size_t end = page_.find(u"-->", at_ + 4);
      at_ = end == page_.npos ? page_.size() : end + 3;
      return {};
    }
    Tag tag;
    ++at_;
    if (at_ < page_.size() && page_[at_] == u'/') {
      tag.closes = true;
      ++at_;
    }
    const std::size_t start = at_;
    at_ = std::min(page_.find_first_of(u"> \t\n\f\r", at_), page_.size());
    tag.name = ascii_lower(page_.substr(start, at_ - start));
    for (char16_t quote = 0; at_ < page_.size(); ++at_) {
      const char16_t c = page_[at_];
      if (quote == 0 && c == u'>') break;
      if (quote != 0 ? c == quote : c == u'"' || c == u'\'') quote = quote == 0 ? c : char16_t(0);
    }
    if (at_ < page_.size()) ++at_;
    return tag;
  }

  static bool parts(const Tag& before, const Tag& after) {
    if (before.name.empty() || after.name.empty()) return false;
    const bool ended = is_among(before, blocks) && (before.closes || before.name == u"hr");
    const bool opened = !before.closes && is_among(before, containers);
    if (!after.closes) return (ended || (opened && before.name != u"tr")) && is_among(after, blocks);
    return ended && is_among(after, containers) && after.name != u"tr";
  }

  const std::u16string page_;
  std::u16string result_;
  std::size_t at_ = 0;
  Tag before_;  // that ends where the next one begins
};

}  // namespace

std::u16string with_source_lines(std::u16string page) {
  if (contains(page, u"white-space")) return page;
  return LineMaker(std::move(page)).run();
}

}  // namespace tvx::files
