#include "tvx/browser/loading/frame_loader.h"

#include <utility>

#include "tvx/base/url.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

constexpr int deepest_frame = 8;
constexpr int most_frames = 200;  // of a page, those in frames among them

bool is_frame(const dom::Node& node) { return node.is(dom::Tag::Iframe) || node.is(dom::Tag::Frame); }

/// What a frame can load at all. A script must not run, and "data:" holds its document itself.
bool is_loadable(std::u16string_view address) {
  return is_remote(address) || is_blank_address(address) || local_file(address);
}

std::u16string without_fragment(std::u16string_view address) {
  return std::u16string(address.substr(0, address.find(u'#')));
}

}  // namespace

/// The frames of one document, for as long as it is shown.
struct FrameLoader::Run {
  bool over = false;
  int frames = 0;
  int open_downloads = 0;
  std::vector<Resources::Ticket> tickets;
};

/// A frame on its way. The page itself stands at the root, without an element.
struct FrameLoader::Frame {
  std::shared_ptr<Run> run;
  std::shared_ptr<Frame> parent;
  dom::Ref<dom::Element> element;  // the one in the shown document that holds it
  Navigation navigation;
  std::u16string address;  // of its document, as far as known
  int open = 1;            // itself, and the frames in it
  bool loaded = false;
  std::function<void()> done;

  bool is_wanted() const { return !run->over && (!element || dom::is_connected(*element)); }

  /// HTML standard, section 4.8.5: a page within itself has no end.
  bool stands_in(std::u16string_view other) const {
    int depth = 0;
    for (const Frame* frame = this; frame; frame = frame->parent.get())
      if (without_fragment(frame->address) == without_fragment(other) || ++depth > deepest_frame) return true;
    return false;
  }
};

FrameLoader::FrameLoader(Resources& resources, Tell tell)
    : resources_(resources), tell_(std::move(tell)), run_(std::make_shared<Run>()) {}

FrameLoader::~FrameLoader() = default;

void FrameLoader::set_document(std::shared_ptr<HTMLDocument> document) {
  const auto before = std::exchange(run_, std::make_shared<Run>());
  document_ = std::move(document);
  before->over = true;
  for (const Resources::Ticket ticket : before->tickets) resources_.cancel(ticket);
  while (before->open_downloads > 0) end_download(*before);
}

void FrameLoader::load_all(std::function<void()> done) {
  const auto page = std::make_shared<Frame>();
  page->run = run_;
  page->address = document_->url();
  page->done = std::move(done);
  const auto document = document_;
  load_within(page, *document);
  close(page);
}

void FrameLoader::navigate(const Navigation& navigation) {
  const auto frame = std::make_shared<Frame>();
  frame->run = run_;
  frame->element = frame_named(navigation.target_frame);
  frame->navigation = navigation;
  frame->navigation.top = false;
  frame->address = navigation.url;
  start(frame);
}

dom::Element* FrameLoader::frame_named(std::u16string_view name) const {
  if (!document_ || name.empty()) return nullptr;
  for (dom::Node* node = &document_->tree(); node; node = dom::next_in_order(*node))
    if (is_frame(*node) && dom::as<dom::Element>(node)->attribute_or_empty(dom::names::name) == name)
      return dom::as<dom::Element>(node);
  return nullptr;
}

std::shared_ptr<FrameLoader::Frame> FrameLoader::make_frame(const std::shared_ptr<Frame>& parent,
                                                            const dom::Element& element,
                                                            const HTMLDocument& document) const {
  const auto written = element.attribute_or_empty(dom::names::src);
  if (trimmed(written).empty()) return nullptr;
  const std::u16string address = document.absolute_url(written);
  if (!is_loadable(address) || !may_bring_in(document.url(), address) || parent->stands_in(address))
    return nullptr;
  const auto frame = std::make_shared<Frame>();
  frame->run = parent->run;
  frame->parent = parent;
  frame->element = parent->element ? parent->element : dom::Ref(const_cast<dom::Element*>(&element));
  frame->navigation.url = address;
  frame->navigation.target_frame = element.attribute_or_empty(dom::names::name);
  frame->navigation.top = false;
  frame->navigation.part_of_page = true;
  frame->address = address;
  return frame;
}

void FrameLoader::load_within(const std::shared_ptr<Frame>& parent, const HTMLDocument& document) {
  std::vector<std::shared_ptr<Frame>> frames;
  for (const dom::Node* node = &document.tree(); node; node = dom::next_in_order(*node)) {
    if (!is_frame(*node)) continue;
    if (auto frame = make_frame(parent, *dom::as<dom::Element>(node), document))
      frames.push_back(std::move(frame));
  }
  parent->open += static_cast<int>(frames.size());
  for (const auto& frame : frames) start(frame);
}

void FrameLoader::start(const std::shared_ptr<Frame>& frame) {
  const auto run = frame->run;
  if (!frame->is_wanted() || (frame->parent && ++run->frames > most_frames)) return close(frame);
  bool cancel = false;
  tell_([&](BrowserEvents& events) { events.BeforeNavigate2(frame->navigation, cancel); });
  if (cancel || !frame->is_wanted()) return close(frame);
  ++run->open_downloads;
  tell_([](BrowserEvents& events) { events.DownloadBegin(); });
  if (run->over) return;
  const auto ticket = resources_.load_frame(frame->navigation.url,
                                            [this, frame](const HttpAnswer& answer) { take(frame, answer); });
  if (ticket != 0) run->tickets.push_back(ticket);
}

void FrameLoader::take(const std::shared_ptr<Frame>& frame, const HttpAnswer& answer) {
  const auto run = frame->run;
  if (run->over) return;
  const bool found = answer.has_content();
  if (frame->is_wanted()) {
    if (is_remote(frame->navigation.url) && found) frame->navigation.url = answer.address;
    frame->address = answer.address;
    frame->loaded = found;
    tell_([&](BrowserEvents& events) {
      if (found)
        events.NavigateComplete2(false, frame->navigation.url);
      else
        events.NavigateError(frame->navigation, answer.status);
    });
  }
  if (!run->over) end_download(*run);
  if (found && frame->is_wanted())
    if (const auto document = make_page(answer)) load_within(frame, *document);
  close(frame);
}

void FrameLoader::end_download(Run& run) {
  --run.open_downloads;
  tell_([](BrowserEvents& events) { events.DownloadComplete(); });
}

/// One thing that the frame waited for is over; perhaps the frame itself, and what it stands in.
void FrameLoader::close(std::shared_ptr<Frame> frame) {
  while (frame && --frame->open == 0) {
    if (frame->loaded && frame->is_wanted())
      tell_([&](BrowserEvents& events) { events.DocumentComplete(false, frame->navigation.url); });
    if (frame->done && !frame->run->over) frame->done();
    frame = frame->parent;
  }
}

}  // namespace tvx::browser
