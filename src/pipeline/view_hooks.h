// What the session calls of windows that are made elsewhere. Whoever makes them plugs them in; a
// call that is empty belongs to a window that does not stand.
#pragma once

#include <functional>

namespace fathomline {

class Window;

struct ViewHooks {
  // Opens the windows of a system, or brings them forward.
  std::function<void(int system)> openTimeSeries;
  std::function<void(int system)> openScatter;
  std::function<void(int system)> openSkyplot;
  std::function<void(int system)> openARPATargets;
  std::function<void(int system)> openAISTargets;
  // A constellation counts from 0: GPS, SBAS, GLONASS, BeiDou, Galileo.
  std::function<void(int system, int constellation)> openSNR;

  // Closes what there is, if ReloadWindows is set, and opens it again where it is to be open.
  std::function<void()> resetTimeSeries;
  std::function<void()> resetScatter;
  std::function<void()> resetSkyplot;
  std::function<void()> resetARPA;
  std::function<void()> resetAIS;

  // The setup dialog, which there is once.
  Window* setupDialog = nullptr;
  std::function<void(int system)> openSetup;
};

}  // namespace fathomline
