#include "tvx/editing/clipboard/plain_text.h"

#include <algorithm>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/builder.h"
#include "tvx/editing/facts/written_address.h"

namespace tvx::editing {

using dom::Builder;
using dom::Element;
using dom::Ref;
using dom::Tag;

namespace {

std::vector<std::u16string_view> lines_of_text(std::u16string_view text) {
  std::vector<std::u16string_view> lines;
  for (;;) {
    const std::size_t end = text.find_first_of(u"\r\n");
    lines.push_back(text.substr(0, end));
    if (end == text.npos) return lines;
    text.remove_prefix(end + (text.substr(end).starts_with(u"\r\n") ? 2 : 1));
  }
}

class TextNodes {
 public:
  TextNodes(dom::Document& document, Addresses addresses) : document_(document), addresses_(addresses) {}

  void add_line(dom::Node& holder, std::u16string_view line) {
    std::size_t shown = 0;
    for (std::size_t at = 0; addresses_ == Addresses::AsLinks && at < line.size();) {
      const bool starts = at == 0 || is_blank(line[at - 1]) || line[at - 1] == u'<' || line[at - 1] == u'(';
      if (is_blank(line[at]) || !starts) {
        ++at;
        continue;
      }
      std::size_t end = at;
      while (end < line.size() && !is_blank(line[end]) && line[end] != u'<' && line[end] != u'>') ++end;
      const std::u16string_view address = written_address(line.substr(at, end - at));
      if (!address.empty()) {
        add_text(holder, line.substr(shown, at - shown));
        add_link(holder, address);
        shown = at + address.size();
      }
      at = std::max(end, at + 1);
    }
    add_text(holder, line.substr(shown));
  }

 private:
  static bool is_blank(char16_t c) { return is_ascii_space(c) || c == u'\u00A0'; }

  void add_text(dom::Node& holder, std::u16string_view text) {
    if (!text.empty()) Builder::insert(holder, document_.create_text(std::u16string(text)));
  }
  void add_link(dom::Node& holder, std::u16string_view address) {
    const Ref<Element> link = document_.create_element(Tag::A);
    Builder::add_attribute(*link, {dom::names::href, target_of(address), {}});
    add_text(*link, address);
    Builder::insert(holder, link);
  }

  dom::Document& document_;
  Addresses addresses_;
};

}  // namespace

Ref<dom::DocumentFragment> nodes_of_text(dom::Document& document, std::u16string_view text,
                                         Addresses addresses) {
  TextNodes nodes(document, addresses);
  Ref<dom::DocumentFragment> result = document.create_fragment();
  const std::vector<std::u16string_view> lines = lines_of_text(text);
  bool parted = false;
  for (std::size_t i = 1; i + 1 < lines.size(); ++i) parted = parted || lines[i].empty();
  Ref<dom::Node> holder(result);
  bool at_start = true;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (parted && lines[i].empty()) {
      at_start = true;
      continue;
    }
    if (parted && at_start) {
      holder = document.create_element(Tag::P);
      Builder::insert(*result, holder);
    } else if (i > 0) {
      Builder::insert(*holder, document.create_element(Tag::Br));
    }
    at_start = false;
    nodes.add_line(*holder, lines[i]);
  }
  return result;
}

}  // namespace tvx::editing
