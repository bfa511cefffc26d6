// frmScatter: the fixes of one system round its reference position, north up, in metres; and
// frmXYAxis, which sets its scale.
#pragma once

#include "analysis/statistics.h"
#include "toolkit/bars.h"
#include "toolkit/chart.h"
#include "toolkit/controls.h"
#include "views/system_view.h"

namespace fathomline {

// Outlives the windows.
struct ScatterScale {
  bool ScatterAuto = true;         // the axes follow the points
  float ScatterRange = 0.0F;       // metres, the fixed half range
  float ScatterShownRange = 0.0F;  // the half range last applied to the axes
};
using ScatterScales = PerSystem<ScatterScale>;

class frmScatter;

class frmXYAxis : public Window {
 public:
  frmXYAxis(Desktop& desktop, ScatterScales& scales);

  // Returns when the dialog is closed. The next fix applies what was set.
  void Open(const frmScatter& scatter);

  CheckBox chkAutomatic{*this, "chkAutomatic", "Scale Automatic"};
  TextBox txtMax{*this, "txtMax"};
  Button cmdOk{*this, "cmdOk", "OK", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "Cancel", Button::Role::Cancel};

 protected:
  void Load() override;

 private:
  void Accept();

  ScatterScales& scales_;
  const frmScatter* scatter_ = nullptr;
};

class frmScatter : public SystemView {
 public:
  frmScatter(const ViewSurroundings& surroundings, int system, const Statistics& statistics,
             ScatterScales& scales, frmXYAxis& dialog);

  // Adds the fix of a sentence of that type; any type but GGA, GNS, GLL and RMC does nothing.
  void UpdateScatter(SentenceType type);
  // Metres north and east; nothing happens where one is NoValue. The scale follows the points that
  // stood before this one.
  void AddScatterPoint(float deltaLat, float deltaLon);
  // It goes on plotting.
  void PutAway() override;

  // The circles that hold 68% and 95% of the fixes of the latest sentence type. One whose figure
  // lies beyond the bins of the statistics is not drawn.
  void Refresh() override;

  Chart TChart1{*this, "TChart1"};
  MenuItem mnuCircles{*this, "mnuCircles", "&Circles"};
  MenuItem mnuCircle68{mnuCircles, "mnuCircle68", "&68% of the fixes"};
  MenuItem mnuCircle95{mnuCircles, "mnuCircle95", "&95% of the fixes"};

 protected:
  void LoadView() override;

 private:
  // The tools of the chart.
  enum Tool { kEastLine, kNorthLine, kCircle68, kCircle95 };

  float HalfRange() const;
  void ShowRange(float range);
  void NameAxes();
  void ShowCircle(MenuItem& item, Tool circle, float radius);

  const Statistics& statistics_;
  ScatterScales& scales_;
  Series* points_;
  const PositionStats* latest_ = nullptr;  // of the sentence that the circles tell of
  std::string range_;  // as the titles of the axes say it
};

}  // namespace fathomline
