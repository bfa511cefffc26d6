// frmAISTargets: the AIS stations that one system has heard, one row each, in the order in which
// they were first heard.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "ais/ais_decoder.h"
#include "ais/target_store.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "views/system_view.h"
#include "windows/ais_extra_info.h"

namespace fathomline {

class frmAISTargets : public SystemView {
 public:
  frmAISTargets(const ViewSurroundings& surroundings, int system, const AISDecoder& decoder,
                const AISStore& store, frmAISExtraInfo& extraInfo);

  // A sentence of the type has been stored. Notes which cells of its station's row are due; they
  // are written from the store when somebody looks.
  void UpdateAISTargets(SentenceType type);

  void Refresh() override;

  // Marks the first row whose MMSI begins with what has been typed or whose name contains it.
  TextBox txtSearch{*this, "txtSearch"};
  Grid fgAISTargets;
  // The latest message with application data.
  Label lblDescription{*this, "lblDescription", "n/a", Label::Look::Line};

 protected:
  void LoadView() override;

 private:
  void WriteRow(int row, std::uint16_t columns);
  void WriteDescription();
  void Search();
  int FirstMatch(const std::string& typed) const;

  const AISDecoder& decoder_;
  const AISStore& store_;
  frmAISExtraInfo& extraInfo_;
  // The columns of each row that are to be written, a bit each. Until they are, a station's values
  // change only with messages that make the same columns due, so late texts are the right ones.
  std::array<std::uint16_t, AISStore::kMaximumTargets + 1> due_{};
};

}  // namespace fathomline
