#include "tvx/qt/web/web_page.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <iostream>
#include <utility>

namespace tvx::qt {

void ResourceGuard::interceptRequest(QWebEngineUrlRequestInfo& info) {
  if (!allows(info)) info.block(true);
}

void ResourceGuard::begin_page() {
  requests_ = 0;
  withheld_ = false;
}

bool ResourceGuard::allows_remote(browser::ResourceKind kind) {
  if (policy_.allows_remote(kind)) return ++requests_ <= browser::ResourceBudget().requests;
  // Fonts and media are let go without a word: without them the page reads the same.
  const bool is_missed = kind == browser::ResourceKind::Image || kind == browser::ResourceKind::StyleSheet;
  if (is_missed && !std::exchange(withheld_, true)) emit withheld();
  return false;
}

bool ResourceGuard::allows(const QWebEngineUrlRequestInfo& info) {
  using Info = QWebEngineUrlRequestInfo;
  using Kind = browser::ResourceKind;
  const QString scheme = info.requestUrl().scheme();
  if (info.resourceType() == Info::ResourceTypeMainFrame) return scheme == u"data";
  const bool is_remote = scheme == u"http" || scheme == u"https";
  if (!is_remote && scheme != u"data" && !(scheme == u"file" && policy_.local_files)) return false;
  switch (info.resourceType()) {
    case Info::ResourceTypeImage: return !is_remote || allows_remote(Kind::Image);
    case Info::ResourceTypeStylesheet: return !is_remote || allows_remote(Kind::StyleSheet);
    case Info::ResourceTypeFontResource: return !is_remote || allows_remote(Kind::Font);
    case Info::ResourceTypeMedia: return !is_remote || allows_remote(Kind::Media);
    default: return false;
  }
}

WebPage::WebPage(QWebEngineProfile* profile, QObject* parent) : QWebEnginePage(profile, parent) {
  QWebEngineSettings* const own = settings();
  own->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
  own->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, true);
  own->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
  for (const auto off :
       {QWebEngineSettings::JavascriptCanOpenWindows, QWebEngineSettings::JavascriptCanAccessClipboard,
        QWebEngineSettings::LocalStorageEnabled, QWebEngineSettings::PluginsEnabled,
        QWebEngineSettings::FullScreenSupportEnabled, QWebEngineSettings::WebGLEnabled,
        QWebEngineSettings::ErrorPageEnabled, QWebEngineSettings::NavigateOnDropEnabled,
        QWebEngineSettings::AutoLoadIconsForPage, QWebEngineSettings::HyperlinkAuditingEnabled,
        QWebEngineSettings::FocusOnNavigationEnabled, QWebEngineSettings::DnsPrefetchEnabled}) {
    own->setAttribute(off, false);
  }
  own->setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, true);
  connect(this, &QWebEnginePage::featurePermissionRequested, this,
          [this](const QUrl& origin, Feature feature) {
            setFeaturePermission(origin, feature, PermissionDeniedByUser);
          });
}

void WebPage::load_skeleton(int number, dom::CompatibilityMode mode, const QString& base) {
  QString text;
  if (mode == dom::CompatibilityMode::NoQuirks) text = QStringLiteral("<!DOCTYPE html>");
  if (mode == dom::CompatibilityMode::LimitedQuirks) {
    text = QStringLiteral(
        "<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 Transitional//EN\" "
        "\"http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd\">");
  }
  const QUrl address(base);
  const bool is_remote = address.isValid() && address.scheme().startsWith(u"http");
  text +=
      QStringLiteral(
          "<html tvx-page=\"%1\" tvx-address=\"%2\"><head><meta http-equiv=\"Content-Security-Policy\" "
          "content=\"script-src "
          "'none'; object-src 'none'; frame-src 'none'; worker-src 'none'; connect-src 'none'; form-action "
          "'none'; base-uri http: https:\"></head><body></body></html>")
          .arg(QString::number(number), is_remote ? base.toHtmlEscaped() : QString());
  ++expected_loads_;
  // Only under a local address does the engine load local images and sheets, as those of a new page or one
  // that is yet to go to its address in the web. Whether this page may have them is for the guard to say.
  setHtml(text, address.isLocalFile() ? address : QUrl(QStringLiteral("file:///")));
}

bool WebPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool is_main_frame) {
  if (!is_main_frame || type != NavigationTypeTyped || url.scheme() != u"data" || expected_loads_ == 0) {
    return false;
  }
  --expected_loads_;
  return true;
}

void WebPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                       const QString& source) {
  // What a document's own sheets and images complain of is nobody's business here; the view's script is.
  const bool own =
      source.contains(QStringLiteral("view.js")) || source.startsWith(QStringLiteral("userscript"));
  if (own && level == ErrorMessageLevel) {
    std::clog << "htmled: view: " << message.toStdString() << " (line " << line << ")\n";
  }
}

QWebEngineProfile* view_profile() {
  static QPointer<QWebEngineProfile> profile;
  if (!profile) {
    profile = new QWebEngineProfile(QCoreApplication::instance());  // without a name: off the record
    profile->setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
    profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    profile->setSpellCheckEnabled(false);
  }
  return profile;
}

}  // namespace tvx::qt
