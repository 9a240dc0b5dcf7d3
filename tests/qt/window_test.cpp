#include "htmled/window.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>

#include "base/strings.h"
#include "browser/document_view.h"
#include "browser/html_document.h"
#include "core/htmled.h"
#include "dom/mutation.h"
#include "dom/parse.h"
#include "dom/print_tree.h"
#include "dom/tree.h"
#include "qt/htmled_widget.h"
#include "qt/message_loop.h"
#include "qt/web_view.h"

namespace tvx::htmled {
namespace {

constexpr char real_page[] = "/usr/share/doc/ccache/manual.html";

QByteArray bytes_of(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

dom::Ref<dom::Document> parsed(const QByteArray& bytes) {
  return dom::parse_document(from_utf8(std::string_view(bytes.constData(), std::size_t(bytes.size()))));
}

/// The texts of the body that have words in them, in order.
std::vector<dom::Text*> texts_of(dom::Document& document) {
  std::vector<dom::Text*> texts;
  dom::Node* body = document.body();
  for (dom::Node* node = body; node; node = dom::next_in_order(*node, body)) {
    auto* text = dom::as<dom::Text>(node);
    if (text && trimmed(text->data()).size() > 20) texts.push_back(text);
  }
  return texts;
}

class WindowTest : public testing::Test {
 protected:
  WindowTest() { window_.show(); }

  bool settle() {
    const std::int64_t end = loop_.now() + 20'000;
    for (int i = 0; i < 3; ++i) loop_.pump(0);
    while (!window_.editor().document_view().settled() && loop_.now() < end) loop_.pump(20);
    return window_.editor().document_view().settled();
  }

  void post_text(const QString& text) {
    QWidget* input = window_.editor().view().input_widget();
    ASSERT_NE(input, nullptr);
    for (const QChar letter : text) {
      const int key = letter.toUpper().unicode();
      QCoreApplication::postEvent(input, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, letter));
      QCoreApplication::postEvent(input, new QKeyEvent(QEvent::KeyRelease, key, Qt::NoModifier, letter));
    }
  }

  browser::HTMLDocument& document() { return *window_.editor().control().DOM(); }

  qt::MessageLoop loop_;
  QTemporaryDir folder_;
  Window window_{loop_};
};

TEST_F(WindowTest, ARealPageTakesTypingInItsMiddleAndSavesWithNothingElseChanged) {
  const QByteArray original = bytes_of(QString::fromLatin1(real_page));
  if (original.isEmpty()) GTEST_SKIP() << "SKIPPED: " << real_page << " is not installed";
  ASSERT_GT(original.size(), 100'000);
  const QString path = folder_.filePath(QStringLiteral("page.html"));
  ASSERT_TRUE(QFile::copy(QString::fromLatin1(real_page), path));
  ASSERT_TRUE(window_.start(path));
  ASSERT_TRUE(settle());

  const std::vector<dom::Text*> texts = texts_of(document().tree());
  const std::size_t middle = texts.size() / 2;
  document().select([&](editing::Selection& selection) { selection.collapse({texts[middle], 10}); });
  ASSERT_TRUE(settle());
  post_text(QStringLiteral("typed"));
  ASSERT_TRUE(settle());
  ASSERT_TRUE(window_.isWindowModified());

  const QString saved = folder_.filePath(QStringLiteral("saved.html"));
  ASSERT_TRUE(window_.save_copy(saved));
  const dom::Ref<dom::Document> expected = parsed(original);
  dom::replace_data(*texts_of(*expected)[middle], 10, 0, u"typed");
  EXPECT_TRUE(dom::print_tree(*parsed(bytes_of(saved))) == dom::print_tree(*expected));
}

TEST_F(WindowTest, AnUneditedPageIsSavedByteForByte) {
  const QString path = folder_.filePath(QStringLiteral("page.html"));
  const QByteArray page =
      "<!-- kept -->\r\n<!DOCTYPE html>\r\n<html><head><title>T</title><script>x = '<b>';</script></head>\r\n"
      "<body onload=\"run()\"><P =x><a\"b><a href='javascript:go()'>go</a></body></html>\r\n<!-- end -->";
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(page) == page.size());
  file.close();
  ASSERT_TRUE(window_.start(path));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
  const QString saved = folder_.filePath(QStringLiteral("saved.html"));
  ASSERT_TRUE(window_.save_copy(saved));
  EXPECT_EQ(bytes_of(saved), page);
}

TEST_F(WindowTest, AFileThatCannotBeReadLeavesANewPage) {
  EXPECT_FALSE(window_.start(folder_.filePath(QStringLiteral("absent.html"))));
  ASSERT_TRUE(settle());
  EXPECT_FALSE(window_.isWindowModified());
  EXPECT_TRUE(texts_of(document().tree()).empty());
}

}  // namespace
}  // namespace tvx::htmled
