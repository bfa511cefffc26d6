// What the trial costs: reads a recording as fathomline-trial does, works out its figures and
// writes their JSON: bench-trial RECORDING
#include <chrono>
#include <cstdio>
#include <string>

#include "base/files.h"
#include "trial/recorder.h"
#include "trial/trial.h"
#include "trial/trial_json.h"

namespace {

double Seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

}  // namespace

int main(int argc, char** argv) {
  using namespace fathomline;
  using namespace fathomline::trial;
  if (argc != 2) {
    std::fputs("bench-trial RECORDING\n", stderr);
    return 2;
  }
  const auto beginRead = std::chrono::steady_clock::now();
  LineReader reader(argv[1]);
  SystemRecorder recorder;
  while (!reader.AtEnd()) recorder.TakeLine(reader.Next());
  const double read = Seconds(beginRead);

  const auto beginFigures = std::chrono::steady_clock::now();
  const TrialFigures figures =
      WorkOut({{.name = "A", .recorder = &recorder, .stream = {}}}, TrialOptions{});
  const std::string json = JsonText(figures);
  const double figured = Seconds(beginFigures);

  const auto lines = static_cast<double>(figures.systems[0].ledger.lines);
  std::printf(
      "%.0f lines in %.3f s, %.0f lines/s; figures and %zu bytes of JSON in %.3f s; "
      "samples %.1f MB, %.1f bytes a line\n",
      lines, read, lines / read, json.size(), figured, static_cast<double>(recorder.Bytes()) / 1e6,
      static_cast<double>(recorder.Bytes()) / lines);
}
