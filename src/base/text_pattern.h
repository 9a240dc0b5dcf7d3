#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tvx {

/// What somebody looks for in a text: letters as they are, or a regular expression as ICU has them. Lines end
/// with LF, and no hit goes over a line's end unless the options say so. Letters compare by Unicode's simple
/// case folding; a no-break space that is looked for or met is a blank. No hit ends within a character that
/// is written with accents of its own.
class TextPattern {
 public:
  struct Options {
    bool match_case = false;
    /// Both ends of a hit are word boundaries (Unicode standard annex 29).
    bool whole_words = false;
    bool regular_expression = false;
    bool across_lines = false;
    friend bool operator==(const Options&, const Options&) = default;
  };
  /// In 16-bit units.
  struct Hit {
    std::size_t from = 0, to = 0;
    friend bool operator==(const Hit&, const Hit&) = default;
  };

  // What a failure says; hosts may have other words for it.
  static constexpr std::u16string_view not_an_expression = u"This is no regular expression",
                                       takes_too_long = u"The regular expression takes too long",
                                       no_such_group =
                                           u"The replacement names a group that the expression doesn't have";

  /// Throws RuntimeError(5) for a regular expression that is none.
  TextPattern(std::u16string_view sought, const Options& options);
  ~TextPattern();
  TextPattern(TextPattern&&) noexcept;
  TextPattern& operator=(TextPattern&&) noexcept;

  /// All hits in their order, none over another and none empty. Throws RuntimeError(5) where an expression
  /// takes longer than a second or wants too much memory, as those do that try everything with everything.
  std::vector<Hit> hits_in(std::u16string_view text) const;

  /// What is to stand in the place of each of some hits: the replacement as it is, or, with a regular
  /// expression, with the hit's groups in it: $1, ${name}, $0 is all of the hit; \n and \t are a line break
  /// and a tab, and any other character after a backslash is itself. Throws RuntimeError(5) where there is no
  /// such group.
  std::vector<std::u16string> replacements_of(std::span<const Hit> hits, std::u16string_view text,
                                              std::u16string_view replacement) const;

 private:
  class Words;
  class Expression;
  std::vector<Hit> plain_hits(std::u16string_view text) const;

  Options options_;
  std::u16string sought_;  // folded
  std::unique_ptr<Expression> expression_;
};

}  // namespace tvx
