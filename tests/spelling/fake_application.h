#pragma once

#include <chrono>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/spelling/application.h"

namespace tvx::spelling {

/// A speller that knows the words it was given, and writes down what it is asked.
struct FakeSpeller {
  std::map<std::u16string, std::vector<std::u16string>> wrong;  // and what it suggests
  std::vector<std::string> calls;
  bool fails = false;
  bool slow = false;  // a millisecond a call

  StartApplication start() {
    return [this] { return std::make_unique<Application>(*this); };
  }
  void heard(std::string call) {
    calls.push_back(std::move(call));
    if (slow) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (fails) throw RuntimeError(errors::invalid_call, u"The speller is busy");
  }

  class Application final : public SpellingApplication {
   public:
    explicit Application(FakeSpeller& speller) : speller_(speller) { speller_.calls.emplace_back("start"); }
    void set_Visible(bool visible) override { speller_.heard(visible ? "Visible" : "not Visible"); }
    int Documents_count() override {
      speller_.heard("Documents.count");
      return documents_;
    }
    void Documents_Add() override {
      speller_.heard("Documents.Add");
      ++documents_;
    }
    bool CheckSpelling(std::span<const Argument> arguments) override {
      std::string call = "CheckSpelling";
      for (const Argument& argument : arguments) call += "," + (argument ? to_utf8(*argument) : "-");
      speller_.heard(call);
      return !speller_.wrong.contains(*arguments[0]);
    }
    std::vector<std::u16string> GetSpellingSuggestions(std::u16string_view word) override {
      speller_.heard("GetSpellingSuggestions," + to_utf8(word));
      return speller_.wrong.at(std::u16string(word));
    }
    void Quit(bool save) override { speller_.heard(save ? "Quit,save" : "Quit,false"); }
    void set_language(std::u16string_view tag) override { languages.push_back(to_utf8(tag)); }
    std::vector<std::string> languages;

   private:
    FakeSpeller& speller_;
    int documents_ = 0;
  };
};

}  // namespace tvx::spelling
