#include "support/scripted_face.h"

#include <utility>

namespace fathomline {

Face::Reply ScriptedFace::Ask(const MessageBox& box) {
  boxes_.push_back(box);
  if (expectedBoxes_.empty()) {
    throw UnscriptedDialog("a box came that nobody expected: " + box.title + ": " + box.text);
  }
  const Box expected = std::move(expectedBoxes_.front());
  expectedBoxes_.pop_front();
  if (!expected.text.empty() && expected.text != box.text) {
    throw UnscriptedDialog("expected the box \"" + expected.text + "\", but it said \"" + box.text +
                           "\"");
  }
  if ((expected.answer == Answer::Ok) != (box.buttons == BoxButtons::Ok)) {
    throw UnscriptedDialog("the box \"" + box.text + "\" has no such button");
  }
  if (expected.meanwhile) expected.meanwhile();
  return {expected.answer, expected.silence};
}

std::optional<std::string> ScriptedFace::ChooseFile(const FileQuestion& question) {
  files_.push_back(question);
  if (expectedFiles_.empty()) {
    throw UnscriptedDialog("a file dialog came that nobody expected: " + question.title);
  }
  std::optional<std::string> path = std::move(expectedFiles_.front());
  expectedFiles_.pop_front();
  return path;
}

bool ScriptedFace::UserActs() {
  if (actions_.empty()) return false;
  const std::function<void()> action = std::move(actions_.front());
  actions_.pop_front();
  action();
  return true;
}

}  // namespace fathomline
