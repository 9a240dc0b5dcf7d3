#include "dom/generated_html.h"

#include <iterator>
#include <string_view>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::dom::test {

namespace {

constexpr std::u16string_view flow[] = {
    u"p",  u"div",        u"h1",     u"h3",      u"ul",   u"ol",      u"li",       u"dl",      u"dt",
    u"dd", u"blockquote", u"center", u"address", u"form", u"article", u"fieldset", u"details", u"summary"};
constexpr std::u16string_view phrasing[] = {
    u"b",     u"i",    u"a",  u"u",     u"em",  u"font", u"code",   u"span",   u"nobr", u"tt",
    u"label", u"ruby", u"rt", u"small", u"big", u"sub",  u"button", u"object", u"x-own"};
constexpr std::u16string_view table[] = {u"table", u"tr",    u"td",  u"th",       u"tbody",
                                         u"thead", u"tfoot", u"col", u"colgroup", u"caption"};
constexpr std::u16string_view single[] = {u"br", u"hr", u"img", u"input", u"wbr", u"meta", u"link", u"area"};
constexpr std::u16string_view raw[] = {u"style",    u"script", u"textarea", u"title", u"xmp",
                                       u"noscript", u"pre",    u"listing",  u"iframe"};
constexpr std::u16string_view special[] = {u"select", u"option", u"optgroup", u"template",      u"svg",
                                           u"math",   u"mi",     u"g",        u"foreignObject", u"desc",
                                           u"html",   u"head",   u"body",     u"frameset",      u"image"};
constexpr std::u16string_view words[] = {
    u"one ", u"two",        u" ",     u"\n",    u"&amp;", u"&lt;x", u"&nbsp;", u"&#x4e2d;", u"caf\u00e9",
    u"a&b",  u"\U0001F600", u"\t\n ", u"&copy", u"<",     u">",     u"\"",     u"]]>",      u"&notit;"};
constexpr std::u16string_view attributes[] = {u"id=a",
                                              u"class='b c'",
                                              u"href=\"x?y&amp;z\"",
                                              u"title=\"<\"",
                                              u"align=left",
                                              u"style='color:red'",
                                              u"data-x",
                                              u"type=hidden",
                                              u"selected",
                                              u"viewBox=1",
                                              u"xlink:href=#a",
                                              u"value='\"'",
                                              u"definitionURL=u",
                                              u"a&nbsp;b=1"};

class Writer {
 public:
  explicit Writer(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15u + 1) {}

  std::u16string write(std::size_t pieces) {
    if (random(4) == 0) out_ += u"<!DOCTYPE html>";
    for (std::size_t i = 0; i < pieces; ++i) piece();
    return std::move(out_);
  }

 private:
  // An own generator: those of the library's distributions differ between machines.
  std::uint32_t random(std::uint32_t below) {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return static_cast<std::uint32_t>(state_ >> 32) % below;
  }
  template <std::size_t Count>
  std::u16string_view any(const std::u16string_view (&from)[Count]) {
    return from[random(Count)];
  }

  void piece() {
    const std::uint32_t kind = random(100);
    if (kind < 30)
      out_ += any(words);
    else if (kind < 42)
      open(any(flow));
    else if (kind < 56)
      open(any(phrasing));
    else if (kind < 64)
      open(any(table));
    else if (kind < 70)
      start(any(single));
    else if (kind < 90)
      close();
    else if (kind < 93)
      stray_end();
    else if (kind < 95)
      out_.append(u"<!--").append(any(words)).append(u"-->");
    else if (kind < 98)
      raw_text();
    else
      open(random(200) == 0 ? std::u16string_view(u"plaintext") : any(special));
  }

  void start(std::u16string_view name) {
    out_.append(u"<").append(name);
    for (std::uint32_t i = random(8) < 2 ? 1 + random(3) : 0; i > 0; --i)
      out_.append(u" ").append(any(attributes));
    out_ += u'>';
  }
  void open(std::u16string_view name) {
    start(name);
    open_.push_back(name);
  }
  void end(std::u16string_view name) { out_.append(u"</").append(name).append(u">"); }
  // Mostly the innermost, now and then one further out: misnested.
  void close() {
    if (open_.empty()) return;
    const std::size_t depth = random(6) == 0 ? random(static_cast<std::uint32_t>(open_.size())) : 0;
    const std::size_t at = open_.size() - 1 - depth;
    end(open_[at]);
    open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(at));
  }
  void stray_end() {
    switch (random(3)) {
      case 0: return end(any(flow));
      case 1: return end(any(phrasing));
      default: return end(any(table));
    }
  }
  void raw_text() {
    const std::u16string_view name = any(raw);
    start(name);
    if (random(3) == 0) out_ += u'\n';
    for (std::uint32_t i = random(4); i > 0; --i) out_ += any(words);
    if (random(8) == 0) out_ += u"<!-- <b>";
    end(name);
  }

  std::uint64_t state_;
  std::u16string out_;
  std::vector<std::u16string_view> open_;
};

}  // namespace

std::u16string generated_html(std::uint64_t seed, std::size_t pieces) { return Writer(seed).write(pieces); }

}  // namespace tvx::dom::test
