#include "window/plain_page.h"

#include <QFile>
#include <QUrl>
#include <QWebEngineProfile>
#include <QWebEngineScript>

namespace tvx::bench {
namespace {

// It answers as soon as the layout that an edit or a move of the caret asks for is made.
constexpr char script[] = R"js(
  document.body.contentEditable = 'true';
  document.body.style.caretColor = 'transparent';  // one that blinks would be taken for a letter
  document.body.focus();
  new QWebChannel(qt.webChannelTransport, (channel) => {
    const told = () => {
      document.documentElement.getBoundingClientRect();
      channel.objects.ear.laid_out();
    };
    let edits = 0;
    document.addEventListener('input', () => { ++edits; told(); });
    // After an edit the caret's move is no news.
    document.addEventListener('selectionchange', () => { if (edits > 0) --edits; else told(); });
    globalThis.benchReady = true;
  });
)js";

}  // namespace

PlainPage::PlainPage() {
  view_.resize(1000, 800);
  channel_.registerObject(QStringLiteral("ear"), &ear_);
  view_.page()->setWebChannel(&channel_, world());
  view_.show();
}

quint32 PlainPage::world() const { return QWebEngineScript::ApplicationWorld; }

EditedPage::Opening PlainPage::open(const QString& file) {
  bool loaded = false;
  const auto connection =
      QObject::connect(view_.page(), &QWebEnginePage::loadFinished, [&loaded] { loaded = true; });
  Opening opening;
  const double since = now();
  view_.load(QUrl::fromLocalFile(file));
  wait_until([&] { return loaded; });
  QObject::disconnect(connection);
  ask(QStringLiteral("String(document.documentElement.getBoundingClientRect().height)"));
  opening.whole = now() - since;
  QFile channel_script(QStringLiteral(":/qtwebchannel/qwebchannel.js"));
  if (channel_script.open(QIODevice::ReadOnly))
    ask(QString::fromUtf8(channel_script.readAll()) + QString::fromLatin1(script));
  wait_until([this] { return ask(QStringLiteral("String(globalThis.benchReady === true)")) == u"true"; });
  return opening;
}

void PlainPage::place_caret() {
  ask(QStringLiteral(
      "(function () { const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);"
      "let text; do text = walker.nextNode(); while (text && text.data.trim().length < 5);"
      "document.body.focus(); getSelection().collapse(text, 5); })()"));
  rest(50);
}

}  // namespace tvx::bench
