#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

/// The editor among the widgets of Qt Designer, and among those that QUiLoader makes.
class HTMLedPlugin final : public QObject, public QDesignerCustomWidgetInterface {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "org.qt-project.QDesignerCustomWidgetInterface")
  Q_INTERFACES(QDesignerCustomWidgetInterface)

 public:
  QString name() const override;
  QString group() const override;
  QString toolTip() const override;
  QString whatsThis() const override;
  QString includeFile() const override;
  QIcon icon() const override;
  QString domXml() const override;
  bool isContainer() const override { return false; }
  bool isInitialized() const override { return initialized_; }
  void initialize(QDesignerFormEditorInterface* designer) override;
  /// In Designer one that shows what it is; in a program that loads a form one that edits.
  QWidget* createWidget(QWidget* parent) override;

 private:
  bool initialized_ = false;
  bool in_designer_ = false;
};
