#pragma once

#include <cstdint>

/// How a person stops what takes too long, so that it hasn't been.
///
/// What a person does enters by `run_interruptible`. An undo step that opens in it can be stopped: its
/// changes ask on the way (`stop_if_wanted`), and where the window says yes the step is left by an exception,
/// taken back as a whole and forgotten. What a host calls can't be stopped: its code expects an answer.
///
/// Each thread is alone with its own.
namespace tvx {

/// Thrown where something is stopped, and caught by `run_interruptible` alone.
struct Interrupted {};

/// Who knows what the user wants: the window.
class InterruptionWatch {
 public:
  virtual ~InterruptionWatch() = default;
  /// How many loops of events run within one another. What runs in a loop within an act isn't that act.
  virtual int loop_level() const = 0;
  /// Something begins that can be stopped, and ends, stopped or not.
  virtual void started() = 0;
  virtual void ended() = 0;
  /// Asked often between the two.
  virtual bool wants_to_stop() = 0;
};

/// Who is asked from now on, once in so many changes: one takes a microsecond to a millisecond. Null: nobody,
/// and nothing can be stopped.
void set_interruption_watch(InterruptionWatch* watch, std::uint32_t changes_between_questions = 16);
InterruptionWatch* interruption_watch();

namespace detail {

struct InterruptionState {
  InterruptionWatch* watch = nullptr;
  int act_level = -1;      // of the loop in which the user's act runs; -1: there is none
  bool stoppable = false;  // a step is open that may be left
  bool stopping = false;   // it is being left
  std::uint32_t between_questions = 1, until_asked = 1;
};
inline constinit thread_local InterruptionState interruption;

/// Throws where the user wants that.
void ask_whether_to_stop();

/// What a person does begins: true if it is no part of another such act.
class Door {
 public:
  Door();
  ~Door();
  Door(const Door&) = delete;
  Door& operator=(const Door&) = delete;
  bool outermost() const { return outermost_; }

 private:
  const InterruptionState outer_;
  bool outermost_ = false;
};

}  // namespace detail

/// A point at which all may be left, the tree being whole. Nothing but a comparison where nothing can be
/// stopped.
inline void stop_if_wanted() {
  if (detail::interruption.stoppable && --detail::interruption.until_asked == 0)
    detail::ask_whether_to_stop();
}

/// What was opened is being left: who tidies up at its end leaves that.
inline bool being_interrupted() { return detail::interruption.stopping; }

/// An undo step opens that an exception may leave; false: it can't be stopped. `end_stoppable` follows, if
/// so.
bool begin_stoppable();
void end_stoppable();

/// Nothing stops while it lives: in destructors, and in the code of others.
class Uninterrupted {
 public:
  Uninterrupted();
  ~Uninterrupted();
  Uninterrupted(const Uninterrupted&) = delete;
  Uninterrupted& operator=(const Uninterrupted&) = delete;

 private:
  const int act_level_;
  const bool stoppable_;
};

/// Does what a person wants done. False if it was stopped, and then nothing has been done.
template <class Act>
bool run_interruptible(Act&& act) {
  const detail::Door door;
  if (!door.outermost()) {
    act();
    return true;
  }
  try {
    act();
    return true;
  } catch (const Interrupted&) {
    return false;
  }
}

}  // namespace tvx
