#include "tvx/browser/loading/loader.h"

#include <utility>

#include "tvx/base/error.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/platform/message_loop.h"

namespace tvx::browser {

using dom::style::style_of;

Browser::Loader::Loader(platform::MessageLoop& loop, HttpOptions options)
    : loop_(loop),
      resources_(loop, std::move(options)),
      sheets_(resources_),
      frames_(resources_, [this](const auto& call) { tell(call); }) {}

Browser::Loader::~Loader() { leave_document(); }

void Browser::Loader::post(void (Loader::*stage)(const Navigation&), const Navigation& navigation) {
  loop_.post([weak = weak_from_this(), stage, number = number_, navigation] {
    const auto self = weak.lock();
    if (self && self->is_current(number)) ((*self).*stage)(navigation);
  });
}

bool Browser::Loader::is_loading() const {
  if (asking_ || sheets_awaited_ || pages_beside_ > 0) return true;
  const bool on_its_way = state_ == ReadyState::Loading || state_ == ReadyState::Interactive;
  return telling_ == 0 && (on_its_way || sheet_downloads_ > 0);
}

// --- asking ---

void Browser::Loader::navigate(Navigation navigation) {
  asking_ = true;
  loop_.post([weak = weak_from_this(), asked = ++asked_, navigation = std::move(navigation)] {
    const auto self = weak.lock();
    if (self && asked == self->asked_) self->ask(asked, navigation);
  });
}

void Browser::Loader::ask(std::uint64_t asked, const Navigation& navigation) {
  // While it is being asked whether to go, the page that is there is as whole as it is: who waits for it in
  // the handler would wait for the handler.
  asking_ = false;
  if (let_through(navigation) && asked == asked_) begin(navigation);
}

void Browser::Loader::follow(Navigation navigation) {
  loop_.post([weak = weak_from_this(), navigation = std::move(navigation)]() mutable {
    const auto self = weak.lock();
    if (!self) return;
    if (!navigation.top || self->frames_.frame_named(navigation.target_frame))
      self->frames_.navigate(navigation);
    else if (self->let_through(navigation))
      self->begin(navigation);
  });
}

bool Browser::Loader::let_through(const Navigation& navigation) {
  bool cancel = false;
  // What is on its way goes on meanwhile: this is no event that it waits for.
  if (events_) events_->BeforeNavigate2(navigation, cancel);
  return !cancel;
}

// --- loading ---

void Browser::Loader::begin(const Navigation& navigation) {
  const std::uint64_t number = ++number_;
  end_running();
  if (!is_current(number)) return;
  state_ = ReadyState::Loading;
  page_download_ = true;
  tell([](BrowserEvents& events) { events.DownloadBegin(); });
  if (is_current(number)) post(&Loader::fetch, navigation);
}

// A document that is already shown is complete with what it has: should the next load fail, it stays.
void Browser::Loader::end_running() {
  resources_.cancel(std::exchange(page_, 0));
  const bool adopted = state_ == ReadyState::Interactive;
  if (page_download_) end_download();
  if (!adopted) return;
  state_ = ReadyState::Complete;
  document_->finish_loading();
  tell([url = shown_address_](BrowserEvents& events) { events.DocumentComplete(true, url); });
}

void Browser::Loader::stop() {
  ++number_;
  ++asked_;
  asking_ = false;
  end_running();
  state_ = document_ ? ReadyState::Complete : ReadyState::Uninitialized;
  drop_running_parts();
}

void Browser::Loader::fetch(const Navigation& navigation) {
  page_ = resources_.load_page(navigation.url, [this, number = number_, navigation](HttpAnswer answer) {
    if (is_current(number)) take(navigation, std::move(answer));
  });
}

void Browser::Loader::take(Navigation navigation, HttpAnswer answer) {
  const std::uint64_t number = number_;
  page_ = 0;
  if (is_remote(navigation.url)) {
    // What was asked for within the page survives a redirect.
    const std::size_t hash = navigation.url.find(u'#');
    if (hash != std::u16string::npos && !contains(answer.address, u"#"))
      answer.address += navigation.url.substr(hash);
  }
  if (!answer.has_content()) return fail(navigation, answer.status);
  auto document = make_page(answer);
  if (!document) return fail(navigation, static_cast<std::int32_t>(LoadFailure::NoContent));
  if (is_remote(navigation.url)) navigation.url = answer.address;
  state_ = ReadyState::Interactive;
  shown_address_ = navigation.url;
  adopt(std::move(document));
  if (!is_current(number)) return;
  tell([&](BrowserEvents& events) { events.NavigateComplete2(true, navigation.url); });
  if (!is_current(number)) return;
  sheets_.load(style_of(document_->tree()).take_sheets_to_load(), SheetLoader::LocalFiles::OfLocalPages,
               [this, number] {
                 if (is_current(number)) load_frames();
               });
}

void Browser::Loader::load_frames() {
  const std::uint64_t number = number_;
  end_download();
  if (!is_current(number)) return;
  frames_.load_all([this, number] {
    if (is_current(number)) finish();
  });
}

void Browser::Loader::finish() {
  const std::uint64_t number = number_;
  document_->finish_loading();
  tell([url = shown_address_](BrowserEvents& events) { events.DocumentComplete(true, url); });
  if (is_current(number)) state_ = ReadyState::Complete;
}

// The end has a turn of its own, which is on its way before the error is raised: a handler that waits for the
// browser to be ready gets it.
void Browser::Loader::fail(const Navigation& navigation, std::int32_t status) {
  post(&Loader::end_failed, navigation);
  if (events_) events_->NavigateError(navigation, status);
}

void Browser::Loader::end_failed(const Navigation&) {
  const std::uint64_t number = number_;
  end_download();
  if (!is_current(number)) return;
  if (!document_) {
    adopt(blank_page(u"about:blank"));
    tell([](BrowserEvents& events) { events.DocumentComplete(true, u"about:blank"); });
  }
  if (is_current(number)) state_ = ReadyState::Complete;
}

void Browser::Loader::end_download() {
  page_download_ = false;
  tell([](BrowserEvents& events) { events.DownloadComplete(); });
}

// --- the document ---

void Browser::Loader::adopt(std::shared_ptr<HTMLDocument> document) {
  leave_document();
  document_ = std::move(document);
  document_->set_geometry(geometry_);
  document_->set_link_follower(
      [weak = weak_from_this()](const std::u16string& url, const std::u16string& target) {
        Navigation navigation;
        navigation.url = url;
        navigation.target_frame = target;
        if (const auto self = weak.lock()) self->follow(std::move(navigation));
      });
  connect_source(*document_);
  document_->set_resource_policy(policy_);
  document_->set_on_withheld([weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->tell_withheld();
  });
  resources_.begin_page();
  style_of(document_->tree()).set_link_observer(this);
  const auto shown = document_;
  drop_running_parts();
  const Telling inside(telling_);
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->document_replaced(shown);
}

void Browser::Loader::leave_document() {
  if (!document_) return;
  document_->set_link_follower({});
  document_->set_on_withheld({});
  style_of(document_->tree()).set_link_observer(nullptr);
}

/// Sheets and frames that are still on their way are given up, and their downloads are over.
void Browser::Loader::drop_running_parts() {
  sheets_.set_document(document_);
  for (int open = std::exchange(sheet_downloads_, 0); open > 0; --open)
    tell([](BrowserEvents& events) { events.DownloadComplete(); });
  frames_.set_document(document_);
}

void Browser::Loader::connect_source(HTMLDocument& document) {
  document.set_document_source([weak = weak_from_this()](const std::u16string& url) {
    const auto self = weak.lock();
    if (!self) throw RuntimeError(errors::not_supported, u"Nobody loads documents for this one");
    return self->load_beside(url);
  });
}

std::shared_ptr<HTMLDocument> Browser::Loader::load_beside(const std::u16string& url) {
  auto document = HTMLDocument::create(dom::Document::create(), url);
  connect_source(*document);
  const bool remote = is_remote(url);
  ++pages_beside_;
  resources_.load_page(url, [this, weak = std::weak_ptr(document)](const HttpAnswer& answer) {
    --pages_beside_;
    const auto waiting = weak.lock();
    if (!waiting) return;
    if (answer.has_content() && fill_page(*waiting, answer))
      waiting->finish_loading();
    else
      waiting->fail_loading();
  });
  if (!remote && document->load_failed()) throw RuntimeError(errors::file_not_found, u"File not found");
  return document;
}

// --- what comes from elsewhere ---

void Browser::Loader::set_policy_of_document(const ResourcePolicy& policy) {
  if (!document_) return;
  document_->set_resource_policy(policy);
  if (policy.remote_style_sheets)
    load_later_sheets(sheets_.take_withheld(), SheetLoader::LocalFiles::OfLocalPages);
}

// Found out in the midst of a load: whoever hears of it may do anything.
void Browser::Loader::tell_withheld() {
  loop_.post([weak = weak_from_this(), document = std::weak_ptr(document_)] {
    const auto self = weak.lock();
    if (self && self->events_ && document.lock() == self->document_) self->events_->ContentWithheld();
  });
}

// --- style sheets that come later ---

// Called inside a mutation: the loading itself waits for a turn of its own.
void Browser::Loader::links_changed() {
  if (std::exchange(sheets_awaited_, true)) return;
  loop_.post([weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->load_changed_sheets();
  });
}

void Browser::Loader::load_changed_sheets() {
  sheets_awaited_ = false;
  if (!document_) return;
  const auto changed = document_;
  const auto owners = style_of(changed->tree()).take_sheets_to_load();
  // What a link was changed to is the host's or the user's own wish, not the page's.
  load_later_sheets(owners, SheetLoader::LocalFiles::Allowed);
}

void Browser::Loader::load_later_sheets(const std::vector<dom::Ref<dom::Element>>& owners,
                                        SheetLoader::LocalFiles local) {
  if (owners.empty()) return;
  const auto changed = document_;
  ++sheet_downloads_;
  tell([](BrowserEvents& events) { events.DownloadBegin(); });
  if (document_ != changed) return;
  sheets_.load(owners, local, [this] {
    if (sheet_downloads_ == 0) return;
    --sheet_downloads_;
    tell([](BrowserEvents& events) { events.DownloadComplete(); });
  });
}

}  // namespace tvx::browser
