#include "tvx/source/line_tokens.h"

#include <algorithm>
#include <array>

#include "tvx/base/strings.h"

namespace tvx::source {
namespace {

enum class Mode : std::uint8_t {
  Text,
  Comment,
  Declaration,
  Tag,  // between attributes
  AfterEquals,
  DoubleValue,
  SingleValue,
  Script,
  ScriptComment,
  Template,  // a string in ` `
  Style,     // selectors
  Rules,     // between { and }
  StyleValue,
  StyleComment
};

/// Elements whose content is no markup.
enum class Raw : std::uint8_t { None, Script, Style, Title, Textarea };
constexpr std::array<std::u16string_view, 5> raw_names{u"", u"script", u"style", u"title", u"textarea"};

constexpr std::array<std::u16string_view, 38> keywords{
    u"async",   u"await",    u"break",  u"case",      u"catch",  u"class",      u"const", u"continue",
    u"default", u"delete",   u"do",     u"else",      u"export", u"extends",    u"false", u"finally",
    u"for",     u"function", u"if",     u"import",    u"in",     u"instanceof", u"let",   u"new",
    u"null",    u"of",       u"return", u"static",    u"super",  u"switch",     u"this",  u"throw",
    u"true",    u"try",      u"typeof", u"undefined", u"var",    u"while"};

bool is_name_unit(char16_t c) {
  return is_ascii_alpha(c) || is_ascii_digit(c) || c == u'-' || c == u'_' || c == u':' || c == u'.' ||
         c >= 0x80;
}
bool is_word_unit(char16_t c) {
  return is_ascii_alpha(c) || is_ascii_digit(c) || c == u'_' || c == u'$' || c >= 0x80;
}
bool is_style_unit(char16_t c) {
  return is_ascii_alpha(c) || is_ascii_digit(c) || c == u'-' || c == u'_' || c >= 0x80;
}

/// One line on its way. What isn't written down costs the walk alone.
class Line {
 public:
  Line(std::u16string_view text, LineState state, std::vector<Token>* tokens) : text_(text), tokens_(tokens) {
    mode_ = static_cast<Mode>(state & 15);
    raw_ = static_cast<Raw>((state >> 4) & 7);
    back_ = static_cast<Mode>((state >> 7) & 15);
    depth_ = (state >> 11) & 31;
    end_tag_ = ((state >> 16) & 1) != 0;
  }

  LineState run() {
    while (at_ < text_.size()) step();
    return static_cast<LineState>(mode_) | static_cast<LineState>(raw_) << 4 |
           static_cast<LineState>(back_) << 7 | depth_ << 11 | (end_tag_ ? 1 << 16 : 0);
  }

 private:
  void step() {
    switch (mode_) {
      case Mode::Text: return raw_ == Raw::None || ends_raw() ? text() : raw_text();
      case Mode::Comment: return until(u"-->", TokenKind::Comment, Mode::Text);
      case Mode::Declaration: return until(u">", TokenKind::Declaration, Mode::Text);
      case Mode::Tag: return tag();
      case Mode::AfterEquals: return value();
      case Mode::DoubleValue: return until(u"\"", TokenKind::Value, Mode::Tag);
      case Mode::SingleValue: return until(u"'", TokenKind::Value, Mode::Tag);
      case Mode::Script: return ends_raw() ? leave_raw() : script();
      case Mode::ScriptComment: return raw_until(u"*/", TokenKind::Comment, Mode::Script);
      case Mode::Template: return raw_until(u"`", TokenKind::String, Mode::Script);
      case Mode::Style: return ends_raw() ? leave_raw() : selectors();
      case Mode::Rules: return ends_raw() ? leave_raw() : rules();
      case Mode::StyleValue: return ends_raw() ? leave_raw() : style_value();
      case Mode::StyleComment: return raw_until(u"*/", TokenKind::Comment, back_);
    }
  }

  // --- what all of them do ---

  char16_t unit(std::size_t on = 0) const { return at_ + on < text_.size() ? text_[at_ + on] : u'\0'; }
  bool stands(std::u16string_view part) const { return text_.substr(at_, part.size()) == part; }
  void add(TokenKind kind, std::size_t length) {
    if (tokens_ && length > 0) tokens_->push_back({at_, length, kind});
    at_ += length;
  }
  void until(std::u16string_view end, TokenKind kind, Mode next) {
    const std::size_t found = text_.find(end, at_);
    if (found == text_.npos) return add(kind, text_.size() - at_);
    add(kind, found + end.size() - at_);
    mode_ = next;
  }
  template <class Fits>
  std::size_t run_of(const Fits& fits, std::size_t from = 0) const {
    std::size_t length = from;
    while (at_ + length < text_.size() && fits(text_[at_ + length])) ++length;
    return length;
  }

  // --- markup ---

  void text() {
    const std::size_t found = std::min(text_.find_first_of(u"<&", at_), text_.size());
    at_ = found;
    if (at_ == text_.size()) return;
    if (unit() == u'&') return entity();
    if (stands(u"<!--")) {
      mode_ = Mode::Comment;
      return add(TokenKind::Comment, 4);
    }
    const bool ends = unit(1) == u'/';
    if (unit(1) == u'!' || unit(1) == u'?') {
      mode_ = Mode::Declaration;
      return;
    }
    if (!is_ascii_alpha(unit(ends ? 2 : 1))) {
      ++at_;
      return;
    }
    open_tag(ends);
  }

  void open_tag(bool ends) {
    add(TokenKind::Bracket, ends ? 2 : 1);
    const std::size_t length = run_of(is_name_unit);
    const std::u16string_view name = text_.substr(at_, length);
    raw_ = Raw::None;
    for (std::size_t i = 1; i < raw_names.size(); ++i)
      if (!ends && equals_ignoring_ascii_case(name, raw_names[i])) raw_ = static_cast<Raw>(i);
    add(TokenKind::TagName, length);
    end_tag_ = ends;
    mode_ = Mode::Tag;
  }

  void entity() {
    std::size_t length = 1;
    if (unit(1) == u'#')
      length = run_of([](char16_t c) { return is_ascii_alpha(c) || is_ascii_digit(c); }, 2);
    else
      length = run_of([](char16_t c) { return is_ascii_alpha(c) || is_ascii_digit(c); }, 1);
    if (unit(length) == u';' && length > 1) return add(TokenKind::Entity, length + 1);
    ++at_;
  }

  void tag() {
    const char16_t c = unit();
    if (is_ascii_space(c)) {
      at_ += run_of(is_ascii_space);
    } else if (c == u'>' || (c == u'/' && unit(1) == u'>')) {
      add(TokenKind::Bracket, c == u'>' ? 1 : 2);
      after_tag();
    } else if (c == u'=') {
      ++at_;
      mode_ = Mode::AfterEquals;
    } else if (is_name_unit(c) || c == u'@') {
      add(TokenKind::AttributeName, run_of(is_name_unit, 1));
    } else {
      ++at_;
    }
  }

  void after_tag() {
    mode_ = raw_ == Raw::Script ? Mode::Script : raw_ == Raw::Style ? Mode::Style : Mode::Text;
    depth_ = 0;
  }

  void value() {
    const char16_t c = unit();
    if (is_ascii_space(c)) {
      at_ += run_of(is_ascii_space);
      return;
    }
    if (c == u'"' || c == u'\'') {
      const std::size_t end = text_.find(c, at_ + 1);
      if (end == text_.npos) {
        mode_ = c == u'"' ? Mode::DoubleValue : Mode::SingleValue;
        return add(TokenKind::Value, text_.size() - at_);
      }
      mode_ = Mode::Tag;
      return add(TokenKind::Value, end + 1 - at_);
    }
    mode_ = Mode::Tag;
    add(TokenKind::Value, run_of([](char16_t u) { return !is_ascii_space(u) && u != u'>'; }));
  }

  // --- content that is no markup ---

  /// Whether the end tag of the element stands here.
  bool ends_raw() const {
    const std::u16string_view name = raw_names[static_cast<std::size_t>(raw_)];
    return raw_ != Raw::None && unit() == u'<' && unit(1) == u'/' &&
           equals_ignoring_ascii_case(text_.substr(at_ + 2, name.size()), name) &&
           !is_name_unit(unit(2 + name.size()));
  }
  void leave_raw() {
    raw_ = Raw::None;
    mode_ = Mode::Text;
  }
  void raw_text() {
    if (unit() == u'&') return entity();
    at_ = std::min(text_.find_first_of(u"<&", at_ + 1), text_.size());
  }
  // Nothing keeps an end tag from ending its element, no comment and no string.
  void raw_until(std::u16string_view end, TokenKind kind, Mode next) {
    const std::size_t from = at_;
    while (at_ < text_.size() && !ends_raw() && !stands(end)) ++at_;
    const bool over = at_ < text_.size() && stands(end) && !ends_raw();
    const std::size_t length = at_ - from + (over ? end.size() : 0);
    const bool left = at_ < text_.size() && !over;
    at_ = from;
    add(kind, length);
    if (over) mode_ = next;
    if (left) leave_raw();
  }
  /// A string that ends in its line.
  void string() {
    const char16_t quote = unit();
    std::size_t length = 1;
    const std::size_t begin = at_;
    while (begin + length < text_.size() && text_[begin + length] != quote) {
      at_ = begin + length;
      const bool ends = ends_raw();
      at_ = begin;
      if (ends) return add(TokenKind::String, length);
      length += text_[begin + length] == u'\\' ? 2 : 1;
    }
    add(TokenKind::String, std::min(length + 1, text_.size() - begin));
  }

  void script() {
    const char16_t c = unit();
    if (stands(u"//")) {
      const std::size_t from = at_;
      while (at_ < text_.size() && !ends_raw()) ++at_;
      const std::size_t length = at_ - from;
      at_ = from;
      return add(TokenKind::Comment, length);
    }
    if (stands(u"/*")) {
      mode_ = Mode::ScriptComment;
      return add(TokenKind::Comment, 2);
    }
    if (c == u'"' || c == u'\'') return string();
    if (c == u'`') {
      mode_ = Mode::Template;
      return add(TokenKind::String, 1);
    }
    if (is_ascii_digit(c))
      return add(TokenKind::Number, run_of([](char16_t u) { return is_word_unit(u) || u == u'.'; }));
    if (!is_word_unit(c)) {
      ++at_;
      return;
    }
    const std::size_t length = run_of(is_word_unit);
    if (std::ranges::binary_search(keywords, text_.substr(at_, length)))
      return add(TokenKind::Keyword, length);
    at_ += length;
  }

  bool style_comment() {
    if (!stands(u"/*")) return false;
    back_ = mode_;
    mode_ = Mode::StyleComment;
    add(TokenKind::Comment, 2);
    return true;
  }

  void selectors() {
    const char16_t c = unit();
    if (style_comment()) return;
    if (c == u'"' || c == u'\'') return string();
    if (c == u'{') {
      mode_ = Mode::Rules;
      depth_ = std::min(depth_ + 1, 31);
      ++at_;
    } else if (c == u'}') {
      ++at_;
      close_rules();
    } else if (c == u'@') {
      add(TokenKind::Keyword, run_of(is_style_unit, 1));
    } else if (is_style_unit(c) || c == u'.' || c == u'#' || c == u':' || c == u'*') {
      add(TokenKind::Selector, run_of(is_style_unit, 1));
    } else {
      ++at_;
    }
  }

  void rules() {
    const char16_t c = unit();
    if (is_ascii_space(c) || c == u';') {
      ++at_;
      return;
    }
    if (style_comment()) return;
    if (c == u'}') {
      ++at_;
      return close_rules();
    }
    // Rules stand within @media as well.
    const std::size_t mark = text_.find_first_of(u"{;}", at_);
    if (c == u'@' || (mark != text_.npos && text_[mark] == u'{')) {
      mode_ = Mode::Style;
      return;
    }
    if (c == u':') {
      mode_ = Mode::StyleValue;
      ++at_;
    } else if (is_style_unit(c)) {
      add(TokenKind::Property, run_of(is_style_unit));
    } else {
      ++at_;
    }
  }

  void close_rules() {
    depth_ = std::max(depth_ - 1, 0);
    mode_ = depth_ > 0 ? Mode::Rules : Mode::Style;
  }

  void style_value() {
    const char16_t c = unit();
    if (style_comment()) return;
    if (c == u'"' || c == u'\'') return string();
    if (c == u';' || c == u'}') {
      mode_ = Mode::Rules;
      if (c == u';') ++at_;
    } else if (is_ascii_digit(c) || c == u'#') {
      add(TokenKind::Number,
          run_of([](char16_t u) { return is_style_unit(u) || u == u'.' || u == u'%'; }, 1));
    } else if (is_style_unit(c)) {
      at_ += run_of(is_style_unit);
    } else {
      ++at_;
    }
  }

  std::u16string_view text_;
  std::vector<Token>* tokens_;
  std::size_t at_ = 0;
  Mode mode_ = Mode::Text, back_ = Mode::Text;
  Raw raw_ = Raw::None;
  std::int32_t depth_ = 0;  // of { in a style sheet
  bool end_tag_ = false;
};

}  // namespace

std::vector<Token> tokens_of_line(std::u16string_view line, LineState& state) {
  std::vector<Token> tokens;
  state = Line(line, state, &tokens).run();
  return tokens;
}

void pass_line(std::u16string_view line, LineState& state) { state = Line(line, state, nullptr).run(); }

}  // namespace tvx::source
