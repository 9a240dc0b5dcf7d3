#include "tvx/automation/control_object.h"
#include "tvx/automation/inside.h"
#include "tvx/clipboard/clip.h"
#include "tvx/library/objects/members_of.h"

namespace tvx::automation {

using clipboard::clsClip;
using library::MemberOf;
using library::Value;
using library::Values;

namespace {

/// The commands of a text box, by its window.
class ClipObject final : public library::Object {
 public:
  explicit ClipObject(const clsClip& clip) : clip_(clip) {}
  std::u16string_view kind() const override { return u"clip"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  const clsClip& operator*() const { return clip_; }

 private:
  const clsClip& clip_;
};

template <auto Method>
Value call(ClipObject& self, Values& arguments) {
  library::expect_arguments(arguments, 1, 1);
  const auto window = static_cast<platform::WindowHandle>(arguments[0].to_integer32());
  return library::result_of([&] { return ((*self).*Method)(window); });
}

Value can_paste(ClipObject& self, Values& arguments) {
  library::expect_arguments(arguments, 0, 0);
  return (*self).CanPaste();
}

constexpr MemberOf<ClipObject> rows[] = {
    {.name = u"Cut", .call = call<&clsClip::Cut>},
    {.name = u"Copy", .call = call<&clsClip::Copy>},
    {.name = u"Paste", .call = call<&clsClip::Paste>},
    {.name = u"Undo", .call = call<&clsClip::Undo>},
    {.name = u"Redo", .call = call<&clsClip::Redo>},
    {.name = u"CanUndo", .call = call<&clsClip::CanUndo>},
    {.name = u"Delete", .call = call<&clsClip::Delete>},
    {.name = u"CanPaste", .call = can_paste},
};

Value ClipObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<ClipObject>(rows, name, *this, arguments);
}

}  // namespace

library::ObjectHandle clip_object(const clsClip& clip) { return std::make_shared<ClipObject>(clip); }

}  // namespace tvx::automation
