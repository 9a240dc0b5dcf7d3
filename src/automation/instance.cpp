#include "automation/instance.h"

#include "base/error.h"
#include "library/document_object.h"
#include "platform/special_folders.h"

namespace tvx::automation {

Instance::Instance(int number, const InstanceOptions& options, platform::MessageLoop& loop, Notify notify,
                   Run run)
    : number_(number),
      code_page_(options.code_page),
      folder_(options.folder),
      notify_(std::move(notify)),
      container_(!options.design_mode),
      expectations_(dialogs_, notify_, std::move(run)),
      relay_([this](const library::EventMember& event,
                    library::Values& arguments) { on_event(event, arguments); },
             [this] { return control_->DOM(); }),
      view_(loop),
      document_view_(view_, loop) {
  take_turn();
  container_.on_property_changed([this](std::u16string_view key) {
    notify_("propertyChanged", {{"instance", number_}, {"key", json_text(key)}});
  });
  control_ = core::HTMLed::create({.loop = loop,
                                   .container = container_,
                                   .dialogs = dialogs_,
                                   .hwnd = options.hwnd,
                                   .geometry = &geometry_,
                                   .window = this,
                                   .clipboard = options.clipboard});
  control_->add_observer(*this);
  control_->set_events(&relay_);
  control_->UserControl_Initialize();
  control_->set_size(options.width, options.height);
  if (options.store)
    control_->UserControl_ReadProperties(*options.store);
  else
    control_->UserControl_InitProperties();
  control_->UserControl_Resize();
}

Instance::~Instance() {
  terminate();
  control_->remove_observer(*this);
}

void Instance::terminate() {
  if (terminated_) return;
  terminated_ = true;
  take_turn();
  control_->UserControl_Terminate();
  control_->set_events(nullptr);
  document_view_.show(nullptr);
}

void Instance::take_turn() const {
  CodePage::set_system(code_page_);
  platform::set_special_folder(platform::CSIDL_INTERNET_CACHE, folder_);
}

browser::HTMLDocument& Instance::document() {
  if (!control_->DOM()) throw RuntimeError(errors::object_not_set, u"There is no document");
  return *control_->DOM();
}

headless::PropertyBag Instance::stored() const {
  headless::PropertyBag bag;
  control_->UserControl_WriteProperties(bag);
  return bag;
}

void Instance::key(browser::KeyInput key, bool down) {
  if (control_->InCodeView()) {
    const auto shift =
        static_cast<std::int16_t>((key.shift ? 1 : 0) | (key.control ? 2 : 0) | (key.alt ? 4 : 0));
    control_->txtCode().TextBox1();
    control_->txtCode().plain_box().key(static_cast<std::int16_t>(key.key_code), shift, key.text, down);
    return;
  }
  document();
  view_.tell({.seen = {}, .what = browser::ViewKey{std::move(key), down}});
}

library::Value Instance::resolve(const Json& object) const {
  const auto kind = object.find("object");
  const auto place = object.find("sourceIndex");
  if (kind == object.end() || *kind != "element" || place == object.end() || !place->is_number_unsigned())
    library::type_mismatch();
  if (!control_->DOM()) throw RuntimeError(errors::object_not_set, u"There is no document");
  const std::vector<dom::Element*>& all = control_->DOM()->tree().all();
  const auto index = place->get<std::size_t>();
  if (index >= all.size()) throw RuntimeError(errors::invalid_call, u"No such element");
  return library::element_object(all[index], control_->DOM());
}

void Instance::document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) {
  document_view_.show(document);
}

void Instance::editor_enabled_changed(bool enabled) { document_view_.set_editable(enabled); }

void Instance::on_event(const library::EventMember& event, library::Values& arguments) {
  notify_(
      "event",
      {{"instance", number_}, {"name", to_utf8(event.name)}, {"args", named_arguments(event, arguments)}});
  answers_.apply(event, arguments);
  expectations_.use(event, arguments);
}

}  // namespace tvx::automation
