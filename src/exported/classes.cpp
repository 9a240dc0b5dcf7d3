#include "tvx/exported/classes.h"

#include <algorithm>

#include "tvx/exported/control_object.h"
#include "tvx/exported/services/subclassing_object.h"
#include "tvx/exported/services/timer_object.h"

namespace tvx::exported {

namespace {

Counted* make_control() { return new ControlObject; }

const ExportedClass classes[] = {
    {"tvxHTML.HTMLed", "{04C657AA-8E4F-4912-B967-DCEC43DE5A5C}", tvx_class_htmled, make_control},
#include "tvx/interface/service_classes.inc"
};

}  // namespace

std::span<const ExportedClass> exported_classes() { return classes; }

const ExportedClass* find_class(const tvx_id& id) {
  const auto* found = std::ranges::find_if(classes, [&](const ExportedClass& each) { return each.id == id; });
  return found == std::end(classes) ? nullptr : found;
}

}  // namespace tvx::exported
