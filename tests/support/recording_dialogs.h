// Keeps what it was asked and answers what the test has scripted.
#pragma once

#include <deque>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "platform/dialogs.h"

namespace fathomline {

class RecordingDialogs : public Dialogs {
 public:
  std::vector<MessageBox> boxes;
  std::deque<Answer> answers;
  std::deque<std::optional<std::string>> files;
  int beeps = 0;

  Answer Ask(const MessageBox& box) override {
    boxes.push_back(box);
    if (box.buttons == BoxButtons::Ok) return Answer::Ok;
    if (answers.empty()) {
      ADD_FAILURE() << "question without a scripted answer: " << box.text;
      return Answer::No;
    }
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::optional<std::string> ChooseFile(const FileQuestion& question) override {
    if (files.empty()) {
      ADD_FAILURE() << "file dialog without a scripted answer: " << question.title;
      return std::nullopt;
    }
    std::optional<std::string> file = files.front();
    files.pop_front();
    return file;
  }

  void Beep() override { ++beeps; }

  // The texts of the boxes since the last call.
  std::vector<std::string> TakeTexts() {
    std::vector<std::string> texts;
    for (const MessageBox& box : boxes) texts.push_back(box.text);
    boxes.clear();
    return texts;
  }
};

}  // namespace fathomline
