// What the command lines of all programs have in common: one look of the help, one line for what is
// wrong, and values that are read the same way everywhere.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/datetime.h"

namespace fathomline {

inline constexpr int kUsageFailed = 2;  // the exit status

// A command line without its options. `program` is the name of the command.
class CommandLine : public CLI::App {
 public:
  CommandLine(const std::string& program, const std::string& description, std::string_view version);

  // An option with one value, of which the last one counts. `take` may raise a fault that says why
  // the text cannot be taken.
  CLI::Option* AddValue(const std::string& name, const std::string& argument,
                        const std::string& help,
                        const std::function<void(const std::string& text)>& take);

  // An option without a value.
  CLI::Option* AddFlag(const std::string& name, const std::string& help,
                       const std::function<void()>& take);

  // Reads the arguments, without the name of the program. Returns the exit status where that ends
  // it: 0 when help or version has been told on `out`, kUsageFailed with one line on `err`.
  std::optional<int> Take(const std::vector<std::string>& arguments, std::ostream& out,
                          std::ostream& err);
};

// The whole text as a finite number, a whole number within the limits, and a moment written
// "2026-01-02 03:04:05" that the calendar has. Each raises InvalidCall, with what is wrong.
double NumberOf(std::string_view text);
int WholeNumberOf(std::string_view text, int least, int most);
DateTime MomentOf(std::string_view text);

}  // namespace fathomline
