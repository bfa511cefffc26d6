// frmOpenRecording: what is in a recording, and what of it is to be analysed.
//
// Opened with the name of a file, it looks through that while everything else goes on, and then
// offers a choice that OK takes as it stands.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "pipeline/recording_scan.h"
#include "setup/recording_choice.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "toolkit/task.h"
#include "toolkit/window.h"

namespace fathomline {

class frmOpenRecording : public Window, public Task {
 public:
  explicit frmOpenRecording(Desktop& desktop);

  // Begins to look through the file. The warning is told in the dialog. Raises the system's fault.
  void Open(const std::string& path, const std::string& warning);
  const std::string& Path() const { return path_; }

  // OK: the dialog has gone.
  std::function<void(const std::string& path, const RecordingChoice& choice)> onOpen;
  // Anything else that ends it.
  std::function<void()> onCancel;

  bool RunSlice(std::chrono::steady_clock::time_point until) override;

  Label lblPath{*this, "lblPath", "", Label::Look::Path};
  ProgressBar prgRead{*this, "prgRead"};
  Label lblSpan{*this, "lblSpan"};
  Label lblLines{*this, "lblLines"};
  Grid fgSentences;
  Frame frameAnalysed{*this, "frameAnalysed", "Analyse"};
  // Those that the recording has, in the order of their types; the rest is hidden.
  ControlArray<CheckBox> chkSentence{frameAnalysed, "chkSentence", 1,
                                     static_cast<int>(kSentenceBoxes.size()), ""};
  Label lblNote{*this, "lblNote"};
  TextBox txtName{*this, "txtName"};
  CheckBox chkTestCheckSum{*this, "chkTestCheckSum", "Refuse lines with a &wrong checksum"};
  CheckBox chkStepsBack{*this, "chkStepsBack", ""};
  Label lblWarning{*this, "lblWarning"};
  Button cmdOk{*this, "cmdOk", "&Open and Play", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "&Cancel", Button::Role::Cancel};

 protected:
  void Load() override;
  void Unload() override;

 private:
  void ShowContents();
  void ShowSentences();
  void ShowTicks();
  void TickBox(int box);
  void Accept();

  std::string path_;
  std::string warning_;
  std::unique_ptr<RecordingScan> scan_;
  RecordingContents contents_;
  RecordingChoice choice_;
  std::vector<SentenceType> boxes_;  // the types of the boxes that are shown
  bool accepted_ = false;
};

}  // namespace fathomline
