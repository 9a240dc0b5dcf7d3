#include "tvx/core/remote/batch.h"

#include <vector>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/url.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/remote/action.h"
#include "tvx/dom/collections.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/objects/media.h"
#include "tvx/dom/tree.h"
#include "tvx/dom/without_overlay.h"
#include "tvx/platform/message_loop.h"
#include "tvx/services/wait.h"

namespace tvx::core {
namespace {

using dom::ImageObject;

constexpr std::u16string_view step_label = u"Upload Images";

std::vector<dom::Ref<dom::Element>> pictures_of(browser::HTMLDocument& document) {
  std::vector<dom::Ref<dom::Element>> pictures;
  const auto collection = dom::collection_of(document.tree(), dom::CollectionKind::Images);
  for (dom::Element* image : collection->elements()) pictures.emplace_back(image);
  return pictures;
}

ImageObject object_of(browser::HTMLDocument& document, dom::Element& image) {
  return ImageObject(image, document.url());
}

/// The path that an address of the form "file:///..." names: one of a drive loses its leading bars, a share's
/// keeps a pair.
std::u16string path_in(std::u16string_view src) {
  std::u16string path = ReplaceAll(u"file:", u"", CanonicalURL(src, URL_UNESCAPE), true);
  path = ReplaceAll(u"/", u"\\", path, true);
  const bool drive = path.find(u':') != std::u16string::npos;
  return ReplaceAll(u"\\\\\\", drive ? u"" : u"\\\\", path, true);
}

std::u16string name_in(std::u16string_view src) {
  return DecodeURL(src.substr(src.rfind(u'/') + 1));  // the whole text where there is none
}

}  // namespace

bool has_local_address(browser::HTMLDocument& document, dom::Element& image) {
  return object_of(document, image).protocol() == u"File Protocol";
}

Transfers::Batch::Batch(Transfers& transfers, std::shared_ptr<browser::HTMLDocument> document,
                        std::int32_t total)
    : transfers_(transfers), document_(std::move(document)), total_(total) {
  transfers_.batch_ = this;
  dialog_.set_lblMessage(u"Connecting to FTP Host");
  dialog_.on_cancel = [this] { transfers_.client_->interrupt(); };
}

Transfers::Batch::~Batch() { transfers_.batch_ = nullptr; }

void Transfers::Batch::show_bytes(std::int32_t current, std::int32_t total) {
  dialog_.show_bytes(current, total, transfers_.surroundings().loop.now());
}

std::int32_t Transfers::Batch::run() {
  transfer::clsFTP& client = *transfers_.client_;
  if (transfers_.properties_.ShowFTPDialog) transfers_.around_.show_wait(dialog_.form());
  transfers_.copy_account(WithPort::Yes, WithDialog::No);
  client.ShowDialog = false;  // the batch shows its own progress
  // Nothing here sets it back: that is how hosts know it.
  transfers_.properties_.FTPActionInProgress = true;
  if (client.Connect()) {
    client.SetCurrDirectory(client.InitDir);
    dialog_.set_lblMessage(u"Uploading to FTP Host");
    dialog_.show_action(transfer::frmWait::Action::Uploading);
    attempt([&] { upload_all(); });
    client.Disconnect();
  }
  dialog_.form().Hide();
  return uploaded_;
}

void Transfers::Batch::upload_all() {
  for (const dom::Ref<dom::Element>& image : pictures_of(*document_)) {
    if (transfers_.context_.terminated() || dialog_.bCancel) return;
    attempt([&] {
      if (has_local_address(*document_, *image)) upload(*image);
    });
  }
}

void Transfers::Batch::upload(dom::Element& image) {
  const std::u16string src = object_of(*document_, image).src();
  const std::u16string path = path_in(src), name = name_in(src);
  ++done_;
  dialog_.set_lblMessage(u"Uploading to FTP Host : " + to_text(done_) + u" of " + to_text(total_));
  dialog_.show_file(name);
  dialog_.show_count(done_, total_);
  services::Wait(transfers_.surroundings().loop, 5);
  bool uploaded = false;
  attempt([&] { uploaded = transfers_.client_->PutFileProgress(name, path); });
  if (!uploaded) return;
  // Meanwhile the host may have put another picture there, or another document.
  if (object_of(*document_, image).src() != src || !dom::is_connected(image)) return;
  give_address(image, transfers_.properties_.FTPSaveToURL + name);
  ++uploaded_;
}

// One step for all, unless somebody has edited or undone between two pictures.
void Transfers::Batch::give_address(dom::Element& image, const std::u16string& url) {
  dom::Journal& journal = document_->tree().journal();
  const bool alone =
      journal.depth() == step_depth_ && journal.undo_label() == step_label && !journal.can_redo();
  {
    const dom::UndoStep step(journal, step_label, alone ? dom::StepJoin::LastStep : dom::StepJoin::Never);
    object_of(*document_, image).set_src(url);
  }
  step_depth_ = journal.depth();
}

std::int32_t Transfers::UploadAllImages() {
  if (running_) {
    refuse(u"UploadAllImages");
    return 0;
  }
  const Action action(*this);
  const std::shared_ptr<browser::HTMLDocument> document = DOM();
  std::int32_t total = 0;
  attempt([&] {
    for (const dom::Ref<dom::Element>& image : pictures_of(this->document()))
      if (has_local_address(*document, *image)) ++total;
  });
  return total == 0 ? 0 : Batch(*this, document, total).run();
}

}  // namespace tvx::core
