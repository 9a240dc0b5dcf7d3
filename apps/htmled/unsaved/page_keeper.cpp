#include "htmled/unsaved/page_keeper.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "htmled/document/failure_words.h"
#include "htmled/preferences/preferences.h"
#include "htmled/unsaved/unsaved_folder.h"
#include "tvx/base/error.h"

namespace tvx::htmled {

/// The thread, and what is on its way to it: jobs that touch the folder, which no other thread does.
struct KeptPages::Writer {
  explicit Writer(KeptPages& owner) : owner_(owner), thread_([this] { run(); }) {}
  ~Writer() {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }

  void add(std::function<void(UnsavedFolder&)> job) {
    {
      const std::lock_guard lock(mutex_);
      jobs_.push_back(std::move(job));
    }
    changed_.notify_all();
  }
  void finish() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return jobs_.empty() && !busy_; });
  }

 private:
  void run() {
    UnsavedFolder folder;
    std::unique_lock lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return ending_ || !jobs_.empty(); });
      if (jobs_.empty()) return;
      const auto job = std::move(jobs_.front());
      jobs_.pop_front();
      busy_ = true;
      lock.unlock();
      try {
        job(folder);
      } catch (const RuntimeError& error) {
        tell(error);
      }
      lock.lock();
      busy_ = false;
      changed_.notify_all();
    }
  }
  void tell(const RuntimeError& error) {
    if (std::exchange(told_, true)) return;
    QMetaObject::invokeMethod(
        &owner_, [owner = &owner_, error] { emit owner->failed(words_of(error)); }, Qt::QueuedConnection);
  }

  KeptPages& owner_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void(UnsavedFolder&)>> jobs_;
  bool busy_ = false, ending_ = false, told_ = false;
  std::thread thread_;
};

KeptPages::KeptPages() = default;
KeptPages::~KeptPages() = default;

std::string KeptPages::new_name() { return std::to_string(++last_name_); }

void KeptPages::keep(const std::string& name, files::KeptPage page) {
  if (!writer_) writer_ = std::make_unique<Writer>(*this);
  writer_->add(
      [name, page = std::move(page)](UnsavedFolder& folder) { folder.keep(name, files::kept_bytes(page)); });
}

void KeptPages::forget(const std::string& name) {
  if (writer_) writer_->add([name](UnsavedFolder& folder) { folder.forget(name); });
}

void KeptPages::finish() {
  if (writer_) writer_->finish();
}

PageKeeper::PageKeeper(KeptPages& pages, std::function<std::optional<files::KeptPage>()> take)
    : pages_(pages), take_(std::move(take)), name_(pages.new_name()) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &PageKeeper::keep_now);
}

void PageKeeper::note_change() {
  if (std::exchange(noted_, true)) return;
  if (!preferences::keeps_unsaved()) return forget();
  timer_.start(preferences::keep_seconds() * 1000);
}

void PageKeeper::keep_now() {
  if (!std::exchange(noted_, false)) return;
  timer_.stop();
  std::optional<files::KeptPage> page = take_();
  if (!page) return forget();
  pages_.keep(name_, std::move(*page));
  kept_ = true;
}

void PageKeeper::forget() {
  noted_ = false;
  timer_.stop();
  if (std::exchange(kept_, false)) pages_.forget(name_);
}

}  // namespace tvx::htmled
