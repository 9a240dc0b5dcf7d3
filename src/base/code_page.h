#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvx {

/// An 8-bit form of text: what bytes in a file mean. A value, cheap to copy.
class CodePage {
 public:
  static CodePage utf8();
  static CodePage windows_1252();
  /// By a label of the Encoding standard, section 4.2 ("utf-8", "windows-1252", "latin1", "Shift_JIS"),
  /// without regard to case. As there, the labels of ISO 8859-1 and ASCII mean Windows-1252.
  static std::optional<CodePage> by_name(std::string_view name);

  /// The code page of the process: the one set, else that of the user's locale, else UTF-8.
  /// The bare "C" locale tells nothing about the user's files and counts as UTF-8.
  static CodePage system();
  /// Sets the code page of the process, for programs and tests; nothing goes back to the locale's.
  static void set_system(std::optional<CodePage> page);

  /// The name to write into a file: lower case, as in the Encoding standard.
  const std::string& name() const { return name_; }

  /// A character that the code page can't hold becomes one "?", a lone surrogate too.
  std::string encode(std::u16string_view text) const;
  /// Malformed bytes become U+FFFD. Windows-1252 has none: its five free bytes are control characters
  /// (Encoding standard, index windows-1252). A byte order mark is kept, as a character.
  std::u16string decode(std::string_view bytes) const;

  bool operator==(const CodePage&) const = default;

 private:
  explicit CodePage(std::string name) : name_(std::move(name)) {}

  std::string name_;
};

/// The code page of the process for the life of this object.
class SystemCodePageScope {
 public:
  explicit SystemCodePageScope(CodePage page) : before_(CodePage::system()) { CodePage::set_system(page); }
  ~SystemCodePageScope() { CodePage::set_system(before_); }
  SystemCodePageScope(const SystemCodePageScope&) = delete;
  SystemCodePageScope& operator=(const SystemCodePageScope&) = delete;

 private:
  CodePage before_;
};

}  // namespace tvx
