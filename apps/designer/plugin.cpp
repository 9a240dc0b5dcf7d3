#include "plugin.h"

#include <QIcon>

#include "tvx/htmled_widget.h"

namespace {

// What Designer puts into a form, and what it knows of the properties.
constexpr const char* form = R"xml(<ui language="c++" displayname="HTMLedWidget">
<widget class="tvx::qt::HTMLedWidget" name="editor">
<property name="geometry"><rect><x>0</x><y>0</y><width>600</width><height>400</height></rect></property>
</widget>
<customwidgets><customwidget>
<class>tvx::qt::HTMLedWidget</class>
<extends>QWidget</extends>
<propertyspecifications>
)xml"
#include "tvx/interface/designer_properties.inc"
                             R"xml(</propertyspecifications>
</customwidget></customwidgets>
</ui>
)xml";

}  // namespace

QString HTMLedPlugin::name() const { return QStringLiteral("tvx::qt::HTMLedWidget"); }
QString HTMLedPlugin::group() const { return QStringLiteral("Input Widgets"); }
QString HTMLedPlugin::toolTip() const { return QStringLiteral("Visual HTML editor"); }
QString HTMLedPlugin::whatsThis() const {
  return QStringLiteral(
      "A visual HTML editor with toolbars, menus and the source. In a form it shows what it is.");
}
QString HTMLedPlugin::includeFile() const { return QStringLiteral("tvx/htmled_widget.h"); }

// The widget box shows no icon that doesn't say which sizes it has; one drawn from lines has all of them.
QIcon HTMLedPlugin::icon() const {
  const QIcon drawn(QStringLiteral(":/tvx/designer/htmled.svg"));
  QIcon icon;
  for (const int size : {16, 22, 24, 32, 48, 64}) icon.addPixmap(drawn.pixmap(size));
  return icon;
}

QString HTMLedPlugin::domXml() const { return QString::fromUtf8(form); }

// Who loads a form to run it initializes nothing.
void HTMLedPlugin::initialize(QDesignerFormEditorInterface* designer) {
  initialized_ = true;
  in_designer_ = designer != nullptr;
}

QWidget* HTMLedPlugin::createWidget(QWidget* parent) {
  auto* editor = new tvx::qt::HTMLedWidget(parent);
  editor->set_design_mode(in_designer_);
  return editor;
}
