// frmARPATargets: the radar targets of one system, in rows by target number. The table is all
// that is kept of them.
#pragma once

#include <map>
#include <vector>

#include "toolkit/grid.h"
#include "views/system_view.h"

namespace fathomline {

// A radar target as its latest sentence told it. Times are sentence times.
struct ARPATarget {
  TTMRecord latest;
  DateTime firstMessage;
  DateTime lastMessage;
  bool due = false;
};

class frmARPATargets : public SystemView {
 public:
  frmARPATargets(const ViewSurroundings& surroundings, int system);

  // A sentence of the type has been decoded. Keeps a copy, since the next one overwrites the
  // record; the texts are written when somebody looks. Raises OutOfRange for a target number
  // below 0 and Overflow for one above 32,765.
  void UpdateARPATargets(SentenceType type);

  void Refresh() override;

  Grid fgARPATargets;

 protected:
  void LoadView() override;

 private:
  std::map<int, ARPATarget> targets_;  // by row
  std::vector<int> dueRows_;
};

}  // namespace fathomline
