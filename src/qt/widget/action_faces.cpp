#include "tvx/qt/widget/action_faces.h"

#include <QString>

namespace tvx::qt {
namespace {

/// In the order of the enumeration.
constexpr ActionFace faces[] = {
    {u"Undo", QT_TRANSLATE_NOOP("HTMLed", "&Undo"), "Ctrl+Z", u"undo"},
    {u"Redo", QT_TRANSLATE_NOOP("HTMLed", "&Redo"), "Ctrl+Shift+Z Ctrl+Y", u"redo"},
    {u"Cut", QT_TRANSLATE_NOOP("HTMLed", "Cu&t"), "Ctrl+X", u"cut"},
    {u"Copy", QT_TRANSLATE_NOOP("HTMLed", "&Copy"), "Ctrl+C", u"copy"},
    {u"Paste", QT_TRANSLATE_NOOP("HTMLed", "&Paste"), "Ctrl+V", u"paste"},
    {u"PasteText", QT_TRANSLATE_NOOP("HTMLed", "Paste as pla&in text"), "Ctrl+Shift+V", u"pastetext"},
    {u"SelectAll", QT_TRANSLATE_NOOP("HTMLed", "Select &all"), "Ctrl+A", u"selectall"},
    {u"Bold", QT_TRANSLATE_NOOP("HTMLed", "&Bold"), "Ctrl+B", u"bold"},
    {u"Italic", QT_TRANSLATE_NOOP("HTMLed", "&Italic"), "Ctrl+I", u"italic"},
    {u"Underline", QT_TRANSLATE_NOOP("HTMLed", "&Underline"), "Ctrl+U", u"underline"},
    {u"Strike", QT_TRANSLATE_NOOP("HTMLed", "&Strike through"), nullptr, u"strike"},
    {u"Subscript", QT_TRANSLATE_NOOP("HTMLed", "Subsc&ript"), nullptr, u"subscript"},
    {u"Superscript", QT_TRANSLATE_NOOP("HTMLed", "Su&perscript"), nullptr, u"superscript"},
    {u"ClearFormatting", QT_TRANSLATE_NOOP("HTMLed", "Clear for&matting"), "Ctrl+\\", u"clear"},
    {u"Font", QT_TRANSLATE_NOOP("HTMLed", "&Font and colours…"), nullptr, u"text"},
    {u"Paragraph", QT_TRANSLATE_NOOP("HTMLed", "&Paragraph"), "Ctrl+Alt+0"},
    {u"Heading1", QT_TRANSLATE_NOOP("HTMLed", "Heading &1"), "Ctrl+Alt+1"},
    {u"Heading2", QT_TRANSLATE_NOOP("HTMLed", "Heading &2"), "Ctrl+Alt+2"},
    {u"Heading3", QT_TRANSLATE_NOOP("HTMLed", "Heading &3"), "Ctrl+Alt+3"},
    {u"Heading4", QT_TRANSLATE_NOOP("HTMLed", "Heading &4"), "Ctrl+Alt+4"},
    {u"Heading5", QT_TRANSLATE_NOOP("HTMLed", "Heading &5"), "Ctrl+Alt+5"},
    {u"Heading6", QT_TRANSLATE_NOOP("HTMLed", "Heading &6"), "Ctrl+Alt+6"},
    {u"Preformatted", QT_TRANSLATE_NOOP("HTMLed", "P&reformatted"), "Ctrl+Alt+7"},
    {u"Quotation", QT_TRANSLATE_NOOP("HTMLed", "&Quotation"), "Ctrl+Alt+8"},
    {u"AlignLeft", QT_TRANSLATE_NOOP("HTMLed", "Align &left"), "Ctrl+L", u"Align Left"},
    {u"AlignCenter", QT_TRANSLATE_NOOP("HTMLed", "&Center"), "Ctrl+E", u"Centre"},
    {u"AlignRight", QT_TRANSLATE_NOOP("HTMLed", "Align &right"), "Ctrl+R", u"Align Right"},
    {u"Justify", QT_TRANSLATE_NOOP("HTMLed", "&Justify"), "Ctrl+J", u"justify"},
    {u"Indent", QT_TRANSLATE_NOOP("HTMLed", "In&dent"), "Ctrl+M", u"indent"},
    {u"Outdent", QT_TRANSLATE_NOOP("HTMLed", "&Outdent"), "Ctrl+Shift+M", u"outdent"},
    {u"NumberedList", QT_TRANSLATE_NOOP("HTMLed", "&Numbered list"), "Ctrl+Shift+7", u"ol"},
    {u"BulletedList", QT_TRANSLATE_NOOP("HTMLed", "Bulleted &list"), "Ctrl+Shift+8", u"ul"},
    {u"Link", QT_TRANSLATE_NOOP("HTMLed", "&Link…"), "Ctrl+K", u"link"},
    {u"Unlink", QT_TRANSLATE_NOOP("HTMLed", "Remove lin&k"), "Ctrl+Shift+K", u"unlink"},
    {u"Image", QT_TRANSLATE_NOOP("HTMLed", "&Image…"), nullptr, u"image"},
    {u"RemoteImage", QT_TRANSLATE_NOOP("HTMLed", "Image from the se&rver…"), nullptr, u"remoteimage"},
    {u"Table", QT_TRANSLATE_NOOP("HTMLed", "&Table…"), nullptr, u"table"},
    {u"Rule", QT_TRANSLATE_NOOP("HTMLed", "&Horizontal rule"), nullptr, u"hr"},
    {u"Form", QT_TRANSLATE_NOOP("HTMLed", "&Form…"), nullptr, u"Form"},
    {u"TextField", QT_TRANSLATE_NOOP("HTMLed", "&Text field"), nullptr, u"Textbox"},
    {u"TextArea", QT_TRANSLATE_NOOP("HTMLed", "Text &area"), nullptr, u"TextArea"},
    {u"FileField", QT_TRANSLATE_NOOP("HTMLed", "F&ile field"), nullptr, u"Filefield"},
    {u"HiddenField", QT_TRANSLATE_NOOP("HTMLed", "&Hidden field"), nullptr, u"Hidden"},
    {u"ImageField", QT_TRANSLATE_NOOP("HTMLed", "I&mage button"), nullptr, u"ImageField"},
    {u"CheckBox", QT_TRANSLATE_NOOP("HTMLed", "&Check box"), nullptr, u"Checkbox"},
    {u"DropDownList", QT_TRANSLATE_NOOP("HTMLed", "&Drop-down list"), nullptr, u"combo"},
    {u"PushButton", QT_TRANSLATE_NOOP("HTMLed", "&Button"), nullptr, u"Button"},
    {u"SubmitButton", QT_TRANSLATE_NOOP("HTMLed", "&Submit button"), nullptr, u"Submit"},
    {u"ResetButton", QT_TRANSLATE_NOOP("HTMLed", "&Reset button"), nullptr, u"Reset"},
    {u"RadioButton", QT_TRANSLATE_NOOP("HTMLed", "&Option button"), nullptr, u"Radio"},
    {u"RowAbove", QT_TRANSLATE_NOOP("HTMLed", "Insert row &above"), nullptr, u"rowabove"},
    {u"RowBelow", QT_TRANSLATE_NOOP("HTMLed", "Insert row &below"), nullptr, u"rowbelow"},
    {u"ColumnLeft", QT_TRANSLATE_NOOP("HTMLed", "Insert column &left"), nullptr, u"columnleft"},
    {u"ColumnRight", QT_TRANSLATE_NOOP("HTMLed", "Insert column &right"), nullptr, u"columnright"},
    {u"DeleteRow", QT_TRANSLATE_NOOP("HTMLed", "&Delete row"), nullptr, u"deleterow"},
    {u"DeleteColumn", QT_TRANSLATE_NOOP("HTMLed", "Delete &column"), nullptr, u"deletecolumn"},
    {u"MergeCells", QT_TRANSLATE_NOOP("HTMLed", "&Merge cells"), nullptr, u"mergecells"},
    {u"MergeDown", QT_TRANSLATE_NOOP("HTMLed", "Merge do&wn"), nullptr, u"mergedown"},
    {u"SplitCell", QT_TRANSLATE_NOOP("HTMLed", "&Split cell"), nullptr, u"splitcell"},
    {u"HeaderRow", QT_TRANSLATE_NOOP("HTMLed", "&Header row"), nullptr, u"headerrow"},
    {u"SelectRow", QT_TRANSLATE_NOOP("HTMLed", "Select r&ow"), nullptr},
    {u"SelectColumn", QT_TRANSLATE_NOOP("HTMLed", "Select col&umn"), nullptr},
    {u"SelectTable", QT_TRANSLATE_NOOP("HTMLed", "Select tabl&e"), nullptr},
    {u"CellProperties", QT_TRANSLATE_NOOP("HTMLed", "&Properties of the cell…"), nullptr},
    {u"TableProperties", QT_TRANSLATE_NOOP("HTMLed", "Properties o&f the table…"), nullptr},
    {u"Source", QT_TRANSLATE_NOOP("HTMLed", "&Source"), "F9", u"toggle"},
    {u"Print", QT_TRANSLATE_NOOP("HTMLed", "Pr&int…"), "Ctrl+P", u"print"},
    {u"Spelling", QT_TRANSLATE_NOOP("HTMLed", "&Spelling…"), "F7", u"spelling"},
    {u"ZoomIn", QT_TRANSLATE_NOOP("HTMLed", "Zoom &in"), "Ctrl++ Ctrl+=", u"zoomin"},
    {u"ZoomOut", QT_TRANSLATE_NOOP("HTMLed", "Zoom &out"), "Ctrl+-", u"zoomout"},
    {u"ZoomReset", QT_TRANSLATE_NOOP("HTMLed", "Actual si&ze"), "Ctrl+0", u"zoomreset"},
};

static_assert(std::size(faces) == std::size_t(HTMLedWidget::Action::ZoomReset) + 1);

}  // namespace

const ActionFace& face_of(HTMLedWidget::Action action) { return faces[std::size_t(action)]; }

QList<QKeySequence> keys_of(const ActionFace& face) {
  QList<QKeySequence> keys;
  if (face.keys)
    for (const QString& each : QString::fromLatin1(face.keys).split(u' '))
      keys << QKeySequence(each, QKeySequence::PortableText);
  return keys;
}

}  // namespace tvx::qt
