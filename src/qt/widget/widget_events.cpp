#include "tvx/qt/widget/widget_events.h"

#include "tvx/core/htmled.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {

namespace {

/// A text of an event as a signal passes it; what a slot writes into it goes back.
class WrittenText {
 public:
  explicit WrittenText(std::u16string& target) : text(to_qt(target)), target_(target), before_(text) {}
  ~WrittenText() {
    if (text != before_) target_ = from_qt(text);
  }
  WrittenText(const WrittenText&) = delete;
  WrittenText& operator=(const WrittenText&) = delete;

  QString text;

 private:
  std::u16string& target_;
  const QString before_;
};

Object object_of(const HTMLedWidget& widget, const dom::Ref<dom::Element>& element) {
  return Object(library::element_object(element.get(), widget.control().DOM()).to_object());
}

}  // namespace

#include "tvx/interface/widget_events.inc"

}  // namespace tvx::qt
