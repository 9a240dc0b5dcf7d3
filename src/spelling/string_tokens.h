#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::spelling {

/// Takes a text apart at blanks and control characters. Positions count from 1.
class clsString {
 public:
  /// Scans from `startPos` to `endPos`, both included; below 1 they mean the whole. Out come the tokens, each
  /// with where it starts. False, and nothing produced, of an empty text and of positions after its end.
  bool TokenizeStr(std::u16string_view text, std::vector<std::int32_t>& positions,
                   std::vector<std::u16string>& tokens, std::int32_t& tokenCount, std::int32_t startPos = 0,
                   std::int32_t endPos = 0) const;
  /// Without control characters.
  static std::u16string StripCtrlCharsInStr(std::u16string_view text);

  /// Further characters that count as blanks.
  const std::u16string& UserDelim() const { return delimiters_; }
  void set_UserDelim(std::u16string_view characters) { delimiters_ = characters; }

 private:
  bool ends_token(char16_t unit) const;
  std::u16string delimiters_;
};

}  // namespace tvx::spelling
