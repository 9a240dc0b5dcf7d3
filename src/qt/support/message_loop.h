#pragma once

#include <QObject>

#include "tvx/platform/message_loop.h"
#include "tvx/platform/task_queue.h"

class QTimer;

namespace tvx::qt {

/// The platform's loop over Qt's. Tasks run from Qt's own event loop, wherever that is spun: in the
/// application's exec(), under a modal dialog, in a menu, or in pump().
class MessageLoop final : public QObject, public platform::MessageLoop {
 public:
  MessageLoop();
  ~MessageLoop() override;

  std::int64_t now() const override;
  void post(Task task) override;
  platform::TimerId post_delayed(std::int64_t milliseconds, Task task) override;
  void cancel(platform::TimerId timer) override;
  void pump(std::int64_t max_wait_milliseconds) override;
  /// The same for everything but the user: keys and presses wait for whoever runs next. For what has been
  /// asked for and waits only until what came before it has arrived: what comes after it, closing the page
  /// above all, comes after it.
  static void pump_without_input(std::int64_t max_wait_milliseconds);

  /// While one lives, pump() leaves keys and presses where they are: they come, in their order, when the last
  /// has gone. For what brings something else in front of the user, who means that already. A dialog that
  /// opens meanwhile has them.
  class InputLater {
   public:
    InputLater() { ++input_later_; }
    ~InputLater();
    InputLater(const InputLater&) = delete;
    InputLater& operator=(const InputLater&) = delete;
  };

  /// While one lives, pump() leaves the program's events alone as long as tasks of this loop go on coming.
  /// For a wait within an event of Qt's that allows no others in it, as the show of a window: Qt walks
  /// through the window's widgets then, and whatever else is due would change them under its feet.
  class TasksFirst {
   public:
    explicit TasksFirst(MessageLoop& loop) : loop_(loop) {
      ++loop_.tasks_first_;
      loop_.last_task_ = loop_.now();
    }
    ~TasksFirst() { --loop_.tasks_first_; }
    TasksFirst(const TasksFirst&) = delete;
    TasksFirst& operator=(const TasksFirst&) = delete;

   private:
    MessageLoop& loop_;
  };

 private:
  bool event(QEvent* event) override;
  void wake();
  void run_pending();
  bool run_tasks_alone();
  void set_timer();

  inline static int input_later_ = 0;  // there is one queue of input, however many loops there are

  platform::TaskQueue tasks_;
  QTimer* timer_;
  bool woken_ = false;
  int tasks_first_ = 0;
  std::int64_t last_task_ = 0;  // when the last one ran while that counts
};

}  // namespace tvx::qt
