#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tvx/core/properties.h"
#include "tvx/core/surroundings.h"

namespace tvx::browser {
class Browser;
}
namespace tvx::platform {
class Form;
}

namespace tvx::core {

class HTMLedEvents;
class HTMLedObserver;

/// What a part of the control knows of it: the document, the properties, and how to tell the host. A part is
/// given this and never the control itself; its tests give it a fake.
class Context {
 public:
  virtual ~Context() = default;

  virtual Properties& properties() = 0;
  virtual const Surroundings& surroundings() const = 0;
  /// Whether the user works with the control; false while a host's programmer designs a window with it.
  virtual bool run_time() const = 0;
  /// The container has ended the control; whatever is still running comes to its end.
  virtual bool terminated() const = 0;

  /// The document that the control works on; null before the start. Usually that of the browser.
  virtual const std::shared_ptr<browser::HTMLDocument>& DOM() const = 0;
  /// Nothing of the former document is kept.
  virtual void set_DOM(std::shared_ptr<browser::HTMLDocument> document) = 0;
  virtual browser::Browser& browser() const = 0;

  /// Calls the host. Its exceptions end there.
  virtual void raise(const std::function<void(HTMLedEvents&)>& event) = 0;
  /// Calls those who show the control.
  virtual void tell(const std::function<void(HTMLedObserver&)>& news) = 0;
  /// Tells the container that a property has another value.
  virtual void PropertyChanged(std::u16string_view key) = 0;
  /// Lets the message loop run for a moment. Throws where the control has ended meanwhile.
  virtual void Wait() = 0;
  /// Shows a dialog over the control and returns when it is hidden. `section` is that of its words in the
  /// language file. Where nobody shows dialogs, or the control ends meanwhile, it counts as cancelled. Throws
  /// where the document's content has been replaced meanwhile.
  virtual void show_dialog(platform::Form& dialog, std::u16string_view section) = 0;
  /// Holds the control for as long as the result lives; see KeepAlive.
  virtual std::shared_ptr<const void> hold() = 0;
  /// What the user can do may be something else now: the document, its mark or the selection has changed.
  virtual void state_changed() {}

  // --- made of the above ---
  browser::HTMLDocument& document() const;          // throws RuntimeError(91) before the start
  browser::HTMLDocument& browser_document() const;  // that of the browser; throws if it has none
  void raise_error(std::int32_t number, std::u16string text);
  /// The document has been edited.
  void mark_changed();
  /// The document is the one that is saved or was given.
  void mark_clean();
  /// Until it no longer lacks, or the browser has nothing on its way that could bring it.
  void wait_while(const std::function<bool()>& lacks);
  /// Throws before the start, when there is nothing to wait for.
  void wait_until_complete();
  void set_design_mode_of_browser();
};

/// Throws RuntimeError(91) where a document has none.
dom::Element& body_of(browser::HTMLDocument& document);

}  // namespace tvx::core
