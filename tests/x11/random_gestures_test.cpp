#include <QFileInfo>
#include <cstdlib>
#include <random>

#include "tvx/browser/view/document_view.h"
#include "tvx/dom/journal.h"
#include "tvx/qt/web/web_view.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// Somebody works in the window with mouse and keys, without sense. What the file would get is marked as
/// changed if and only if it is; going all the way back gives the file, and all the way forth the work.
/// TVX_GESTURES says how many gestures, TVX_SEED which.
namespace tvx::x11 {
namespace {

const QByteArray page =
    "<body style='margin:20px'>\n<h1 id=h>A letter</h1>\n<p id=a>one two three <b>four</b> five</p>\n"
    "<p id=b>a second <a href='http://a.b/'>link</a> here</p>\n"
    "<ul>\n<li id=i>item</li>\n<li>another item</li>\n</ul>\n"
    "<table border=1 width=400><tr><td id=c width=200>cell<td id=d>next</table>\n"
    "<p><img style='border:0' width=100 height=60 "
    "src='data:image/gif;base64,R0lGODlhAQABAIAAAP8AAP///yH5BAAAAAAALAAAAAABAAEAAAICRAEAOw=='></p>\n"
    "<p id=z>the end</p>\n</body>";

class RandomGestures : public EditorOnScreen {
 protected:
  int pick(int count) { return int(random_() % unsigned(count)); }

  // Somewhere in the page, where something of the document may stand.
  QPoint somewhere() {
    const QWidget& view = *window_->editor().view().input_widget();
    return view.mapToGlobal(QPoint(15 + pick(440), 15 + pick(std::min(view.height() - 30, 480))));
  }

  std::string gesture() {
    static const char* const keys[] = {"Return",    "BackSpace", "Delete",     "shift+Return",   "Tab",
                                       "ctrl+b",    "ctrl+i",    "ctrl+u",     "ctrl+z",         "ctrl+y",
                                       "ctrl+x",    "ctrl+c",    "ctrl+v",     "shift+End",      "shift+Down",
                                       "ctrl+Home", "ctrl+End",  "shift+Left", "ctrl+BackSpace", "Up"};
    static const char16_t* const buttons[] = {u"Bold",     u"Italic", u"Strike Through", u"Center", u"indent",
                                              u"unindent", u"Undo"};
    switch (pick(9)) {
      case 0: {
        const QPoint from = somewhere(), to = somewhere();
        hands::drag(from, to);
        return "drag " + at(from) + " to " + at(to);
      }
      case 1: {
        const QPoint there = somewhere();
        hands::click(there);
        return "click " + at(there);
      }
      case 2: {
        const QPoint there = somewhere();
        hands::click(there);
        hands::click(there);
        return "double click " + at(there);
      }
      case 3: {
        QWidget* button = toolbar_button(buttons[pick(int(std::size(buttons)))]);
        if (!button || !button->isEnabled() || !button->isVisible()) return "no button";
        hands::click(middle_of(*button));
        return "button " + button->toolTip().toStdString();
      }
      case 4:
      case 5: hands::type(QStringLiteral("wo rd ")); return "typing";
      case 6: return edit_code();
      default: {
        const char* key = keys[pick(int(std::size(keys)))];
        hands::press(QLatin1String(key));
        return key;
      }
    }
  }
  // Types somewhere in the code, now and then saves there, and comes back.
  std::string edit_code() {
    hands::click(middle_of(*toolbar_button(u"toggle")));
    EXPECT_TRUE(wait_for([&] { return control().InCodeView(); }));
    hands::press(QStringLiteral("ctrl+Home"));
    const int down = pick(12);
    for (int i = 0; i < down; ++i) hands::press(QStringLiteral("Down"));
    if (pick(2)) hands::press(QStringLiteral("End"));
    const bool edits = pick(4) > 0;
    if (edits) hands::type(QStringLiteral("QQ"));
    const bool saves = pick(3) == 0;
    if (saves) hands::press(QStringLiteral("ctrl+s"));
    loop_.pump(20);
    hands::click(middle_of(*toolbar_button(u"toggle")));
    EXPECT_TRUE(wait_for([&] { return !control().InCodeView(); }));
    return "code, " + std::to_string(down) + " down" + (edits ? ", edited" : "") + (saves ? ", saved" : "");
  }
  // What the page shows is what the document holds.
  void expect_page_agrees(const std::string& done) {
    EXPECT_TRUE(wait_for([&] { return in_page(QStringLiteral("document.body.textContent")) == text(); }))
        << done << in_page(QStringLiteral("document.body.textContent")) << "\n---\n"
        << text() << "\n---\n"
        << state_of_view();
  }
  std::string state_of_view() {
    browser::DocumentView& view = window_->editor().document_view();
    std::string state;
    const auto add = [&](const char* name, bool is_so) { state += is_so ? std::string(name) + ", " : ""; };
    add("settled", view.settled());
    add("filled", view.filled());
    add("input waits", view.input_waits());
    add("shows a notice", view.shows_notice());
    return state;
  }
  static std::string at(QPoint point) { return std::to_string(point.x()) + "," + std::to_string(point.y()); }

  // What saving would write now.
  QByteArray bytes() {
    EXPECT_TRUE(window_->save_copy(path_of(QStringLiteral("copy.html"))));
    return file(QStringLiteral("copy.html"));
  }
  std::size_t depth() { return document().tree().journal().depth(); }

  std::mt19937 random_{14};
};

TEST_F(RandomGestures, WhatIsChangedIsMarkedAndNothingElse) {
  const char* wanted = std::getenv("TVX_GESTURES");
  const int gestures = wanted ? std::atoi(wanted) : 60;
  if (const char* seed = std::getenv("TVX_SEED")) random_.seed(unsigned(std::atoi(seed)));
  start(page);
  QByteArray saved = bytes();
  const std::string first = html();
  std::size_t saved_depth = depth();
  int changes = 0, saves = 0;
  std::string done;
  for (int i = 0; i < gestures && !HasFailure(); ++i) {
    const QByteArray before = bytes();
    const std::size_t depth_before = depth();
    const std::string what = gesture();
    done += what + "\n";
    ASSERT_TRUE(settle()) << done << state_of_view();
    for (int turn = 0; turn < 5; ++turn) loop_.pump(5);
    expect_page_agrees(done);
    const QByteArray now = bytes();
    if (what.ends_with("saved")) {
      EXPECT_TRUE(wait_for([&] { return file() == now; })) << done << file().toStdString();
      saved = now;
      saved_depth = depth();
    }
    changes += now != before;
    ASSERT_EQ(now != before && depth() == depth_before && what != "typing", false)
        << "changed without a step:\n"
        << done << before.toStdString() << "\n---\n"
        << now.toStdString();
    const bool moved_on = depth() != saved_depth;
    if (now != saved || !moved_on) {
      const bool changed = now != saved;
      ASSERT_TRUE(wait_for([&] { return window_->isWindowModified() == changed; }))
          << done << changed << now.toStdString();
    }
    if (pick(12) == 0) {
      hands::press(QStringLiteral("ctrl+s"));
      ASSERT_TRUE(wait_for([&] { return file() == now && !window_->isWindowModified(); })) << done;
      saved = now;
      saved_depth = depth();
      ++saves;
      done += "saved\n";
    }
  }
  std::cout << gestures << " gestures, " << changes << " changes, " << saves << " saved\n";
  EXPECT_GT(changes, gestures / 8) << done;

  // All the way back is the page as it was opened, all the way forth what was done.
  const QByteArray last = bytes();
  const std::string last_body = html();
  int steps = 0;
  for (; document().tree().journal().can_undo(); ++steps) control().DOM()->execCommand(u"Undo", false, u"");
  EXPECT_EQ(html(), first) << done;
  for (; steps > 0; --steps) control().DOM()->execCommand(u"Redo", false, u"");
  EXPECT_EQ(bytes().toStdString(), last.toStdString()) << done;
  EXPECT_EQ(html(), last_body) << done;
}

}  // namespace
}  // namespace tvx::x11
