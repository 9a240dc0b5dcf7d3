#include "tvx/clipboard/clip.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tvx/headless/clipboard.h"
#include "tvx/platform/text_box.h"

namespace tvx::clipboard {
namespace {

using platform::EM_CANUNDO;
using platform::EM_REPLACESEL;
using platform::EM_UNDO;
using platform::Message;
using platform::Parameter;
using testing::ElementsAre;

class Box final : public platform::MessageWindow {
 public:
  ~Box() override { destroy(); }
  std::vector<Message> heard;
  bool can_undo = false;
  std::u16string replacement = u"-";

 private:
  platform::MessageResult handle_message(Message message, Parameter, Parameter lParam) override {
    if (message == platform::WM_DESTROY) return 0;
    heard.push_back(message);
    if (message == EM_REPLACESEL) replacement = reinterpret_cast<const char16_t*>(lParam);
    return message == EM_CANUNDO ? can_undo : 0;
  }
};

class Clip : public testing::Test {
 protected:
  headless::Clipboard clipboard;
  clsClip clip{&clipboard};
  Box box;
};

TEST_F(Clip, SendsItsMessages) {
  clip.Cut(box.handle());
  clip.Copy(box.handle());
  clip.Paste(box.handle());
  clip.Redo(box.handle());
  EXPECT_THAT(box.heard, ElementsAre(0x300, 0x301, 0x302, 1108));
}

TEST_F(Clip, UndoAsksFirst) {
  clip.Undo(box.handle());
  EXPECT_THAT(box.heard, ElementsAre(EM_CANUNDO));
  box.heard.clear();
  box.can_undo = true;
  clip.Undo(box.handle());
  EXPECT_THAT(box.heard, ElementsAre(EM_CANUNDO, EM_UNDO));
  EXPECT_TRUE(clip.CanUndo(box.handle()));
}

TEST_F(Clip, DeleteReplacesTheSelectionByNothing) {
  clip.Delete(box.handle());
  EXPECT_THAT(box.heard, ElementsAre(EM_REPLACESEL));
  EXPECT_EQ(box.replacement, u"");
}

TEST_F(Clip, CanPasteAsksForText) {
  EXPECT_FALSE(clip.CanPaste());
  clipboard.put({{"text/html", "<b>x</b>"}, {"image/png", "PNG"}});
  EXPECT_FALSE(clip.CanPaste());
  clipboard.SetText(u"x");
  EXPECT_TRUE(clip.CanPaste());
  EXPECT_FALSE(clsClip(nullptr).CanPaste());
}

TEST_F(Clip, AWindowThatIsGoneHearsNothing) {
  clip.Cut(platform::WindowHandle::none);
  clip.Undo(platform::WindowHandle::none);
  EXPECT_THAT(box.heard, ElementsAre());
}

}  // namespace
}  // namespace tvx::clipboard
