#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// From the bytes of a file to its text and back, so that what isn't edited stays as it was.
namespace tvx::files {

enum class LineEnd : std::uint8_t { Lf, CrLf, Cr };
/// Of each line of a text, in order.
using LineEnds = std::vector<LineEnd>;

/// How a file's bytes spell its text.
struct FileForm {
  /// As in the Encoding standard, lower case; "us-ascii" where nothing is declared and nothing but ASCII
  /// stands there, so that whatever a reader takes for granted, it reads the same.
  std::string charset = "utf-8";
  bool byte_order_mark = false;
  /// Whether the file itself tells its character set, by a mark or a `meta`. If it doesn't, what is written
  /// is such that the same guess is made again.
  bool declared = true;
  /// The most frequent one.
  LineEnd line_end = LineEnd::Lf;
};

struct FileContent {
  std::u16string text;  // lines end in LF
  FileForm form;
  LineEnds line_ends;  // where the file mixes them; else empty
  /// False if some bytes meant nothing in the character set: they are U+FFFD in the text.
  bool faithful = true;
};

FileContent read_form(std::string_view bytes);

/// The line ends of a text that was made out of another: where both say the same, those of the other, and in
/// between as in the line before.
LineEnds line_ends_after(std::u16string_view source, const LineEnds& ends, std::u16string_view text);

/// The bytes of markup as the serialiser writes it, with LF, and with the form's line end where no others are
/// given. Characters that the character set can't hold become numeric references; in style sheets and
/// scripts, which know none, the escapes of those languages.
std::string write_form(std::u16string_view markup, const FileForm& form, const LineEnds& ends = {});

}  // namespace tvx::files
