#include "tvx/source/source_text.h"

#include <algorithm>
#include <utility>

#include "tvx/source/changed_markup.h"
#include "tvx/source/formatter.h"
#include "tvx/source/markup_scanner.h"

namespace tvx::source {
namespace {

constexpr std::u16string_view line_end = u"\r\n";
constexpr std::int16_t indent_step = 2;

/// The code put together from the formatter's lines.
class Composition {
 public:
  explicit Composition(const PreparedText& prepared) : prepared_(prepared) {
    pieces_.reserve(prepared.pieces.size() * 2);
  }

  void run() {
    const std::vector<FormattedLine> lines = formatted_lines(text_for_formatter(), indent_step);
    code_.reserve(size_of(lines));
    for (const FormattedLine& line : lines) {
      // Below level zero the formatter repeats a line, which is no more text to edit.
      const Offset begin = std::max(line.begin, done_);
      if (begin >= line.end) continue;
      if (!is_joint(begin)) code_.append(line.indent, u' ');
      append(begin, line.end);
      done_ = line.end;
      if (!is_joint(done_) && !code_.ends_with(line_end)) code_ += line_end;
    }
  }
  std::u16string code() { return std::move(code_); }
  std::vector<MappedPiece> pieces() { return std::move(pieces_); }

 private:
  /// With letters in the place of what it must not read.
  std::u16string text_for_formatter() const {
    std::u16string text = prepared_.text;
    for (const Span& span : prepared_.hidden)
      std::fill(text.begin() + std::ptrdiff_t(span.begin), text.begin() + std::ptrdiff_t(span.end), u'x');
    return text;
  }
  static std::size_t size_of(const std::vector<FormattedLine>& lines) {
    std::size_t size = 0;
    for (const FormattedLine& line : lines) size += line.indent + line.end - line.begin + line_end.size();
    return size;
  }
  bool is_joint(Offset at) {
    while (joint_ < prepared_.joints.size() && prepared_.joints[joint_] < at) ++joint_;
    return joint_ < prepared_.joints.size() && prepared_.joints[joint_] == at;
  }

  void append(Offset begin, Offset end) {
    while (piece_ < prepared_.pieces.size() && prepared_.pieces[piece_].end() <= begin) ++piece_;
    for (; piece_ < prepared_.pieces.size() && prepared_.pieces[piece_].at < end; ++piece_) {
      MappedPiece piece = prepared_.pieces[piece_];
      const Offset cut = std::max(begin, piece.at) - piece.at,
                   rest = piece.end() - std::min(end, piece.end());
      piece.at = code_.size() + std::max(begin, piece.at) - begin;
      piece.size -= cut + rest;
      if (piece.markup_size == prepared_.pieces[piece_].size) {
        piece.markup += cut;
        piece.markup_size -= cut + rest;
      }
      if (cut > 0) piece.space_is_before = false;
      pieces_.push_back(piece);
      if (rest > 0) break;  // the next line goes on in it
    }
    code_.append(prepared_.text, begin, end - begin);
  }

  const PreparedText& prepared_;
  std::u16string code_;
  std::vector<MappedPiece> pieces_;
  Offset done_ = 0;
  std::size_t piece_ = 0, joint_ = 0;
};

/// A parser reads a carriage return as a line feed. Those of the document stay what they are as references,
/// where there can be any.
std::u16string with_carriage_returns(std::u16string markup) {
  if (markup.find(u'\r') == markup.npos) return markup;
  constexpr std::u16string_view raw[] = {u"SCRIPT", u"STYLE", u"XMP", u"IFRAME", u"NOFRAMES", u"NOEMBED"};
  std::u16string result;
  MarkupScanner scanner(markup);
  bool is_raw = false;
  while (const std::optional<Piece> piece = scanner.next()) {
    const bool takes_references =
        piece->kind == Piece::Kind::Text ? !is_raw : piece->kind == Piece::Kind::StartTag;
    for (Offset at = piece->begin; at < piece->end; ++at) {
      if (markup[at] == u'\r' && takes_references)
        result += u"&#13;";
      else
        result += markup[at];
    }
    is_raw = piece->kind == Piece::Kind::StartTag && std::ranges::any_of(raw, [&](auto name) {
               return equals_ignoring_ascii_case(name, piece->name);
             });
  }
  return result;
}

}  // namespace

SourceText SourceText::formatted(Shared markup) {
  SourceText result(std::move(markup));
  const PreparedText prepared = prepare_for_formatting(*result.markup_);
  Composition composition(prepared);
  composition.run();
  result.code_ = std::make_shared<const std::u16string>(composition.code());
  result.pieces_ = composition.pieces();
  result.is_serialised_ = true;
  return result;
}

SourceText SourceText::as_it_is(Shared markup) {
  SourceText result(std::move(markup));
  const std::u16string_view text = *result.markup_;
  std::u16string code;
  code.reserve(text.size());
  for (Offset at = 0; at < text.size();) {
    const bool line_break = text[at] == u'\n' || text[at] == u'\r';
    Offset end = line_break ? at + (text.substr(at).starts_with(line_end) ? 2 : 1)
                            : std::min(text.find_first_of(u"\r\n", at), text.size());
    const std::u16string_view piece = line_break ? line_end : text.substr(at, end - at);
    result.pieces_.push_back({code.size(), piece.size(), at, end - at});
    code += piece;
    at = end;
  }
  result.code_ = std::make_shared<const std::u16string>(std::move(code));
  return result;
}

std::u16string SourceText::markup_after(std::u16string_view left) const {
  std::u16string markup = changed_markup(*markup_, *code_, pieces_, left);
  return is_serialised_ ? with_carriage_returns(std::move(markup)) : markup;
}

std::u16string code_of(std::u16string_view text) {
  return *SourceText::formatted(std::make_shared<const std::u16string>(text)).code();
}

}  // namespace tvx::source
