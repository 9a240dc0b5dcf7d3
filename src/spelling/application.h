#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The speller as the control drives it: an application of its own, by the operations that such applications
/// have for programs.
namespace tvx::spelling {

/// Every operation may fail with a RuntimeError.
class SpellingApplication {
 public:
  /// An argument that is left out is nothing.
  using Argument = std::optional<std::u16string>;

  virtual ~SpellingApplication() = default;
  virtual void set_Visible(bool visible) = 0;
  virtual int Documents_count() = 0;
  virtual void Documents_Add() = 0;
  /// The word, a custom dictionary (a file of one word a line), two that nobody gives, and in the fifth
  /// position another custom dictionary.
  virtual bool CheckSpelling(std::span<const Argument> arguments) = 0;
  /// The best first.
  virtual std::vector<std::u16string> GetSpellingSuggestions(std::u16string_view word) = 0;
  virtual void Quit(bool save_changes) = 0;

  /// The language of the words that are asked about from now on, as `lang` names it. "": of what is none, no
  /// word is wrong.
  virtual void set_language(std::u16string_view /*tag*/) {}
};

/// Starts the application. Fails with RuntimeError(429) where there is none.
using StartApplication = std::function<std::unique_ptr<SpellingApplication>()>;

inline constexpr int no_such_application = 429;

}  // namespace tvx::spelling
