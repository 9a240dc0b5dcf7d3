#include "automation/instance.h"

#include "dom/parse.h"

namespace tvx::automation {

Instance::Instance(int number, InstanceOptions)
    : number_(number),
      document_(browser::HTMLDocument::create(
          dom::parse_document(u"<head><title></title></head><body><div></div></body>"), u"about:blank")) {
  document_->set_designMode(u"On");
  document_->finish_loading();
}

Instance::~Instance() = default;

browser::HTMLDocument& Instance::document() { return *document_; }

}  // namespace tvx::automation
