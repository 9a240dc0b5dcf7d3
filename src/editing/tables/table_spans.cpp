#include "tvx/editing/tables/table_spans.h"

#include "tvx/base/strings.h"
#include "tvx/dom/mutation.h"

namespace tvx::editing {

void set_span(dom::Element& element, dom::Name name, std::size_t span) {
  if (span <= 1)
    dom::remove_attribute(element, name);
  else if (element.attribute_or_empty(name) != to_text(std::int64_t(span)))
    dom::set_attribute(element, name, to_text(std::int64_t(span)));
}

}  // namespace tvx::editing
