#pragma once

#include <memory>
#include <string>
#include <vector>

#include "browser/browser.h"
#include "dom/style/style_engine.h"

namespace tvx::browser {

/// The road of a navigation, one turn of the message loop a stage. A stage that finds that another
/// navigation has begun meanwhile does nothing; so does one whose browser is gone.
class Browser::Loader final : public std::enable_shared_from_this<Loader>, private dom::style::LinkObserver {
 public:
  explicit Loader(platform::MessageLoop& loop) : loop_(loop) {}
  ~Loader() override;

  void navigate(Navigation navigation);
  /// A link: until BeforeNavigate2 lets it pass, a load that is on its way goes on.
  void follow(Navigation navigation);
  void adopt(std::shared_ptr<HTMLDocument> document);

  platform::MessageLoop& loop_;
  BrowserEvents* events_ = nullptr;
  std::vector<BrowserObserver*> observers_;
  std::shared_ptr<HTMLDocument> document_;
  const HTMLDocument::Geometry* geometry_ = nullptr;
  BrowserWindow* window_ = nullptr;
  browser::ReadyState state_ = browser::ReadyState::Uninitialized;
  bool silent_ = false;

 private:
  void post(void (Loader::*stage)(std::uint64_t, const Navigation&), const Navigation& navigation);
  bool is_current(std::uint64_t number) const { return number == number_; }
  void ask(std::uint64_t number, const Navigation& navigation);
  void begin(const Navigation& navigation);
  void load(std::uint64_t number, const Navigation& navigation);
  void fail(const Navigation& navigation);
  void end_failed(std::uint64_t number, const Navigation& navigation);
  void finish(std::uint64_t number, const Navigation& navigation);
  void load_frames(std::uint64_t number);
  void load_frame(const Navigation& navigation);
  void load_sheets(const std::vector<dom::Ref<dom::Element>>& links);
  void links_changed() override;
  void load_changed_sheets();
  template <class Call>
  void tell(Call&& call);

  std::uint64_t number_ = 0;                                         // of the latest navigation
  browser::ReadyState before_ = browser::ReadyState::Uninitialized;  // restored if it is refused
  bool sheets_awaited_ = false;
};

}  // namespace tvx::browser
