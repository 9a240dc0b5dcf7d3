#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

#include "tvx/core/part.h"
#include "tvx/dom/range.h"

namespace tvx::spelling {
class SpellingProgress;
}

namespace tvx::core {

class DialogHost;

/// Lets the message loop run now and then while a run goes over many words that are right, and shows how far
/// it has come. A run that ends soon does neither.
class RunPace final : public Part {
 public:
  /// `dialogs`: who shows it; null: nobody. `quit` is called when the user ends the run.
  RunPace(Context& context, DialogHost* dialogs, std::function<void()> quit);
  ~RunPace();

  /// The time counts anew: the user is asked now, or just was.
  void restart();
  /// The run has come to this position. True: the loop has run, and anything may have happened.
  bool reach(const dom::Boundary& place);

 private:
  using Clock = std::chrono::steady_clock;
  void open();
  void count_to(const dom::Boundary& place);

  DialogHost* dialogs_;
  std::function<void()> quit_;
  std::unique_ptr<spelling::SpellingProgress> progress_;
  Clock::time_point next_;
  std::size_t passed_ = 0, whole_ = 0;  // units of text
  std::unique_ptr<dom::LiveRange> counted_;
};

}  // namespace tvx::core
