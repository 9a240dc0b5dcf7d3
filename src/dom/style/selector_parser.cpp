#include <algorithm>

#include "tvx/dom/style/selectors.h"

namespace tvx::dom::style {
namespace {

constexpr std::size_t most_compounds = 256;
constexpr int deepest_nesting = 16;

constexpr std::u16string_view silent_pseudo_classes[] = {u"visited",
                                                         u"hover",
                                                         u"active",
                                                         u"focus",
                                                         u"focus-visible",
                                                         u"focus-within",
                                                         u"target",
                                                         u"current",
                                                         u"past",
                                                         u"future",
                                                         u"playing",
                                                         u"paused",
                                                         u"fullscreen",
                                                         u"modal",
                                                         u"popover-open",
                                                         u"autofill",
                                                         u"defined",
                                                         u"host",
                                                         u"user-invalid",
                                                         u"user-valid",
                                                         u"valid",
                                                         u"invalid",
                                                         u"in-range",
                                                         u"out-of-range",
                                                         u"placeholder-shown",
                                                         u"indeterminate",
                                                         u"default",
                                                         u"target-within",
                                                         u"picture-in-picture",
                                                         u"blank"};
constexpr std::u16string_view states[] = {u"checked",  u"disabled",  u"enabled",    u"required",
                                          u"optional", u"read-only", u"read-write", u"open"};
constexpr std::u16string_view silent_functions[] = {u"host", u"host-context", u"dir",     u"lang",
                                                    u"has",  u"state",        u"nth-col", u"nth-last-col"};
constexpr std::u16string_view old_pseudo_elements[] = {u"before", u"after", u"first-line", u"first-letter"};
constexpr std::u16string_view pseudo_elements[] = {
    u"before",      u"after",          u"first-line",    u"first-letter", u"selection",
    u"placeholder", u"marker",         u"backdrop",      u"cue",          u"file-selector-button",
    u"target-text", u"spelling-error", u"grammar-error", u"part",         u"slotted",
    u"highlight",   u"details-content"};

template <std::size_t size>
bool holds(const std::u16string_view (&list)[size], std::u16string_view word) {
  return std::find(std::begin(list), std::end(list), word) != std::end(list);
}

}  // namespace

/// Parses one selector list out of tokens; every routine answers false where the list is invalid.
class SelectorParser {
 public:
  SelectorParser(const std::vector<Token>& tokens, std::size_t from, std::size_t to, int nesting)
      : tokens_(tokens), at_(from), to_(to), nesting_(nesting) {}

  bool parse(SelectorList& list) {
    for (;;) {
      Selector selector;
      if (!complex(selector)) return false;
      list.selectors_.push_back(std::move(selector));
      if (at_ == to_) return true;
      if (tokens_[at_].type != TokenType::Comma) return false;
      ++at_;
    }
  }

 private:
  bool done() const { return at_ >= to_; }
  const Token& token() const { return tokens_[at_]; }
  bool is_delim(char16_t c) const { return !done() && token().is_delim(c); }

  bool skip_gap() {
    bool space = false;
    for (; !done() && token().is_gap(); ++at_) space |= token().type == TokenType::Whitespace;
    return space;
  }

  bool complex(Selector& selector) {
    skip_gap();
    Combinator combinator = Combinator::Descendant;
    for (;;) {
      CompoundSelector compound;
      compound.combinator = combinator;
      if (!this->compound(compound, selector.specificity)) return false;
      selector.compounds.push_back(std::move(compound));
      if (selector.compounds.size() > most_compounds) return false;
      const bool space = skip_gap();
      if (done() || token().type == TokenType::Comma) return true;
      if (!this->combinator(combinator, space)) return false;
    }
  }

  bool combinator(Combinator& combinator, bool space) {
    combinator = Combinator::Descendant;
    if (is_delim(u'>')) {
      combinator = Combinator::Child;
    } else if (is_delim(u'+')) {
      combinator = Combinator::NextSibling;
    } else if (is_delim(u'~')) {
      combinator = Combinator::LaterSibling;
    } else {
      return space;
    }
    ++at_;
    skip_gap();
    return true;
  }

  /// Ten bits for each kind, so that many of one never become one of the next.
  static void weigh(std::uint32_t& specificity, int shift) {
    if (((specificity >> shift) & 0x3FF) < 0x3FF) specificity += 1u << shift;
  }

  bool compound(CompoundSelector& compound, std::uint32_t& specificity) {
    const std::size_t begin = at_;
    if (!type(compound, specificity)) return false;
    while (!done()) {
      SimpleSelector simple{};
      if (token().type == TokenType::Hash) {
        if (!token().is_identifier) return false;
        simple.type = SimpleType::Id;
        simple.value = tokens_[at_++].value;
        weigh(specificity, 20);
      } else if (is_delim(u'.')) {
        if (++at_ >= to_ || token().type != TokenType::Ident) return false;
        simple.type = SimpleType::Class;
        simple.value = tokens_[at_++].value;
        weigh(specificity, 10);
      } else if (token().type == TokenType::OpenSquare) {
        if (!attribute(simple)) return false;
        weigh(specificity, 10);
      } else if (token().type == TokenType::Colon) {
        if (!pseudo(simple, specificity)) return false;
      } else {
        break;
      }
      compound.simples.push_back(std::move(simple));
    }
    return at_ > begin;
  }

  /// "p", "*", "*|p", "|p".
  bool type(CompoundSelector& compound, std::uint32_t& specificity) {
    if (is_delim(u'*') && at_ + 1 < to_ && tokens_[at_ + 1].is_delim(u'|') && at_ + 2 < to_ &&
        !tokens_[at_ + 2].is_delim(u'=')) {
      at_ += 2;
    } else if (is_delim(u'|')) {
      ++at_;
    }
    if (is_delim(u'*')) {
      ++at_;
    } else if (!done() && token().type == TokenType::Ident) {
      SimpleSelector simple{};
      simple.type = SimpleType::Type;
      simple.name = Name(ascii_lower(token().value));
      simple.value = token().value;
      compound.simples.push_back(std::move(simple));
      weigh(specificity, 0);
      ++at_;
    }
    return true;
  }

  bool attribute(SimpleSelector& simple) {
    const std::size_t end = skip_component(tokens_, at_);
    if (end > to_ || tokens_[end - 1].type != TokenType::CloseSquare) return false;
    const std::size_t close = end - 1;
    ++at_;
    skip_gap();
    if (is_delim(u'*')) ++at_;
    if (is_delim(u'|')) ++at_;
    if (at_ >= close || token().type != TokenType::Ident) return false;
    simple.type = SimpleType::Attribute;
    simple.name = Name(ascii_lower(token().value));
    ++at_;
    skip_gap();
    if (at_ < close && !attribute_test(simple, close)) return false;
    skip_gap();
    if (at_ != close) return false;
    at_ = end;
    return true;
  }

  bool attribute_test(SimpleSelector& simple, std::size_t close) {
    simple.test = AttributeTest::Equals;
    if (!is_delim(u'=')) {
      static constexpr std::u16string_view signs = u"~|^$*";
      static constexpr AttributeTest tests[] = {AttributeTest::Word, AttributeTest::DashPrefix,
                                                AttributeTest::Prefix, AttributeTest::Suffix,
                                                AttributeTest::Part};
      const std::size_t sign =
          token().type == TokenType::Delim ? signs.find(token().delim) : std::u16string_view::npos;
      if (sign == std::u16string_view::npos) return false;
      simple.test = tests[sign];
      ++at_;
      if (!is_delim(u'=')) return false;
    }
    ++at_;
    skip_gap();
    if (at_ >= close || (token().type != TokenType::Ident && token().type != TokenType::String)) return false;
    simple.value = token().value;
    ++at_;
    skip_gap();
    if (at_ < close && token().type == TokenType::Ident) {
      if (token().is_ident(u"i")) {
        simple.ignore_case = true;
      } else if (!token().is_ident(u"s")) {
        return false;
      }
      ++at_;
    }
    return true;
  }

  bool pseudo(SimpleSelector& simple, std::uint32_t& specificity) {
    if (++at_ >= to_) return false;
    const bool element = token().type == TokenType::Colon;
    if (element && ++at_ >= to_) return false;
    if (token().type != TokenType::Ident && token().type != TokenType::Function) return false;
    const bool function = token().type == TokenType::Function;
    const std::u16string name = ascii_lower(token().value);
    simple.type = SimpleType::Never;
    const std::size_t end = skip_component(tokens_, at_);
    if (end > to_ || (function && tokens_[end - 1].type != TokenType::CloseParen)) return false;
    if (element || (!function && holds(old_pseudo_elements, name))) {
      at_ = end;
      weigh(specificity, 0);
      return holds(pseudo_elements, name) || name.starts_with(u"-");
    }
    const std::size_t inside = at_ + 1;
    at_ = end;
    if (function) return function_pseudo(simple, name, inside, end - 1, specificity);
    weigh(specificity, 10);
    return plain_pseudo(simple, name);
  }

  static bool nth(SimpleSelector& simple, SimpleType type, int step, int offset) {
    simple.type = type;
    simple.step = step;
    simple.offset = offset;
    return true;
  }

  static bool plain_pseudo(SimpleSelector& simple, const std::u16string& name) {
    if (name == u"first-child") return nth(simple, SimpleType::Nth, 0, 1);
    if (name == u"last-child") return nth(simple, SimpleType::NthLast, 0, 1);
    if (name == u"first-of-type") return nth(simple, SimpleType::NthOfType, 0, 1);
    if (name == u"last-of-type") return nth(simple, SimpleType::NthLastOfType, 0, 1);
    if (name == u"only-child" || name == u"only-of-type") {
      // Two tests in one place: first and last.
      const bool child = name == u"only-child";
      SimpleSelector last{};
      nth(last, child ? SimpleType::NthLast : SimpleType::NthLastOfType, 0, 1);
      SimpleSelector first{};
      nth(first, child ? SimpleType::Nth : SimpleType::NthOfType, 0, 1);
      simple.type = SimpleType::Is;
      simple.choices = std::make_shared<SelectorList>();
      Selector both;
      both.compounds.push_back({{first, last}, Combinator::Descendant});
      simple.choices->selectors_.push_back(std::move(both));
      return true;
    }
    if (name == u"root" || name == u"scope") {
      simple.type = SimpleType::Root;
    } else if (name == u"empty") {
      simple.type = SimpleType::Empty;
    } else if (name == u"link" || name == u"any-link") {
      simple.type = SimpleType::Link;
    } else if (holds(states, name)) {
      simple.type = SimpleType::State;
      simple.value = name;
    } else {
      return holds(silent_pseudo_classes, name) || name.starts_with(u"-");
    }
    return true;
  }

  bool function_pseudo(SimpleSelector& simple, const std::u16string& name, std::size_t from, std::size_t to,
                       std::uint32_t& specificity) {
    static constexpr std::u16string_view lists[] = {u"not",     u"is",          u"where",
                                                    u"matches", u"-webkit-any", u"-moz-any"};
    static constexpr std::pair<std::u16string_view, SimpleType> counts[] = {
        {u"nth-child", SimpleType::Nth},
        {u"nth-last-child", SimpleType::NthLast},
        {u"nth-of-type", SimpleType::NthOfType},
        {u"nth-last-of-type", SimpleType::NthLastOfType}};
    if (holds(lists, name)) return choices(simple, name, from, to, specificity);
    weigh(specificity, 10);
    for (const auto& [count_name, type] : counts) {
      if (name == count_name) {
        simple.type = type;
        return formula(simple, from, to);
      }
    }
    return holds(silent_functions, name) || name.starts_with(u"-");
  }

  bool choices(SimpleSelector& simple, const std::u16string& name, std::size_t from, std::size_t to,
               std::uint32_t& specificity) {
    if (nesting_ >= deepest_nesting) return false;
    simple.type = name == u"not" ? SimpleType::Not : SimpleType::Is;
    simple.choices = std::make_shared<SelectorList>();
    if (!SelectorParser(tokens_, from, to, nesting_ + 1).parse(*simple.choices)) return false;
    if (name == u"where") return true;
    std::uint32_t heaviest = 0;
    for (const Selector& selector : simple.choices->selectors_)
      heaviest = std::max(heaviest, selector.specificity);
    specificity += heaviest;
    return true;
  }

  /// CSS Syntax, section 6 "The An+B microsyntax", from the letters: blanks stand only round the sign of B.
  bool formula(SimpleSelector& simple, std::size_t from, std::size_t to) {
    std::u16string text;
    for (std::size_t i = from; i < to; ++i) {
      const Token& token = tokens_[i];
      if (token.is_gap()) continue;
      if (token.type == TokenType::Number || token.type == TokenType::Dimension) {
        if (!token.is_integer) return false;
        const bool sign = token.type == TokenType::Number && token.number >= 0 && text.ends_with(u"n");
        if (sign) text += u'+';
        text += to_text(std::int64_t(std::clamp(token.number, -1e6, 1e6)));
        text += ascii_lower(token.value);
      } else if (token.type == TokenType::Ident) {
        text += ascii_lower(token.value);
      } else if (token.is_delim(u'+') || token.is_delim(u'-')) {
        text += token.delim;
      } else {
        return false;
      }
    }
    if (text == u"odd") return nth(simple, simple.type, 2, 1);
    if (text == u"even") return nth(simple, simple.type, 2, 0);
    return read_formula(simple, text);
  }

  static bool read_formula(SimpleSelector& simple, std::u16string_view text) {
    const auto number = [](std::u16string_view part) -> std::optional<int> {
      if (part.starts_with(u"+")) part.remove_prefix(1);
      const auto value = parse_integer(part);
      if (!value) return std::nullopt;
      return int(std::clamp<std::int64_t>(*value, -1'000'000, 1'000'000));
    };
    const std::size_t n = text.find(u'n');
    if (n == std::u16string_view::npos) {
      const auto offset = number(text);
      return offset && nth(simple, simple.type, 0, *offset);
    }
    const std::u16string_view a = text.substr(0, n), b = text.substr(n + 1);
    const auto step = a.empty() || a == u"+" ? 1 : a == u"-" ? -1 : number(a);
    const auto offset = b.empty() ? 0 : number(b);
    return step && offset && nth(simple, simple.type, *step, *offset);
  }

  const std::vector<Token>& tokens_;
  std::size_t at_, to_;
  int nesting_;
};

std::optional<SelectorList> SelectorList::parse(std::u16string_view text) {
  const std::vector<Token> tokens = tokenize(text);
  SelectorList list;
  if (!SelectorParser(tokens, 0, tokens.size() - 1, 0).parse(list)) return std::nullopt;
  return list;
}

}  // namespace tvx::dom::style
