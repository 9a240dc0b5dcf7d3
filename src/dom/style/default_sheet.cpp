#include "tvx/dom/style/default_sheet.h"

namespace tvx::dom::style {

std::u16string_view default_sheet() {
  return uR"css(
area, base, basefont, datalist, head, link, meta, noembed, noframes, param, rp, script, style, template, title,
[hidden] { display: none }
embed[hidden] { display: inline }
input[type=hidden] { display: none !important }
audio:not([controls]), dialog:not([open]) { display: none }

address, article, aside, blockquote, body, center, dd, details, dialog, dir, div, dl, dt, fieldset, figcaption,
figure, footer, form, frame, frameset, h1, h2, h3, h4, h5, h6, header, hgroup, hr, html, legend, listing, main,
menu, nav, ol, optgroup, option, p, plaintext, pre, search, section, summary, ul, xmp { display: block }
button, input, marquee, meter, progress, select, textarea { display: inline-block }
li { display: list-item }
slot { display: contents }
ruby { display: ruby }
rt { display: ruby-text; font-size: 50%; text-align: start }

table { display: table }
caption { display: table-caption; text-align: center }
colgroup { display: table-column-group }
col { display: table-column }
thead { display: table-header-group; vertical-align: middle }
tbody { display: table-row-group; vertical-align: middle }
tfoot { display: table-footer-group; vertical-align: middle }
tr { display: table-row; vertical-align: inherit }
td, th { display: table-cell; vertical-align: inherit }
th { font-weight: bold; text-align: -internal-center }

b, strong { font-weight: bolder }
i, em, cite, dfn, var, address { font-style: italic }
u, ins { text-decoration: underline }
s, strike, del { text-decoration: line-through }
abbr[title], acronym[title] { text-decoration: underline dotted }
blink { text-decoration: blink }
:link { color: #0000ee; text-decoration: underline }
big { font-size: larger }
small { font-size: smaller }
sub { vertical-align: sub; font-size: smaller }
sup { vertical-align: super; font-size: smaller }
code, kbd, listing, plaintext, pre, samp, tt, xmp { font-family: monospace }
listing, plaintext, pre, xmp { white-space: pre }
textarea { white-space: pre-wrap; font-family: monospace }
nobr { white-space: nowrap }
mark { background-color: yellow; color: black }
hr { color: gray }
center { text-align: center }

h1, h2, h3, h4, h5, h6, optgroup { font-weight: bold }
h1 { font-size: 2em }
h2 { font-size: 1.5em }
h3 { font-size: 1.17em }
h5 { font-size: 0.83em }
h6 { font-size: 0.67em }

dir, menu, ul { list-style-type: disc }
ol { list-style-type: decimal }
:is(dir, menu, ol, ul) dir, :is(dir, menu, ol, ul) menu, :is(dir, menu, ol, ul) ul { list-style-type: circle }
:is(dir, menu, ol, ul) :is(dir, menu, ol, ul) dir, :is(dir, menu, ol, ul) :is(dir, menu, ol, ul) menu,
:is(dir, menu, ol, ul) :is(dir, menu, ol, ul) ul { list-style-type: square }

button, input, select, textarea {
  font-size: 13.3333px; font-weight: 400; font-style: normal; text-align: start; text-transform: none
}
button, input, select { font-family: Arial; white-space: normal }
button, input[type=button], input[type=reset], input[type=submit] { text-align: center }

[dir=ltr] { direction: ltr }
[dir=rtl] { direction: rtl }
)css";
}

std::u16string_view quirks_sheet() {
  return uR"css(
table { font-weight: initial; font-style: initial; font-size: initial; white-space: initial; text-align: initial }
)css";
}

}  // namespace tvx::dom::style
