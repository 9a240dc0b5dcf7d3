#include "tvx/browser/browser.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/fault.h"
#include "tvx/browser/loading/loader.h"

namespace tvx::browser {
namespace {

constexpr std::int32_t command_print = 6;
constexpr std::int32_t status_enabled = 2;
constexpr std::int32_t without_asking = 2;

}  // namespace

Browser::Browser(platform::MessageLoop& loop, HttpOptions options)
    : loader_(std::make_shared<Loader>(loop, std::move(options))) {
  loader_->prepare();
}

Browser::~Browser() {
  loader_->events_ = nullptr;
  loader_->observers_.clear();
  loader_->stop();
}

void Browser::Navigate(std::u16string_view url) {
  Navigation navigation;
  navigation.url = url;
  loader_->navigate(std::move(navigation));
}

void Browser::follow_link(const Navigation& navigation) { loader_->follow(navigation); }
void Browser::Stop() { loader_->stop(); }

ReadyState Browser::ReadyState() const { return loader_->ready_state(); }
bool Browser::is_loading() const { return loader_->is_loading(); }
bool Browser::Silent() const { return loader_->silent_; }
void Browser::set_Silent(bool silent) { loader_->silent_ = silent; }
const std::shared_ptr<HTMLDocument>& Browser::Document() const { return loader_->document_; }

void Browser::set_events(BrowserEvents* events) { loader_->events_ = events; }
BrowserEvents* Browser::events() const { return loader_->events_; }
void Browser::add_observer(BrowserObserver& observer) { loader_->observers_.push_back(&observer); }
void Browser::remove_observer(BrowserObserver& observer) { std::erase(loader_->observers_, &observer); }

void Browser::set_resource_policy(const ResourcePolicy& policy) {
  loader_->policy_ = policy;
  loader_->set_policy_of_document(policy);
}

void Browser::set_policy_of_document(const ResourcePolicy& policy) {
  loader_->set_policy_of_document(policy);
}

void Browser::set_geometry(const Geometry* geometry) {
  loader_->geometry_ = geometry;
  if (loader_->document_) loader_->document_->set_geometry(geometry);
}

void Browser::set_window(BrowserWindow* window) { loader_->window_ = window; }
BrowserWindow* Browser::window() const { return loader_->window_; }

std::int32_t Browser::QueryStatusWB(std::int32_t command) {
  if (const auto result = fault_point(u"QueryStatusWB")) return *result;
  if (command != command_print) return 0;
  return loader_->window_ && loader_->document_ && loader_->window_->can_print() ? status_enabled : 0;
}

void Browser::ExecWB(std::int32_t command, std::int32_t option) {
  if (fault_point(u"ExecWB")) return;
  if (command != command_print || !loader_->window_)
    throw RuntimeError(errors::not_supported, u"Not supported");
  loader_->window_->print(option != without_asking);
}

std::shared_ptr<HTMLDocument> Browser::placeholder() {
  return HTMLDocument::create(dom::Document::create(), u"");
}

std::shared_ptr<HTMLDocument> Browser::createDocumentFromUrl(std::u16string_view url) {
  return loader_->load_beside(std::u16string(url));
}

}  // namespace tvx::browser
