#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/range.h"
#include "tvx/editing/editor.h"

/// Who follows a document lets go of ranges and takes new ones while nodes are moved.
namespace tvx::editing {
namespace {

class RangeKeeper final : public dom::MutationObserver {
 public:
  explicit RangeKeeper(dom::Document& document) : document_(document) { document_.add_observer(*this); }
  ~RangeKeeper() override { document_.remove_observer(*this); }

  void mutated(const dom::Mutation&) override {
    // Now few, now many: so that one comes where another has gone.
    if (ranges_.size() > 5) ranges_.erase(ranges_.begin(), ranges_.end() - 2);
    const dom::Range all{{document_.body(), 0}, {document_.body(), 0}};
    ranges_.push_back(std::make_unique<dom::LiveRange>(document_, all));
    ++taken_;
  }
  int taken() const { return taken_; }

 private:
  dom::Document& document_;
  std::vector<std::unique_ptr<dom::LiveRange>> ranges_;
  int taken_ = 0;
};

TEST(MovedRanges, OnesThatGoMeanwhileAreLeftAlone) {
  for (const char16_t* command : {u"indent", u"outdent", u"insertOrderedList", u"formatBlock", u"bold",
                                  u"justifyCenter", u"removeFormat", u"delete"}) {
    const auto document = dom::parse_document(
        u"<blockquote><p>one <b>two</b></p><p>three</p>four<ul><li>a<li>b</ul></blockquote><h1>end</h1>");
    Editor editor(*document);
    editor.set_design_mode(true);
    editor.execute(u"selectAll");
    RangeKeeper keeper(*document);
    for (int round = 0; round < 20; ++round) {
      editor.execute(command, u"h2");
      editor.execute(u"undo");
      editor.execute(u"redo");
    }
    EXPECT_GT(keeper.taken(), 20);
    EXPECT_TRUE(editor.selection().range().start.node) << "its own range is where it was put";
  }
}

}  // namespace
}  // namespace tvx::editing
