// Views of the simple controls.
#pragma once

#include "faces/qt/control_view.h"
#include "toolkit/controls.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace fathomline {

class FrameView : public ControlView {
 public:
  FrameView(ViewContext& context, Frame& frame);
  QGroupBox& Box() const { return *box_; }

 protected:
  void Update() override;

 private:
  Frame& frame_;
  QGroupBox* box_;
};

class LabelView : public ControlView {
 public:
  LabelView(ViewContext& context, Label& label);

  void Press() {
    User([this] { label_.Click(); });
  }

 protected:
  void Update() override;

 private:
  Label& label_;
  QLabel* text_;
};

class ButtonView : public ControlView {
 public:
  ButtonView(ViewContext& context, Button& button);
  bool TakesFocus() const override { return true; }

 protected:
  void Update() override;

 private:
  Button& button_;
  QPushButton* push_;
};

class TextLineView : public ControlView {
 public:
  TextLineView(ViewContext& context, TextBox& box);
  bool TakesFocus() const override { return true; }

 protected:
  void Update() override;

 private:
  TextBox& box_;
  QLineEdit* edit_;
};

class TextAreaView : public ControlView {
 public:
  TextAreaView(ViewContext& context, TextBox& box);
  bool TakesFocus() const override { return true; }

 protected:
  void Update() override;

 private:
  TextBox& box_;
  QPlainTextEdit* edit_;
};

class CheckBoxView : public ControlView {
 public:
  CheckBoxView(ViewContext& context, CheckBox& box);
  bool TakesFocus() const override { return true; }

 protected:
  void Update() override;

 private:
  CheckBox& box_;
  QCheckBox* check_;
};

class ProgressView : public ControlView {
 public:
  ProgressView(ViewContext& context, ProgressBar& progress);

 protected:
  void Update() override;

 private:
  ProgressBar& progress_;
  QProgressBar* bar_;
};

}  // namespace fathomline
