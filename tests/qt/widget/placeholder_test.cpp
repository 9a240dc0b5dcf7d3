#include <QImage>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <csignal>

#include "qt/print/paper.h"
#include "tvx/dom/tree.h"
#include "tvx/qt/web/web_view.h"

/// The sentence that an empty page shows.
namespace tvx::qt {
namespace {

const QString sentence = QStringLiteral("Begin here.");

class Placeholder : public Paper {
 protected:
  void show_with_sentence(const QString& html) {
    widget_->set_placeholder_text(sentence);
    show(html);
    ASSERT_TRUE(settle());
  }
  std::string in_page(const QString& script) {
    std::string answer;
    bool answered = false;
    widget_->view().page()->runJavaScript(script, QWebEngineScript::ApplicationWorld,
                                          [&](const QVariant& value) {
                                            answer = value.toString().toStdString();
                                            answered = true;
                                          });
    EXPECT_TRUE(wait_for([&] { return answered; }));
    return answer;
  }
  std::string drawn() { return in_page(QStringLiteral("tvxView.drawn().sentence || ''")); }
  bool comes() {
    return wait_for([&] { return drawn() == sentence.toStdString(); });
  }
  bool goes() {
    return wait_for([&] { return drawn().empty(); });
  }
  /// One of its left, top, width and height in the page.
  int drawn_at(int which) {
    return std::stoi(in_page(QStringLiteral("String(tvxView.drawn().hint[%1])").arg(which)));
  }
};

TEST_F(Placeholder, IsThereUntilAnythingIsInThePageAndAgainWhenItIsEmpty) {
  show_with_sentence(QString());
  EXPECT_TRUE(comes());
  for (const char* something :
       {"<P>x</P>", "<P>&nbsp;</P>", "<P></P><P></P>", "<P><BR><BR></P>", "<UL><LI></LI></UL>", "<HR>",
        "<P><IMG src=\"x.png\"></P>", "<P><INPUT></P>", "<TABLE><TBODY><TR><TD></TD></TR></TBODY></TABLE>",
        "<BLOCKQUOTE><P></P></BLOCKQUOTE>", "<PRE></PRE>"}) {
    widget_->set_DocumentHTML(QString::fromLatin1(something));
    EXPECT_TRUE(goes()) << something;
    for (const char* empty : {"", "<P></P>", "<P><BR></P>", "<H1></H1>", "<P><B><BR></B></P>", " \n "}) {
      widget_->set_DocumentHTML(QString::fromLatin1(empty));
      EXPECT_TRUE(comes()) << something << " then " << empty;
    }
  }
  widget_->set_placeholder_text(QString());
  EXPECT_TRUE(goes());
}

TEST_F(Placeholder, IsNoPartOfTheDocument) {
  show_with_sentence(QStringLiteral("<P></P>"));
  ASSERT_TRUE(comes());
  EXPECT_EQ(widget_->DocumentHTML(), QStringLiteral("<P></P>"));
  EXPECT_FALSE(widget_->IsDirty());
  EXPECT_EQ(in_page(QStringLiteral("document.body.innerText.trim()")), "");
}

TEST_F(Placeholder, StandsOnNoPaper) {
  show_with_sentence(QStringLiteral("<P></P>"));
  ASSERT_TRUE(comes());
  const QString with = pdf();
  EXPECT_EQ(text_of(with).find("Begin"), std::string::npos) << text_of(with);
  const QByteArray picture = picture_of(with);
  widget_->set_placeholder_text(QString());
  ASSERT_TRUE(goes());
  EXPECT_EQ(picture, picture_of(pdf()));
}

TEST_F(Placeholder, HasTheLinesFontAndSide) {
  show_with_sentence(QStringLiteral("<P></P>"));
  ASSERT_TRUE(comes());
  const int left = drawn_at(0), height = drawn_at(3);
  EXPECT_EQ(left, std::stoi(in_page(QStringLiteral(
                      "String(Math.round(document.querySelector('p').getBoundingClientRect().left))"))));
  widget_->set_DocumentHTML(QStringLiteral("<H1></H1>"));
  ASSERT_TRUE(wait_for([&] { return drawn() == sentence.toStdString() && drawn_at(3) > height * 3 / 2; }));
  // From right to left it ends where the line ends: at the other side its ground is bare.
  widget_->set_DocumentHTML(QStringLiteral("<P dir=rtl></P>"));
  ASSERT_TRUE(comes());
  const auto is_written = [&](bool on_the_left) {
    const QImage picture = widget_->view().widget()->grab().toImage();
    const int top = drawn_at(1), half = picture.width() / 2;
    for (int y = top; y < top + drawn_at(3); ++y)
      for (int x = on_the_left ? 4 : half; x < (on_the_left ? half : picture.width() - 24); ++x)
        if (qGray(picture.pixel(x, y)) < 180) return true;
    return false;
  };
  EXPECT_TRUE(wait_for([&] { return is_written(false) && !is_written(true); }));
  widget_->set_DocumentHTML(QStringLiteral("<P></P>"));
  EXPECT_TRUE(wait_for([&] { return is_written(true) && !is_written(false); }));
}

TEST_F(Placeholder, IsReadableOnDarkPages) {
  show_with_sentence(QStringLiteral("<P style='background: #111; color: #eee'></P>"));
  ASSERT_TRUE(comes());
  const auto lightest = [&] {
    const QImage picture = widget_->view().widget()->grab().toImage();
    int found = 0;
    const int top = drawn_at(1);
    for (int y = top; y < top + drawn_at(3); ++y)
      for (int x = drawn_at(0); x < drawn_at(0) + 60; ++x)
        found = std::max(found, qGray(picture.pixel(x, y)));
    return found;
  };
  EXPECT_TRUE(wait_for([&] { return lightest() > 120; })) << lightest();
}

TEST_F(Placeholder, IsThereAgainWhenTheEngineHasDied) {
  show_with_sentence(QString());
  ASSERT_TRUE(comes());
  const qint64 process = widget_->view().page()->renderProcessPid();
  ::kill(static_cast<pid_t>(process), SIGKILL);
  ASSERT_TRUE(wait_for([&] {
    const qint64 now = widget_->view().page()->renderProcessPid();
    return now > 0 && now != process && settle();
  }));
  EXPECT_TRUE(comes());
}

TEST_F(Placeholder, NobodyWritesInAPageThatIsOnlyShown) {
  show_with_sentence(QString());
  ASSERT_TRUE(comes());
  widget_->set_EditorEnabled(false);
  EXPECT_TRUE(goes());
}

}  // namespace
}  // namespace tvx::qt
