#include "tvx/source/tag_structure.h"

#include <algorithm>
#include <span>

#include "tvx/base/work_count.h"
#include "tvx/source/markup_scanner.h"

namespace tvx::source {
namespace {

using Names = std::span<const std::u16string_view>;

bool is_one_of(std::u16string_view name, Names names) {
  return std::ranges::any_of(
      names, [&](std::u16string_view each) { return equals_ignoring_ascii_case(name, each); });
}

constexpr std::u16string_view void_names[] = {
    u"area", u"base",  u"basefont", u"bgsound", u"br",   u"col",   u"embed",  u"frame", u"hr",
    u"img",  u"input", u"keygen",   u"link",    u"meta", u"param", u"source", u"track", u"wbr"};
/// Their end tags may be left out.
constexpr std::u16string_view optional_names[] = {
    u"p",      u"li",       u"dt", u"dd", u"tr",       u"td",   u"th",   u"thead", u"tbody",  u"tfoot",
    u"option", u"optgroup", u"rt", u"rp", u"colgroup", u"body", u"html", u"head",  u"caption"};
/// Formats, which a parser opens again where they were closed out of turn.
constexpr std::u16string_view format_names[] = {u"a",    u"b", u"big",   u"code",   u"em",     u"font", u"i",
                                                u"nobr", u"s", u"small", u"strike", u"strong", u"tt",   u"u"};
/// A paragraph ends where one of these begins.
constexpr std::u16string_view ends_paragraph[] = {
    u"address", u"article",  u"aside",      u"blockquote", u"center", u"details", u"dir",   u"div",
    u"dl",      u"fieldset", u"figcaption", u"figure",     u"footer", u"form",    u"h1",    u"h2",
    u"h3",      u"h4",       u"h5",         u"h6",         u"header", u"hr",      u"li",    u"main",
    u"menu",    u"nav",      u"ol",         u"p",          u"pre",    u"section", u"table", u"ul",
    u"dt",      u"dd",       u"listing",    u"xmp"};
/// No end tag reaches out of these.
constexpr std::u16string_view scopes[] = {u"table",    u"td",     u"th",      u"caption", u"html",
                                          u"template", u"object", u"marquee", u"applet"};
constexpr std::u16string_view cells[] = {u"td", u"th"}, rows[] = {u"tr"}, table_scope[] = {u"table"},
                              row_groups[] = {u"thead", u"tbody", u"tfoot"},
                              list_scope[] = {u"ul", u"ol", u"dir", u"menu", u"table"}, items[] = {u"li"},
                              terms[] = {u"dt", u"dd"}, term_scope[] = {u"dl", u"table"},
                              options[] = {u"option"}, option_scope[] = {u"select", u"datalist", u"optgroup"};

}  // namespace

bool is_void_element(std::u16string_view name) { return is_one_of(name, void_names); }

class TagStructure::Reading {
 public:
  Reading(std::u16string_view source, std::vector<SourceTag>& tags) : source_(source), tags_(tags) {}

  void run() {
    MarkupScanner scanner(source_);
    while (const auto piece = scanner.next()) {
      if (piece->kind != Piece::Kind::StartTag && piece->kind != Piece::Kind::EndTag) continue;
      const bool ends = piece->kind == Piece::Kind::EndTag;
      const Offset name = piece->begin + (ends ? 2 : 1);
      tags_.push_back({piece->begin, piece->end, name, name + piece->name.size(), ends});
      ends ? end_tag() : start_tag();
    }
    source_ends_ = true;
    close_down_to(0, {});
  }

 private:
  std::u16string_view name_of(std::size_t tag) const {
    return source_.substr(tags_[tag].name, tags_[tag].name_end - tags_[tag].name);
  }
  bool closes_itself(const SourceTag& tag) const {
    return tag.end - tag.begin > 2 && source_[tag.end - 2] == u'/';
  }

  void start_tag() {
    const std::size_t number = tags_.size() - 1;
    const std::u16string_view name = name_of(number);
    if (is_one_of(name, ends_paragraph)) end_paragraph();
    if (is_one_of(name, items)) end_in(items, list_scope);
    if (is_one_of(name, terms)) end_in(terms, term_scope);
    if (is_one_of(name, cells)) end_in(cells, table_scope);
    if (is_one_of(name, rows)) end_in(rows, table_scope);
    if (is_one_of(name, row_groups)) end_in(row_groups, table_scope);
    if (is_one_of(name, options)) end_in(options, option_scope);
    // Markup from elsewhere, a drawing say, closes itself so; an HTML element doesn't.
    if (is_void_element(name) || (closes_itself(tags_[number]) && foreign_ > 0)) return;
    if (is_foreign(name)) ++foreign_;
    open_.push_back(number);
  }

  static bool is_foreign(std::u16string_view name) {
    return equals_ignoring_ascii_case(name, u"svg") || equals_ignoring_ascii_case(name, u"math");
  }

  /// Nobody writes elements within each other so deep: tags that are never closed would make each end tag
  /// look through all of them.
  std::size_t lowest() const {
    constexpr std::size_t deepest = 500;
    return open_.size() - std::min(open_.size(), deepest);
  }

  /// The innermost open element of that name; none beyond one that no end tag reaches out of.
  std::size_t find_open(std::u16string_view name) const {
    for (std::size_t i = open_.size(); i-- > lowest();) {
      count_work();
      if (equals_ignoring_ascii_case(name_of(open_[i]), name)) return i;
      if (is_one_of(name_of(open_[i]), scopes) && !is_one_of(name, table_scope) && !is_one_of(name, rows) &&
          !is_one_of(name, row_groups) && !is_one_of(name, cells))
        break;
    }
    return SourceTag::nobody;
  }

  /// As far as nothing but formats stands between: a block within isn't closed by what begins in it.
  void end_paragraph() {
    for (std::size_t i = open_.size(); i-- > lowest();) {
      const std::u16string_view open = name_of(open_[i]);
      if (equals_ignoring_ascii_case(open, u"p")) return close_down_to(i, {});
      if (!is_one_of(open, format_names) && !equals_ignoring_ascii_case(open, u"span")) return;
    }
  }

  void end_in(Names ended, Names scope) {
    for (std::size_t i = open_.size(); i-- > lowest();) {
      if (is_one_of(name_of(open_[i]), ended)) return close_down_to(i, {});
      if (is_one_of(name_of(open_[i]), scope)) return;
    }
  }

  void end_tag() {
    const std::size_t number = tags_.size() - 1;
    const std::u16string_view name = name_of(number);
    const std::size_t start = find_open(name);
    if (start == SourceTag::nobody) {
      tags_[number].trouble = equals_ignoring_ascii_case(name, u"p")    ? TagTrouble::EmptyParagraph
                              : equals_ignoring_ascii_case(name, u"br") ? TagTrouble::LineBreak
                                                                        : TagTrouble::ClosesNothing;
      return;
    }
    const std::size_t opener = open_[start];
    close_down_to(start + 1, name);
    open_.pop_back();
    if (is_foreign(name)) --foreign_;
    tags_[opener].partner = tags_[opener].ended_by = number;
    tags_[number].partner = opener;
  }

  /// What is open from there on ends without a tag of its own; by the end tag of `closer`, if that is a name.
  void close_down_to(std::size_t first, std::u16string_view closer) {
    while (open_.size() > first) {
      SourceTag& tag = tags_[open_.back()];
      const std::u16string_view name = name_of(open_.back());
      open_.pop_back();
      if (!source_ends_) tag.ended_by = tags_.size() - 1;
      if (is_foreign(name)) --foreign_;
      if (is_one_of(name, optional_names)) continue;
      const bool is_format = is_one_of(name, format_names);
      tag.trouble = closer.empty() ? (is_format ? TagTrouble::GoesOn : TagTrouble::NeverClosed)
                    : is_format    ? TagTrouble::OpensAgain
                                   : TagTrouble::ClosedByAnother;
    }
  }

  std::u16string_view source_;
  std::vector<SourceTag>& tags_;
  std::vector<std::size_t> open_;
  int foreign_ = 0;  // how deep in a drawing or a formula
  bool source_ends_ = false;
};

TagStructure::TagStructure(std::u16string_view source) { Reading(source, tags_).run(); }

const SourceTag* TagStructure::at(Offset place) const {
  auto after = std::ranges::upper_bound(tags_, place, {}, &SourceTag::begin);
  if (after == tags_.begin()) return nullptr;
  const SourceTag& tag = *std::prev(after);
  return place <= tag.end ? &tag : nullptr;
}

const SourceTag* TagStructure::partner_of(const SourceTag& tag) const {
  return tag.partner == SourceTag::nobody ? nullptr : &tags_[tag.partner];
}

std::u16string_view TagStructure::open_at(Offset place, std::u16string_view source) const {
  // Outwards from the tag before the position: an element that ended is passed over as a whole.
  auto after = std::ranges::lower_bound(tags_, place, {}, &SourceTag::end);
  if (after != tags_.end() && after->end == place) ++after;
  for (auto i = static_cast<std::size_t>(after - tags_.begin()); i-- > 0;) {
    const SourceTag& tag = tags_[i];
    const std::u16string_view name = source.substr(tag.name, tag.name_end - tag.name);
    if (tag.is_end_tag) {
      if (tag.partner != SourceTag::nobody) i = tag.partner;
      continue;
    }
    const bool ended_before = tag.ended_by != SourceTag::nobody && tags_[tag.ended_by].end <= place;
    if (!ended_before && !is_void_element(name)) return name;
  }
  return {};
}

}  // namespace tvx::source
