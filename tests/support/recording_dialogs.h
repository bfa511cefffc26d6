#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/dialogs.h"

namespace fathomline {

// Keeps the boxes that it is told to show. Questions are for the scripted face.
class RecordingDialogs : public Dialogs {
 public:
  std::vector<MessageBox> boxes;

  Answer Ask(const MessageBox& box) override {
    EXPECT_EQ(box.buttons, BoxButtons::Ok) << box.text;
    boxes.push_back(box);
    return Answer::Ok;
  }
  std::optional<std::string> ChooseFile(const FileQuestion& question) override {
    ADD_FAILURE() << question.title;
    return std::nullopt;
  }
  void Beep() override {}

  // The texts of the boxes since the last call.
  std::vector<std::string> TakeTexts() {
    std::vector<std::string> texts;
    for (const MessageBox& box : std::exchange(boxes, {})) texts.push_back(box.text);
    return texts;
  }
};

}  // namespace fathomline
