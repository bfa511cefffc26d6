// What the trial costs: reads recordings as fathomline-trial does, but one after the other, works
// out their figures and writes JSON and page: bench-trial RECORDING [RECORDING ...]
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "base/files.h"
#include "trial/recorder.h"
#include "trial/trial.h"
#include "trial/trial_html.h"
#include "trial/trial_json.h"

namespace {

double Seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

}  // namespace

int main(int argc, char** argv) {
  using namespace fathomline;
  using namespace fathomline::trial;
  if (argc < 2 || argc > 5) {
    std::fputs("bench-trial RECORDING [RECORDING ...]\n", stderr);
    return 2;
  }
  const auto beginRead = std::chrono::steady_clock::now();
  std::vector<SystemRecorder> recorders(static_cast<std::size_t>(argc) - 1);
  std::vector<TrialSystem> systems;
  std::size_t bytes = 0;
  for (int i = 1; i < argc; ++i) {
    SystemRecorder& recorder = recorders[static_cast<std::size_t>(i) - 1];
    LineReader reader(argv[i]);
    while (!reader.AtEnd()) recorder.TakeLine(reader.Next());
    bytes += recorder.Bytes();
    systems.push_back({.name = std::string(1, static_cast<char>('A' + i - 1)),
                       .recorder = &recorder,
                       .stream = {}});
  }
  const double read = Seconds(beginRead);

  const auto beginFigures = std::chrono::steady_clock::now();
  const TrialFigures figures = WorkOut(systems, TrialOptions{});
  const std::string json = JsonText(figures);
  const double figured = Seconds(beginFigures);

  const auto beginPage = std::chrono::steady_clock::now();
  const std::string page = ToHtml(figures);
  const double drawn = Seconds(beginPage);

  double lines = 0.0;
  for (const SystemFigures& system : figures.systems) {
    lines += static_cast<double>(system.ledger.lines);
  }
  std::printf(
      "%.0f lines in %.3f s, %.0f lines/s; figures and %zu bytes of JSON in %.3f s; %zu bytes of "
      "HTML in %.3f s; samples %.1f MB, %.1f bytes a line\n",
      lines, read, lines / read, json.size(), figured, page.size(), drawn,
      static_cast<double>(bytes) / 1e6, static_cast<double>(bytes) / lines);
}
