#include "browser/web_fixture.h"
#include "tvx/base/error.h"

namespace tvx::browser {
namespace {

using testing::ElementsAre;

TEST_F(Web, APageFromAServerIsLoadedWithTheEventsOfALocalOne) {
  server.serve("/page", "<title>t</title><p>from afar</p>");
  browser->Navigate(at("/page"));
  EXPECT_EQ(browser->ReadyState(), ReadyState::Loading);
  EXPECT_THAT(told, ElementsAre());
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  EXPECT_THAT(told, ElementsAre("BeforeNavigate2 0", "DownloadBegin 1", "NavigateComplete2 3",
                                "DownloadComplete 3", "DocumentComplete 3"));
  EXPECT_EQ(body(), "<P>from afar</P>");
  EXPECT_EQ(browser->Document()->title(), u"t");
  EXPECT_EQ(browser->Document()->readyState(), u"complete");
  EXPECT_EQ(browser->Document()->url(), at("/page"));
}

TEST_F(Web, ASlowServerHoldsNobodyUp) {
  server.serve("/first", "first");
  server.hold("/slow", "second");
  go(at("/first"));
  told.clear();
  browser->Navigate(at("/slow"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  bool timer = false;
  loop.post_delayed(5, [&] { timer = true; });
  ASSERT_TRUE(wait_for([&] { return timer; }));
  EXPECT_EQ(browser->ReadyState(), ReadyState::Loading);
  EXPECT_EQ(body(), "first") << "the page that is there stays until the other has come";
  EXPECT_THAT(told, ElementsAre("BeforeNavigate2 4", "DownloadBegin 1"));
  server.release();
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  EXPECT_EQ(body(), "second");
}

TEST_F(Web, WhatIsAskedOfAServer) {
  server.serve("/page", "x");
  go(at("/page?a=b&c=\u00E9#part"));
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].method, "GET");
  EXPECT_EQ(requests[0].target, "/page?a=b&c=%C3%A9") << "no fragment, nothing but ASCII";
  EXPECT_TRUE(requests[0].header("User-Agent").starts_with("tvxHTML/"));
  EXPECT_THAT(requests[0].header("Accept-Encoding"), testing::HasSubstr("gzip"));
  EXPECT_THAT(requests[0].header("Accept"), testing::StartsWith("text/html"));
  EXPECT_EQ(requests[0].header("Referer"), "");
  EXPECT_EQ(browser->Document()->url(), at("/page?a=b&c=%C3%A9#part"));
}

TEST_F(Web, NoCookieIsKept) {
  server.on("/page", [](const auto&, auto& connection) {
    connection.reply("x", "text/html", "200 OK", "Set-Cookie: a=b\r\n");
  });
  go(at("/page"));
  go(at("/page"));
  ASSERT_EQ(server.requests().size(), 2u);
  EXPECT_EQ(server.requests()[1].header("Cookie"), "");
}

TEST_F(Web, NothingIsKeptInACache) {
  int times = 0;
  server.on("/page", [&](const auto&, auto& connection) {
    connection.reply(std::to_string(++times), "text/html", "200 OK", "Cache-Control: max-age=9999\r\n");
  });
  go(at("/page"));
  go(at("/page"));
  EXPECT_EQ(body(), "2");
}

// --- redirects ---

TEST_F(Web, TheDocumentBearsTheAddressBehindAllRedirects) {
  server.redirect("/a", "/b");
  server.redirect("/b", server.url("/folder/c"));
  server.serve("/folder/c", "<a href=x>x</a>");
  go(at("/a#part"));
  EXPECT_EQ(browser->Document()->url(), at("/folder/c#part"));
  EXPECT_EQ(browser->Document()->absolute_url(u"x"), at("/folder/x"));
  EXPECT_THAT(addresses, ElementsAre(at("/folder/c#part"), at("/folder/c#part")));
}

TEST_F(Web, ARedirectsOwnFragmentCounts) {
  server.redirect("/a", "/b#theirs");
  server.serve("/b", "x");
  go(at("/a#mine"));
  EXPECT_EQ(browser->Document()->url(), at("/b#theirs"));
}

TEST_F(Web, ARedirectLoopEndsInAnError) {
  server.redirect("/a", "/b");
  server.redirect("/b", "/a");
  go(at("/a"));
  EXPECT_EQ(count("NavigateError"), 1u);
  EXPECT_EQ(status, number_of(LoadFailure::TooManyRedirects));
  EXPECT_EQ(failed.url, at("/a")) << "the address that was asked for";
  EXPECT_LE(server.requests().size(), 30u);
}

TEST_F(Web, ARedirectLeadsToNoFileAndToNoOtherProtocol) {
  for (const std::string to : {"file:///etc/hostname", "ftp://127.0.0.1/x", "gopher://127.0.0.1/x",
                               "javascript:alert(1)", "data:text/html,x"}) {
    server.redirect("/a", to);
    told.clear();
    go(at("/a"));
    EXPECT_EQ(count("NavigateError"), 1u) << to;
    EXPECT_EQ(body(), "") << to;
  }
}

// --- failures ---

TEST_F(Web, AFailedFirstLoadLeavesAnEmptyCompleteDocument) {
  browser->Navigate(from_utf8(dead_address()));
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  EXPECT_THAT(told, ElementsAre("BeforeNavigate2 0", "DownloadBegin 1", "NavigateError 1",
                                "DownloadComplete 1", "DocumentComplete 1"));
  EXPECT_EQ(status, number_of(LoadFailure::CannotConnect));
  EXPECT_EQ(browser->Document()->readyState(), u"complete");
  EXPECT_EQ(body(), "");
}

TEST_F(Web, AFailedLaterLoadKeepsTheDocument) {
  server.serve("/page", "kept");
  go(at("/page"));
  const auto document = browser->Document();
  told.clear();
  go(at("/missing"));
  EXPECT_THAT(told,
              ElementsAre("BeforeNavigate2 4", "DownloadBegin 1", "NavigateError 1", "DownloadComplete 1"));
  EXPECT_EQ(status, 404);
  EXPECT_EQ(failed.url, at("/missing"));
  EXPECT_TRUE(failed.top);
  EXPECT_EQ(browser->Document(), document);
}

TEST_F(Web, EveryFailureIsToldByItsNumber) {
  HttpOptions options;
  options.longest_milliseconds = 400;
  options.largest_body = 1000;
  make_browser(options);
  server.on("/500", [](const auto&, auto& to) { to.reply("x", "text/html", "500 Broken"); });
  server.on("/204", [](const auto&, auto& to) { to.send("HTTP/1.1 204 None\r\n\r\n"); });
  server.on("/304", [](const auto&, auto& to) { to.send("HTTP/1.1 304 Same\r\n\r\n"); });
  server.on("/reset", [](const auto&, auto& to) { to.reset(); });
  server.on("/reset-within", [](const auto&, auto& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<p>half");
    to.reset();
  });
  server.on("/truncated", [](const auto&, auto& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 100\r\n\r\n<p>half");
  });
  server.on("/chunk", [](const auto&, auto& to) {
    to.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n8\r\n<p>h");
  });
  server.on("/no-http", [](const auto&, auto& to) { to.send("hello, who is there?\r\n"); });
  server.on("/bad-gzip", [](const auto&, auto& to) {
    to.reply("this is no gzip", "text/html", "200 OK", "Content-Encoding: gzip\r\n");
  });
  server.serve("/large", std::string(1001, 'x'));
  server.on("/large-unsaid",
            [](const auto&, auto& to) { to.send("HTTP/1.1 200 OK\r\n\r\n" + std::string(5000, 'x')); });
  server.hold("/never", "x");
  server.serve("/picture", "\x89PNG", "image/png");
  const std::pair<std::u16string, std::int32_t> cases[] = {
      {at("/500"), 500},
      {at("/204"), number_of(LoadFailure::NoContent)},
      {at("/304"), 304},
      {at("/reset"), number_of(LoadFailure::DownloadFailed)},
      {at("/reset-within"), number_of(LoadFailure::DownloadFailed)},
      {at("/truncated"), number_of(LoadFailure::DownloadFailed)},
      {at("/chunk"), number_of(LoadFailure::DownloadFailed)},
      {at("/no-http"), number_of(LoadFailure::UnknownProtocol)},
      {at("/bad-gzip"), number_of(LoadFailure::DownloadFailed)},
      {at("/large"), number_of(LoadFailure::DownloadFailed)},
      {at("/large-unsaid"), number_of(LoadFailure::DownloadFailed)},
      {at("/never"), number_of(LoadFailure::TimedOut)},
      {at("/picture"), number_of(LoadFailure::NoContent)},
      {u"http://", number_of(LoadFailure::InvalidAddress)},
      {u"http://a b/", number_of(LoadFailure::InvalidAddress)},
      {u"ftp://127.0.0.1/", number_of(LoadFailure::UnknownProtocol)},
      {u"javascript:alert(1)", number_of(LoadFailure::UnknownProtocol)},
  };
  for (const auto& [url, number] : cases) {
    told.clear();
    status = 0;
    go(url);
    EXPECT_EQ(status, number) << to_utf8(url);
    EXPECT_EQ(failed.url, url);
    EXPECT_EQ(count("NavigateError"), 1u) << to_utf8(url);
    EXPECT_EQ(count("DownloadBegin"), count("DownloadComplete")) << to_utf8(url);
    EXPECT_EQ(count("NavigateComplete2"), 0u) << to_utf8(url);
    EXPECT_EQ(body(), "") << to_utf8(url);
  }
}

TEST_F(Web, ATransferOnWhichNothingComesAnyMoreIsGivenUp) {
  HttpOptions options;
  options.silence_milliseconds = 1000;
  make_browser(options);
  server.on("/stuck", [](const auto&, auto& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<p>half");
    to.wait_for_release();
  });
  go(at("/stuck"));
  EXPECT_EQ(status, number_of(LoadFailure::TimedOut));
}

TEST_F(Web, AReadThatFailsOnRequestIsAFailedLoadFromAServerToo) {
  server.serve("/page", "x");
  set_fault(u"ReadPage", {RuntimeError(53, u"gone")});
  go(at("/page"));
  EXPECT_EQ(count("NavigateError"), 1u);
  EXPECT_EQ(server.requests().size(), 0u);
}

// --- bodies ---

TEST_F(Web, ALargeBodyInSmallPieces) {
  const std::string line = "<p>" + std::string(93, 'x') + "</p>";  // 100 bytes
  server.on("/large", [&](const auto&, auto& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nTransfer-Encoding: chunked\r\n\r\n");
    std::string piece;
    for (int i = 0; i < 100; ++i) piece += line;
    for (int i = 0; i < 1000; ++i) to.send("2710\r\n" + piece + "\r\n");
    to.send("0\r\n\r\n");
  });
  go(at("/large"));
  ASSERT_EQ(count("NavigateError"), 0u);
  std::size_t paragraphs = 0;
  for (dom::Node* node = browser->Document()->body()->first_child(); node; node = node->next_sibling())
    ++paragraphs;
  EXPECT_EQ(paragraphs, 100'000u);
}

TEST_F(Web, ACompressedBodyIsUncompressed) {
  // printf '<p>small\n' | gzip -n
  const unsigned char packed[] = {0x1f, 0x8b, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x03,
                                  0xb3, 0x29, 0xb0, 0x2b, 0xce, 0x4d, 0xcc, 0xc9, 0xe1, 0x02,
                                  0x00, 0xf3, 0xcb, 0xde, 0x7d, 0x09, 0x00, 0x00, 0x00};
  const std::string bytes(reinterpret_cast<const char*>(packed), sizeof packed);
  server.on("/packed", [&](const auto&, auto& to) {
    to.reply(bytes, "text/html", "200 OK", "Content-Encoding: gzip\r\n");
  });
  go(at("/packed"));
  EXPECT_EQ(body(), "<P>small\n</P>");
}

TEST_F(Web, ABodyWithoutALengthEndsWithTheConnection) {
  server.on("/page", [](const auto&, auto& to) { to.send("HTTP/1.0 200 OK\r\n\r\n<p>old</p>"); });
  go(at("/page"));
  EXPECT_EQ(body(), "<P>old</P>") << "without a type it is HTML";
}

TEST_F(Web, APlainTextBecomesAPageThatShowsIt) {
  server.serve("/notes", "\n a < b & c\n<p>no tag", "text/plain; charset=utf-8");
  go(at("/notes"));
  EXPECT_EQ(body(), "<PRE>\n\n a &lt; b &amp; c\n&lt;p&gt;no tag</PRE>");
}

// --- character sets ---

TEST_F(Web, TheServersCharacterSetCountsMoreThanThePagesAndLessThanAMark) {
  struct {
    const char *path, *type;
    std::string body;
    std::u16string_view text;
    const char* name;
  } const cases[] = {
      {"/told", "text/html; charset=ISO-8859-2", "<meta charset=utf-8><p>\xB1</p>", u"\u0105", "iso-8859-2"},
      {"/quoted", "text/html;charset=\"koi8-r\"", "<p>\xC1</p>", u"\u0430", "koi8-r"},
      {"/mark", "text/html; charset=iso-8859-2", "\xEF\xBB\xBF<p>\xC4\x85</p>", u"\u0105", "utf-8"},
      {"/declared", "text/html", "<meta charset=windows-1251><p>\xE0</p>", u"\u0430", "windows-1251"},
      {"/unknown", "text/html; charset=nonsense", "<meta charset=windows-1251><p>\xE0</p>", u"\u0430",
       "windows-1251"},
      {"/plain", "text/html", "<p>\xC3\xA9</p>", u"\u00E9", "utf-8"},
      {"/old", "text/html", "<p>\xE9</p>", u"\u00E9", "windows-1252"},
      {"/wide", "text/html; charset=utf-16", std::string("<\0p\0>\0\x05\x01", 8), u"\u0105", "utf-16le"},
  };
  for (const auto& row : cases) {
    server.serve(row.path, row.body, row.type);
    go(at(row.path));
    EXPECT_EQ(dom::inner_html(*browser->Document()->body()->first_child()), row.text) << row.path;
    EXPECT_EQ(browser->Document()->encoding().name, row.name) << row.path;
  }
}

// --- one after the other ---

TEST_F(Web, ALaterNavigationGivesTheRunningOneUp) {
  server.hold("/slow", "slow");
  server.serve("/quick", "quick");
  browser->Navigate(at("/slow"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  go(at("/quick"));
  server.release();
  settle();
  EXPECT_EQ(body(), "quick");
  EXPECT_THAT(
      told, ElementsAre("BeforeNavigate2 0", "DownloadBegin 1", "BeforeNavigate2 1", "DownloadComplete 1",
                        "DownloadBegin 1", "NavigateComplete2 3", "DownloadComplete 3", "DocumentComplete 3"))
      << "each begun download is over, and the first page's document never comes";
}

TEST_F(Web, ARefusedNavigationLeavesTheRunningOneAlone) {
  server.hold("/slow", "slow");
  browser->Navigate(at("/slow"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  refuse = [](const Navigation&) { return true; };
  browser->Navigate(at("/other"));
  settle();
  EXPECT_EQ(browser->ReadyState(), ReadyState::Loading);
  server.release();
  ASSERT_TRUE(wait_for([&] { return ready(); }));
  EXPECT_EQ(body(), "slow");
}

TEST_F(Web, ADocumentWhoseSheetsAreAwaitedIsCompleteOnceAnotherBegins) {
  server.serve("/page", "<link rel=stylesheet href=/slow.css>first");
  server.hold("/slow.css", "p {}", "text/css");
  browser->Navigate(at("/page"));
  ASSERT_TRUE(wait_for([&] { return browser->ReadyState() == ReadyState::Interactive; }));
  const auto first = browser->Document();
  EXPECT_EQ(first->readyState(), u"interactive");
  go(at("/missing"));
  EXPECT_EQ(browser->Document(), first) << "the next one failed: it stays";
  EXPECT_EQ(first->readyState(), u"complete");
  EXPECT_EQ(count("DocumentComplete"), 1u);
  EXPECT_EQ(count("DownloadBegin"), count("DownloadComplete"));
}

TEST_F(Web, TheBrowserMayGoWhileAServerIsAsked) {
  server.hold("/slow", "slow");
  browser->Navigate(at("/slow"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  browser.reset();
  server.release();
  settle();
  EXPECT_EQ(told.size(), 2u);
}

TEST_F(Web, TheBrowserMayGoWithinAnyEventOfARemoteLoad) {
  server.serve("/page", "<link rel=stylesheet href=/a.css><iframe src=/frame></iframe>x");
  server.serve("/a.css", "p {}", "text/css");
  server.serve("/frame", "y");
  for (const std::string event :
       {"BeforeNavigate2", "DownloadBegin", "NavigateComplete2", "DownloadComplete", "BeforeNavigate2 of ",
        "NavigateComplete2 of a frame", "DocumentComplete of a frame", "DocumentComplete"}) {
    make_browser();
    told.clear();
    inside = [&](const std::string& name) {
      if (name == event) browser.reset();
    };
    browser->Navigate(at("/page"));
    ASSERT_TRUE(wait_for([&] { return !browser; })) << event;
    settle();
    EXPECT_TRUE(told.back().starts_with(event)) << told.back();
  }
}

TEST_F(Web, StoppingEndsALoadAndLeavesWhatIsThere) {
  server.serve("/first", "first");
  server.hold("/slow", "slow");
  go(at("/first"));
  told.clear();
  browser->Navigate(at("/slow"));
  ASSERT_TRUE(wait_for([&] { return server.count("/slow") == 1; }));
  browser->Stop();
  EXPECT_EQ(browser->ReadyState(), ReadyState::Complete);
  server.release();
  settle();
  EXPECT_EQ(body(), "first");
  EXPECT_THAT(told, ElementsAre("BeforeNavigate2 4", "DownloadBegin 1", "DownloadComplete 1"));
}

// --- beside the page ---

TEST_F(Web, ADocumentBesideLoadsByItself) {
  server.serve("/page", "<title>beside</title><p>x</p>", "text/html; charset=utf-8");
  const auto document = browser->createDocumentFromUrl(at("/page"));
  EXPECT_EQ(document->readyState(), u"loading");
  ASSERT_TRUE(wait_for([&] { return document->readyState() == u"complete"; }));
  EXPECT_EQ(to_utf8(dom::inner_html(*document->body())), "<P>x</P>");
  EXPECT_EQ(document->title(), u"beside");
  EXPECT_EQ(document->url(), at("/page"));
  EXPECT_EQ(browser->Document(), nullptr);
  EXPECT_THAT(told, ElementsAre());
}

TEST_F(Web, ADocumentBesideThatFailsIsEmptyAndSaysSo) {
  const auto document = browser->createDocumentFromUrl(at("/missing"));
  ASSERT_TRUE(wait_for([&] { return document->readyState() == u"complete"; }));
  EXPECT_TRUE(document->load_failed());
  EXPECT_THAT(told, ElementsAre());
}

TEST_F(Web, DocumentsMakeDocumentsBeside) {
  server.serve("/page", "<p>page</p>");
  server.serve("/beside", "<p>beside</p>");
  go(at("/page"));
  const auto first = browser->Document()->createDocumentFromUrl(at("/beside"), u"");
  const auto second = first->createDocumentFromUrl(file("local.html", "<p>local</p>"), u"");
  EXPECT_EQ(to_utf8(dom::inner_html(*second->body())), "<P>local</P>") << "a local one is there at once";
  ASSERT_TRUE(wait_for([&] { return first->readyState() == u"complete"; }));
  EXPECT_EQ(to_utf8(dom::inner_html(*first->body())), "<P>beside</P>");
  EXPECT_EQ(body(), "<P>page</P>");
  browser.reset();
  EXPECT_THROW(second->createDocumentFromUrl(at("/beside"), u""), RuntimeError);
}

}  // namespace
}  // namespace tvx::browser
