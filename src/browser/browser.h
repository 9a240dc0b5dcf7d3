#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/browser/html_document.h"
#include "tvx/browser/loading/http_client.h"

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::browser {

class Browser;

/// Where a navigation wants to go.
struct Navigation {
  std::u16string url;
  std::int32_t flags = 0;
  std::u16string target_frame;  // empty: the page itself
  std::u16string post_data, headers;
  bool top = true;            // the browser's own page; false: a frame in it
  bool part_of_page = false;  // what a frame shows at first, as its page says
};

/// What the browser reports to its control. Every call comes from a turn of the message loop, in this order:
/// BeforeNavigate2, DownloadBegin, NavigateComplete2 (the document is there), DownloadComplete (its sheets
/// too), then the same of its frames, and DocumentComplete at last. A failed load has NavigateError in place
/// of NavigateComplete2 and no DocumentComplete. Each DownloadBegin has its DownloadComplete, also where a
/// load is given up for another.
class BrowserEvents {
 public:
  virtual ~BrowserEvents() = default;
  /// Setting `cancel` ends the navigation.
  virtual void BeforeNavigate2(const Navigation&, bool& /*cancel*/) {}
  virtual void NavigateComplete2(bool /*top*/, const std::u16string& /*url*/) {}
  virtual void DocumentComplete(bool /*top*/, const std::u16string& /*url*/) {}
  virtual void DownloadBegin() {}
  virtual void DownloadComplete() {}
  /// `status` is what the server answered (404), or a LoadFailure.
  virtual void NavigateError(const Navigation&, std::int32_t /*status*/) {}
  /// The document wants something from elsewhere that it may not bring in. Once a document, and again when it
  /// may bring in something else.
  virtual void ContentWithheld() {}
};

/// The window that shows the browser's page and takes its keyboard input.
class BrowserWindow {
 public:
  virtual ~BrowserWindow() = default;
  virtual void focus() {}
  virtual void show_caret() {}
  /// In CSS pixels; positions after the end mean the end.
  virtual void scroll_to(int /*x*/, int /*y*/) {}
  virtual void scroll_into_view(dom::Element& /*element*/) {}
  /// Whether printing is possible; throws RuntimeError if nobody can say.
  virtual bool can_print() { return false; }
  virtual void print(bool /*with_dialog*/) {}
};

class BrowserObserver {
 public:
  virtual ~BrowserObserver() = default;
  /// The browser shows another document, perhaps one whose style sheets are still to come.
  virtual void document_replaced(const std::shared_ptr<HTMLDocument>& document) = 0;
};

enum class ReadyState : std::uint8_t {
  Uninitialized = 0,
  Loading = 1,
  Loaded = 2,
  Interactive = 3,
  Complete = 4
};

/// The browser component that the control hosts: it loads documents and reports on that. No call waits for a
/// load; everything after Navigate happens in later turns of the message loop.
class Browser {
 public:
  explicit Browser(platform::MessageLoop& loop, HttpOptions options = {});
  ~Browser();
  Browser(const Browser&) = delete;
  Browser& operator=(const Browser&) = delete;

  /// Begins to load "about:blank", an address of "file:", "http:" or "https:", or a plain path. `ReadyState`
  /// is 1 when this returns. A load that is on its way goes on until BeforeNavigate2 has let this one pass,
  /// and is given up then.
  void Navigate(std::u16string_view url);
  /// The user asked for it, by a link: `ReadyState` changes only once BeforeNavigate2 has let it pass. If
  /// the target is a frame of the document, that frame goes there and the document stays.
  void follow_link(const Navigation& navigation);
  /// Gives up what is on its way. The document stays as far as it has come.
  void Stop();
  browser::ReadyState ReadyState() const;
  /// Whether a turn of the loop may still bring something: a page, a sheet or a frame that is on its way.
  /// False inside an event that the load itself waits for. Who waits for the browser waits no longer.
  bool is_loading() const;
  bool Silent() const;
  void set_Silent(bool silent);
  /// Null before the first load has come so far that there is one.
  const std::shared_ptr<HTMLDocument>& Document() const;

  void set_events(BrowserEvents* events);
  BrowserEvents* events() const;
  void add_observer(BrowserObserver& observer);
  void remove_observer(BrowserObserver& observer);
  /// What the present document and all that are loaded from now on may bring in.
  void set_resource_policy(const ResourcePolicy& policy);
  /// What the present document may bring in, as long as it is there.
  void set_policy_of_document(const ResourcePolicy& policy);
  /// Answers element_from_point of every document loaded from now on, and of the present one.
  void set_geometry(const Geometry* geometry);
  /// Null: no window.
  void set_window(BrowserWindow* window);
  BrowserWindow* window() const;

  /// Whether a printing command would be carried out: 0, or 2 (enabled). Throws RuntimeError if that can't
  /// be said.
  std::int32_t QueryStatusWB(std::int32_t command);
  /// `option` 1 asks the user first, 2 does not.
  void ExecWB(std::int32_t command, std::int32_t option);

  /// A document that shows nothing, is not this browser's, and reads "loading".
  static std::shared_ptr<HTMLDocument> placeholder();
  /// As HTMLDocument::createDocumentFromUrl, where there is no document yet.
  std::shared_ptr<HTMLDocument> createDocumentFromUrl(std::u16string_view url);

 private:
  class Loader;
  std::shared_ptr<Loader> loader_;
};

}  // namespace tvx::browser
