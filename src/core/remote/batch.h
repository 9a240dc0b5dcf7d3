#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tvx/core/remote/transfers.h"
#include "tvx/dom/node.h"
#include "tvx/transfer/wait_dialog.h"

namespace tvx::core {

/// The upload of all local pictures of a document, with one progress dialog for all of them.
class Transfers::Batch {
 public:
  Batch(Transfers& transfers, std::shared_ptr<browser::HTMLDocument> document, std::int32_t total);
  ~Batch();
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  /// How many have been uploaded.
  std::int32_t run();
  void show_bytes(std::int32_t current, std::int32_t total);

 private:
  void upload_all();
  /// False: the user has had enough.
  void upload(dom::Element& image);
  void give_address(dom::Element& image, const std::u16string& url);

  Transfers& transfers_;
  const std::shared_ptr<browser::HTMLDocument> document_;
  const std::int32_t total_;
  std::int32_t done_ = 0, uploaded_ = 0;
  std::size_t step_depth_ = 0;  // of the journal, after its last step of ours
  transfer::frmWait dialog_;
};

/// Whether the picture's address is that of a local file, as a document says it.
bool has_local_address(browser::HTMLDocument& document, dom::Element& image);

}  // namespace tvx::core
