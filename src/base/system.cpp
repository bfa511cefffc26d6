// What is the same on every system.
#include "base/system.h"

#include "base/fault.h"

namespace fathomline {
namespace {

FaultNumber NumberOf(std::error_code error, const std::string& path) {
  const auto is = [&error](std::errc condition) { return error == condition; };
  if (is(std::errc::no_such_file_or_directory)) {
    std::error_code ignored;
    const std::filesystem::path folder = PathOf(path).parent_path();
    return folder.empty() || std::filesystem::is_directory(folder, ignored)
               ? FaultNumber::FileNotFound
               : FaultNumber::PathNotFound;
  }
  if (is(std::errc::not_a_directory)) return FaultNumber::PathNotFound;
  if (is(std::errc::permission_denied) || is(std::errc::operation_not_permitted) ||
      is(std::errc::read_only_file_system)) {
    return FaultNumber::PermissionDenied;
  }
  if (is(std::errc::is_a_directory) || is(std::errc::file_exists) ||
      is(std::errc::file_too_large)) {
    return FaultNumber::PathAccess;
  }
  return is(std::errc::no_space_on_device) ? FaultNumber::DiskFull : FaultNumber::DeviceError;
}

}  // namespace

void RaiseSystemError(std::error_code error, const std::string& path) {
  const FaultNumber number = NumberOf(error, path);
  std::string cause(Description(number));
  if (number == FaultNumber::DeviceError || number == FaultNumber::PathAccess) {
    cause.append(" (").append(SystemMessage(error)).append(")");
  }
  Raise(number, cause + ": " + path);
}

}  // namespace fathomline
