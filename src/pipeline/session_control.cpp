#include "pipeline/session_control.h"

namespace fathomline {

void SessionControl::ResetAll() {
  ResetStatisticsAll();
}

void SessionControl::ResetStatisticsAll() {
  for (int system = 1; system <= kSystems; ++system) {
    statistics_[system].Reset();
    Reopen(system, WindowFlag::Statistics, *statisticsWindows_[system]);
  }
}

void SessionControl::Reopen(int system, WindowFlag flag, Window& window) {
  if (!records_.SystemSetups[system][flag]) return;
  if (records_.ReloadWindows) window.Close();
  window.Show();
}

}  // namespace fathomline
