#include "tvx/browser/html_document.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/range_object.h"

namespace tvx::library {

namespace {

/// The document's window: the event being handled, and what of the document is in sight.
class WindowObject final : public Object {
 public:
  explicit WindowObject(DocumentHandle document) : document_(std::move(document)) {}
  std::u16string_view kind() const override { return u"window"; }

  Value invoke(std::u16string_view name, Values& arguments) override {
    if (equals_ignoring_ascii_case(name, u"scrollTo")) return scroll_to(arguments);
    expect_arguments(arguments, 0, 0);
    if (equals_ignoring_ascii_case(name, u"document")) return document_object(document_);
    if (!equals_ignoring_ascii_case(name, u"event")) unknown_member(name);
    const browser::Event* event = document_->event();
    return event ? event_object(*event, document_) : Value();
  }

 private:
  Value scroll_to(Values& arguments) {
    expect_arguments(arguments, 2, 2);
    const std::int32_t x = arguments[0].to_integer32(), y = arguments[1].to_integer32();
    if (auto* viewport = document_->viewport()) viewport->scroll_to(x, y);
    return {};
  }

  DocumentHandle document_;
};

class SelectionObject final : public Object {
 public:
  explicit SelectionObject(DocumentHandle document) : document_(std::move(document)) {}
  std::u16string_view kind() const override { return u"selection"; }
  std::vector<std::pair<std::string, Value>> description() const override { return {{"type", type()}}; }

  bool is_operation(std::u16string_view name) const override {
    return equals_ignoring_ascii_case(name, u"createRange") || equals_ignoring_ascii_case(name, u"empty") ||
           equals_ignoring_ascii_case(name, u"clear");
  }
  Value invoke(std::u16string_view name, Values& arguments) override {
    expect_arguments(arguments, 0, 0);
    if (equals_ignoring_ascii_case(name, u"type")) return type();
    if (equals_ignoring_ascii_case(name, u"createRange"))
      return range_object(editing::create_range(document_->editor()), document_);
    if (equals_ignoring_ascii_case(name, u"empty")) return change(editing::empty_selection);
    if (equals_ignoring_ascii_case(name, u"clear")) return change(editing::clear_selection);
    if (equals_ignoring_ascii_case(name, u"control"))
      return element_object(document_->editor().selection().control(), document_);
    unknown_member(name);
  }

 private:
  std::u16string_view type() const { return editing::selection_type_name(document_->editor()); }
  Value change(void (*act)(editing::Editor&)) {
    document_->select([&](editing::Selection&) { act(document_->editor()); });
    return {};
  }

  DocumentHandle document_;
};

}  // namespace

Value window_object(const DocumentHandle& document) {
  return ObjectHandle(std::make_shared<WindowObject>(document));
}

Value selection_object(const DocumentHandle& document) {
  return ObjectHandle(std::make_shared<SelectionObject>(document));
}

}  // namespace tvx::library
