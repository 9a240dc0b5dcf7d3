#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tvx/browser/browser.h"
#include "tvx/browser/loading/frame_loader.h"
#include "tvx/browser/loading/resources.h"
#include "tvx/browser/loading/sheet_loader.h"
#include "tvx/dom/style/style_engine.h"

namespace tvx::browser {

/// The course of a navigation: asked for, let through, fetched, adopted, its sheets, its frames, complete.
/// Each stage runs in a turn of the message loop; one that finds that another navigation has begun meanwhile
/// does nothing; so does one whose browser is gone.
class Browser::Loader final : public std::enable_shared_from_this<Loader>, private dom::style::LinkObserver {
 public:
  Loader(platform::MessageLoop& loop, HttpOptions options);
  ~Loader() override;
  /// After the constructor, since it names itself.
  void prepare() { resources_.set_owner(weak_from_this()); }

  /// Until BeforeNavigate2 lets it pass, a load that is on its way goes on.
  void navigate(Navigation navigation);
  void follow(Navigation navigation);
  /// Ends what is on its way; the document stays as far as it has come, and is complete.
  void stop();
  browser::ReadyState ready_state() const { return asking_ ? browser::ReadyState::Loading : state_; }
  void set_policy_of_document(const ResourcePolicy& policy);
  std::shared_ptr<HTMLDocument> load_beside(const std::u16string& url);
  bool is_loading() const;

  platform::MessageLoop& loop_;
  BrowserEvents* events_ = nullptr;
  std::vector<BrowserObserver*> observers_;
  std::shared_ptr<HTMLDocument> document_;
  const Geometry* geometry_ = nullptr;
  BrowserWindow* window_ = nullptr;
  bool silent_ = false;
  ResourcePolicy policy_;

 private:
  /// Posts a stage of the present load.
  void post(void (Loader::*stage)(const Navigation&), const Navigation& navigation);
  bool is_current(std::uint64_t number) const { return number == number_; }
  void ask(std::uint64_t asked, const Navigation& navigation);
  bool let_through(const Navigation& navigation);
  void begin(const Navigation& navigation);
  void end_running();
  void fetch(const Navigation& navigation);
  void take(Navigation navigation, HttpAnswer answer);
  void load_frames();
  void finish();
  void fail(const Navigation& navigation, std::int32_t status);
  void end_failed(const Navigation& navigation);
  void adopt(std::shared_ptr<HTMLDocument> document);
  void connect_source(HTMLDocument& document);
  void leave_document();
  void drop_running_parts();
  void end_download();
  void links_changed() override;
  void load_changed_sheets();
  void load_later_sheets(const std::vector<dom::Ref<dom::Element>>& owners, SheetLoader::LocalFiles local);
  void tell_withheld();
  /// The load goes on when the call returns, and not before.
  template <class Call>
  void tell(Call&& call) {
    const Telling inside(telling_);
    if (events_) call(*events_);
  }
  struct Telling {
    explicit Telling(int& depth) : depth_(depth) { ++depth_; }
    ~Telling() { --depth_; }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;
    int& depth_;
  };

  Resources resources_;
  SheetLoader sheets_;
  FrameLoader frames_;
  std::uint64_t number_ = 0;  // of the latest load that has begun
  std::uint64_t asked_ = 0;   // of the latest navigation that was asked for
  bool asking_ = false;       // it has still to be let through
  browser::ReadyState state_ = browser::ReadyState::Uninitialized;
  Resources::Ticket page_ = 0;
  bool page_download_ = false;  // DownloadBegin was raised, DownloadComplete not yet
  int sheet_downloads_ = 0;     // the same of sheets that came later
  int pages_beside_ = 0;        // documents that no window shows, on their way
  int telling_ = 0;             // events that are being told, and that the load waits for
  std::u16string shown_address_;
  bool sheets_awaited_ = false;
};

}  // namespace tvx::browser
