// frmAISExtraInfo: everything that is known of one AIS station.
#pragma once

#include <cstdint>

#include "ais/target_store.h"
#include "records/records.h"
#include "toolkit/grid.h"
#include "toolkit/window.h"

namespace fathomline {

// The station that frmAISExtraInfo shows; a system of 0 stands for none.
struct ExtendedTarget {
  std::int16_t System = 0;
  std::int16_t Index = 0;

  bool operator==(const ExtendedTarget&) const = default;
};

class frmAISExtraInfo : public Window {
 public:
  frmAISExtraInfo(Desktop& desktop, const Records& records, const AISStore& store);

  // Opens it on a station, with its corner at a point in twips.
  void Open(ExtendedTarget target, int left, int top);

  // Shows a station as it is now. Nothing happens while the window is not open.
  void ShowAISTargets(int system, int targetIndex);

  const ExtendedTarget& AISExtendedTarget() const { return extendedTarget_; }

  void Refresh() override;

  static constexpr int kGrids = 5;
  ControlArray<Grid> fgAISExtraInfo;

 protected:
  void Unload() override;

 private:
  void WriteCaption();

  const Records& records_;
  const AISStore& store_;
  ExtendedTarget extendedTarget_;
  // Kept, since the station may be heard again while nobody tells the window: the list of its
  // system may be closed.
  AISTarget shown_;
  int shownIndex_ = 0;
  bool due_ = false;
};

}  // namespace fathomline
