#include "sources/link_keeper.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/serial_devices.h"
#include "toolkit/window_places.h"

namespace fathomline {

LinkKeeper::LinkKeeper(Records& records, Links& links, LiveInput& input, Desktop& desktop,
                       SettingsStore& settings)
    : records_(records),
      links_(links),
      input_(input),
      desktop_(desktop),
      settings_(settings),
      keeping_(settings.GetNumber(kSettingsSection, kReconnectLostLinks, 0) != 0) {
  input_.Watch(this);
  desktop_.Start(*this);
}

LinkKeeper::~LinkKeeper() {
  input_.Watch(nullptr);
}

SourceKind LinkKeeper::KindOf(int system) const {
  const CommSetup& setup = records_.CommSetups[system];
  if (records_.Offline()) return setup.OfflineFile.empty() ? SourceKind::None : SourceKind::File;
  if (setup.UseTCPIP) return SourceKind::Tcp;
  if (setup.UseUDP) return SourceKind::Udp;
  return setup.ComPort >= 1 && setup.ComPort <= kComports ? SourceKind::Serial : SourceKind::None;
}

bool LinkKeeper::Opened(int system) {
  switch (KindOf(system)) {
    case SourceKind::Tcp:
      return links_.Winsock1(system).State() == LinkState::Connected;
    case SourceKind::Udp:
      return links_.WinsockUDP(system).State() == LinkState::Open;
    case SourceKind::Serial:
      return links_.MSComm1(records_.CommSetups[system].ComPort).PortOpen();
    case SourceKind::File:
      return records_.OfflineRunning;
    case SourceKind::None:
      break;
  }
  return false;
}

LinkCondition LinkKeeper::Look(int system) {
  const CommSetup& setup = records_.CommSetups[system];
  const State& state = states_[system];
  LinkCondition seen{.kind = KindOf(system), .address = {}, .cause = state.cause};
  switch (seen.kind) {
    case SourceKind::Tcp: {
      seen.address = setup.IPAddress + ":" + PlainText(setup.TCPPort);
      const LinkState link = links_.Winsock1(system).State();
      if (link == LinkState::ResolvingHost || link == LinkState::Connecting) {
        seen.stage = LinkStage::Opening;
      }
      break;
    }
    case SourceKind::Udp:
      seen.address = "port " + PlainText(setup.UDPPort);
      break;
    case SourceKind::Serial:
      seen.address = "COM" + PlainText(setup.ComPort) + " (" +
                     SerialDevice(settings_, setup.ComPort) + ") " +
                     SerialSettingsText(records_.Comport(setup.ComPort));
      break;
    case SourceKind::File:
      seen.address = setup.OfflineFile;
      break;
    case SourceKind::None:
      break;
  }
  seen.tries = state.tries;
  if (Opened(system)) {
    seen.stage = LinkStage::Open;
    seen.cause.clear();
    const std::chrono::duration<double> open = desktop_.Now() - state.openSince;
    if (state.steady) seen.openFor = open.count();
  } else if (state.lost && seen.stage != LinkStage::Opening) {
    seen.stage = state.waiting ? LinkStage::Waiting : LinkStage::Lost;
    const std::chrono::duration<double> left = state.due - desktop_.Now();
    seen.nextTry = state.waiting ? std::max(left.count(), 0.0) : 0.0;
  }
  return seen;
}

void LinkKeeper::SetKeeping(bool keeping) {
  keeping_ = keeping;
  settings_.Set(kSettingsSection, kReconnectLostLinks, keeping ? 1 : 0);
  for (State& state : states_) {
    state.waiting = keeping && state.lost;
    state.tries = 0;
    state.due = desktop_.Now();
  }
}

void LinkKeeper::Reconnect(int system) {
  const SourceKind kind = KindOf(system);
  if (!records_.CommSetups[system].Enabled || kind == SourceKind::File ||
      kind == SourceKind::None) {
    return;
  }
  states_[system] = {};
  Try(system);
}

// Whoever opens it now is no user who must be told.
void LinkKeeper::Try(int system) {
  {
    const OnStack guard(trying_);
    states_[system].byHand = !keeping_;
    states_[system].waiting = false;
    input_.OpenPort(system);
  }
  Follow(system);
}

bool LinkKeeper::LinkFailed(int system, const std::string& cause) {
  State& state = states_[system];
  state.cause = cause;
  state.lost = true;
  state.steady = false;
  if (keeping_) Schedule(system);
  return std::exchange(state.byHand, false) || keeping_;
}

void LinkKeeper::LinkAsked(int system) {
  if (!trying_) states_[system] = {};
}

void LinkKeeper::Schedule(int system) {
  State& state = states_[system];
  int delay = patience_.look;
  if (KindOf(system) == SourceKind::Tcp) {
    const auto last = static_cast<int>(patience_.delays.size()) - 1;
    delay = patience_.delays[static_cast<std::size_t>(std::min(state.tries, last))];
  }
  state.waiting = true;
  state.due = desktop_.Now() + std::chrono::milliseconds(delay);
}

// A device is looked for before it is opened, since its absence is no failure of a try.
bool LinkKeeper::WorthTrying(int system) {
  if (KindOf(system) != SourceKind::Serial) return true;
  const SerialPortInfo info = links_.Probe(records_.CommSetups[system].ComPort);
  return info.present && !info.busy;
}

// What was lost has come back.
void LinkKeeper::Follow(int system) {
  State& state = states_[system];
  if (!Opened(system)) {
    state.steady = false;
    return;
  }
  const Time now = desktop_.Now();
  if (!state.steady) {
    state.steady = true;
    state.openSince = now;
    state.lost = state.waiting = state.byHand = false;
  }
  if (now - state.openSince >= std::chrono::milliseconds(patience_.steady)) state.tries = 0;
}

bool LinkKeeper::RunSlice(std::chrono::steady_clock::time_point) {
  if (records_.Offline()) return false;
  for (int system = 1; system <= kSystems; ++system) {
    Follow(system);
    State& state = states_[system];
    if (!state.waiting || desktop_.Now() < state.due) continue;
    if (!records_.CommSetups[system].Enabled) {
      state.waiting = false;
    } else if (WorthTrying(system)) {
      ++state.tries;
      Try(system);
    } else {
      Schedule(system);
    }
  }
  return false;
}

}  // namespace fathomline
