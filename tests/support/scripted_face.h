// A desktop for tests: every message box, file dialog and user action is written down beforehand.
// What is not is an error, never a wait.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "faces/headless/headless_face.h"

namespace fathomline {

class UnscriptedDialog : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

class ScriptedFace : public HeadlessFace {
 public:
  struct Box {
    std::string text;  // what the box must say; empty accepts any
    Answer answer = Answer::Ok;
    bool silence = false;                  // "do not show again"
    std::function<void()> meanwhile = {};  // what happens while the box stands
  };

  // The boxes to come, in their order.
  void Expect(Box box) { expectedBoxes_.push_back(std::move(box)); }
  void ExpectBox(std::string text, Answer answer = Answer::Ok) {
    Expect({std::move(text), answer});
  }
  // The file dialogs to come; none: cancelled.
  void ExpectFile(std::optional<std::string> path) { expectedFiles_.push_back(std::move(path)); }
  // What the user does while the program waits, for a modal dialog above all: one per turn.
  void WhileWaiting(std::function<void()> action) { actions_.push_back(std::move(action)); }

  // What has been shown.
  const std::vector<MessageBox>& Boxes() const { return boxes_; }
  const std::vector<FileQuestion>& Files() const { return files_; }
  // Whether everything expected has come.
  bool Exhausted() const {
    return expectedBoxes_.empty() && expectedFiles_.empty() && actions_.empty();
  }

  // Documents that were opened, by their paths.
  const std::vector<std::string>& Opened() const { return opened_; }

  Reply Ask(const MessageBox& box) override;
  std::optional<std::string> ChooseFile(const FileQuestion& question) override;
  bool OpenDocument(const std::string& path) override {
    opened_.push_back(path);
    return true;
  }

 protected:
  bool UserActs() override;

 private:
  std::deque<Box> expectedBoxes_;
  std::deque<std::optional<std::string>> expectedFiles_;
  std::deque<std::function<void()>> actions_;
  std::vector<MessageBox> boxes_;
  std::vector<FileQuestion> files_;
  std::vector<std::string> opened_;
};

}  // namespace fathomline
