#include <QFile>

#include "x11/editor_fixture.h"
#include "x11/hands.h"
#include "x11/x_display.h"

/// What other programs put on the desktop's clipboard, pasted by keys: pages of a word processor and of a
/// browser, with all that comes along.
namespace tvx::x11 {
namespace {

const QByteArray red_dot = QByteArray::fromBase64(
    "iVBORw0KGgoAAAANSUhEUgAAAAUAAAAFCAYAAACNbyblAAAAHElEQVQI12P4//8/w38GIAXDIBKE0DHxgljNBAAO9TXL0Y4OHwAAAA"
    "BJRU5ErkJggg==");
// Only told to be one by its first bytes.
const QByteArray photograph = QByteArray::fromHex("ffd8ffe000104a464946");

class PastedPages : public EditorOnScreen {
 protected:
  void start_new() {
    window_ = std::make_unique<htmled::Window>(loop_);
    window_->show();
    ASSERT_TRUE(window_->start({}));
    hands::give_focus(*window_);
    wait_for_caret();
  }
  static QByteArray copied(const char* name) {
    QFile in(QStringLiteral(TVX_SOURCE_DIR "/tests/x11/pasted/") + QLatin1String(name));
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << name;
    return in.readAll();
  }
  void paste(const char* last_words) {
    hands::press(QStringLiteral("ctrl+v"));
    ASSERT_TRUE(wait_for([&] { return text().find(last_words) != std::string::npos; })) << html();
    ASSERT_TRUE(settle());
  }
  static QByteArray rich_text(const QByteArray& pictures) { return "{\\rtf1\\ansi " + pictures + "}"; }
  static QByteArray blip(const char* kind, const QByteArray& bytes) {
    return QByteArray("{\\*\\shppict{\\pict\\") + kind + "\\picw5\\pich5\n" + bytes.toHex() +
           "}}{\\nonshppict{\\pict\\wmetafile8 0102}}";
  }
  static std::string address(const char* type, const QByteArray& bytes) {
    return "src=\"data:" + std::string(type) + ";base64," + bytes.toBase64().toStdString() + "\"";
  }
};

// The file in samples/ is what somebody gets who pastes a page together.
TEST_F(PastedPages, AreSavedAsSomebodyWouldHaveWrittenThem) {
  start_new();
  offer(copied("word_processor.html"), QStringLiteral("text/html"));
  paste("K. Brown");
  hands::press(QStringLiteral("ctrl+End"));
  hands::press(QStringLiteral("Return"));
  offer(copied("web_page.html"), QStringLiteral("text/html"));
  paste("in 2024.");
  ASSERT_TRUE(window_->save_copy(path_of(QStringLiteral("copy.html"))));
  QFile sample(QStringLiteral(TVX_SOURCE_DIR "/samples/pasted.html"));
  ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
  QByteArray wanted = sample.readAll();
  wanted.replace("<title>Inspection of the bridges<", "<title>Untitled<");  // the sample was given a title
  EXPECT_EQ(file(QStringLiteral("copy.html")).toStdString(), wanted.toStdString());
}

TEST_F(PastedPages, HavePicturesThatComeAsRichText) {
  for (const char* form : {"text/rtf", "application/rtf"}) {
    start("<p><br></p>");
    offer_forms(
        {{QStringLiteral("text/html"),
          "<html xmlns:v=\"urn:schemas-microsoft-com:vml\"><body><!--StartFragment-->"
          "<p class=MsoNormal>one <!--[if gte vml 1]><v:shape style='width:5pt;height:5pt'>"
          "<v:imagedata src=\"file:///C:/clip/image001.png\" o:title=\"dot\"/></v:shape><![endif]-->"
          "<![if !vml]><img width=50 height=50 src=\"file:///C:/clip/image001.png\" alt=dot><![endif]>"
          " two <img src=\"cid:image002.jpg@01D7\" alt=photograph> three</p><!--EndFragment-->"},
         {QStringLiteral("text/plain"), "one two three"},
         {QLatin1String(form), rich_text(blip("pngblip", red_dot) + blip("jpegblip", photograph))}});
    paste("three");
    EXPECT_NE(html().find(address("image/png", red_dot)), std::string::npos) << form << html();
    EXPECT_NE(html().find(address("image/jpeg", photograph)), std::string::npos) << form << html();
    EXPECT_TRUE(wait_for([&] {
      return in_page(QStringLiteral("String(document.images[0]?.naturalWidth)")) == "5";
    })) << "it is seen";
    hands::press(QStringLiteral("ctrl+z"));
    EXPECT_TRUE(wait_for([&] { return html() == "<P><BR></P>"; })) << html();
    window_.reset();
  }
}

TEST_F(PastedPages, WhosePicturesNobodyHasKeepTheirWords) {
  start("<p><br></p>");
  offer_forms(
      {{QStringLiteral("text/html"),
        "<p>one <img src=\"cid:image002.jpg@01D7\"> two <img src=\"file:///C:/clip/a.png\" alt=A> three"},
       {QStringLiteral("text/rtf"), rich_text(blip("pngblip", red_dot))}});
  paste("three");
  EXPECT_EQ(html().find("data:"), std::string::npos) << "which of them it is can't be told" << html();
  EXPECT_NE(html().find("alt=\"image002.jpg\""), std::string::npos) << html();
  EXPECT_NE(html().find("alt=\"A\""), std::string::npos) << html();
}

}  // namespace
}  // namespace tvx::x11
