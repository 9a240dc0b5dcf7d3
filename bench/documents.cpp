#include "documents.h"

#include <cstdint>
#include <iterator>
#include <string_view>

#include "tvx/base/strings.h"

namespace tvx::bench {
namespace {

constexpr std::u16string_view words[] = {
    u"the",   u"editor", u"keeps", u"every", u"paragraph", u"in",      u"order",   u"and",    u"its",
    u"table", u"grows",  u"with",  u"rows",  u"of",        u"numbers", u"a",       u"letter", u"from",
    u"Köln",  u"shows",  u"how",   u"long",  u"texts",     u"wrap",    u"between", u"images", u"while",
    u"notes", u"remain", u"small", u"on",    u"their",     u"pages",   u"&amp;",   u"more"};

constexpr std::u16string_view inline_tags[] = {u"B", u"I", u"EM", u"STRONG", u"CODE", u"U"};

class Article {
 public:
  explicit Article(std::size_t units) : units_(units) { out_.reserve(units + 4096); }

  std::u16string write() {
    out_ +=
        u"<!DOCTYPE html>\n<HTML>\n<HEAD>\n<TITLE>An article</TITLE>\n<META charset=\"utf-8\">\n"
        u"<STYLE>P { margin: 0 0 1em } .note { color: #555 }</STYLE>\n</HEAD>\n<BODY>\n";
    while (out_.size() < units_) block();
    out_ += u"</BODY>\n</HTML>\n";
    return std::move(out_);
  }

 private:
  // A linear congruential generator of our own: the library's distributions differ between machines.
  std::uint32_t random(std::uint32_t below) {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<std::uint32_t>(state_ >> 33) % below;
  }

  void block() {
    const std::uint32_t kind = random(20);
    if (kind == 0)
      heading();
    else if (kind == 1)
      table();
    else if (kind == 2)
      list();
    else if (kind == 3)
      image();
    else
      paragraph();
  }

  void sentence(std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
      if (i > 0) out_ += u' ';
      out_ += words[random(std::size(words))];
    }
  }

  void formatted(std::uint32_t parts) {
    for (std::uint32_t i = 0; i < parts; ++i) {
      sentence(4 + random(12));
      out_ += u' ';
      const std::uint32_t kind = random(4);
      if (kind == 0) {
        out_ += u"<A href=\"https://www.example.org/pages/" + to_text(random(1000)) + u"\">";
        sentence(1 + random(3));
        out_ += u"</A> ";
      } else if (kind < 3) {
        const std::u16string tag(inline_tags[random(std::size(inline_tags))]);
        out_ += u'<' + tag + u'>';
        sentence(1 + random(4));
        out_ += u"</" + tag + u"> ";
      }
    }
    sentence(5);
    out_ += u'.';
  }

  void paragraph() {
    out_ += random(5) == 0 ? u"<P class=\"note\">" : u"<P>";
    formatted(2 + random(5));
    out_ += u"</P>\n";
  }

  void heading() {
    const std::u16string level = to_text(1 + random(4));
    out_ += u"<H" + level + u" id=\"s" + to_text(static_cast<std::int64_t>(out_.size())) + u"\">";
    sentence(3 + random(5));
    out_ += u"</H" + level + u">\n";
  }

  void list() {
    out_ += u"<UL>\n";
    for (std::uint32_t i = 3 + random(6); i > 0; --i) {
      out_ += u"<LI>";
      formatted(1);
      out_ += u"</LI>\n";
    }
    out_ += u"</UL>\n";
  }

  void table() {
    out_ += u"<TABLE border=\"1\" cellpadding=\"2\" width=\"100%\">\n<TBODY>\n";
    const std::uint32_t columns = 2 + random(4);
    for (std::uint32_t row = 3 + random(8); row > 0; --row) {
      out_ += u"<TR>\n";
      for (std::uint32_t column = 0; column < columns; ++column) {
        out_ += u"<TD valign=\"top\">";
        sentence(1 + random(6));
        out_ += u"</TD>\n";
      }
      out_ += u"</TR>\n";
    }
    out_ += u"</TBODY>\n</TABLE>\n";
  }

  void image() {
    out_ += u"<P align=\"center\"><IMG src=\"images/figure" + to_text(random(500)) + u".png\" alt=\"";
    sentence(4);
    out_ += u"\" width=\"" + to_text(100 + random(500)) + u"\" height=\"" + to_text(100 + random(300)) +
            u"\"></P>\n";
  }

  std::size_t units_;
  std::uint64_t state_ = 1;
  std::u16string out_;
};

}  // namespace

std::u16string article(std::size_t units) { return Article(units).write(); }

}  // namespace tvx::bench
