#pragma once

#include <memory>

#include "browser/html_document.h"

namespace tvx::automation {

struct InstanceOptions {};

/// One control with all that surrounds it.
class Instance {
 public:
  Instance(int number, InstanceOptions options);
  ~Instance();

  int number() const { return number_; }
  /// Throws RuntimeError(91) while there is none.
  browser::HTMLDocument& document();

  /// Where document.load puts its content.
  dom::Ref<dom::Element> host;

 private:
  int number_;
  std::shared_ptr<browser::HTMLDocument> document_;
};

}  // namespace tvx::automation
