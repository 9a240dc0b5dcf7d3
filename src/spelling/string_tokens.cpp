#include "tvx/spelling/string_tokens.h"

#include <algorithm>

namespace tvx::spelling {

namespace {

bool is_control(char16_t unit) { return unit < 32 || unit == 127; }

}  // namespace

bool clsString::ends_token(char16_t unit) const {
  return is_control(unit) || unit == u' ' || delimiters_.find(unit) != delimiters_.npos;
}

bool clsString::TokenizeStr(std::u16string_view text, std::vector<std::int32_t>& positions,
                            std::vector<std::u16string>& tokens, std::int32_t& tokenCount,
                            std::int32_t startPos, std::int32_t endPos) const {
  const auto length = static_cast<std::int32_t>(text.size());
  if (length == 0 || endPos > length || startPos > length) return false;
  startPos = std::max(startPos, 1);
  if (endPos < 1) endPos = length;
  positions.clear();
  tokens.clear();
  std::u16string token;
  for (std::int32_t at = startPos; at <= endPos; ++at) {
    const char16_t unit = text[static_cast<std::size_t>(at - 1)];
    if (!ends_token(unit)) {
      if (token.empty()) positions.push_back(at);
      token += unit;
    } else if (!token.empty()) {
      tokens.push_back(std::move(token));
      token.clear();
    }
  }
  if (!token.empty()) tokens.push_back(std::move(token));
  tokenCount = static_cast<std::int32_t>(tokens.size());
  return true;
}

std::u16string clsString::StripCtrlCharsInStr(std::u16string_view text) {
  std::u16string kept;
  std::ranges::copy_if(text, std::back_inserter(kept), [](char16_t unit) { return !is_control(unit); });
  return kept;
}

}  // namespace tvx::spelling
