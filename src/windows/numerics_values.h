// What the numerics window shows of each sentence.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "records/records.h"

namespace fathomline {

struct CoordinateForm {
  bool isDMS = false;
  int decimals = 4;
};

// A copy of the latest sentence of one type, and its texts.
class SentenceNumerics {
 public:
  virtual ~SentenceNumerics() = default;

  virtual SentenceType Type() const = 0;
  // The captions of its rows; a sentence without rows is shown elsewhere.
  virtual std::vector<std::string_view> Captions() const = 0;
  // Keeps the sentence, which the next one overwrites in the records.
  virtual void Keep(const SystemMessages& messages) = 0;
  // One text for each row.
  virtual std::vector<std::string> Texts(const CoordinateForm& form) const = 0;
};

// One for each sentence that the window has a frame for, in their order there.
std::vector<std::unique_ptr<SentenceNumerics>> MakeNumerics();

}  // namespace fathomline
