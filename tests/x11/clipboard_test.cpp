#include "tvx/qt/support/clipboard.h"

#include <gtest/gtest.h>

#include "tvx/browser/input/paste.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/serialise.h"
#include "tvx/editing/walk/marks.h"
#include "tvx/platform/html_block.h"
#include "x11/x_display.h"

/// The clipboard of a real X server, with another program at its other end.
namespace tvx::x11 {
namespace {

using browser::HTMLDocument;

class SystemClipboard : public testing::Test {
 protected:
  void SetUp() override {
    if (!XDisplay::skip_reason.isEmpty()) GTEST_SKIP() << "SKIPPED: " << XDisplay::skip_reason.toStdString();
    document->set_designMode(u"On");
    document->set_clipboard(&clipboard);
  }
  void load(std::u16string_view marked) {
    editing::load_marked(document->editor(), *document->body(), marked);
  }
  std::u16string html() const { return dom::serialise_children(*document->body()); }
  bool command(std::u16string_view name) { return document->execCommand(name, false, u""); }
  std::u16string pasted() {
    load(u"<p>[]<br></p>");
    EXPECT_TRUE(command(u"Paste"));
    return html();
  }
  /// What another program gets of us.
  static std::string read_by_other(const char* target) {
    return output_of(QStringLiteral("xclip"),
                     {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                      QStringLiteral("-t"), QLatin1String(target)})
        .toStdString();
  }

  qt::Clipboard clipboard;
  std::shared_ptr<HTMLDocument> document =
      HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body></body>"), u"");
};

constexpr std::u16string_view many_scripts =
    u"Gr\u00FC\u00DFe \u041C\u0438\u0440 \u4E16\u754C \u05E9\u05DC\u05D5\u05DD \U0001F600\U00020000";
constexpr std::string_view meta = "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">";

TEST_F(SystemClipboard, AnotherProgramReadsWhatIsCopied) {
  load(u"<p>a<b>[" + std::u16string(many_scripts) + u"]</b></p>");
  ASSERT_TRUE(command(u"Copy"));
  const std::string text = to_utf8(many_scripts);
  EXPECT_EQ(read_by_other("UTF8_STRING"), text);
  EXPECT_EQ(read_by_other("text/html"), std::string(meta) + "<B>" + text + "</B>");
  EXPECT_EQ(read_by_other("HTML Format"),
            platform::html_block(u"<B>" + std::u16string(many_scripts) + u"</B>"));
}

TEST_F(SystemClipboard, TextOfAnotherProgramIsPasted) {
  const std::u16string text = std::u16string(many_scripts) + u"\n<b>";
  offer(QByteArray::fromStdString(to_utf8(text)), QStringLiteral("UTF8_STRING"));
  EXPECT_EQ(pasted(), u"<P>" + std::u16string(many_scripts) + u"<BR>&lt;b&gt;</P>");
  EXPECT_TRUE(clipboard.GetFormat(platform::ClipboardFormat::text));
  EXPECT_FALSE(clipboard.GetFormat(platform::ClipboardFormat::rich_text));
}

TEST_F(SystemClipboard, HtmlOfAnotherProgramIsPasted) {
  const std::string page =
      "<html><body><!--StartFragment--><i>" + to_utf8(many_scripts) + "</i><!--EndFragment--></body></html>";
  offer(QByteArray::fromStdString(page), QStringLiteral("text/html"));
  EXPECT_EQ(pasted(), u"<P><I>" + std::u16string(many_scripts) + u"</I></P>");
  EXPECT_FALSE(clipboard.GetFormat(platform::ClipboardFormat::text));
}

TEST_F(SystemClipboard, HtmlIn16BitsIsPasted) {
  const std::u16string page = u"\uFEFF<i>" + std::u16string(many_scripts) + u"</i>";
  offer(QByteArray(reinterpret_cast<const char*>(page.data()), static_cast<qsizetype>(page.size() * 2)),
        QStringLiteral("text/html"));
  EXPECT_EQ(pasted(), u"<P><I>" + std::u16string(many_scripts) + u"</I></P>");
}

TEST_F(SystemClipboard, APictureOfAnotherProgramIsPasted) {
  const QByteArray png = QByteArray::fromBase64(
      "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==");
  offer(png, QStringLiteral("image/png"));
  EXPECT_TRUE(clipboard.GetFormat(platform::ClipboardFormat::bitmap));
  EXPECT_EQ(pasted(),
            u"<P><IMG src=\"data:image/png;base64," + from_utf8(png.toBase64().toStdString()) + u"\"></P>");
}

TEST_F(SystemClipboard, ClearingLeavesNothing) {
  offer("x", QStringLiteral("UTF8_STRING"));
  clipboard.Clear();
  EXPECT_EQ(read_by_other("UTF8_STRING"), "");
  EXPECT_TRUE(clipboard.targets().empty());
}

TEST_F(SystemClipboard, WhatIsSelectedWithTheMouseIsAnotherClipboard) {
  offer("first", QStringLiteral("UTF8_STRING"));
  offer("second", QStringLiteral("UTF8_STRING"), QStringLiteral("primary"));
  EXPECT_EQ(clipboard.GetText(), u"first");
  EXPECT_EQ(qt::Clipboard(QClipboard::Selection).GetText(), u"second");
}

// More than fits into one answer of the X server: it goes in parts.
TEST_F(SystemClipboard, FiveMegabytesGoBothWays) {
  std::u16string page;
  for (int i = 0; page.size() < 5'000'000; ++i) page += u"<P>" + to_text(i) + u" \u4E16\u754C</P>";
  load(page);
  document->execCommand(u"selectAll", false, u"");
  ASSERT_TRUE(command(u"Copy"));
  const std::string read = read_by_other("text/html");
  EXPECT_EQ(read.size(), meta.size() + to_utf8(page).size());
  EXPECT_TRUE(read == std::string(meta) + to_utf8(page));
  offer(QByteArray::fromStdString(to_utf8(page)), QStringLiteral("text/html"));
  EXPECT_TRUE(pasted() == page);
}

}  // namespace
}  // namespace tvx::x11
