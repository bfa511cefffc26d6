// A desktop without a display: windows are shown to nobody, time stands still unless something
// waits for it, and message boxes are answered by whoever runs the program.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

#include "toolkit/face.h"

namespace fathomline {

// Raised where a wait could never end, since nobody is there to end it.
class EndlessWait : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

class HeadlessFace : public Face {
 public:
  void ShowPageSetup() override {}
  bool ShowHelp(HelpStart /*start*/) override { return false; }
  bool OpenDocument(const std::string& /*path*/) override { return false; }
  void Beep() override { ++beeps_; }
  void CopyText(std::string_view text) override { copied_ = text; }
  void ArrangeIcons() override {}

  void Turn() override;
  // Where everything idles, the time goes on to the next timer at once.
  void RunUntil(const std::function<bool()>& done) override;
  std::chrono::steady_clock::time_point Now() const override { return now_; }

  // Lets the time pass, with all that falls into it.
  void Advance(std::chrono::milliseconds span);
  int Beeps() const { return beeps_; }
  const std::string& CopiedText() const { return copied_; }

 protected:
  // Something that the absent user does in the next turn of a wait. False: nothing.
  virtual bool UserActs() { return false; }
  // Called where a wait has nothing left that could end it. False raises EndlessWait.
  virtual bool EndWait() { return false; }

 private:
  std::chrono::steady_clock::time_point now_{};
  int beeps_ = 0;
  std::string copied_;
};

// For batch runs: tells every message box to a listener and answers every question Yes; cancels
// file dialogs, and closes a dialog that is waited for.
class BatchFace : public HeadlessFace {
 public:
  explicit BatchFace(std::function<void(const MessageBox&)> listener);

  Reply Ask(const MessageBox& box) override;
  std::optional<std::string> ChooseFile(const FileQuestion& question) override;

 protected:
  bool EndWait() override;

 private:
  std::function<void(const MessageBox&)> listener_;
};

}  // namespace fathomline
