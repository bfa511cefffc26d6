// Views of one out of several.
#pragma once

#include <memory>

#include "faces/qt/control_view.h"
#include "toolkit/choices.h"

class QButtonGroup;
class QComboBox;
class QListWidget;
class QTabBar;
class QTabWidget;

namespace fathomline {

class ComboView : public ControlView {
 public:
  ComboView(ViewContext& context, Choices& choices);
  bool TakesFocus() const override { return true; }

 protected:
  void Update() override;

 private:
  Choices& choices_;
  QComboBox* combo_;
};

class ListView : public ControlView {
 public:
  ListView(ViewContext& context, Choices& choices);
  bool TakesFocus() const override { return true; }

 protected:
  void Update() override;

 private:
  Choices& choices_;
  QListWidget* list_;
};

class OptionsView : public ControlView {
 public:
  OptionsView(ViewContext& context, Choices& choices);
  bool TakesFocus() const override { return true; }

 protected:
  void Update() override;

 private:
  void MakeButtons();

  Choices& choices_;
  QWidget* box_;
  QButtonGroup* group_;
};

// The pages are put in by the layout.
class TabsView : public ControlView {
 public:
  TabsView(ViewContext& context, Choices& choices);
  bool TakesFocus() const override { return true; }
  QTabWidget& Tabs() const { return *tabs_; }

 protected:
  void Update() override;

 private:
  Choices& choices_;
  QTabWidget* tabs_;
};

std::unique_ptr<ControlView> MakeChoicesView(ViewContext& context, Choices& choices);

}  // namespace fathomline
