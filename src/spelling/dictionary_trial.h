#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include "tvx/spelling/dictionary_files.h"

namespace tvx::spelling {

/// What a dictionary may use while it is tried.
struct TrialLimits {
  std::size_t memory = std::size_t{512} << 20;
  std::chrono::milliseconds time{5000};
};

/// Loads a dictionary in a process of its own and asks it a few words: a file of rules can make the one who
/// reads it crash, or go on without end, and that shall not be the editor. Nothing: it did well; else what is
/// wrong.
std::optional<std::u16string> trial_of(const DictionaryFiles& files, const TrialLimits& limits = {});

/// What only the administrator can write is as good as the program itself, and needs no trial.
bool needs_trial(const DictionaryFiles& files);

}  // namespace tvx::spelling
