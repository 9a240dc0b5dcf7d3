#include "tvx/files/page_text.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/dom/document.h"
#include "tvx/dom/parse.h"
#include "tvx/source/markup_scanner.h"
#include "tvx/source/tag_structure.h"

namespace tvx::files {
namespace {

std::size_t find_ignoring_case(std::u16string_view text, std::u16string_view part, std::size_t from) {
  const auto found =
      std::search(text.begin() + std::ptrdiff_t(std::min(from, text.size())), text.end(), part.begin(),
                  part.end(), [](char16_t a, char16_t b) { return ascii_lower(a) == b; });
  return found == text.end() ? text.npos : std::size_t(found - text.begin());
}

std::size_t rfind_ignoring_case(std::u16string_view text, std::u16string_view part) {
  const auto found = std::find_end(text.begin(), text.end(), part.begin(), part.end(),
                                   [](char16_t a, char16_t b) { return ascii_lower(a) == b; });
  return found == text.end() ? text.npos : std::size_t(found - text.begin());
}

bool is_space(std::u16string_view text) { return std::ranges::all_of(text, is_ascii_space); }

std::size_t skip_space(std::u16string_view text, std::size_t at) {
  while (at < text.size() && is_ascii_space(text[at])) ++at;
  return at;
}

/// Where white space, comments and the document type end that open a page.
std::size_t end_of_lead(std::u16string_view text) {
  std::size_t at = skip_space(text, 0);
  while (at < text.size()) {
    const std::u16string_view rest = text.substr(at);
    const bool is_comment = rest.starts_with(u"<!--");
    if (!is_comment && !rest.starts_with(u"<!") && !rest.starts_with(u"<?")) break;
    const std::u16string_view close = is_comment ? u"-->" : u">";
    const std::size_t end = text.find(close, at + (is_comment ? 4 : 2));
    if (end == text.npos) break;
    at = skip_space(text, end + close.size());
  }
  return at;
}

/// The document's children on one side of its element, serialised; the type with its identifiers.
std::u16string outer_nodes(const dom::Document& tree, bool before) {
  std::u16string result;
  bool is_before = true;
  for (const dom::Node* node = tree.first_child(); node; node = node->next_sibling()) {
    if (node == tree.document_element())
      is_before = false;
    else if (is_before == before)
      result += dom::serialise_node(*node, dom::Letters::Upper);
  }
  return result;
}

void read_lead(PageShape& shape, std::u16string_view text, const dom::Document& tree) {
  shape.lead_nodes = outer_nodes(tree, true);
  shape.lead = text.substr(0, end_of_lead(text));
  // Comments have more ways to end than one looks for here; what reads otherwise is written from the tree.
  const auto alone = dom::parse_document(shape.lead);
  const std::u16string expected = shape.lead_nodes + u"<HTML><HEAD></HEAD><BODY></BODY></HTML>";
  if (dom::serialise_node(*alone, dom::Letters::Upper) != expected) shape.lead = shape.lead_nodes;
}

void read_before_head(PageShape& shape, std::u16string_view text) {
  const std::size_t html = shape.lead.size();
  if (find_ignoring_case(text, u"<html", html) != html) return;
  const std::size_t head = find_ignoring_case(text, u"<head", html);
  if (head == text.npos) return;
  const std::size_t close = text.rfind(u'>', head);
  if (close == text.npos || close < html) return;
  const std::u16string_view between = text.substr(close + 1, head - close - 1);
  if (is_space(between)) shape.before_head = between;
}

/// "</body> </html> ": their white space belongs to the body's end in the tree.
void read_tail(PageShape& shape, std::u16string_view text) {
  constexpr std::u16string_view body_end = u"</body>", html_end = u"</html>";
  const std::size_t body = rfind_ignoring_case(text, body_end);
  if (body == text.npos) return;
  const std::size_t after_body = body + body_end.size();
  const std::size_t html = find_ignoring_case(text, html_end, after_body);
  if (html == text.npos) return;
  const std::u16string_view between = text.substr(after_body, html - after_body),
                            after = text.substr(html + html_end.size());
  if (!is_space(between) || !is_space(after)) return;
  shape.after_body = between;
  shape.after_html = after;
}

/// As most tags of the file are written.
dom::Letters letters_of(std::u16string_view text) {
  std::ptrdiff_t upper = 0;
  for (std::size_t i = text.find(u'<'); i != text.npos && i + 1 < text.size(); i = text.find(u'<', i + 1))
    upper += is_ascii_upper(text[i + 1]) ? 1 : is_ascii_lower(text[i + 1]) ? -1 : 0;
  return upper > 0 ? dom::Letters::Upper : dom::Letters::Small;
}

/// Whether the page says that it is XHTML: by a declaration, a document type or a namespace.
bool says_xml(std::u16string_view text) {
  const std::u16string_view lead = text.substr(0, end_of_lead(text));
  if (lead.find(u"<?xml") != lead.npos || find_ignoring_case(lead, u"//dtd xhtml", 0) != lead.npos)
    return true;
  source::MarkupScanner scanner(text.substr(lead.size()));
  const auto first = scanner.next();
  return first && first->kind == source::Piece::Kind::StartTag &&
         text.substr(lead.size() + first->begin, first->end - first->begin)
                 .find(u"http://www.w3.org/1999/xhtml") != text.npos;
}

/// XML knows a blank that doesn't break by its number only.
void append_as_xml(std::u16string& out, std::u16string_view markup) {
  constexpr std::u16string_view name = u"&nbsp;";
  for (std::size_t at = 0; at < markup.size();) {
    const std::size_t found = std::min(markup.find(name, at), markup.size());
    out += markup.substr(at, found - at);
    if (found < markup.size()) out += u"&#160;";
    at = found + name.size();
  }
}

/// Elements without content get the slash that ends them there.
std::u16string as_xml(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size() + text.size() / 64);
  bool is_code = false;  // of a script or a style sheet
  source::MarkupScanner scanner(text);
  while (const auto piece = scanner.next()) {
    const std::u16string_view markup = text.substr(piece->begin, piece->end - piece->begin);
    const bool is_start = piece->kind == source::Piece::Kind::StartTag;
    if (is_start && source::is_void_element(piece->name) && markup.ends_with(u'>')) {
      append_as_xml(out, markup.substr(0, markup.size() - 1));
      out += u" />";
    } else if (is_start || (piece->kind == source::Piece::Kind::Text && !is_code)) {
      append_as_xml(out, markup);
    } else {
      out += markup;
    }
    is_code = is_start && (equals_ignoring_ascii_case(piece->name, u"script") ||
                           equals_ignoring_ascii_case(piece->name, u"style"));
  }
  return out;
}

/// Comments that were read from "<?…>" in that form again, where it reads the same: a server runs them.
std::u16string with_instructions(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  source::MarkupScanner scanner(text);
  while (const auto piece = scanner.next()) {
    const std::u16string_view markup = text.substr(piece->begin, piece->end - piece->begin);
    constexpr std::u16string_view start = u"<!--?", end = u"-->";
    const bool is_one = piece->kind == source::Piece::Kind::Comment && markup.starts_with(start) &&
                        markup.ends_with(end) && markup.find(u'>') == markup.size() - 1;
    if (!is_one) {
      out += markup;
      continue;
    }
    out += u'<';
    out += markup.substr(start.size() - 1, markup.size() - start.size() + 1 - end.size());
    out += u'>';
  }
  return out;
}

void put_before_head(std::u16string& text, std::u16string_view space) {
  if (space.empty()) return;
  const std::size_t head = find_ignoring_case(text, u"><head", 0);
  // The first tag is that of the html element; only after its own end is there room.
  if (head != text.npos && head == text.find(u'>')) text.insert(head + 1, space);
}

void put_tail(std::u16string& text, const PageShape& shape) {
  const std::u16string space = shape.after_body + shape.after_html;
  const std::size_t length = std::u16string_view(u"</body></html>").size();
  if (space.empty() || text.size() < length + space.size()) return;
  const std::size_t tags = text.size() - length;
  const std::u16string body_end = text.substr(tags, 7), html_end = text.substr(tags + 7);
  if (!equals_ignoring_ascii_case(body_end, u"</body>") || !equals_ignoring_ascii_case(html_end, u"</html>"))
    return;
  if (text.substr(tags - space.size(), space.size()) != space) return;
  text.resize(tags - space.size());
  text += body_end + shape.after_body + html_end + shape.after_html;
}

}  // namespace

PageShape shape_of(std::u16string_view text, const dom::Document& tree) {
  PageShape shape;
  shape.letters = letters_of(text);
  shape.is_xml = says_xml(text);
  shape.has_instructions = text.find(u"<?", end_of_lead(text)) != text.npos;
  read_lead(shape, text, tree);
  if (text.substr(0, shape.lead.size()) == shape.lead) read_before_head(shape, text);
  read_tail(shape, text);
  return shape;
}

std::u16string page_text(const dom::Document& tree, const PageShape& shape) {
  const dom::Element* root = tree.document_element();
  std::u16string text = root ? dom::serialise_node(*root, shape.letters) : u"";
  if (shape.has_instructions) text = with_instructions(text);
  if (shape.is_xml) text = as_xml(text);
  put_before_head(text, shape.before_head);
  const std::u16string behind = outer_nodes(tree, false);
  if (behind.empty()) put_tail(text, shape);
  const std::u16string before = outer_nodes(tree, true);
  return (before == shape.lead_nodes ? shape.lead : before) + text + behind;
}

}  // namespace tvx::files
