#include "tvx/browser/input/paste.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tvx/base/base64.h"
#include "tvx/base/fault.h"
#include "tvx/browser/input/rich_text_pictures.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/parse.h"
#include "tvx/editing/walk/marks.h"
#include "tvx/headless/clipboard.h"
#include "tvx/platform/html_block.h"

namespace tvx::browser {
namespace {

using platform::ClipboardFormat;
using platform::TransferData;

class PasteInto : public testing::Test {
 protected:
  PasteInto() {
    document->set_designMode(u"On");
    document->set_clipboard(&clipboard);
    folder = std::filesystem::temp_directory_path() / ("tvx-paste-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
  }
  ~PasteInto() override {
    clear_faults();
    std::filesystem::remove_all(folder);
  }

  void load(std::string_view marked) {
    editing::load_marked(document->editor(), *document->body(), from_utf8(marked));
  }
  std::string marked() const {
    return to_utf8(editing::dump_marked(document->editor(), *document->body(), dom::Letters::Upper));
  }
  std::string html() const { return to_utf8(dom::serialise_children(*document->body())); }
  bool command(std::u16string_view name) { return document->execCommand(name, false, u""); }
  /// The address of the one file of that kind in the folder.
  std::string stored(const std::string& ending) const {
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      if (entry.path().extension() == ending) return "file://" + entry.path().string();
    return "none";
  }
  std::string pasted(std::u16string_view html_text) {
    load("<p>[]<br></p>");
    TransferData data;
    data.html = html_text;
    EXPECT_TRUE(paste_into(*document, data));
    return html();
  }
  std::u16string write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return u"file://" + from_utf8((folder / name).string());
  }

  headless::Clipboard clipboard;
  std::shared_ptr<HTMLDocument> document =
      HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body></body>"), u"");
  std::filesystem::path folder;
};

// --- copying ---

TEST_F(PasteInto, CopyPutsThreeForms) {
  load("<p>a <b>[é \U0001F600]</b></p>");
  EXPECT_TRUE(document->queryCommandEnabled(u"Copy"));
  EXPECT_TRUE(command(u"Copy"));
  EXPECT_EQ(clipboard.GetText(), u"é \U0001F600");
  EXPECT_EQ(clipboard.read("text/html"),
            "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\"><B>é \U0001F600</B>");
  const std::string block = clipboard.read("HTML Format");
  EXPECT_EQ(block, platform::html_block(u"<B>é \U0001F600</B>"));
  const std::size_t start = std::stoul(block.substr(block.find("StartFragment:") + 14, 10)),
                    end = std::stoul(block.substr(block.find("EndFragment:") + 12, 10));
  EXPECT_EQ(block.substr(start, end - start), "<B>é \U0001F600</B>");
  EXPECT_EQ(std::stoul(block.substr(block.find("EndHTML:") + 8, 10)), block.size());
}

TEST_F(PasteInto, CopyOfACaretLeavesTheClipboard) {
  clipboard.SetText(u"kept");
  load("<p>a[]b</p>");
  EXPECT_FALSE(command(u"Copy"));
  EXPECT_FALSE(command(u"Cut"));
  EXPECT_EQ(clipboard.GetText(), u"kept");
}

TEST_F(PasteInto, AClipboardThatCantBeOpenedFailsTheCommand) {
  load("<p>a[b]c</p>");
  set_fault(u"OpenClipboard", {.result = 0}, 2);
  EXPECT_FALSE(command(u"Copy"));
  EXPECT_FALSE(command(u"Cut"));
  EXPECT_EQ(marked(), "<P>a[b]c</P>");
}

TEST_F(PasteInto, ACommandFailsOnRequest) {
  load("<p>a[b]c</p>");
  for (std::u16string_view name : {u"Copy", u"Cut", u"Paste"}) {
    set_fault(u"execCommand " + std::u16string(name), {.result = 0});
    EXPECT_FALSE(command(name));
    set_fault(u"execCommand " + std::u16string(name), {.error = RuntimeError(5, u"no")});
    EXPECT_THROW(command(name), RuntimeError);
  }
  EXPECT_EQ(marked(), "<P>a[b]c</P>");
  EXPECT_TRUE(clipboard.targets().empty());
}

TEST_F(PasteInto, CopiesAndPastesItsOwnBlock) {
  load("<p>a[<b>b</b></p><p>c]d</p>");
  EXPECT_TRUE(command(u"Copy"));
  load("<p>x[]y</p>");
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_EQ(marked(), "<P>x<B>b</B></P><P>c[]y</P>");
  document->tree().journal().undo();
  EXPECT_EQ(marked(), "<P>x[]y</P>");
  EXPECT_FALSE(document->tree().journal().can_undo());
}

// --- addresses that are seen from a page ---

class CopyBetweenPages : public PasteInto {
 protected:
  /// Copies a line of one page and pastes it into an empty one.
  std::string copied(const std::string& line, std::u16string from, std::u16string to) {
    document = page_at(std::move(from));
    load("<p>[" + line + "]</p>");
    EXPECT_TRUE(command(u"Copy"));
    document = page_at(std::move(to));
    load("<p>[]<br></p>");
    EXPECT_TRUE(command(u"Paste"));
    return html();
  }
  std::shared_ptr<HTMLDocument> page_at(std::u16string url) {
    auto page = HTMLDocument::create(dom::parse_document(u"<!DOCTYPE html><body></body>"), std::move(url));
    page->set_designMode(u"On");
    page->set_clipboard(&clipboard);
    return page;
  }
};

TEST_F(CopyBetweenPages, APictureAndALinkLeadToTheSame) {
  const std::string line = "a<img src=\"pics/b.png\"><a href=\"../c.html#d\">e</a>";
  const std::string there =
      "<P>a<IMG src=\"file:///home/x/pics/b.png\"><A href=\"file:///home/c.html#d\">e</A></P>";
  EXPECT_EQ(copied(line, u"file:///home/x/one.html", u"file:///tmp/two.html"), there);
  EXPECT_EQ(copied(line, u"file:///home/x/one.html", u""), there) << "a new page";
}

TEST_F(CopyBetweenPages, BesideThePageTheyStayAsWritten) {
  EXPECT_EQ(copied("a<img src=\"pics/b.png\">c", u"file:///home/x/one.html", u"file:///home/x/two.html"),
            "<P>a<IMG src=\"pics/b.png\">c</P>");
  EXPECT_EQ(copied("a<img src=\"pics/b.png\">c", u"", u""), "<P>a<IMG src=\"pics/b.png\">c</P>");
}

TEST_F(CopyBetweenPages, WhatIsWholeOrWithinThePageStaysAsWritten) {
  EXPECT_EQ(copied("a<a href=\"#part\">b</a><a href=\"HTTP://c.d\">e</a>", u"file:///home/x/one.html", u""),
            "<P>a<A href=\"#part\">b</A><A href=\"HTTP://c.d\">e</A></P>");
}

TEST_F(CopyBetweenPages, OtherProgramsGetThemWhole) {
  copied("a<img src=\"b.png\" alt=\"c & d\">", u"https://e.f/g/h.html", u"");
  EXPECT_EQ(clipboard.read("text/html"),
            "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">"
            "<P>a<IMG src=\"https://e.f/g/b.png\" alt=\"c &amp; d\"></P>");
}

// --- what is preferred ---

TEST_F(PasteInto, HtmlComesBeforePicturesAndText) {
  clipboard.put({{"text/plain", "plain"}, {"image/png", "PNG"}, {"text/html", "<i>rich</i>"}});
  load("<p>[]<br></p>");
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_EQ(html(), "<P><I>rich</I></P>");
}

TEST_F(PasteInto, TheBlocksFragmentComesBeforeThePage) {
  clipboard.put({{"text/html", "<p>page"}, {"HTML Format", platform::html_block(u" x ")}});
  load("<p>a[]b</p>");
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_EQ(html(), "<P>a x b</P>");
}

TEST_F(PasteInto, APictureStandsInThePageItself) {
  clipboard.put({{"text/plain", "plain"}, {"image/png", "PNG"}});
  load("<p>a[]b</p>");
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_EQ(html(), "<P>a<IMG src=\"data:image/png;base64,UE5H\">b</P>");
}

TEST_F(PasteInto, APictureIsStoredInTheFolder) {
  document->set_image_folder([this] { return from_utf8(folder.string()) + u"\\"; });
  clipboard.put({{"image/jpeg", "JPEG"}});
  load("<p>[]<br></p>");
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_TRUE(command(u"Paste"));
  clipboard.put({{"image/png", "PNG"}});
  EXPECT_TRUE(command(u"Paste"));
  const std::string same = stored(".jpg"), other = stored(".png");
  EXPECT_EQ(html(), "<P><IMG src=\"" + same + "\"><IMG src=\"" + same + "\"><IMG src=\"" + other + "\"></P>");
  std::ifstream file(same.substr(std::string("file://").size()), std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "JPEG");
}

// A name by number would be another picture's on the server, or on the next day.
TEST_F(PasteInto, APicturesNameTellsItsContent) {
  document->set_image_folder([this] { return from_utf8(folder.string()) + u"/"; });
  load("<p>[]<br></p>");
  for (const char* content : {"one", "two"}) {
    clipboard.put({{"image/png", content}});
    EXPECT_TRUE(command(u"Paste"));
  }
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    names.push_back(entry.path().filename());
  ASSERT_EQ(names.size(), 2u);
  for (const std::string& name : names) EXPECT_THAT(name, testing::MatchesRegex("pasted-[0-9a-f]{16}[.]png"));
}

TEST_F(PasteInto, LocalPicturesAreToldWhenTheyStand) {
  std::vector<std::u16string> heard;
  std::string seen;
  document->set_on_local_pictures([&](const std::vector<std::u16string>& addresses) {
    heard = addresses;
    seen = html();
  });
  TransferData data;
  data.uris = {write("c.png", "PNG"), write("a.txt", "x"), u"http://e.org/d.png", write("e.gif", "GIF")};
  load("<p>[]<br></p>");
  EXPECT_TRUE(paste_into(*document, data));
  EXPECT_THAT(heard, testing::ElementsAre(data.uris[0], data.uris[3]));
  EXPECT_THAT(seen, testing::HasSubstr("e.gif"));
  heard.clear();
  clipboard.put({{"image/png", "PNG"}});
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_TRUE(heard.empty()) << "it stands in the page itself";
  document->set_image_folder([this] { return from_utf8(folder.string()) + u"/"; });
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_EQ(heard.size(), 1u);
}

TEST_F(PasteInto, AFolderThatCantBeWrittenToLeavesThePictureInThePage) {
  document->set_image_folder([] { return u"/no/such/folder/"; });
  clipboard.put({{"image/png", "PNG"}});
  load("<p>[]<br></p>");
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_EQ(html(), "<P><IMG src=\"data:image/png;base64,UE5H\"></P>");
}

TEST_F(PasteInto, TextIsEscapedAndKeepsItsLines) {
  clipboard.SetText(u"1 < 2\r\n<script>");
  load("<p>[]<br></p>");
  EXPECT_TRUE(command(u"Paste"));
  EXPECT_EQ(html(), "<P>1 &lt; 2<BR>&lt;script&gt;</P>");
}

TEST_F(PasteInto, AnAddressBecomesALinkWhereItCameAlone) {
  TransferData data;
  data.text = u"http://example.org/";
  const std::string link = "<P><A href=\"http://example.org/\">http://example.org/</A></P>";
  load("<p>[]<br></p>");
  EXPECT_TRUE(paste_into(*document, data));
  EXPECT_EQ(html(), link);
  // What has another form that gives nothing here is somebody's text all the same.
  data.html = u"<!--StartFragment--><script>1</script><!--EndFragment-->";
  load("<p>[]<br></p>");
  EXPECT_TRUE(paste_into(*document, data));
  EXPECT_EQ(html(), "<P>http://example.org/</P>");
}

TEST_F(PasteInto, NothingToReadIsAFailure) {
  load("<p>a[b]c</p>");
  EXPECT_FALSE(command(u"Paste"));
  clipboard.put({{"application/x-own", "bytes"}});
  EXPECT_FALSE(command(u"Paste"));
  EXPECT_EQ(marked(), "<P>a[b]c</P>");
}

TEST_F(PasteInto, ADocumentThatMayNotBeEditedTakesNothing) {
  clipboard.SetText(u"x");
  load("<p>a[b]c</p>");
  document->set_designMode(u"Off");
  EXPECT_FALSE(command(u"Paste"));
  EXPECT_FALSE(paste_into(*document, platform::fetch(clipboard)));
  EXPECT_EQ(marked(), "<P>a[b]c</P>");
}

// --- files ---

TEST_F(PasteInto, FilesBecomeWhatTheyHold) {
  TransferData data;
  data.text = u"the paths";
  data.uris = {write("a.txt", "x < y\nz"),
               write("b.html", "<html><head><title>T</title></head><body><i>b</i></body>"),
               write("c.png", "PNG"), write("d.bin", std::string("\0", 1)), u"http://e.org/?a&b"};
  load("<p>[]<br></p>");
  EXPECT_TRUE(paste_into(*document, data));
  EXPECT_EQ(html(), "<P>x &lt; y<BR>z<BR><I>b</I><BR><IMG src=\"" + to_utf8(data.uris[2]) +
                        "\"><BR><A href=\"" + to_utf8(data.uris[3]) +
                        "\">d.bin</A><BR><A href=\"http://e.org/?a&amp;b\">http://e.org/?a&amp;b</A></P>");
}

TEST_F(PasteInto, PictureFilesGoIntoTheFolder) {
  const std::filesystem::path store = folder / "store";
  std::filesystem::create_directories(store);
  document->set_image_folder([&] { return from_utf8(store.string()) + u"/"; });
  TransferData data;
  data.uris = {write("c.png", "PNG")};
  load("<p>[]<br></p>");
  EXPECT_TRUE(paste_into(*document, data));
  EXPECT_EQ(html(), "<P><IMG src=\"file://" + (store / "c.png").string() + "\"></P>");
}

// --- what other programs write ---

TEST_F(PasteInto, OnlyTheFragmentComesIn) {
  EXPECT_EQ(
      pasted(
          u"<html><head><meta charset=utf-8><title>T</title></head>\r\n<body>\r\n<!--StartFragment--><b>x</b>"
          u"<!--EndFragment-->\r\n</body>\r\n</html>"),
      "<P><B>x</B></P>");
  EXPECT_EQ(pasted(u"<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">x"), "<P>x</P>");
  EXPECT_EQ(pasted(u"\n<p>x</p>\n"), "<P>x</P>");
}

TEST_F(PasteInto, AFragmentWithinATableBringsItsTable) {
  EXPECT_EQ(
      pasted(
          u"<html><body><table width=72>\r\n<!--StartFragment-->\r\n <col width=64><tr height=20><td>1</td>"
          u"<td>2</td></tr>\r\n<!--EndFragment-->\r\n</table></body></html>"),
      "<TABLE width=\"72\">\n <COLGROUP><COL width=\"64\"></COLGROUP><TBODY><TR "
      "height=\"20\"><TD>1</TD><TD>2</TD>"
      "</TR>\n</TBODY></TABLE><P><BR></P>");
}

TEST_F(PasteInto, AWordProcessorsOwnIsLeftOut) {
  EXPECT_EQ(pasted(u"<html xmlns:o=\"urn:o\"><head><meta name=Generator content=\"W\"><link rel=File-List "
                   u"href=\"f.xml\">"
                   u"<style>p.MsoNormal {margin:0}</style><!--[if gte mso "
                   u"9]><xml><w:X>1</w:X></xml><![endif]--></head>"
                   u"<body lang=EN><!--StartFragment--><p class=MsoNormal style='mso-list:l0;color:red'>"
                   u"<span lang=EN style='mso-ansi-language:EN'>one<o:p></o:p></span></p><xml>2</xml>"
                   u"<p class=\"MsoNormal keep\" style='mso-x:y'><![if "
                   u"!vml]>two<![endif]></p><!--EndFragment--></body></html>"),
            "<P style=\"color: red\">one</P><P>two</P>");
}

TEST_F(PasteInto, NothingOfItCanAct) {
  EXPECT_EQ(
      pasted(u"<p onclick=\"a()\">x<script>alert(1)</script><img src=x onerror=b()></p>"
             u"<a href=\" java\tscript:c()\">y</a><iframe srcdoc=\"<script>\" "
             u"src=\"data:text/html,<b>\"></iframe>"
             u"<svg><script>d()</script><a xlink:href=\"javascript:e()\"><text>z</text></a>"
             u"<animate attributeName=href to=javascript:f()></animate></svg>"
             u"<form action=\"javascript:g()\"><input formaction=javascript:h()></form>"
             u"<div style=\"color:red;behavior:url(x);width:expression(i())\">w</div><embed src=j><base "
             u"href=k>"),
      "<P>x<IMG src=\"x\"></P><A>y</A><IFRAME></IFRAME><svg><a><text>z</text></a></svg><FORM><INPUT></FORM>"
      "<DIV style=\"color:red\">w</DIV>");
}

// --- pictures that the markup only names ---

/// The smallest PNG files differ in what they show.
const std::string picture_1 = "\x89PNG one", picture_2 = "\x89PNG two";

std::string in_digits(const std::string& bytes) {
  std::string digits;
  for (const unsigned char byte : bytes)
    for (const int shift : {4, 0}) digits += "0123456789abcdef"[byte >> shift & 15];
  return digits;
}

class NamedPictures : public PasteInto {
 protected:
  std::string pasted_from(platform::TransferItems items) {
    load("<p>[]<br></p>");
    clipboard.publish(std::move(items));
    EXPECT_TRUE(command(u"paste"));
    return html();
  }
  static std::string data_url(const std::string& bytes) {
    return "data:image/png;base64," + to_utf8(from_utf8(to_base64(bytes)));
  }
  const std::string passing = "file:///C:/Users/u/AppData/Local/Temp/msohtmlclip1/01/clip_image001.png";
};

TEST_F(NamedPictures, ComeFromTheRichTextOneByOne) {
  const std::string rtf =
      "{\\rtf1\\ansi{\\*\\listpicture{\\pict\\pngblip 00}}before "
      "{\\*\\shppict{\\pict{\\*\\picprop{\\sp{\\sn a}{\\sv 1}}}\\picw10\\pngblip\\bliptag1"
      "{\\*\\blipuid ffee}\n" +
      in_digits(picture_1) +
      "}}{\\nonshppict{\\pict\\wmetafile8 0102}}text{\\*\\shppict{\\pict\\pngblip\\bin" +
      std::to_string(picture_2.size()) + " " + picture_2 + "}}}";
  EXPECT_EQ(pasted_from({{"text/html",
                          "<p><img src=\"" + passing + "\" alt=one>a<img src=cid:image002.png@01D7></p>"},
                         {"text/rtf", rtf}}),
            "<P><IMG src=\"" + data_url(picture_1) + "\" alt=\"one\">a<IMG src=\"" + data_url(picture_2) +
                "\"></P>");
}

TEST_F(NamedPictures, GoIntoTheImageFolder) {
  document->set_image_folder([this] { return from_utf8(folder.string()); });
  std::vector<std::u16string> told;
  document->set_on_local_pictures([&](const std::vector<std::u16string>& all) { told = all; });
  const std::string rtf = "{\\rtf1{\\pict\\pngblip " + in_digits(picture_1) + "}}";
  const std::string pasted =
      pasted_from({{"text/html", "<p>x<img src=\"" + passing + "\"></p>"}, {"text/rtf", rtf}});
  EXPECT_EQ(pasted, "<P>x<IMG src=\"" + stored(".png") + "\"></P>");
  EXPECT_EQ(told.size(), 1u);
}

TEST_F(NamedPictures, ComeAsFilesOfTheSameName) {
  const std::string file = to_utf8(write("image001.png", picture_1));
  EXPECT_EQ(pasted_from({{"text/html", "<p>x<img src=\"cid:image001.png@01D7\"></p>"},
                         {"text/uri-list", file + "\r\n"}}),
            "<P>x<IMG src=\"" + data_url(picture_1) + "\"></P>");
}

// The files that a program makes for its copy go when it ends.
TEST_F(NamedPictures, ComeOutOfTemporaryFilesThatAreThere) {
  const std::string file = to_utf8(write("lu12.png", picture_1));
  EXPECT_EQ(pasted_from({{"text/html", "<p>x<img src=\"" + file + "\"></p>"}}),
            "<P>x<IMG src=\"" + data_url(picture_1) + "\"></P>");
}

TEST_F(NamedPictures, ComeAsTheOnePictureThatWasCopied) {
  EXPECT_EQ(pasted_from({{"text/html", "<img src=\"cid:p\">"}, {"image/png", picture_2}}),
            "<P><IMG src=\"" + data_url(picture_2) + "\"></P>");
}

TEST_F(NamedPictures, ThatCannotBeHadLeaveTheirText) {
  EXPECT_EQ(pasted_from({{"text/html", "<p>x<img src=\"" + passing + "\" alt=\"A cup\" width=10></p>"}}),
            "<P>x<IMG src=\"" + passing + "\" alt=\"A cup\" width=\"10\"></P>");
  EXPECT_EQ(pasted_from({{"text/html", "<p>x<img src=\"" + passing + "\"></p>"}}),
            "<P>x<IMG src=\"" + passing + "\" alt=\"clip_image001.png\"></P>");
}

// Better none than another one.
TEST_F(NamedPictures, AreNotGuessedWhereTheRichTextHasMore) {
  const std::string picture = "{\\pict\\pngblip " + in_digits(picture_1) + "}";
  EXPECT_EQ(pasted_from({{"text/html", "<p>x<img src=\"" + passing + "\" alt=one></p>"},
                         {"text/rtf", "{\\rtf1" + picture + picture + "}"}}),
            "<P>x<IMG src=\"" + passing + "\" alt=\"one\"></P>");
}

// An author's own picture may be missing for the moment.
TEST_F(NamedPictures, OfTheAuthorStayNamed) {
  EXPECT_EQ(pasted_from({{"text/html", "<p>x<img src=\"file:///home/nobody/none.png\"></p>"}}),
            "<P>x<IMG src=\"file:///home/nobody/none.png\"></P>");
}

TEST_F(NamedPictures, RichTextThatIsBrokenOffHarmsNobody) {
  const std::string rtf =
      "{\\rtf1{\\*\\shppict{\\pict\\pngblip " + in_digits(picture_1) + "}}{\\pict\\bin99999 x";
  for (std::size_t size = 0; size < rtf.size(); ++size)
    EXPECT_LE(pictures_of_rich_text(std::string_view(rtf).substr(0, size)).size(), 1u);
  EXPECT_TRUE(pictures_of_rich_text(std::string(1'000'000, '{')).empty());
  EXPECT_TRUE(pictures_of_rich_text("{\\rtf1" + std::string(1'000'000, '{')).empty());
}

}  // namespace
}  // namespace tvx::browser
