#include "tvx/core/content/navigation.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/browser/loading/page_source.h"
#include "tvx/core/content/content.h"
#include "tvx/core/content/document_files.h"
#include "tvx/core/content/style_sheet.h"
#include "tvx/core/events.h"
#include "tvx/core/observer.h"
#include "tvx/core/views/edit_window.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"

namespace tvx::core {

void NavigationHandler::BeforeNavigate2(const browser::Navigation& navigation, bool& cancel) {
  if (!run_time()) return;
  if (files_.opening() || files_.brings_frame(navigation) ||
      contains(navigation.url, to_text(platform::number_of(surroundings().hwnd)))) {
    // The control's own. A frame of another machine is that of its page, which nobody has asked: it is
    // fetched where RemoteContent says so, and without that the host isn't asked either.
    const auto document = browser().Document();
    const bool comes_from_elsewhere = navigation.part_of_page && browser::is_remote(navigation.url);
    cancel = comes_from_elsewhere && document && !document->resource_policy().remote_frames;
    return;
  }
  std::u16string url = navigation.url, frame = navigation.target_frame;
  bool refuse = true;
  raise([&](HTMLedEvents& host) { host.BeforeNavigate(url, frame, refuse); });
  cancel = refuse;
}

void NavigationHandler::NavigateComplete2(bool, const std::u16string&) { edit_window_.FindEditWindow(); }

void NavigationHandler::DocumentComplete(bool top, const std::u16string&) {
  if (!run_time() || !top || context_.terminated()) return;
  const KeepAlive alive(context_);
  // A document that was opened is worked on as soon as its text is there, while its sheets still load.
  const bool in_use = DOM() && DOM() == browser().Document();
  attempt([&] {
    browser_document();  // throws if there is none
    context_.set_DOM(browser().Document());
  });
  attempt([&] {
    const dom::MutationScope scope(document().tree(), dom::MutationKind::Load);
    document().set_title(properties_.DocumentTitle);
  });
  if (!in_use) {
    attempt([&] { document().tree().journal().clear(); });
    attempt([&] { context_.set_design_mode_of_browser(); });
  }
  attempt([&] { sheet_.LoadStyleClasses(); });
  attempt([&] {
    const dom::MutationScope scope(document().tree(), dom::MutationKind::Load);
    content_.apply_base_url(document());
  });
  context_.tell([](HTMLedObserver& observer) { observer.document_loaded(); });
}

void NavigationHandler::DownloadBegin() { sheet_.download_started(); }

void NavigationHandler::DownloadComplete() { sheet_.download_ended(); }

void NavigationHandler::ContentWithheld() { context_.PropertyChanged(u"RemoteContentWithheld"); }

void NavigationHandler::NavigateError(const browser::Navigation& navigation, std::int32_t) {
  raise_error(20000, u"Cant find document : " + navigation.url);
}

}  // namespace tvx::core
