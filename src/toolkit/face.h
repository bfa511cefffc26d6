// What a desktop must be able to do, so that the program can run on it.
//
// A face is made before the program and outlives it. It shows the windows by looking at them: some
// 25 times a second, and at once after each user action, it compares what it has drawn with what
// the plain windows say. Nothing calls it for that.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/dialogs.h"
#include "base/look.h"

namespace fathomline {

class Desktop;
class Window;

class Face {
 public:
  struct Reply {
    Answer answer = Answer::Ok;
    bool silence = false;  // "do not show this message again in this session" was ticked
  };

  virtual ~Face() = default;

  // Each waits for the user; events of other sources go on meanwhile.
  virtual Reply Ask(const MessageBox& box) = 0;
  virtual std::optional<std::string> ChooseFile(const FileQuestion& question) = 0;
  virtual void ShowPageSetup() = 0;
  // False where there is no help to show.
  virtual bool ShowHelp(HelpStart start) = 0;
  // Shows a file with what the machine has for its kind. False where there is nothing.
  virtual bool OpenDocument(const std::string& path) = 0;
  virtual void Beep() = 0;
  // Puts a text where the user can paste it from.
  virtual void CopyText(std::string_view text) = 0;
  // Paints everything light or dark from now on.
  virtual void SetLook(LookChoice /*choice*/) {}
  virtual void ArrangeIcons() = 0;

  // One turn of the event loop: user actions that wait, then a turn of the desktop.
  virtual void Turn() = 0;
  // Turns until the condition holds. It is looked at before each turn.
  virtual void RunUntil(const std::function<bool()>& done) = 0;
  // The time that timers run by.
  virtual std::chrono::steady_clock::time_point Now() const = 0;

 protected:
  // None before the program is made and after it has gone.
  Desktop* AttachedDesktop() const { return desktop_; }

 private:
  friend class Desktop;
  // The window is about to go for good; nothing may look at it again.
  virtual void Forget(Window& /*window*/) {}

  Desktop* desktop_ = nullptr;
};

}  // namespace fathomline
