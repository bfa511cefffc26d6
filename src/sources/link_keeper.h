// Opens links again: by hand, and by itself where its user wants that.
//
// A link is lost when it says so: a connection that was refused or has broken, a device that has
// gone, a port that another program holds. One that is merely silent is left alone. While it is
// kept there are no boxes; who wants to know asks for its condition.
#pragma once

#include <array>
#include <chrono>
#include <string>

#include "base/per_system.h"
#include "base/settings.h"
#include "records/records.h"
#include "sources/live_input.h"
#include "toolkit/desktop.h"
#include "toolkit/links.h"
#include "watch/link_desk.h"

namespace fathomline {

// In the section "Settings" of the settings store: 1 where lost links are opened again.
inline constexpr std::string_view kReconnectLostLinks = "ReconnectLostLinks";

class LinkKeeper : public LinkDesk, public LinkWatcher, public Task {
 public:
  // How long it waits, in milliseconds.
  struct Patience {
    // From a failure of a connection to the next try; the last goes on.
    std::array<int, 5> delays = {1000, 2000, 5000, 10000, 30000};
    // Between two looks whether a device is back or a UDP port is free.
    int look = 1000;
    // A connection that has held for so long was a success: the delays begin anew.
    int steady = 5000;
  };

  LinkKeeper(Records& records, Links& links, LiveInput& input, Desktop& desktop,
             SettingsStore& settings);
  ~LinkKeeper() override;

  LinkCondition Look(int system) override;
  void Reconnect(int system) override;
  bool Keeping() const override { return keeping_; }
  // Kept in the settings. What is lost when it is switched on is tried at once.
  void SetKeeping(bool keeping) override;

  // For who cannot wait as long as the user of a ship can.
  void SetPatience(const Patience& patience) { patience_ = patience; }

  bool LinkFailed(int system, const std::string& cause) override;
  void LinkAsked(int system) override;

  bool RunSlice(std::chrono::steady_clock::time_point until) override;

 private:
  using Time = std::chrono::steady_clock::time_point;

  struct State {
    bool lost = false;
    bool waiting = false;
    bool byHand = false;  // the try that is under way
    bool steady = false;
    int tries = 0;
    Time due{};
    Time openSince{};
    std::string cause;
  };

  SourceKind KindOf(int system) const;
  bool Opened(int system);
  bool WorthTrying(int system);
  void Try(int system);
  void Schedule(int system);
  void Follow(int system);

  Records& records_;
  Links& links_;
  LiveInput& input_;
  Desktop& desktop_;
  SettingsStore& settings_;
  PerSystem<State> states_;
  Patience patience_;
  bool keeping_ = false;
  bool trying_ = false;
};

}  // namespace fathomline
