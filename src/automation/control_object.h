#pragma once

#include "tvx/library/objects/object.h"

namespace tvx::core {
class HTMLed;
}

namespace tvx::clipboard {
class clsClip;
}

namespace tvx::transfer {
class clsFTP;
class frmLibraryImage;
}  // namespace tvx::transfer

namespace tvx::platform {
class MessageLoop;
}  // namespace tvx::platform

namespace tvx::automation {

class Instance;

/// The root of all paths: the control that they begin at.
class ControlObject final : public library::Object {
 public:
  ControlObject(Instance& instance, platform::MessageLoop& loop) : instance_(instance), loop_(loop) {}
  std::u16string_view kind() const override { return u"control"; }
  library::Value invoke(std::u16string_view name, library::Values& arguments) override;
  void set(std::u16string_view name, const library::Value& value) override;

  Instance& instance() const { return instance_; }
  core::HTMLed& operator*() const;
  platform::MessageLoop& loop() const { return loop_; }

 private:
  Instance& instance_;
  platform::MessageLoop& loop_;
};

/// The control seen from inside, for paths: its parts (`docHTML`, `WBrowser`, `Toolbar1`, ...), its private
/// members, its internal routines by their names, and the members that every host sees.
library::ObjectHandle control_object(Instance& instance, platform::MessageLoop& loop);

// Parts that are no part of its face. Handles are for one request: they don't keep the control.
library::ObjectHandle code_view_object(Instance& instance);         // code_view_object.cpp
library::ObjectHandle browser_object(Instance& instance);           // browser_object.cpp
library::ObjectHandle clip_object(const clipboard::clsClip& clip);  // clip_object.cpp
library::ObjectHandle client_object(transfer::clsFTP& client);      // client_object.cpp
/// Nothing of a library that isn't open.
library::ObjectHandle library_object(transfer::frmLibraryImage* library);  // client_object.cpp

}  // namespace tvx::automation
