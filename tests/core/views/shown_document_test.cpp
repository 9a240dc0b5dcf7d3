#include "tvx/core/views/shown_document.h"

#include <optional>

#include "core/control_fixture.h"
#include "tvx/headless/page_window.h"

namespace tvx::core {
namespace {

class ShownDocuments : public Control {
 protected:
  void open_another() {
    std::u16string file = write_file("b.html", "<P>b</P>");
    control->Open_document(file, true);
    loop.settle();
  }

  headless::PageWindow page_{loop};
};

TEST_F(ShownDocuments, AreTheControlsWhicheverItHas) {
  create();
  const ShownDocument shown(*control, page_.document_view());
  control->UserControl_Show();
  const auto first = control->DOM();
  ASSERT_TRUE(first);
  EXPECT_EQ(page_.document_view().document(), first);
  open_another();
  ASSERT_NE(control->DOM(), first);
  EXPECT_EQ(page_.document_view().document(), control->DOM());
}

TEST_F(ShownDocuments, CannotBeEditedWhileTheEditorIsDisabled) {
  create();
  const ShownDocument shown(*control, page_.document_view());
  control->UserControl_Show();
  loop.settle();
  ASSERT_TRUE(page_.view().mode().editable);
  control->set_EditorEnabled(false);
  loop.settle();
  EXPECT_FALSE(page_.view().mode().editable);
}

TEST_F(ShownDocuments, GoWithWhoShowsThem) {
  create();
  std::optional<ShownDocument> shown(std::in_place, *control, page_.document_view());
  control->UserControl_Show();
  ASSERT_TRUE(page_.document_view().document());
  shown.reset();
  EXPECT_FALSE(page_.document_view().document());
  open_another();
  EXPECT_FALSE(page_.document_view().document());
}

}  // namespace
}  // namespace tvx::core
