#include "gestures/odd_pages.h"

#include <cctype>
#include <random>
#include <utility>

namespace tvx::gestures::test {
namespace {

/// "#" is the next word.
constexpr const char* written[] = {
    // Ends left out.
    "<p># #\n<p>#\n<p># #\n",
    "<html><body>\n<p>#<br>#\n<p>#\n<ul>\n<li># #\n<li>#\n<li>#\n</ul>\n<p>#\n</body></html>\n",
    "<ul><li>#<li>#<ul><li>#<li>#</ul><li>#</ul>#",
    "<dl>\n<dt>#\n<dd># #\n<dt>#\n<dd>#\n</dl>\n<p>#",
    "<table border=1>\n<tr><td>#<td># #\n<tr><td>#<td>#\n</table>\n<p>#\n",
    "<TABLE><TR><TH>#<TH>#<TR><TD>#<TD># #</TABLE>\n#\n<P>#",
    "<table><caption>#<tr><td>#</table><p>#",
    "<table><thead><tr><th>#<tbody><tr><td>#<tr><td>#<tfoot><tr><td>#</table>#",
    "<select><option>#<option>#</select><p># #<p>#",
    "<p>#<div>#</div>#<p>#",
    "<body><h1># #</h1># #<p>#<h2>#</h2>#",
    // Tags that cross.
    "<p>#</p>\n<b><p># #</b> #</p>\n<p>#</p>\n",
    "<p><b># <i>#</b> #</i> #</p><p>#</p>",
    "<p># <b>#<p>#</b> #<p>#",
    "<b>#<div># #</b> #</div>#<p>#</p>",
    "<i><ul><li># #</i><li>#</ul>#",
    "<a href=x>#<p># #</a> #</p>#",
    "<p><a href=x># <a href=y>#</a> #</a> #</p><p>#",
    "<p><u>#<p>#<p>#</u> #<p>#",
    "<em># <strong>#</em> #</strong> #<p>#",
    "<b><i><u>#<p># #</u></i></b>#</p>\n<p>#</p>",
    "<center><p># #</center>#</p><p>#",
    "<table><tr><td><b>#<td># #</b><td>#</table>#",
    "<ul><li><b>#<li># #</b><li>#</ul>",
    "<h1>#<h2># #</h1>#</h2>#",
    "<form><p>#<form><p># #</form>#</form>#",
    "<p>#</b> #</i> #</p>#</p></div><p>#",
    "<div>#</span></td></tr> #</div></table># #<p>#",
    // Fonts over blocks.
    "<font color=red><p># #</p>\n<p>#</p></font>\n<p>#</p>\n",
    "<FONT FACE=\"Arial\" SIZE=2>\r\n<P># "
    "#\r\n<P>#\r\n<UL>\r\n<LI>#\r\n<LI>#\r\n</UL>\r\n</FONT>\r\n<P>#\r\n",
    "<font size=+1><h3>#</h3></font><font size=-1># #<br>#<hr>#</font><p>#",
    "<font color=blue><table><tr><td>#</td><td># #</td></tr></table>#</font><p>#",
    "<p><font color=red>#<p># #</font><p>#",
    "<small><div>#</div><div># #</div></small>#",
    // Tables of old.
    "<TABLE BORDER=0 WIDTH=100%>\r\n<TR>\r\n<TD "
    "VALIGN=TOP>#</TD>\r\n<TD>#<BR>#</TD>\r\n</TR>\r\n</TABLE>\r\n",
    "<table># <tr><td>#</td># #</tr></table>#",
    "<table><tr># <td># #</td></tr><p>#</p></table>#",
    "<table><tr><td><table><tr><td>#<td># #</table>#<td>#</table>#",
    "<table><form><tr><td># #</td></tr></form></table><p>#",
    "<table><tr><td># #</tr><tr><td>#</td></tr></td></table>#",
    "<table><tr>\n<td>#\n<p># #\n<p>#\n<td>#\n</table>\n#",
    "<table><tbody><tr><td>#</tbody><tr><td># #</table># #",
    "<table>\n <tr>\n  <td>#</td>\n  <td># #</td>\n </tr>\n</table>\n#",
    // Comments between.
    "<!-- top --><p>#<!-- in -->#</p><!-- between --><p># #</p><!-- end -->",
    "<ul><!-- a --><li>#<!-- b --><li># #<!-- c --></ul>#<!-- d -->",
    "<table><!-- a --><tr><!-- b --><td># #<!-- c --></td><!-- d --></tr></table>#",
    "<p>#<![if !mso]>#<![endif]> #</p><p>#",
    "<p>#<? php ?># #<p>#",
    "<body><p>#</p></body><!-- behind --><p># #</p></html># #\n",
    // As it was typed.
    "<P ALIGN=CENTER># #</P>\r\n<P align='right' >#</p >\r\n<p\r\n class=x\r\n>#</P>\r\n",
    "<p title=a&amp;b>#&nbsp;#&copy; #&eacute;#</p><p># &lt;# &amp #&#160;#</p>",
    "<IMG SRC=a.png>#<BR/># #<br /><HR NOSHADE># #<hr/><P/>#",
    "<p>#\n\n  # #\n\t#\n</p>\n\n\n<p>   #   </p>\n\n",
    "<PRE>\n#\n  # #\n</PRE>\n<p>#<pre>#\n#</pre>#",
    "<BLOCKQUOTE># #<P>#<P>#</BLOCKQUOTE>#<P>#",
    "<div><div><div># #</div>#</div>#<div>#</div>",
    "<center># #<br>#<br><b>#</b></center><br>#<br><br>#",
    "<html>\n<head>\n<title>x</title>\n<style>\np { margin: 0 }\n</style>\n</head>\n<body bgcolor=white>\n# "
    "#<br>\n#<br>\n"
    "<p>#\n<script>if (a < b) c('</p>')</script>\n<p>#\n</body>\n</html>\n",
    "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML "
    "3.2//EN\">\r\n<HTML><HEAD><TITLE>x</TITLE></HEAD>\r\n<BODY>\r\n<H1># "
    "#</H1>\r\n<HR>\r\n<P>#\r\n<P>#\r\n</BODY></HTML>\r\n",
    "#",
    "# #<br>#<br># #",
    "<nobr># #</nobr><wbr># <tt>#</tt><p><kbd>#",
    "<dir><li>#<li># #</dir><menu><li>#</menu>#",
    "<li>#<li># #<p>#",
    "<dd># #<dd>#<p>#",
    "<address># #<p>#</address>#",
    "<fieldset><legend># #</legend>#<p>#</fieldset>#",
    "<details open><summary># #</summary>#<p>#</details>#",
    "<ruby>#<rt>#</ruby># #<p>#",
    "<svg><g><p># #</svg># #<p>#",
    "<p>#<table><tr><td># #</table>#<p>#",
    "<p><button># #</button> #<p>#",
    "<h1>#<p># #</h1><p>#",
    "<span><p># #</p></span><p>#",
    "<p>#<ul><li># #</p><li>#</ul></p>#",
    "<b>#</b><b># #<p>#<b># #</b>#",
};

std::string with_words(const char* page) {
  std::string bytes;
  int words = 0;
  for (const char* at = page; *at; ++at)
    *at == '#' ? void(bytes += "w" + std::to_string(++words)) : void(bytes += *at);
  return bytes;
}

/// A page of the same habits at random.
class Writer {
 public:
  explicit Writer(std::uint32_t seed) : random_(seed) {
    end_ = one_of({"\n", "\n", "\r\n", ""});
    upper_ = below(3) == 0;
    closes_ = below(4);
    crosses_ = below(3) == 0;
  }
  std::string page() {
    const bool is_whole = below(3) == 0;
    if (is_whole) text_ += tag("html") + tag("body") + end_;
    for (std::size_t i = 2 + below(4); i > 0; --i) block(3);
    if (is_whole && below(2)) text_ += end("body") + end("html") + end_;
    return text_;
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }
  std::string one_of(std::initializer_list<const char*> texts) { return texts.begin()[below(texts.size())]; }
  std::string cased(std::string name) const {
    if (upper_)
      for (char& c : name) c = char(std::toupper(static_cast<unsigned char>(c)));
    return name;
  }
  std::string tag(const std::string& name) {
    return "<" + cased(name) + one_of({"", "", "", " class=c", " ALIGN=left", " title='a b'"}) + ">";
  }
  std::string end(const std::string& name) { return "</" + cased(name) + ">"; }
  /// An end tag that may be left out.
  std::string perhaps(const std::string& name) { return below(4) < closes_ ? end(name) : std::string(); }
  std::string space() { return one_of({" ", " ", " ", "\n", "  "}); }
  std::string word() { return "w" + std::to_string(++words_); }

  void line() {
    for (std::size_t i = 1 + below(3); i > 0; --i) {
      const std::string look = one_of({"b", "i", "font", "a", "span", "u"});
      switch (below(8)) {
        case 0: text_ += tag(look) + word() + end(look); break;
        case 1: text_ += "<!-- n -->" + word(); break;
        case 2: text_ += word() + tag("br"); break;
        case 3:
          if (crosses_) {
            text_ += tag(look) + word();  // that nothing ends, or what comes next does
            pending_ = look;
            break;
          }
          [[fallthrough]];
        default: text_ += word();
      }
      text_ += space();
    }
    if (!pending_.empty() && below(2)) text_ += end(std::exchange(pending_, {})) + word();
  }

  void lines_of(const std::string& item) {
    for (std::size_t i = 1 + below(3); i > 0; --i) {
      text_ += tag(item);
      line();
      text_ += perhaps(item) + end_;
    }
  }

  void block(int depth) {
    switch (below(depth > 0 ? 10 : 4)) {
      case 0:
      case 1: return lines_of("p");
      case 2: line(); return void(text_ += end_);
      case 3: {
        const std::string name = one_of({"h1", "h3", "div", "address", "center"});
        text_ += tag(name);
        line();
        return void(text_ += end(name) + end_);
      }
      case 4: {
        const std::string name = one_of({"ul", "ol"});
        text_ += tag(name) + end_;
        lines_of("li");
        if (below(3) == 0) block(depth - 1);
        return void(text_ += end(name) + end_);
      }
      case 5: {
        text_ += tag("table") + end_;
        for (std::size_t i = 1 + below(2); i > 0; --i) {
          text_ += tag("tr") + (below(4) == 0 ? "<!-- r -->" : "");
          lines_of("td");
          text_ += perhaps("tr") + end_;
        }
        return void(text_ += end("table") + end_);
      }
      case 6: {
        const std::string name = one_of({"font", "b", "i", "center", "span"});
        text_ += tag(name);
        for (std::size_t i = 1 + below(2); i > 0; --i) block(depth - 1);
        return void(text_ += end(name) + end_);
      }
      case 7: {
        const std::string name = one_of({"div", "blockquote"});
        text_ += tag(name) + end_;
        for (std::size_t i = 1 + below(2); i > 0; --i) block(depth - 1);
        return void(text_ += perhaps(name) + end_);
      }
      case 8:
        return void(text_ +=
                    one_of({"<hr>", "</p>", "</b>", "</div>", "<!-- c -->", "<br>", "</td>"}) + end_);
      default: return block(depth - 1);
    }
  }

  std::mt19937 random_;
  std::string end_, text_, pending_;
  bool upper_ = false, crosses_ = false;
  std::size_t closes_ = 0, words_ = 0;
};

}  // namespace

std::vector<OddPage> odd_pages(std::size_t made) {
  std::vector<OddPage> pages;
  for (const char* page : written)
    pages.push_back({"written " + std::to_string(pages.size() + 1), with_words(page)});
  for (std::uint32_t seed = 1; seed <= made; ++seed)
    pages.push_back({"made " + std::to_string(seed), Writer(seed).page()});
  return pages;
}

}  // namespace tvx::gestures::test
