#include "base/command_line.h"

#include <algorithm>
#include <cmath>

#include "base/fault.h"
#include "base/strict_number.h"

namespace fathomline {
namespace {

constexpr std::size_t kHelpColumn = 34;

[[noreturn]] void Refuse(std::string_view text, const std::string& why) {
  Raise(FaultNumber::InvalidCall, "\"" + std::string(text) + "\" " + why);
}

}  // namespace

CommandLine::CommandLine(const std::string& program, const std::string& description,
                         std::string_view version)
    : CLI::App(description, program) {
  get_formatter()->column_width(kHelpColumn);
  // They would take a path that begins with a slash for an option.
  allow_windows_style_options(false);
  set_help_flag("--help", "show this");
  set_version_flag("--version", program + " " + std::string(version), "show the version");
}

CLI::Option* CommandLine::AddValue(const std::string& name, const std::string& argument,
                                   const std::string& help,
                                   const std::function<void(const std::string& text)>& take) {
  const auto taken = [name, take](const std::string& text) {
    try {
      take(text);
    } catch (const Fault& fault) {
      throw CLI::ValidationError(name, fault.Description());
    }
  };
  return add_option_function<std::string>(name, taken, help)->type_name(argument)->take_last();
}

CLI::Option* CommandLine::AddFlag(const std::string& name, const std::string& help,
                                  const std::function<void()>& take) {
  return add_flag_callback(name, take, help)->disable_flag_override();
}

std::optional<int> CommandLine::Take(const std::vector<std::string>& arguments, std::ostream& out,
                                     std::ostream& err) {
  // The parser takes them from the back, and would read on behind an empty value.
  std::vector<std::string> reversed;
  for (const std::string& argument : arguments) {
    const bool emptyValue = argument.starts_with("--") && argument.find('=') == argument.size() - 1;
    reversed.push_back(emptyValue ? argument.substr(0, argument.size() - 1) : argument);
    if (emptyValue) reversed.emplace_back();
  }
  std::reverse(reversed.begin(), reversed.end());
  try {
    parse(std::move(reversed));
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return exit(error, out, err);
    err << get_name() << ": " << error.what() << '\n';
    return kUsageFailed;
  }
}

double NumberOf(std::string_view text) {
  const std::optional<double> value = StrictNumber<double>(text);
  if (!value || !std::isfinite(*value)) Refuse(text, "is not a number");
  return *value;
}

int WholeNumberOf(std::string_view text, int least, int most) {
  const std::optional<int> value = StrictNumber<int>(text);
  if (!value || *value < least || *value > most) {
    Refuse(text,
           "is not a whole number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return *value;
}

DateTime MomentOf(std::string_view text) {
  constexpr std::string_view kForm = "dddd-dd-dd dd:dd:dd";
  const bool formed =
      std::equal(text.begin(), text.end(), kForm.begin(), kForm.end(),
                 [](char c, char form) { return form == 'd' ? c >= '0' && c <= '9' : c == form; });
  if (!formed) Refuse(text, "is not written as \"2026-01-02 03:04:05\"");
  const auto part = [&](std::size_t at, std::size_t size) {
    return WholeNumberOf(text.substr(at, size), 0, 9999);
  };
  const DateTime moment = DateFromParts(part(0, 4), part(5, 2), part(8, 2)) +
                          TimeFromParts(part(11, 2), part(14, 2), part(17, 2));
  // Parts out of range roll over into another moment.
  if (part(0, 4) < 100 || FormatDateTime(moment, "yyyy-mm-dd hh:nn:ss") != text) {
    Refuse(text, "is no moment of the calendar");
  }
  return moment;
}

}  // namespace fathomline
