#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "tvx/base/strings.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/headless/view.h"
#include "tvx/headless/virtual_time_loop.h"

namespace tvx::browser {

using dom::Boundary;
using dom::Element;

/// A document in a view without a screen, and a clock that runs as the test wants.
class DocumentViewTest : public testing::Test {
 protected:
  void open(std::u16string_view body) {
    document_ = HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body>" + std::u16string(body)),
                                     u"file:///tmp/test.html");
    document_->finish_loading();
    document_->set_designMode(u"On");
    shown_.show(document_);
    pump();
  }
  void pump(std::int64_t milliseconds = 0) {
    // Each message is a turn of its own.
    for (int i = 0; i < 10; ++i) loop_.pump(0);
    if (milliseconds > 0) loop_.pump(milliseconds);
    for (int i = 0; i < 10; ++i) loop_.pump(0);
  }

  std::string html() const { return to_utf8(dom::inner_html(*document_->body())); }
  editing::Selection& selection() { return document_->editor().selection(); }
  Element& first(dom::Tag tag) { return *document_->first(tag); }
  dom::Node* text(int block = 0) {
    dom::Node* node = document_->body()->first_child();
    while (block-- > 0) node = node->next_sibling();
    return node->first_child();
  }
  ViewPlace place(const dom::Node& node, std::uint32_t offset) const { return {node.id(), offset}; }
  std::size_t steps() { return document_->tree().journal().depth(); }

  void type(std::u16string_view letters) {
    for (const char16_t c : letters) view_.key({.key = {c}, .text = {c}, .key_code = c});
  }
  void key(std::u16string name) { view_.key({.key = std::move(name), .key_code = 1}); }
  /// A native press is on its way; the page hasn't told of it.
  void ticket(int x = 0, int y = 0) { view_.tell({.seen = {}, .what = ViewTicket{.x = x, .y = y}}); }
  ViewMouse press_at(const dom::Node& node, std::uint32_t offset) const {
    ViewMouse mouse;
    mouse.element = node.is_element() ? node.id() : node.parent()->id();
    mouse.place = place(node, offset);
    return mouse;
  }
  void tell(ViewMouse mouse) { view_.tell({.seen = {}, .what = mouse}); }
  void press(ViewMouse mouse) {
    ticket(mouse.x, mouse.y);
    tell(mouse);
    pump();
  }
  void release(ViewMouse mouse) {
    view_.tell({.seen = {}, .what = ViewTicket{.type = ViewTicket::Type::Release}});
    mouse.type = ViewMouse::Type::Release;
    tell(mouse);
    pump();
  }
  ViewDrag drag(ViewDrag::Phase phase, ViewDrag::Type type, const Element* element = nullptr) const {
    ViewDrag told;
    told.phase = phase;
    told.type = type;
    if (element) told.node = element->id();
    return told;
  }
  void tell(const ViewDrag& told) {
    view_.tell({.seen = {}, .what = told});
    pump();
  }

  headless::VirtualTimeLoop loop_;
  headless::View view_{loop_};
  DocumentView shown_{view_, loop_};
  std::shared_ptr<HTMLDocument> document_;
};

}  // namespace tvx::browser
