#pragma once

#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

#include "tvx/browser/resource_policy.h"
#include "tvx/browser/view/view.h"

namespace tvx::qt {

/// Lets through what a page is painted with, as far as the policy goes, and nothing else: no script, no
/// frame, no request that a page could speak by.
class ResourceGuard final : public QWebEngineUrlRequestInterceptor {
  Q_OBJECT
 public:
  using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;
  void set_policy(const browser::ResourcePolicy& policy) { policy_ = policy; }
  /// A page begins: it has asked for nothing.
  void begin_page();
  void interceptRequest(QWebEngineUrlRequestInfo& info) override;

 signals:
  /// The page wanted something that the policy doesn't allow. Told once a page.
  void withheld();

 private:
  bool allows(const QWebEngineUrlRequestInfo& info);
  bool allows_remote(browser::ResourceKind kind);

  browser::ResourcePolicy policy_;
  int requests_ = 0;
  bool withheld_ = false;
};

/// The page of a view. It goes nowhere but to the skeletons that it is given, and opens nothing.
class WebPage final : public QWebEnginePage {
  Q_OBJECT
 public:
  WebPage(QWebEngineProfile* profile, QObject* parent);
  /// Loads an empty page of this number for the compatibility mode; what loads from the base address does.
  void load_skeleton(int number, dom::CompatibilityMode mode, const QString& base);

 protected:
  bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool is_main_frame) override;
  QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }
  QStringList chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) override { return {}; }
  void javaScriptAlert(const QUrl&, const QString&) override {}
  bool javaScriptConfirm(const QUrl&, const QString&) override { return false; }
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                const QString& source) override;

 private:
  int expected_loads_ = 0;
};

/// The profile of all views: keeps nothing on disk. Lives as long as the application.
QWebEngineProfile* view_profile();

}  // namespace tvx::qt
