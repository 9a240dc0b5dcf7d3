#include "tvx/browser/view/progress.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tvx/browser/view/mirror.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/range.h"

namespace tvx::browser {
namespace {

class ProgressTest : public testing::Test {
 protected:
  void parse(const std::u16string& body, const std::u16string& head = u"") {
    document_ = dom::parse_document(u"<!DOCTYPE html><head>" + head + u"</head><body>" + body);
    mirror_ = std::make_unique<Mirror>(*document_);
    progress_.begin();
  }
  double send(std::size_t budget) {
    progress_.sent(mirror_->flush(budget));
    return progress_.share(*document_);
  }
  dom::Element* body() { return document_->body(); }

  dom::Ref<dom::Document> document_;
  std::unique_ptr<Mirror> mirror_;
  Progress progress_;
};

std::u16string paragraphs(int count) {
  std::u16string text;
  for (int i = 0; i < count; ++i) text += u"<p>x</p>";
  return text;
}

TEST_F(ProgressTest, GrowsToTheWhole) {
  parse(paragraphs(2000));
  double before = 0;
  for (int i = 1; i < 4; ++i) {
    const double share = send(1000);
    EXPECT_NEAR(share, 0.25 * i, 0.01);
    EXPECT_GT(share, before);
    before = share;
  }
  EXPECT_EQ(send(10'000), 1);
}

TEST_F(ProgressTest, WhatComesBeforeTheBodyIsNoPartOfIt) {
  parse(paragraphs(2000), u"<style>" + std::u16string(64'000, u'x') + u"</style>");
  EXPECT_EQ(send(100), 0);
  EXPECT_NEAR(send(2000), 0.5, 0.01);
}

TEST_F(ProgressTest, TextsWeighByTheirLength) {
  parse(u"<p id=a>" + std::u16string(6400, u'x') + u"</p><p id=b>x</p><p id=c>x</p>");
  EXPECT_EQ(element_at(*document_, 0.5), body()->first_child());
  EXPECT_NEAR(share_before(*document_, *body()->last_child()->previous_sibling()), 0.96, 0.02);
}

TEST_F(ProgressTest, FindsTheElementAtAShare) {
  parse(paragraphs(1000));
  EXPECT_EQ(element_at(*document_, 0), body());
  EXPECT_EQ(element_at(*document_, 0.25), dom::child_at(*body(), 249));
  EXPECT_EQ(element_at(*document_, 1), body()->last_child());
  EXPECT_NEAR(share_before(*document_, *dom::child_at(*body(), 250)), 0.25, 0.001);
}

TEST_F(ProgressTest, WhatAViewNeverHasWeighsNothing) {
  parse(u"<p>x</p><script>" + std::u16string(64'000, u'x') + u"</script>" + paragraphs(9));
  EXPECT_EQ(element_at(*document_, 0.5)->parent(), body());
  EXPECT_NEAR(share_before(*document_, *body()->last_child()), 0.9, 0.05);
}

TEST_F(ProgressTest, ADocumentWithoutABodyHasNoShares) {
  document_ = dom::parse_document(u"<frameset></frameset>");
  progress_.begin();
  EXPECT_EQ(progress_.share(*document_), 0);
  const auto empty = dom::Document::create();
  EXPECT_EQ(progress_.share(*empty), 0);
  EXPECT_EQ(element_at(*empty, 0.5), nullptr);
}

}  // namespace
}  // namespace tvx::browser
