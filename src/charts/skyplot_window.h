// frmSkyplot: the satellites in view of one system, on a polar picture and as a tracking table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "charts/satellite_table.h"
#include "toolkit/controls.h"
#include "toolkit/picture.h"
#include "views/figure_label.h"
#include "views/system_view.h"

namespace fathomline {

inline constexpr int kTrackingRows = 50;

// How lblUsedSvs counts the satellites. The last PRN of a group; the last group takes all beyond.
struct UsedGroup {
  std::string_view caption;
  int lastPRN;
};
inline constexpr auto kUsedGroups = std::to_array<UsedGroup>({{"GPS           : ", 32},
                                                              {"SBAS         : ", 64},
                                                              {"GLONASS : ", 99},
                                                              {"BeiDou      : ", 149},
                                                              {"GALILEO   : ", 32767}});

class frmSkyplot : public SystemView {
 public:
  frmSkyplot(const ViewSurroundings& surroundings, int system, SatelliteTable& satellites,
             const Clock& clock);

  // Takes the latest GSA: the mode, the DOPs, and which satellites are used. All of a sentence's
  // satellites are counted under the group of the first one.
  void UpdateSkyplot();
  // Takes the latest GSV into the satellite table and the tracking table; the last one of a group
  // draws the picture and runs `onGroupDone`. Satellites beyond the table are passed over.
  void UpdateSatelliteTracking();

  void Refresh() override;

  // Run when the last sentence of a group has been taken.
  std::function<void()> onGroupDone;
  // The user has clicked the row of that satellite.
  std::function<void(int slot)> onChooseSatellite;

  Frame frameSkyplot{*this, "frameSkyplot"};
  Label lblNorth{frameSkyplot, "lblNorth", "North"};
  Picture picSkyplot{frameSkyplot, "picSkyplot", {-90.0, 90.0, 90.0, -90.0}};
  Label lblSouth{frameSkyplot, "lblSouth", "South"};
  TextBox txtElMask{frameSkyplot, "txtElMask", "00"};

  FigureLabel lblCurrentMode{*this, "lblCurrentMode"};
  FigureLabel lblPdop{*this, "lblPdop"};
  FigureLabel lblHdop{*this, "lblHdop"};
  FigureLabel lblVdop{*this, "lblVdop"};
  FigureLabel lblSvsInView{*this, "lblSvsInView"};
  Label lblSvsInUse{*this, "lblSvsInUse", "Used svs "};
  ControlArray<Label> lblUsedSvs{*this, "lblUsedSvs", 0, static_cast<int>(kUsedGroups.size()) - 1};

  // Rows count from 1.
  Frame frmSvTrackingStatus{*this, "frmSvTrackingStatus", " Satellite Tracking Status"};
  ControlArray<Label> lblChannel{frmSvTrackingStatus, "lblChannel", 1, kTrackingRows, "*"};
  ControlArray<Label> lblSv{frmSvTrackingStatus, "lblSv", 1, kTrackingRows, "*"};
  ControlArray<Label> lblElevation{frmSvTrackingStatus, "lblElevation", 1, kTrackingRows, "*"};
  ControlArray<Label> lblAzimuth{frmSvTrackingStatus, "lblAzimuth", 1, kTrackingRows, "*"};
  ControlArray<Label> lblSNR{frmSvTrackingStatus, "lblSNR", 1, kTrackingRows, "*"};
  ControlArray<Label> lblColor{frmSvTrackingStatus, "lblColor", 1,
                               kTrackingRows,       "",         Label::Look::Swatch};

 protected:
  void LoadView() override;

 private:
  // What a row of the tracking table shows.
  struct TrackingRow {
    bool empty = true;
    std::int16_t prn = 0;
    Satellite satellite;
    Colour svColour = kBlack;
    Colour elevationColour = kBlack;
    Colour snrColour = kBlack;
    bool due = true;
  };
  struct Dot {
    int slot;
    std::int16_t elevation;
    std::int16_t azimuth;
    bool used;
  };
  struct UsedList {
    std::array<std::int16_t, 12> prns{};
    std::size_t count = 0;
    bool due = false;
  };

  void DefineLabels();
  void MakeContent();
  void DrawSkyplotBackground();
  bool TakeElevationMask();
  void TakeSatellite(std::int16_t prn, std::size_t position, int row);
  void NoteRow(int row, std::int16_t prn, const Satellite& satellite);
  void DrawSatellites();
  void WriteMode();
  void WriteUsed(int group);
  void WriteRow(int row);
  void PaintDots();
  void ClickRow(int row);
  TrackingRow& RowAt(int row) { return rows_[static_cast<std::size_t>(row - 1)]; }

  SatelliteTable& satellites_;
  const Clock& clock_;

  // What is to be written when somebody looks: the records will have moved on by then.
  GSARecord mode_;
  bool modeDue_ = false;
  std::array<UsedList, kUsedGroups.size()> used_;
  std::int16_t satellitesInView_ = 0;
  bool inViewDue_ = false;
  std::array<TrackingRow, kTrackingRows> rows_;
  std::vector<Dot> dots_;
  bool dotsDue_ = false;
  std::int16_t drawnMask_ = 0;
};

}  // namespace fathomline
