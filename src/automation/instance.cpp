#include "tvx/automation/instance.h"

#include "tvx/automation/script_objects.h"
#include "tvx/base/error.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/platform/special_folders.h"

namespace tvx::automation {

Instance::Instance(int number, const InstanceOptions& options, platform::MessageLoop& loop,
                   const StageFactory& make_stage, Notify notify, Run run)
    : number_(number),
      code_page_(options.code_page),
      folder_(options.folder),
      notify_(std::move(notify)),
      expectations_(dialogs_, menus_, forms_, notify_, std::move(run)),
      relay_([this](const library::EventMember& event,
                    library::Values& arguments) { on_event(event, arguments); },
             [this] { return control_->DOM(); }) {
  take_turn();
  const auto property_changed = [this](std::u16string_view key) {
    notify_("propertyChanged", {{"instance", number_}, {"key", json_text(key)}});
  };
  stage_ = make_stage({loop, dialogs_, menus_, forms_, property_changed,
                       [this](bool with_dialog) { expectations_.print(with_dialog); }},
                      options);
  control_ = stage_->control();
  control_->set_events(&relay_);
  stage_->begin(options);
}

Instance::~Instance() { terminate(); }

void Instance::terminate() {
  if (terminated_) return;
  terminated_ = true;
  take_turn();
  spelling.reset();  // it works with the control's dictionaries
  kit.reset();
  control_->UserControl_Terminate();
  control_->set_events(nullptr);
  stage_->end();
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

void Instance::key(browser::KeyInput key, bool down) { stage_->key(std::move(key), down); }

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

void Instance::tell_event(std::string_view name, Json args) const {
  notify_("event", {{"instance", number_}, {"name", name}, {"args", std::move(args)}});
}

void Instance::on_event(const library::EventMember& event, library::Values& arguments) {
  notify_(
      "event",
      {{"instance", number_}, {"name", to_utf8(event.name)}, {"args", named_arguments(event, arguments)}});
  answers_.apply(event, arguments);
  expectations_.use(event, arguments);
}

}  // namespace tvx::automation
