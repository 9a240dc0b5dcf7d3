#include "automation/instance.h"

#include "base/error.h"
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
             [this] { return control_->DOM(); }) {
  take_turn();
  container_.on_property_changed([this](std::u16string_view key) {
    notify_("propertyChanged", {{"instance", number_}, {"key", json_text(key)}});
  });
  control_ = core::HTMLed::create({loop, container_, dialogs_, options.hwnd});
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
  take_turn();
  control_->UserControl_Terminate();
  control_->set_events(nullptr);
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

void Instance::on_event(const library::EventMember& event, library::Values& arguments) {
  notify_(
      "event",
      {{"instance", number_}, {"name", to_utf8(event.name)}, {"args", named_arguments(event, arguments)}});
  answers_.apply(event, arguments);
  expectations_.use(event, arguments);
}

}  // namespace tvx::automation
