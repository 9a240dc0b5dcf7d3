#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/dom/style/css_tokens.h"
#include "tvx/dom/style/media.h"
#include "tvx/dom/style/selectors.h"
#include "tvx/dom/style/style_sheet.h"

namespace tvx::dom::style {
namespace {

constexpr int deepest_nesting = 16;

class RuleParser {
 public:
  explicit RuleParser(std::u16string_view text) : text_(text), tokens_(tokenize(text)) {}

  std::vector<Rule> run() { return rules(0, tokens_.size() - 1, 0); }

 private:
  std::u16string slice(std::size_t from, std::size_t to) const {
    if (from >= to) return {};
    return std::u16string(
        trimmed(text_.substr(tokens_[from].begin, tokens_[to - 1].end - tokens_[from].begin)));
  }

  /// The tokens [from, to) as rules.
  std::vector<Rule> rules(std::size_t from, std::size_t to, int nesting) {
    std::vector<Rule> list;
    bool imports_allowed = nesting == 0;
    for (std::size_t at = from; at < to;) {
      const Token& token = tokens_[at];
      const bool marker = nesting == 0 && (token.type == TokenType::Cdo || token.type == TokenType::Cdc);
      if (token.is_gap() || marker) {
        ++at;
        continue;
      }
      const bool at_rule = token.type == TokenType::AtKeyword;
      std::size_t brace = at;
      while (brace < to && tokens_[brace].type != TokenType::OpenBrace &&
             !(at_rule && tokens_[brace].type == TokenType::Semicolon)) {
        brace = std::min(skip_component(tokens_, brace), to);
      }
      const bool block = brace < to && tokens_[brace].type == TokenType::OpenBrace;
      const std::size_t end = std::min(block ? skip_component(tokens_, brace) : brace + (brace < to), to);
      Rule rule;
      rule.css_text = slice(at, end);
      if (block) rule.block = slice(brace + 1, closed_end(end));
      const bool kept = at_rule ? take_at_rule(rule, at, brace, end, block, imports_allowed, nesting)
                                : block && take_style_rule(rule, at, brace);
      if (kept) {
        imports_allowed &= rule.kind == RuleKind::Import;
        list.push_back(std::move(rule));
      }
      at = end;
    }
    return list;
  }

  /// Without the brace that closes a block; the end of the text closes one too.
  std::size_t closed_end(std::size_t end) const {
    return tokens_[end - 1].type == TokenType::CloseBrace ? end - 1 : end;
  }

  bool take_style_rule(Rule& rule, std::size_t at, std::size_t brace) {
    rule.selector_text = slice(at, brace);
    return SelectorList::parse(rule.selector_text).has_value();
  }

  bool take_at_rule(Rule& rule, std::size_t at, std::size_t brace, std::size_t end, bool block,
                    bool imports_allowed, int nesting) {
    static constexpr std::u16string_view with_rules[] = {u"layer", u"container", u"scope", u"starting-style"};
    static constexpr std::u16string_view others[] = {
        u"font-face",           u"page",      u"keyframes",     u"-webkit-keyframes", u"-moz-keyframes",
        u"-o-keyframes",        u"namespace", u"counter-style", u"property",          u"font-feature-values",
        u"font-palette-values", u"viewport",  u"-ms-viewport",  u"document",          u"-moz-document"};
    const std::u16string name = ascii_lower(tokens_[at].value);
    rule.prelude = slice(at + 1, brace);
    if (name == u"import") {
      rule.kind = RuleKind::Import;
      return !block && imports_allowed && !rule.prelude.empty();
    }
    const bool grouping =
        std::find(std::begin(with_rules), std::end(with_rules), name) != std::end(with_rules);
    if (name == u"media" || name == u"supports" || grouping) {
      rule.kind = name == u"media"      ? RuleKind::Media
                  : name == u"supports" ? RuleKind::Supports
                                        : RuleKind::Other;
      if (block && nesting < deepest_nesting && name != u"container") {
        rule.child_rules = rules(brace + 1, closed_end(end), nesting + 1);
      }
      return block || name == u"layer";
    }
    rule.kind = RuleKind::Other;
    const bool known = std::find(std::begin(others), std::end(others), name) != std::end(others);
    return known && (block || name == u"namespace");
  }

  std::u16string_view text_;
  std::vector<Token> tokens_;
};

}  // namespace

// CSS Cascading, section 2 "importing style sheets": the address, layer and supports, then the media.
std::optional<Import> parse_import(std::u16string_view prelude) {
  const std::vector<Token> tokens = tokenize(prelude);
  const auto behind_gaps = [&](std::size_t from) { return skip_gaps(tokens, from); };
  Import import;
  std::size_t at = behind_gaps(0);
  if (tokens[at].type == TokenType::Url || tokens[at].type == TokenType::String) {
    import.url = tokens[at].value;
    ++at;
  } else if (tokens[at].type == TokenType::Function && equals_ignoring_ascii_case(tokens[at].value, u"url")) {
    const std::size_t inside = behind_gaps(at + 1);
    if (tokens[inside].type != TokenType::String) return {};
    import.url = tokens[inside].value;
    at = skip_component(tokens, at);
  } else {
    return {};
  }
  if (trimmed(import.url).empty()) return {};
  at = behind_gaps(at);
  for (const std::u16string_view name : {u"layer", u"supports"}) {
    const bool named = tokens[at].type == TokenType::Function || tokens[at].type == TokenType::Ident;
    if (named && equals_ignoring_ascii_case(tokens[at].value, name))
      at = behind_gaps(skip_component(tokens, at));
  }
  import.media = trimmed(prelude.substr(tokens[at].begin));
  return import;
}

std::vector<Import> imports_of(const std::vector<Rule>& rules) {
  std::vector<Import> imports;
  for (const Rule& rule : rules) {
    if (rule.kind != RuleKind::Import) continue;
    auto import = parse_import(rule.prelude);
    if (import && matches_screen(import->media)) imports.push_back(*std::move(import));
  }
  return imports;
}

std::vector<Rule> parse_rules(std::u16string_view text) { return RuleParser(text).run(); }

}  // namespace tvx::dom::style
