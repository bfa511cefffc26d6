#include "session/error_log.h"

#include "base/system.h"

namespace fathomline {
namespace {

constexpr std::int16_t kFaultsWithoutQuestion = 10;

}  // namespace

void ErrorLog::WriteErrorLog(const Fault& fault) {
  ++records_.ErrorCount;
  Append(fault.Description());
  ++written_;
  if (records_.ErrorCount > kFaultsWithoutQuestion && !asking_) {
    AskWhetherToGoOn(fault.Description());
  }
}

void ErrorLog::Append(const std::string& description) {
  const std::string folder = records_.ProgramFolder + "ErrorLog";
  if (!FolderExists(folder)) MakeFolder(folder);
  const int file = files_.FreeFile();
  files_.OpenForAppend(file, folder + kPathSeparator + "ErrorLog.txt");
  const auto close = [&] { files_.Close(file); };
  try {
    files_.Write(file, FormatDateTime(clock_.NowLocal(), "yyyy mmm dd hh:mm:ss") +
                           " - Error description : " + description + "\r\n");
  } catch (const Fault&) {
    close();
    throw;
  }
  close();
}

void ErrorLog::AskWhetherToGoOn(const std::string& description) {
  asking_ = true;
  const Answer answer = dialogs_.Ask(
      {.text = FormatDateTime(clock_.NowLocal(), " hh:mm:ss mmm dd") +
               " - Error description : " + description +
               "   More than 10 errors has occurred. Do you wan't to continue anyway? (All Error "
               "messages are stored in file C:/Keelhaven/Fathomline/ErrorLog/ErrorLog.txt",
       .icon = BoxIcon::Critical,
       .buttons = BoxButtons::YesNo});
  asking_ = false;
  records_.ErrorCount = 0;
  if (answer == Answer::No) endProgram_();
}

}  // namespace fathomline
