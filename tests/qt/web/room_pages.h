#pragma once

#include <string>
#include <vector>

namespace tvx::qt {

/// A page that rooms could change, were they wrong: its items follow one another again and again until there
/// are enough.
/// "#" is an item's number.
struct RoomPage {
  const char* name;
  bool divided;  // it may have rooms
  bool quirks;
  std::u16string style;
  std::vector<std::u16string> items;
  std::u16string body = {};  // its attributes
  int count = 260;
  std::u16string before = {}, after = {};  // all items

  std::u16string head() const {
    return (quirks ? u"" : u"<!DOCTYPE html>") + (u"<html><head><style>" + style) + u"</style></head><body " +
           body + u"></body>";
  }
  std::u16string content() const {
    std::u16string all = before;
    for (int i = 0; i < count; ++i)
      for (const char16_t c : items[static_cast<std::size_t>(i) % items.size()] + u"\n") {
        if (c != u'#')
          all += c;
        else
          for (const char digit : std::to_string(i)) all += static_cast<char16_t>(digit);
      }
    return all + after;
  }
};

inline const std::u16string long_line =
    u"<p>A paragraph, number #, of some words that go on for a while until a line is full of them, and "
    u"then the next.</p>";
static

    inline const std::vector<RoomPage>
        room_pages = {
            {"margins",
             true,
             false,
             u"p{margin:9px 0;background:#eee} p:nth-child(7n){margin:25px 0 33px} h2{margin:21px 0} "
             u".n{margin:-8px 0} .e{margin:12px 0}",
             {u"<p>#</p>", u"<h2>#</h2>", u"<p class=n>#</p>", u"<div class=e></div>", u"<p>#</p>"}},
            {"margins in quirks mode",
             true,
             true,
             u"div{background:#eef}",
             {u"<div><p>#</div>", u"<ul><li>x</ul>", u"<p>#</p>", u"<h1>#</h1>", u"<p></p>", u"<div>#</div>",
              u"<p>#</p>"}},
            {"floats",
             true,
             false,
             u".f{float:left;width:90px;height:130px;background:#fcc;margin:5px} "
             u".r{float:right;width:60px;height:400px;background:#cfc}"
             u"p{border:1px solid #ddd} .c{clear:both}",
             {long_line, long_line, u"<div class=f>#</div>", long_line, u"<div class=r>#</div>", long_line,
              long_line, long_line, u"<p class=c>#</p>"}},
            {"what is out of flow at edges",
             true,
             false,
             u"body{padding:7px;border:1px solid} .f{float:left;width:90px;height:50px;background:#fcc} "
             u"p{margin:25px 0;background:#eef}"
             u".a{position:absolute;left:300px;background:#fea} .e{margin:12px 0} .c{clear:both}",
             {u"<div class=f>#</div>", u"<div class=a>#</div>", u"<div class=e></div>",
              u"<div><div class=f>#</div></div>", u"<p>#</p>", u"<p class=c>#</p>", u"<div class=e></div>"}},
            {"structure",
             true,
             false,
             u"p:first-child{color:red} p:last-child{color:blue} p:nth-child(3n){background:#eee} "
             u"h2+p{font-weight:bold}",
             {u"<h2>#</h2>", u"<p>#</p>", u"<p>#</p>", u"<p>#</p>", u"<!-- # -->"}},
            {"counters",
             true,
             false,
             u"body{counter-reset:a} h2{counter-increment:a;counter-reset:b} h2::before{content:counter(a) "
             u"'. '}"
             u"p{counter-increment:b c} p::before{content:counter(a) '.' counter(b) ' '} p::after{content:' "
             u"[' "
             u"counter(c) ']'}",
             {u"<h2>h</h2>", u"<p>p</p>", u"<p>p</p>", u"<p>p</p>", u"<p>p</p>", u"<p>p</p>", u"<p>p</p>",
              u"<p>p</p>", u"<p>p</p>"}},
            {"loose text",
             true,
             false,
             u"",
             {u"loose # <b>bold</b>", u"<i>it</i><br>", u"<p>#</p>", u"<span>span</span>", u"<!-- c -->text",
              u"<div>div</div>"}},
            {"white space that counts",
             true,
             false,
             u"body{white-space:pre-wrap}",
             {u"<p>#</p>", u"<div> # </div> "}},
            {"right to left",
             true,
             false,
             u"body{direction:rtl} .f{float:left;width:50px;height:90px;background:#ccf}",
             {u"<p>\u05E9\u05DC\u05D5\u05DD hello #</p>", u"<div class=f>#</div>",
              u"<ul><li>\u05E9\u05DC</ul>", u"<p>\u0645\u0631\u062D\u0628\u0627 #</p>"}},
            {"direction by the text",
             true,
             false,
             u"body{unicode-bidi:plaintext}",
             {u"<p>abc #</p>", u"\u05E9\u05DC\u05D5\u05DD, loose", u"<div>d</div>"}},
            {"centred by an attribute",
             true,
             true,
             u"",
             {u"<table border=1 width=50%><tr><td>#</table>", u"<hr width=30%>",
              u"<div style='width:200px;background:#eee'>w</div>", u"<p>p</p>"},
             u"align=center"},
            {"positioned",
             true,
             false,
             u".a{position:absolute;left:300px;background:#fea;width:100px} "
             u".r{position:relative;left:30px;z-index:2;background:#aef}"
             u".b{position:absolute;bottom:5px;right:5px;background:#f0f} "
             u".z{position:relative;z-index:-1;background:#fdd}"
             u"body{position:relative;border:3px "
             u"solid;padding:13px;background:#ffe;max-width:600px;margin:20px "
             u"auto}",
             {u"<div class=a>#</div>", u"<p>#</p>", u"<p>#</p>", u"<div class=r>#</div>", u"<p>#</p>",
              u"<div class=z>#</div>", u"<p>#</p>"}},
            {"box-sizing that is inherited",
             true,
             false,
             u"html{box-sizing:border-box} *{box-sizing:inherit} p{width:300px;padding:10px;border:2px "
             u"solid}",
             {u"<p>#</p>"}},
            {"margins that are inherited",
             false,
             false,
             u"body{margin:15px} p{margin:inherit}",
             {u"<p>#</p>"}},
            {"a padding that one child inherits",
             false,
             false,
             u"body{padding:4px}",
             {long_line, long_line, u"<p style='padding:inherit;background:#eee'>#</p>"}},
            {"lines through text",
             true,
             false,
             u"body{text-decoration:underline;color:rgba(0,0,255,.4);zoom:1.3}",
             {u"<p>#</p>", u"<h3>#</h3>"}},
            {"a height in percent",
             false,
             false,
             u"html,body{height:100%;margin:0} .h{height:10%;background:#cec}",
             {long_line, u"<div class=h>#</div>"}},
            {"a height in percent in quirks mode",
             true,
             true,
             u".h{height:10%;background:#cec}",
             {u"<p>#</p>", u"<div class=h>#</div>", u"<table height=20% border=1><tr><td>t</table>"}},
            {"columns", false, false, u"body{column-count:2}", {u"<p>#</p>"}},
            {"boxes in a row",
             false,
             false,
             u"body{display:flex;flex-wrap:wrap} p{width:100px}",
             {u"<p>#</p>"}},
            {"list items", false, false, u"", {u"<li>item #", u"<p>#</p>"}},
            {"what sticks", false, false, u"h2{position:sticky;top:0}", {u"<h2>#</h2>", u"<p>#</p>"}},
            {"text before all",
             false,
             false,
             u"body::before{content:'before '} body::after{content:' after'}",
             {u"loose", u"<p>#</p>"}},
            {"boxes before and after all",
             true,
             false,
             u"body::before{content:'';display:table} body::after{content:'';display:table;clear:both}",
             {u"<p>#</p>", u"loose"}},
            {"first letters",
             true,
             false,
             u"body::first-letter{font-size:300%} p::first-letter{color:red}",
             {u"<p>para #</p>"}},
            {"first lines",
             true,
             false,
             u"body::first-line{color:red;font-weight:bold} p::first-line{color:blue}",
             {long_line}},
            {"one above the other",
             true,
             false,
             u"p:nth-child(5n){margin-top:-25px;background:rgba(0,255,0,.3)} p{opacity:.8;outline:2px solid "
             u"red}",
             {u"<p>#</p>"}},
            {"blended",
             true,
             false,
             u"body{background:#aef} p:nth-child(3n){mix-blend-mode:multiply;background:#fa0}",
             {u"<p>#</p>"}},
            {"tables at the side",
             true,
             true,
             u"",
             {u"<p>text</p>", u"<table border=1 align=left><tr><td>#<td>x</table>",
              u"<table border=1 align=right><tr><td>#</table>", u"<br clear=all>"}},
            {"what isn't shown, and what is no box",
             true,
             false,
             u".n{display:none} .c{display:contents}",
             {u"<p>#</p>", u"<div class=n>n</div>", u"text a <span class=n>z</span> text b",
              u"<div class=c>contents</div>", u"<p>#</p>"}},
            {"a floating box around all",
             true,
             false,
             u".w{margin:10px;padding:5px;border:1px solid;float:left} .w>div{background:#eee;margin:7px}",
             {u"<p>#</p>", u"<div>d</div>", u"loose"},
             {},
             260,
             u"before <div class=w>",
             u"</div> after"},
            {"a large box among others",
             true,
             false,
             u"section{border-left:3px solid #ccc;margin:11px} .f{float:left;height:70px;background:#fcc}",
             {u"<p>#</p>", u"<div class=f>f</div>", u"<h4>#</h4>"},
             {},
             260,
             u"<p>before<div><section>",
             u"</section></div><p>after"},
            {"lines that fill their width",
             true,
             false,
             u"body{text-align:justify;text-indent:2em;line-height:1.7}",
             {long_line,
              u"loose text that is rather long, with words and more words and words that make up more than "
              u"one "
              u"line of the window, or so."}},
};

}  // namespace tvx::qt
