#include "tvx/source/code_completion.h"

#include <algorithm>
#include <span>

namespace tvx::source {
namespace {

constexpr std::u16string_view elements[] = {
    u"a",        u"abbr",     u"address",    u"area",       u"article",  u"aside",  u"audio",    u"b",
    u"base",     u"bdi",      u"bdo",        u"blockquote", u"br",       u"button", u"canvas",   u"caption",
    u"center",   u"cite",     u"code",       u"col",        u"colgroup", u"data",   u"datalist", u"dd",
    u"del",      u"details",  u"dfn",        u"dialog",     u"div",      u"dl",     u"dt",       u"em",
    u"embed",    u"fieldset", u"figcaption", u"figure",     u"font",     u"footer", u"form",     u"h1",
    u"h2",       u"h3",       u"h4",         u"h5",         u"h6",       u"header", u"hr",       u"i",
    u"iframe",   u"img",      u"input",      u"ins",        u"kbd",      u"label",  u"legend",   u"li",
    u"link",     u"main",     u"map",        u"mark",       u"menu",     u"meta",   u"meter",    u"nav",
    u"noscript", u"object",   u"ol",         u"optgroup",   u"option",   u"output", u"p",        u"param",
    u"picture",  u"pre",      u"progress",   u"q",          u"rp",       u"rt",     u"ruby",     u"s",
    u"samp",     u"script",   u"section",    u"select",     u"small",    u"source", u"span",     u"strong",
    u"style",    u"sub",      u"summary",    u"sup",        u"svg",      u"table",  u"tbody",    u"td",
    u"template", u"textarea", u"tfoot",      u"th",         u"thead",    u"time",   u"title",    u"tr",
    u"track",    u"u",        u"ul",         u"var",        u"video",    u"wbr"};

constexpr std::u16string_view everywhere[] = {
    u"accesskey", u"class", u"contenteditable", u"dir",   u"draggable", u"hidden", u"id",
    u"lang",      u"role",  u"spellcheck",      u"style", u"tabindex",  u"title",  u"translate"};

struct Own {
  std::u16string_view element, attributes;
};
constexpr Own own[] = {
    {u"a", u"download href hreflang name rel target type"},
    {u"area", u"alt coords href shape target"},
    {u"audio", u"autoplay controls loop muted preload src"},
    {u"base", u"href target"},
    {u"blockquote", u"cite"},
    {u"body", u"background bgcolor link text vlink"},
    {u"button", u"autofocus disabled form name type value"},
    {u"canvas", u"height width"},
    {u"caption", u"align"},
    {u"col", u"span width"},
    {u"colgroup", u"span width"},
    {u"div", u"align"},
    {u"embed", u"height src type width"},
    {u"font", u"color face size"},
    {u"form", u"action autocomplete enctype method name novalidate target"},
    {u"hr", u"align color noshade size width"},
    {u"iframe", u"allow allowfullscreen height loading name sandbox src srcdoc width"},
    {u"img", u"align alt border height hspace loading sizes src srcset usemap vspace width"},
    {u"input",
     u"accept alt autocomplete autofocus checked disabled list max maxlength min multiple name pattern "
     u"placeholder readonly required size src step type value"},
    {u"label", u"for"},
    {u"li", u"type value"},
    {u"link", u"href hreflang media rel sizes type"},
    {u"meta", u"charset content http-equiv name"},
    {u"meter", u"high low max min optimum value"},
    {u"object", u"data height name type width"},
    {u"ol", u"reversed start type"},
    {u"optgroup", u"disabled label"},
    {u"option", u"disabled label selected value"},
    {u"p", u"align"},
    {u"param", u"name value"},
    {u"progress", u"max value"},
    {u"q", u"cite"},
    {u"script", u"async crossorigin defer integrity src type"},
    {u"select", u"disabled multiple name required size"},
    {u"source", u"media sizes src srcset type"},
    {u"style", u"media type"},
    {u"table", u"align bgcolor border cellpadding cellspacing width"},
    {u"td", u"align bgcolor colspan headers height nowrap rowspan valign width"},
    {u"textarea", u"cols disabled maxlength name placeholder readonly required rows wrap"},
    {u"th", u"abbr align bgcolor colspan headers height nowrap rowspan scope valign width"},
    {u"time", u"datetime"},
    {u"tr", u"align bgcolor valign"},
    {u"track", u"default kind label src srclang"},
    {u"ul", u"type"},
    {u"video", u"autoplay controls height loop muted playsinline poster preload src width"}};

// Attributes that are there or not.
constexpr std::u16string_view without_value =
    u"allowfullscreen async autofocus autoplay checked controls default defer disabled download hidden loop "
    u"multiple muted nomodule noshade novalidate nowrap open playsinline readonly required reversed selected";

constexpr std::u16string_view common =
    u"a alt article body br button class div em figure footer form h1 h2 h3 header href id img input label "
    u"li "
    u"link "
    u"main meta name nav ol option p rel script section select span src strong style table td th tr ul width";

// Those that somebody writes by hand, because they can't be typed or mean something in markup.
constexpr std::u16string_view characters =
    u"amp; lt; gt; nbsp; quot; apos; copy; reg; trade; euro; pound; yen; cent; sect; para; deg; micro; "
    u"middot; "
    u"ndash; mdash; hellip; bull; laquo; raquo; lsaquo; rsaquo; lsquo; rsquo; sbquo; ldquo; rdquo; bdquo; "
    u"shy; "
    u"thinsp; ensp; emsp; zwj; zwnj; lrm; rlm; times; divide; plusmn; minus; ne; le; ge; asymp; infin; "
    u"radic; sum; "
    u"prod; frac12; frac14; frac34; sup1; sup2; sup3; ordf; ordm; permil; prime; Prime; dagger; Dagger; "
    u"larr; "
    u"uarr; rarr; darr; harr; rArr; hArr; check; hearts; star; iexcl; iquest; brvbar; not; macr; acute; "
    u"cedil; "
    u"uml; agrave; aacute; acirc; atilde; auml; aring; aelig; ccedil; egrave; eacute; ecirc; euml; igrave; "
    u"iacute; "
    u"icirc; iuml; ntilde; ograve; oacute; ocirc; otilde; ouml; oslash; oelig; ugrave; uacute; ucirc; uuml; "
    u"yacute; yuml; eth; thorn; szlig; scaron; Agrave; Aacute; Acirc; Atilde; Auml; Aring; AElig; Ccedil; "
    u"Egrave; Eacute; Ecirc; Euml; Igrave; Iacute; Icirc; Iuml; Ntilde; Ograve; Oacute; Ocirc; Otilde; Ouml; "
    u"Oslash; OElig; Ugrave; Uacute; Ucirc; Uuml; Yacute; ETH; THORN; Scaron; alpha; beta; gamma; delta; "
    u"epsilon; lambda; mu; pi; sigma; tau; phi; omega; Gamma; Delta; Lambda; Pi; Sigma; Phi; Omega;";

bool is_among(std::u16string_view names, std::u16string_view name) {
  return std::ranges::any_of(split_on_space(names), [&](std::u16string_view each) { return each == name; });
}

void bring_likely_first(Completion& completion, std::u16string_view written) {
  std::ranges::stable_partition(completion.names,
                                [](std::u16string_view name) { return is_among(common, name); });
  std::ranges::stable_partition(
      completion.names, [&](std::u16string_view name) { return equals_ignoring_ascii_case(name, written); });
}

bool is_name_unit(char16_t c) { return is_ascii_alpha(c) || is_ascii_digit(c) || c == u'-'; }

/// Where the tag begins that a position stands in; npos elsewhere. Values may hold anything, but no tag is so
/// long that it had to be looked for further away.
Offset tag_around(std::u16string_view source, Offset place) {
  constexpr Offset longest = 4000;
  const Offset least = place > longest ? place - longest : 0;
  for (Offset at = place; at-- > least;) {
    if (source[at] == u'>') return source.npos;
    if (source[at] == u'<') return at;
  }
  return source.npos;
}

bool in_value(std::u16string_view tag) {
  char16_t quote = 0;
  for (const char16_t c : tag) {
    if (quote) {
      if (c == quote) quote = 0;
    } else if (c == u'"' || c == u'\'') {
      quote = c;
    }
  }
  return quote != 0;
}

std::vector<std::u16string_view> attributes_of(std::u16string_view element) {
  std::vector<std::u16string_view> names(std::begin(everywhere), std::end(everywhere));
  for (const Own& each : own)
    if (equals_ignoring_ascii_case(each.element, element))
      for (const std::u16string_view name : split_on_space(each.attributes)) names.push_back(name);
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

/// The characters that have names, after an ampersand and at least two letters: one is a name like AT&T's.
/// Names that begin with the very letters, small or capital, come first.
Completion characters_at(std::u16string_view source, Offset place) {
  Completion completion{.from = place};
  while (completion.from > 0 &&
         (is_ascii_alpha(source[completion.from - 1]) || is_ascii_digit(source[completion.from - 1])))
    --completion.from;
  if (place - completion.from < 2 || completion.from == 0 || source[completion.from - 1] != u'&') return {};
  const std::u16string_view written = source.substr(completion.from, place - completion.from);
  completion.names = split_on_space(characters);
  std::ranges::stable_partition(completion.names,
                                [&](std::u16string_view name) { return name.starts_with(written); });
  return completion;
}

}  // namespace

bool wants_value(std::u16string_view attribute) { return !is_among(without_value, attribute); }

Completion completion_at(std::u16string_view source, Offset place) {
  if (Completion named = characters_at(source, place); !named.names.empty()) return named;
  const Offset begin = tag_around(source, place);
  if (begin == source.npos) return {};
  Completion completion{.from = place};
  while (completion.from > begin + 1 && is_name_unit(source[completion.from - 1])) --completion.from;
  const std::u16string_view tag = source.substr(begin, completion.from - begin);
  const std::u16string_view written = source.substr(completion.from, place - completion.from);
  if (tag == u"<" || tag == u"</") {
    completion.names.assign(std::begin(elements), std::end(elements));
    bring_likely_first(completion, written);
    return completion;
  }
  if (!is_ascii_alpha(tag[1]) || !is_ascii_space(tag.back()) || in_value(tag)) return {};
  if (trimmed(tag).back() == u'=') return {};
  Offset end = 1;
  while (end < tag.size() && is_name_unit(tag[end])) ++end;
  completion.names = attributes_of(tag.substr(1, end - 1));
  completion.of_attributes = true;
  bring_likely_first(completion, written);
  return completion;
}

}  // namespace tvx::source
