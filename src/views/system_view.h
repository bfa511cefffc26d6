// What all views of a system have in common: the caption with the number and the name of the
// system, the icon, the place that is kept in the settings, the flag that says which sentences to
// feed, and the reset.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/settings.h"
#include "records/records.h"
#include "toolkit/window.h"

namespace fathomline {

// What every view works on. All of it outlives the views.
struct ViewSurroundings {
  Desktop& desktop;
  Records& records;
  SettingsStore& settings;
};

// Which views carry the colour of their system on their icon.
enum class ViewIcon : std::uint8_t { Plain, OfEverySystem, OfSecondarySystems };

struct SystemViewDesign {
  std::string name;             // the class
  std::string caption;          // in front of the number and the name of the system
  std::string captionEnd = {};  // behind them
  WindowPlace place = {};       // where it opens for the first time
  std::string placeKey = {};    // of its place in the settings
  bool placeOfItsOwn = true;    // false: the views of all systems share one place
  ViewIcon icon = ViewIcon::Plain;
  // Set while the view is shown. None: the system has no flag for it.
  std::optional<WindowFlag> flag = {};
  std::span<const SentenceType> feeds = {};  // the sentences that feed it; none: any does
  int part = 0;                              // tells several views of one class and system apart
};

enum class ViewState : std::uint8_t { Closed, Hidden, Shown };

class SystemView : public Window {
 public:
  // Shows the view or brings it forward, and says so to its system.
  void ShowView();
  // Loads it without showing it, so that it follows the sentences.
  void LoadHidden();
  // Closes it where its system analyses nothing that feeds it.
  void CloseUnlessFed();
  // Brings it back empty, where the session says that views begin anew, in the state that is told.
  void Reset(ViewState state);
  // Takes it off the desktop because the user wants other windows, without a question. Nothing that
  // it has gathered is lost.
  virtual void PutAway() { Close(); }
  // Whether the system analyses anything that the view shows.
  bool HasData() const;

 protected:
  SystemView(const ViewSurroundings& surroundings, int system, const SystemViewDesign& design);

  // The view's own part of loading and unloading.
  virtual void LoadView() {}
  virtual void UnloadView() {}

  // Does nothing for a view without a flag.
  void SetFlag(bool shown);
  const CommSetup& Setup() const { return records_.CommSetups[Index()]; }

  Records& records_;

 private:
  void Load() final;
  void Unload() final;
  std::string PlaceSuffix() const;

  SettingsStore& settings_;
  SystemViewDesign design_;
};

}  // namespace fathomline
