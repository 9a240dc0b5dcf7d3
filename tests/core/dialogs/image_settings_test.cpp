#include <unistd.h>

#include "core/control_fixture.h"
#include "support/http_server.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/dom/journal.h"
#include "tvx/headless/form_keys.h"
#include "tvx/platform/form.h"

namespace tvx::core {
namespace {

using platform::Form;

class ImageSettingsOf : public Control {
 protected:
  void open(std::u16string_view html, const std::function<void(Form&)>& user, std::u16string button) {
    start_with(html);
    open_again(user, std::move(button));
  }
  /// By the mouse's menu.
  void open_again(const std::function<void(Form&)>& user, std::u16string button) {
    menus.expect({.menu = u"mnuImg", .choose = u"mnuImgProperties"});
    forms.expect({.form = u"frmImageSettings", .while_open = user, .press = std::move(button)});
    control->DOM()->mouse_press(at(element(dom::Tag::Img), browser::MouseButton::Right));
    EXPECT_EQ(forms.expectations(), 0u);
  }
  static std::u16string text(const Form& form, std::u16string_view name) {
    return form.Controls(name).Text();
  }
  static void fill(Form& form, std::u16string_view name, std::u16string_view text) {
    headless::fill(form.Controls(name), text);
  }
  std::size_t steps() const { return control->DOM()->tree().journal().depth(); }
};

TEST_F(ImageSettingsOf, ShowsWhatTheImageHas) {
  open(
      u"<IMG src=http://example.com/a.png width=40 height=30 alt=cat border=2 align=left>",
      [](Form& form) {
        EXPECT_EQ(form.Caption(), u"Image Settings(http://example.com/a.png)");
        EXPECT_EQ(text(form, u"txtSrc"), u"http://example.com/a.png");
        EXPECT_EQ(text(form, u"txtWidth"), u"40");
        EXPECT_EQ(text(form, u"txtHeight"), u"30");
        EXPECT_EQ(text(form, u"txtAltText"), u"cat");
        EXPECT_EQ(text(form, u"txtBorder"), u"2");
        EXPECT_EQ(text(form, u"cboAlign"), u"left");
      },
      u"CancelButton");
}

TEST_F(ImageSettingsOf, OKWritesAsOneStepAndLeavesTheFlagAlone) {
  open(
      u"<IMG src=a.png width=40 height=30>",
      [](Form& form) {
        fill(form, u"txtWidth", u"80");
        fill(form, u"txtHeight", u"70");
        fill(form, u"txtSrc", u"b.png");
        fill(form, u"txtAltText", u"dog");
        fill(form, u"txtBorder", u"1");
        fill(form, u"cboAlign", u"right");
      },
      u"OKButton");
  EXPECT_EQ(body(),
            u"<IMG src=\"b.png\" width=\"80\" height=\"70\" alt=\"dog\" border=\"1\" align=\"right\">");
  EXPECT_FALSE(control->IsDirty());
  EXPECT_EQ(steps(), 1u) << "the journal knows what has changed";
}

TEST_F(ImageSettingsOf, CancelTakesTheStyleAwayAllTheSameAndSetsTheFlag) {
  open(
      u"<IMG src=a.png style=\"float: left\">", [](Form&) {}, u"CancelButton");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\">");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_EQ(steps(), 1u);
}

TEST_F(ImageSettingsOf, CancelOfAnImageWithoutAStyleChangesNothing) {
  open(
      u"<IMG src=a.png width=4>", [](Form&) {}, u"CancelButton");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" width=\"4\">");
  EXPECT_EQ(steps(), 0u);
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ImageSettingsOf, TheStyleAndWhatIsConfirmedAreOneStep) {
  open(
      u"<IMG src=a.png style=\"float: left\">", [](Form& form) { fill(form, u"txtAltText", u"x"); },
      u"OKButton");
  EXPECT_EQ(steps(), 1u);
  control->DOM()->tree().journal().undo();
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" style=\"float: left\">");
}

TEST_F(ImageSettingsOf, ResetTakesTheSizeAwayAndClosesAtOnce) {
  open(
      u"<IMG src=a.png width=40 height=30>",
      [](Form& form) {
        form.Controls(u"cmdReset").click();
        EXPECT_FALSE(form.Visible());
        EXPECT_EQ(text(form, u"txtHeight"), u"Reset");
      },
      u"");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\">");
  EXPECT_TRUE(control->IsDirty());
  EXPECT_EQ(steps(), 1u);
}

TEST_F(ImageSettingsOf, CancelStandsInBothBoxes) {
  open(
      u"<IMG src=a.png width=40 height=30>",
      [](Form& form) {
        form.cancel();
        EXPECT_EQ(text(form, u"txtWidth"), u"-1");
        EXPECT_EQ(text(form, u"txtHeight"), u"-1");
      },
      u"");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" width=\"40\" height=\"30\">");
}

TEST_F(ImageSettingsOf, AWidthThatIsNoNumberLeavesTheOldOneAndTheRestIsWritten) {
  open(
      u"<IMG src=a.png width=40 height=30>",
      [](Form& form) {
        form.Controls(u"txtWidth").set_Text(u"wide");
        EXPECT_EQ(form.Controls(u"txtWidth").fault(), u"This is no whole number");
        fill(form, u"txtHeight", u"9");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" width=\"40\" height=\"9\">");
}

TEST_F(ImageSettingsOf, TheBaseIsTakenOffTheAddress) {
  start();
  control->set_BaseURL(u"http://example.com/");
  control->set_relativeURLs(true);
  control->set_DocumentHTML(u"<IMG src=http://EXAMPLE.com/p/a.png>");
  open_again([](Form& form) { EXPECT_EQ(text(form, u"txtSrc"), u"p/a.png"); }, u"OKButton");
  EXPECT_EQ(*element(dom::Tag::Img)->attribute(dom::names::src), u"p/a.png");
}

TEST_F(ImageSettingsOf, AnAddressThatStaysIsWrittenAsItWas) {
  open(
      u"<IMG src=a.png>", [](Form& form) { fill(form, u"txtAltText", u"x"); }, u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" alt=\"x\">");
}

// --- keys of the boxes for the size ---

TEST_F(ImageSettingsOf, KeysThatTypeNoNumberAreTakenAway) {
  open(
      u"<IMG src=a.png width=40 height=30>",
      [](Form& form) {
        platform::FormControl& width = form.Controls(u"txtWidth");
        for (const std::int16_t passes : {8, 46, 48, 57, 96, 105, 110}) {
          EXPECT_EQ(width.key_down(passes, 0), passes);
          EXPECT_EQ(width.key_press(passes), passes);
          EXPECT_EQ(width.key_up(passes, 0), passes);
        }
        for (const std::int16_t taken : {9, 37, 39, 65, 86, 109, 189, 190}) {
          EXPECT_EQ(width.key_down(taken, 0), 0);
          EXPECT_EQ(width.key_up(taken, 0), 0);
        }
        for (const char16_t dropped : {u'-', u'x', u'A', u'z', u'%', u'\x16'})
          EXPECT_EQ(width.key_press(static_cast<std::int16_t>(dropped)), 0);
        for (const char16_t letter : {u'a', u'i', u'n', u'`'})
          EXPECT_EQ(width.key_press(static_cast<std::int16_t>(letter)), letter);
      },
      u"CancelButton");
}

TEST_F(ImageSettingsOf, AMinusIsNeverTypedSoThatNoWidthLooksLikeCancel) {
  open(
      u"<IMG src=a.png width=40 height=30>", [](Form& form) { fill(form, u"txtWidth", u"-1"); }, u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" width=\"1\" height=\"30\">");
}

TEST_F(ImageSettingsOf, TheLockKeepsTheProportion) {
  open(
      u"<IMG src=a.png width=400 height=300>",
      [](Form& form) {
        headless::tick(form.Controls(u"chkConstrain"), true);
        fill(form, u"txtWidth", u"200");
        EXPECT_EQ(text(form, u"txtHeight"), u"150");
        fill(form, u"txtHeight", u"75");
        EXPECT_EQ(text(form, u"txtWidth"), u"100");
        form.Controls(u"txtWidth").step(4);
        EXPECT_EQ(text(form, u"txtHeight"), u"78") << "the arrows beside it too";
      },
      u"CancelButton");
}

TEST_F(ImageSettingsOf, HalvesAreRoundedToTheEvenNumber) {
  open(
      u"<IMG src=a.png width=4 height=2>",
      [](Form& form) {
        headless::tick(form.Controls(u"chkConstrain"), true);
        fill(form, u"txtWidth", u"5");
        EXPECT_EQ(text(form, u"txtHeight"), u"2");
        fill(form, u"txtWidth", u"7");
        EXPECT_EQ(text(form, u"txtHeight"), u"4");
      },
      u"CancelButton");
}

TEST_F(ImageSettingsOf, WithoutTheLockTheOtherSizeStays) {
  open(
      u"<IMG src=a.png width=400 height=300>",
      [](Form& form) {
        fill(form, u"txtWidth", u"200");
        EXPECT_EQ(text(form, u"txtHeight"), u"300");
      },
      u"CancelButton");
}

TEST_F(ImageSettingsOf, AnEmptiedBoxWithTheLockIsNoughtAndSoIsTheOther) {
  open(
      u"<IMG src=a.png width=400 height=300>",
      [](Form& form) {
        headless::tick(form.Controls(u"chkConstrain"), true);
        fill(form, u"txtHeight", u"");
        EXPECT_EQ(text(form, u"txtHeight"), u"0");
        EXPECT_EQ(form.Controls(u"txtHeight").SelLength(), 1);
        EXPECT_EQ(text(form, u"txtWidth"), u"0");
      },
      u"CancelButton");
}

TEST_F(ImageSettingsOf, AnImageWithoutAWidthHasNoProportion) {
  open(
      u"<IMG src=http://example.com/none.png height=30>",
      [](Form& form) {
        EXPECT_EQ(text(form, u"txtWidth"), u"0");
        EXPECT_EQ(text(form, u"txtHeight"), u"30");
        headless::tick(form.Controls(u"chkConstrain"), true);
        fill(form, u"txtHeight", u"60");
        EXPECT_EQ(text(form, u"txtWidth"), u"0");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"http://example.com/none.png\" height=\"60\">");
}

TEST_F(ImageSettingsOf, AnImageWithoutAHeightKeepsNone) {
  open(
      u"<IMG src=http://example.com/none.png width=30>",
      [](Form& form) {
        EXPECT_EQ(text(form, u"txtHeight"), u"0");
        headless::tick(form.Controls(u"chkConstrain"), true);
        fill(form, u"txtHeight", u"60");
        EXPECT_EQ(text(form, u"txtWidth"), u"30") << "no height gives a width";
        fill(form, u"txtWidth", u"60");
        EXPECT_EQ(text(form, u"txtHeight"), u"0");
      },
      u"CancelButton");
  for (const std::string& heard : host.heard) EXPECT_FALSE(heard.starts_with("Error")) << heard;
}

// --- the picture itself ---

/// The head of a GIF of 7 by 5.
const std::string gif(
    "GIF89a\x07\x00\x05\x00\x80\x00\x00\x00\x00\x00\xff\xff\xff,\x00\x00\x00\x00\x07\x00\x05\x00\x00", 30);

TEST_F(ImageSettingsOf, TheFileTellsTheNaturalSize) {
  const std::u16string picture = write_file("a.gif", gif);
  open(
      u"<IMG src=\"file://" + picture + u"\">",
      [&](Form& form) {
        EXPECT_EQ(text(form, u"txtWidth"), u"7");
        EXPECT_EQ(text(form, u"txtHeight"), u"5");
        EXPECT_EQ(form.Controls(u"picPreview").Picture(), picture);
        EXPECT_EQ(form.Controls(u"lblNaturalSize").Caption(), u"7 \u00D7 5 px");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"file://" + picture + u"\">") << "it stays the picture's own";
}

TEST_F(ImageSettingsOf, BrowsingGivesTheAddressOfAFile) {
  const std::u16string picture = write_file("b c.gif", gif);
  dialogs.expect({.kind = headless::DialogKind::open, .answer = picture});
  open(
      u"<IMG src=a.png>",
      [&](Form& form) {
        form.Controls(u"cmdBrowse").click();
        EXPECT_TRUE(text(form, u"txtSrc").starts_with(u"file:///"));
        EXPECT_TRUE(text(form, u"txtSrc").ends_with(u"b%20c.gif"));
        EXPECT_EQ(form.Controls(u"lblNaturalSize").Caption(), u"7 \u00D7 5 px");
      },
      u"CancelButton");
}

TEST_F(ImageSettingsOf, TheViewTellsTheSizeOfAPictureFromElsewhere) {
  start_with(u"<IMG src=http://127.0.0.1:9/a.png>");
  control->DOM()->note_natural_size(*element(dom::Tag::Img), platform::PictureSize{640, 480});
  open_again(
      [](Form& form) {
        EXPECT_EQ(text(form, u"txtWidth"), u"640");
        EXPECT_EQ(text(form, u"txtHeight"), u"480");
        EXPECT_EQ(form.Controls(u"lblNaturalSize").Caption(), u"640 \u00D7 480 px");
        headless::tick(form.Controls(u"chkConstrain"), true);
        fill(form, u"txtWidth", u"320");
        EXPECT_EQ(text(form, u"txtHeight"), u"240");
        fill(form, u"txtSrc", u"http://127.0.0.1:9/b.png");
        EXPECT_EQ(form.Controls(u"lblNaturalSize").Caption(), u"") << "that one nobody has seen";
        fill(form, u"txtSrc", u"http://127.0.0.1:9/a.png");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"http://127.0.0.1:9/a.png\" height=\"240\" width=\"320\">");
  open_again([](Form&) {}, u"cmdReset");
  EXPECT_EQ(body(), u"<IMG src=\"http://127.0.0.1:9/a.png\">");
  open_again([](Form& form) { EXPECT_EQ(text(form, u"txtWidth"), u"640"); }, u"CancelButton");
}

TEST_F(ImageSettingsOf, APictureInItsAddressIsShown) {
  start_with(u"<IMG src='data:image/gif;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAA='>");
  std::string file;
  open_again(
      [&](Form& form) {
        file = to_utf8(form.Controls(u"picPreview").Picture());
        EXPECT_TRUE(form.Controls(u"picPreview").Visible());
        EXPECT_EQ(bytes_of(file).substr(0, 6), "GIF89a");
        fill(form, u"txtSrc", u"b.gif");
        EXPECT_FALSE(form.Controls(u"picPreview").Visible());
      },
      u"CancelButton");
  EXPECT_FALSE(std::filesystem::exists(file));
}

class ImageSettingsFromTheWeb : public ImageSettingsOf {
 protected:
  ImageSettingsFromTheWeb() {
    setenv("no_proxy", "*", 1);
    server.serve("/a.gif", std::string("GIF89a\x04\0\x03\0\0\0\0;", 14), "image/gif");
    start_with(u"<IMG src=" + from_utf8(server.url("/a.gif")) + u">");
  }
  HttpServer server;
};

TEST_F(ImageSettingsFromTheWeb, WhatTheViewHasHadIsShown) {
  control->DOM()->note_natural_size(*element(dom::Tag::Img), platform::PictureSize{4, 3});
  open_again(
      [&](Form& form) {
        const auto& preview = form.Controls(u"picPreview");
        for (int i = 0; i < 10'000 && preview.Picture().empty(); ++i) {
          loop.pump(0);
          usleep(1000);
        }
        EXPECT_TRUE(preview.Visible());
        EXPECT_EQ(bytes_of(to_utf8(preview.Picture())).size(), 14u);
      },
      u"CancelButton");
}

TEST_F(ImageSettingsFromTheWeb, WhatTheViewHasNotHadIsNotAskedFor) {
  open_again(
      [&](Form& form) {
        for (int i = 0; i < 30; ++i) {
          loop.pump(0);
          usleep(1000);
        }
        EXPECT_FALSE(form.Controls(u"picPreview").Visible());
      },
      u"CancelButton");
  EXPECT_TRUE(server.requests().empty());
}

TEST_F(ImageSettingsOf, ASizeMayBeAPartOfTheRoom) {
  open(
      u"<IMG src=a.png width=50% height=30>",
      [](Form& form) {
        EXPECT_EQ(text(form, u"txtWidth"), u"50");
        EXPECT_EQ(text(form, u"cboWidthUnit"), u"%");
        EXPECT_EQ(text(form, u"cboHeightUnit"), u"px");
        headless::tick(form.Controls(u"chkConstrain"), true);
        fill(form, u"txtWidth", u"80");
        EXPECT_EQ(text(form, u"txtHeight"), u"30") << "pixels have no proportion to it";
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" width=\"80%\" height=\"30\">");
  open_again([](Form& form) { form.Controls(u"cboWidthUnit").choose(0); }, u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" width=\"80\" height=\"30\">");
  open_again(
      [](Form& form) {
        fill(form, u"txtWidth", u"400");
        form.Controls(u"cboWidthUnit").choose(1);
        EXPECT_EQ(text(form, u"txtWidth"), u"100");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"a.png\" width=\"100%\" height=\"30\">");
}

// --- the two ways in ---

TEST_F(ImageSettingsOf, TheElementPathOpensItTooAndNotesWhatItReports) {
  start_with(u"<P><IMG src=a.png width=4></P>");
  control->DOM()->mouse_press(at(element(dom::Tag::Img)));
  menus.expect({.menu = u"mnuToolProp", .choose = u"mnuToolProperties"});
  forms.expect({.form = u"frmImageSettings",
                .while_open = [](Form& form) { fill(form, u"txtWidth", u"9"); },
                .press = u"OKButton"});
  const auto place = std::int64_t(control->DOM()->tree().source_index(*element(dom::Tag::Img)));
  control->press(control->tlbDOM(), u"KEY" + to_text(place));
  EXPECT_EQ(body(), u"<P><IMG src=\"a.png\" width=\"9\"></P>");
  EXPECT_FALSE(control->IsDirty());
}

TEST_F(ImageSettingsOf, AHostThatForbidsTheItemGetsNoDialogAndAMark) {
  start_with(u"<IMG src=a.png style=\"float: left\">");
  host.on_menu = [](std::u16string&, bool& cancel) { cancel = true; };
  menus.expect({.menu = u"mnuImg", .choose = u"mnuImgProperties"});
  control->DOM()->mouse_press(at(element(dom::Tag::Img), browser::MouseButton::Right));
  EXPECT_TRUE(forms.shown().empty());
  EXPECT_TRUE(control->IsDirty());
}

TEST_F(ImageSettingsOf, AContentThatCameMeanwhileIsLeftAlone) {
  open(
      u"<IMG src=a.png>",
      [this](Form& form) {
        fill(form, u"txtAltText", u"x");
        control->set_DocumentHTML(u"<IMG src=b.png>");
      },
      u"OKButton");
  EXPECT_EQ(body(), u"<IMG src=\"b.png\">");
}

}  // namespace
}  // namespace tvx::core
