#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tvx/browser/html_document.h"
#include "tvx/browser/input/display.h"
#include "tvx/browser/view/mirror.h"
#include "tvx/dom/inner_html.h"
#include "tvx/dom/parse.h"

namespace tvx::browser {

/// The side that shows a document, as those who act on input see it: all of the tree is shown at once, and
/// what it is asked and told is written down.
class FakeDisplay final : public Display {
 public:
  explicit FakeDisplay(std::u16string_view body)
      : document_(HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body>" + std::u16string(body)),
                                       u"file:///tmp/test.html")),
        mirror_(document_->tree()) {
    document_->finish_loading();
    document_->set_designMode(u"On");
    flush();
    flushes = 0;
  }

  const Mirror& mirror() const override { return mirror_; }
  bool editable() const override { return is_editable; }
  bool answers() const override { return is_answering; }
  QuestionId ask(ViewQuestion question) override {
    question.id = QuestionId(static_cast<std::uint32_t>(asked.size()) + 1);
    asked.push_back(question);
    return question.id;
  }
  void flush() override {
    ++flushes;
    mirror_.flush(100'000);
    patch_ = PatchNumber(static_cast<std::uint32_t>(patch_) + 1);
    mirror_.set_patch(PatchNumber(static_cast<std::uint32_t>(patch_) + 1));
  }
  void schedule_flush() override { ++scheduled; }
  void reveal(bool on) override { reveals = on; }
  void selection_drawn(const ViewPlace& anchor, const ViewPlace& focus) override {
    drawn.emplace_back(anchor, focus);
  }
  void selection_unsure() override { ++unsure; }
  void mouse_dealt_with(std::uint32_t number) override { mouse = number; }
  void composing(bool on) override { composes = on; }
  void cancel_drag() override { ++cancelled_drags; }

  const std::shared_ptr<HTMLDocument>& document() const { return document_; }
  editing::Selection& selection() { return document_->editor().selection(); }
  dom::Element& first(dom::Tag tag) const { return *document_->first(tag); }
  /// The text in the n-th child of the body.
  dom::Node& text(int block = 0) const {
    dom::Node* node = document_->body()->first_child();
    while (block-- > 0) node = node->next_sibling();
    return *node->first_child();
  }
  std::string html() const { return to_utf8(dom::inner_html(*document_->body())); }
  /// The last patch that the page has.
  PatchNumber patch() const { return patch_; }

  bool is_editable = true, is_answering = true;
  std::vector<ViewQuestion> asked;
  std::vector<std::pair<ViewPlace, ViewPlace>> drawn;
  int flushes = 0, scheduled = 0, unsure = 0, cancelled_drags = 0;
  std::uint32_t mouse = 0;
  bool reveals = false, composes = false;

 private:
  std::shared_ptr<HTMLDocument> document_;
  Mirror mirror_;
  PatchNumber patch_{};
};

}  // namespace tvx::browser
