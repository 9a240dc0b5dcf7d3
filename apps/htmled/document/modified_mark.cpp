#include "htmled/document/modified_mark.h"

#include <QTimer>
#include <utility>

#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/core/views/side_source.h"
#include "tvx/dom/journal.h"
#include "tvx/files/document_file.h"
#include "tvx/files/page_digest.h"

namespace tvx::htmled {

ModifiedMark::ModifiedMark(core::HTMLed& control, const files::DocumentFile& file)
    : control_(control), file_(file) {}

void ModifiedMark::set_for_good() {
  for_good_ = true;
  set(true);
}

void ModifiedMark::clear() {
  for_good_ = false;
  look_awaited_ = false;
  looked_at_depth_.reset();
  if (const auto document = control_.DOM()) {
    dom::Journal& journal = document->tree().journal();
    journal.end_typing_run();  // what is typed from here on is a step of its own
    unmodified_depth_ = journal.depth();
    looked_at_depth_ = unmodified_depth_;
    unmodified_ = files::page_digest(document->tree());
  }
  set(false);
}

void ModifiedMark::look_later() {
  if (std::exchange(look_awaited_, true)) return;
  QTimer::singleShot(0, this, &ModifiedMark::look_now_if_awaited);
}

void ModifiedMark::look_now_if_awaited() {
  if (look_awaited_) look();
}

// As many steps as then may still be others: where the count has come back to that, the documents are
// compared. An edit always changes the count, so nobody compares while typing.
void ModifiedMark::look() {
  look_awaited_ = false;
  if (for_good_ || file_.respelled()) {
    was_respelled_ = true;
    return set(true);
  }
  const auto document = control_.DOM();
  // To look at the code changes nothing. What is typed there reaches the document when the code view is left,
  // or when its tags fit.
  if (!document || control_.side_source().waits() ||
      (control_.InCodeView() && !control_.txtCode().untouched_text())) {
    looked_at_depth_.reset();
    return set(true);
  }
  const std::size_t depth = document->tree().journal().depth();
  const bool moved = std::exchange(looked_at_depth_, depth) != depth || was_respelled_;
  was_respelled_ = false;
  if (depth != unmodified_depth_)
    set(true);
  else if (moved)
    set(files::page_digest(document->tree()) != unmodified_);
}

void ModifiedMark::set(bool modified) {
  if (std::exchange(modified_, modified) != modified) emit changed(modified);
}

}  // namespace tvx::htmled
