#include <chrono>
#include <iostream>
#include <string>
#include <thread>

#include "browser/web_fixture.h"

/// Servers that don't keep to their protocol, or keep to it without end. Every load has an end, and half a
/// page is none.
namespace tvx::hostile {
namespace {

using namespace std::string_literals;
using browser::LoadFailure;
using browser::Navigation;
using Connection = HttpServer::Connection;
using Request = HttpServer::Request;

class Servers : public browser::Web {
 protected:
  Servers() {
    browser::HttpOptions options;
    options.connect_milliseconds = 2000;
    options.silence_milliseconds = 1000;
    options.longest_milliseconds = 3000;
    options.largest_body = std::size_t{1} << 20;
    make_browser(options);
    server.serve("/good", "<p>good</p>");
    go(at("/good"));
  }
  ~Servers() override { std::cout << "[ COUNTED  ] " << server.requests().size() << " requests\n"; }

  /// The load of a page that answers so must fail, and leave the document that was there.
  void refuse_page(const std::string& name, const std::function<void(Connection&)>& answer) {
    SCOPED_TRACE(name);
    status = 0;
    server.on("/bad", [answer](const Request&, Connection& connection) { answer(connection); });
    go(at("/bad"));
    EXPECT_NE(status, 0);
    EXPECT_EQ(body(), "<P>good</P>");
  }
  static void send_without_end(Connection& connection, const std::string& piece, int times) {
    for (int i = 0; i < times; ++i) connection.send(piece);
  }
};

TEST_F(Servers, HalfAnAnswerIsNoPage) {
  refuse_page("hangs up at once", [](Connection& to) { to.reset(); });
  refuse_page("says nothing at all", [](Connection&) {});
  refuse_page("a shorter body than it says",
              [](Connection& to) { to.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<p>half"); });
  refuse_page("a chunk that breaks off", [](Connection& to) {
    to.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n50\r\n<p>half");
  });
  refuse_page("a chunk of no size", [](Connection& to) {
    to.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n<p>x\r\n0\r\n\r\n");
  });
  refuse_page("compressed, it says", [](Connection& to) {
    to.reply("<p>not compressed", "text/html", "200 OK", "Content-Encoding: gzip\r\n");
  });
}

TEST_F(Servers, AnswersWithoutEndHaveOne) {
  refuse_page("a body", [](Connection& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n");
    send_without_end(to, std::string(65536, 'x'), 200);
  });
  refuse_page("a body as long as it says", [](Connection& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-Length: 999999999999\r\n\r\n");
    send_without_end(to, std::string(65536, 'x'), 200);
  });
  refuse_page("headers", [](Connection& to) {
    to.send("HTTP/1.1 200 OK\r\n");
    send_without_end(to, "X-More: " + std::string(1000, 'x') + "\r\n", 20'000);
  });
  refuse_page("one header", [](Connection& to) {
    to.send("HTTP/1.1 200 OK\r\nX-More: ");
    send_without_end(to, std::string(65536, 'x'), 200);
  });
  refuse_page("a letter now and then", [](Connection& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n");
    for (int i = 0; i < 25; ++i) {
      to.send("x");
      std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
  });
}

TEST_F(Servers, RedirectionsLeadNowhereBad) {
  server.redirect("/around", "/around");
  const auto refused = [&](const std::string& to) {
    refuse_page(to, [to](Connection& connection) { connection.redirect(to); });
  };
  refused("/around");
  refused("file:///etc/hostname");
  refused("ftp://127.0.0.1/x");
  refused("javascript:act()");
  refused("data:text/html,<p>x");
  refused("gopher://127.0.0.1/");
  refused("http://127.0.0.1:1/");
  refused("http://");
  refused("//");
}

TEST_F(Servers, NonsenseIsNoPage) {
  refuse_page("no protocol", [](Connection& to) { to.send("<p>just so</p>"); });
  refuse_page("a status of letters", [](Connection& to) { to.send("HTTP/1.1 abc OK\r\n\r\n<p>x"); });
  refuse_page("bytes", [](Connection& to) { to.send(std::string(5000, '\xAB')); });
  refuse_page("a zero in the head", [](Connection& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-\0Type: text/html\r\nContent-Length: 4\r\n\r\n<p>x"s);
  });
  refuse_page("a picture", [](Connection& to) { to.reply("\x89PNG", "image/png"); });
  for (const char* status :
       {"100 Continue", "304 Not Modified", "401 Unauthorized", "416 Range", "500 Oh", "599 x"})
    refuse_page(status, [status](Connection& to) { to.reply("<p>x", "text/html", status); });
}

TEST_F(Servers, WhatAPageNamesMayFailInAllTheseWays) {
  server.on("/endless.css", [](const Request&, Connection& to) {
    to.send("HTTP/1.1 200 OK\r\nContent-Type: text/css\r\n\r\n");
    send_without_end(to, "p { color: red } ", 200'000);
  });
  server.on("/reset.css", [](const Request&, Connection& to) { to.reset(); });
  server.redirect("/file.css", "file:///etc/hostname");
  server.serve("/self.css", "@import url(self.css); @import url(self.css?a); p { color: blue }", "text/css");
  server.serve(
      "/page",
      "<link rel=stylesheet href=/endless.css><link rel=stylesheet href=/reset.css>"
      "<link rel=stylesheet href=/file.css><link rel=stylesheet href=/self.css>"
      "<link rel=stylesheet href=file:///etc/hostname><iframe src=file:///etc/hostname></iframe><p>page");
  go(at("/page"));
  EXPECT_NE(body().find("<P>page</P>"), std::string::npos) << body();
  EXPECT_LT(server.requests().size(), 60u);
}

}  // namespace
}  // namespace tvx::hostile
