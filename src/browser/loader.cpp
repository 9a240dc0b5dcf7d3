#include "browser/loader.h"

#include <algorithm>
#include <utility>

#include "base/code_page.h"
#include "browser/encoding.h"
#include "browser/page_source.h"
#include "dom/tree.h"
#include "platform/message_loop.h"

namespace tvx::browser {
namespace {

/// "The resource was not found", as hosts know it.
constexpr std::int32_t resource_not_found = std::int32_t(0x800C0005);

/// CSS Syntax, section 3.2 "the input byte stream", as far as local files need it.
std::u16string decode_sheet(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return from_utf8(bytes.substr(3));
  return is_utf8(bytes) ? from_utf8(bytes) : CodePage::windows_1252().decode(bytes);
}

bool is_frame(const dom::Node& node) { return node.is(dom::Tag::Iframe) || node.is(dom::Tag::Frame); }

}  // namespace

Browser::Loader::~Loader() {
  if (!document_) return;
  document_->set_link_follower({});
  dom::style::style_of(document_->tree()).set_link_observer(nullptr);
}

template <class Call>
void Browser::Loader::tell(Call&& call) {
  if (events_) call(*events_);
}

void Browser::Loader::post(void (Loader::*stage)(std::uint64_t, const Navigation&),
                           const Navigation& navigation) {
  loop_.post([weak = weak_from_this(), stage, number = number_, navigation] {
    const auto self = weak.lock();
    if (self && self->is_current(number)) ((*self).*stage)(number, navigation);
  });
}

void Browser::Loader::navigate(Navigation navigation) {
  ++number_;
  if (state_ == ReadyState::Complete || state_ == ReadyState::Uninitialized) before_ = state_;
  state_ = ReadyState::Loading;
  post(&Loader::ask, navigation);
}

void Browser::Loader::follow(Navigation navigation) {
  loop_.post([weak = weak_from_this(), navigation = std::move(navigation)] {
    const auto self = weak.lock();
    if (!self) return;
    bool cancel = false;
    self->tell([&](BrowserEvents& events) { events.BeforeNavigate2(navigation, cancel); });
    if (cancel) return;
    ++self->number_;
    if (self->state_ == ReadyState::Complete) self->before_ = self->state_;
    self->begin(navigation);
  });
}

void Browser::Loader::ask(std::uint64_t number, const Navigation& navigation) {
  // While it is being asked whether to go, the page that is there is whole: who waits for it in the handler
  // would wait for the handler.
  state_ = before_;
  bool cancel = false;
  tell([&](BrowserEvents& events) { events.BeforeNavigate2(navigation, cancel); });
  if (is_current(number) && !cancel) begin(navigation);
}

void Browser::Loader::begin(const Navigation& navigation) {
  const std::uint64_t number = number_;
  state_ = ReadyState::Loading;
  tell([](BrowserEvents& events) { events.DownloadBegin(); });
  if (is_current(number)) post(&Loader::load, navigation);
}

void Browser::Loader::load(std::uint64_t number, const Navigation& navigation) {
  auto document = load_page(navigation.url);
  if (!document) return fail(navigation);
  state_ = ReadyState::Interactive;
  adopt(std::move(document));
  tell([&](BrowserEvents& events) { events.NavigateComplete2(true, navigation.url); });
  if (!is_current(number)) return;
  load_sheets(dom::style::style_of(document_->tree()).take_changed_links());
  tell([](BrowserEvents& events) { events.DownloadComplete(); });
  if (is_current(number)) load_frames(number);
  if (is_current(number)) finish(number, navigation);
}

void Browser::Loader::finish(std::uint64_t number, const Navigation& navigation) {
  document_->finish_loading();
  tell([&](BrowserEvents& events) { events.DocumentComplete(true, navigation.url); });
  if (is_current(number)) state_ = ReadyState::Complete;
}

// The end has a turn of its own, which is on its way before the error is told: a handler that waits for the
// browser to be ready gets it.
void Browser::Loader::fail(const Navigation& navigation) {
  post(&Loader::end_failed, navigation);
  tell([&](BrowserEvents& events) { events.NavigateError(navigation, resource_not_found); });
}

void Browser::Loader::end_failed(std::uint64_t number, const Navigation&) {
  tell([](BrowserEvents& events) { events.DownloadComplete(); });
  if (!is_current(number)) return;
  if (!document_) {
    adopt(blank_page(u"about:blank"));
    tell([](BrowserEvents& events) { events.DocumentComplete(true, u"about:blank"); });
  }
  if (is_current(number)) state_ = ReadyState::Complete;
}

void Browser::Loader::adopt(std::shared_ptr<HTMLDocument> document) {
  if (document_) {
    document_->set_link_follower({});
    dom::style::style_of(document_->tree()).set_link_observer(nullptr);
  }
  document_ = std::move(document);
  document_->set_geometry(geometry_);
  document_->set_link_follower(
      [weak = weak_from_this()](const std::u16string& url, const std::u16string& target) {
        Navigation navigation;
        navigation.url = url;
        navigation.target_frame = target;
        if (const auto self = weak.lock()) self->follow(std::move(navigation));
      });
  dom::style::style_of(document_->tree()).set_link_observer(this);
  const auto shown = document_;
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->document_replaced(shown);
}

// --- frames: shown as a box with a label, so nobody needs their documents; but hosts hear of them ---

void Browser::Loader::load_frames(std::uint64_t number) {
  std::vector<Navigation> frames;
  const auto document = document_;
  for (dom::Node* node = &document->tree(); node; node = dom::next_in_order(*node)) {
    if (!is_frame(*node)) continue;
    const auto& element = static_cast<const dom::Element&>(*node);
    const auto address = element.attribute_or_empty(dom::Name(u"src"));
    if (trimmed(address).empty()) continue;
    Navigation frame;
    frame.url = document->absolute_url(address);
    frame.target_frame = element.attribute_or_empty(dom::Name(u"name"));
    frame.top = false;
    frames.push_back(std::move(frame));
  }
  for (const Navigation& frame : frames)
    if (is_current(number)) load_frame(frame);
}

void Browser::Loader::load_frame(const Navigation& navigation) {
  bool cancel = false;
  tell([&](BrowserEvents& events) { events.BeforeNavigate2(navigation, cancel); });
  if (cancel) return;
  tell([](BrowserEvents& events) { events.DownloadBegin(); });
  const bool found = load_page(navigation.url) != nullptr;
  tell([&](BrowserEvents& events) {
    if (found)
      events.NavigateComplete2(false, navigation.url);
    else
      events.NavigateError(navigation, resource_not_found);
  });
  tell([](BrowserEvents& events) { events.DownloadComplete(); });
  if (found) tell([&](BrowserEvents& events) { events.DocumentComplete(false, navigation.url); });
}

// --- style sheets ---

void Browser::Loader::load_sheets(const std::vector<dom::Ref<dom::Element>>& links) {
  const auto document = document_;
  for (const auto& link : links) {
    const auto address = link->attribute_or_empty(dom::names::href);
    std::optional<std::u16string> text;
    if (!trimmed(address).empty())
      if (const auto bytes = read_address(document->absolute_url(address))) text = decode_sheet(*bytes);
    dom::style::style_of(document->tree()).set_link_text(*link, std::move(text));
  }
}

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
  const auto links = dom::style::style_of(document_->tree()).take_changed_links();
  if (links.empty()) return;
  tell([](BrowserEvents& events) { events.DownloadBegin(); });
  load_sheets(links);
  tell([](BrowserEvents& events) { events.DownloadComplete(); });
}

}  // namespace tvx::browser
