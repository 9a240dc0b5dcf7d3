#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "tvx/core/part.h"
#include "tvx/spelling/application.h"
#include "tvx/spelling/dictionary_store.h"

namespace tvx::core {

/// The dictionaries of a control, and which of them a word is of.
class Speller final : public Part {
 public:
  explicit Speller(Context& context) : Part(context) {}

  /// Looked for when first asked; the host hears of each broken one once, by the event Error.
  spelling::DictionaryStore& dictionaries();
  /// What starts the application that a run asks: Hunspell with these dictionaries, or what was set.
  spelling::StartApplication application();
  /// Another speller, for programs that bring one and for tests; empty: back to the own.
  void set_application(spelling::StartApplication start) { start_ = std::move(start); }

  /// The language of what no element names one for: that of the property, else of the locale, else en-US.
  std::u16string language() const;
  /// The language of what stands in a node, as `lang` names it: that of the innermost element around it that
  /// names one, else the other one. "" for what isn't to be checked: an element around it says so by its
  /// `spellcheck`, or is for what programs write (CODE and its like).
  static std::u16string language_of(const dom::Node& node, std::u16string_view otherwise);

 private:
  std::unique_ptr<spelling::DictionaryStore> store_;
  spelling::StartApplication start_;
};

/// Number of the event Error for a dictionary that can't be used.
inline constexpr std::int32_t broken_dictionary = 12766;

}  // namespace tvx::core
