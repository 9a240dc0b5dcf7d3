#include "htmled/document/proposed_name.h"

#include <gtest/gtest.h>

#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

class ProposedName : public testing::Test {
 protected:
  ProposedName() { widget_.show(); }
  std::string name_of(const char16_t* page, const char16_t* title = u"") {
    widget_.control().set_DocumentHTML(page);
    const auto document = widget_.control().DOM();
    document->set_title(title);
    return proposed_name(*document).toStdString();
  }

  qt::MessageLoop loop_;
  qt::HTMLedWidget widget_{loop_};
};

TEST_F(ProposedName, IsTheFirstHeading) {
  EXPECT_EQ(name_of(u"<p>a</p><h2>Summer <i>fair</i></h2><h1>Later</h1>", u"Title"), "Summer fair.html");
  EXPECT_EQ(name_of(u"<h1><br></h1><h2>Second</h2>"), "Second.html");
}

TEST_F(ProposedName, IsTheTitleWhereNoHeadingHasWords) {
  EXPECT_EQ(name_of(u"<p>a</p><h1> </h1>", u"The title"), "The title.html");
  EXPECT_EQ(name_of(u"<p>a</p>"), "");
}

TEST_F(ProposedName, HasNothingThatFileSystemsTakeForSomethingElse) {
  EXPECT_EQ(name_of(u"<h1>../5/6: \"what?\"\n<br>*</h1>"), "5 6 what.html");
  EXPECT_EQ(name_of(u"<h1>...</h1>"), "");
  EXPECT_EQ(name_of(std::u16string(u"<h1>" + std::u16string(300, u'a') + u"</h1>").c_str()).size(), 65u);
}

}  // namespace
}  // namespace tvx::htmled
