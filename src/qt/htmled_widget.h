#pragma once

#include <QWidget>
#include <functional>
#include <memory>

namespace tvx::core {
class HTMLed;
class HTMLedEvents;
}  // namespace tvx::core
namespace tvx::browser {
class DocumentView;
}
namespace tvx::platform {
class MessageLoop;
}

namespace tvx::qt {

class WebView;

/// The control as one widget: toolbars, the view, the code view. It embeds like any other; what a host wants
/// of the document it asks of control().
class HTMLedWidget final : public QWidget {
  Q_OBJECT
 public:
  /// The loop outlives the widget.
  explicit HTMLedWidget(platform::MessageLoop& loop, QWidget* parent = nullptr);
  ~HTMLedWidget() override;

  core::HTMLed& control();
  browser::DocumentView& document_view();
  WebView& view();
  /// Starts the control as a container with an empty store does. Waits, with the loop running, until there
  /// is a document.
  void start();
  QSize sizeHint() const override { return {900, 640}; }

 signals:
  /// A property that a container would save has another value.
  void property_changed(const QString& key);
  void document_replaced();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tvx::qt
