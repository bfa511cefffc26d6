// Charts: series over a bottom axis, with axes at the left and at the right, and markers.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/series.h"

namespace fathomline {

class Chart;

// By the numbers under which the axes are known.
enum class AxisSide : std::uint8_t { Left = 0, Right = 2, Bottom = 3 };

// The range of an axis: set, or worked out from the points when somebody looks. A zoom by the user
// lies over both until it is undone or the program sets an end.
class Axis {
 public:
  Axis(const Chart& chart, std::uint64_t& changes, AxisSide side);

  AxisSide Side() const { return side_; }

  // The range in force. Of automatic ends: the extremes of the series on this axis, 0 included
  // where there are bars; 0 to 1 without points; somewhat wider than a single value.
  double Minimum() const { return Range().low; }
  double Maximum() const { return Range().high; }
  AxisRange Range() const;
  // Nothing is checked: the two ends may stand the wrong way round until both have been set.
  void SetMinimum(double minimum);
  void SetMaximum(double maximum);

  // An end is automatic where the axis is, or that end alone.
  bool Automatic() const { return state_.automatic; }
  bool AutomaticMinimum() const { return state_.automaticMinimum; }
  bool AutomaticMaximum() const { return state_.automaticMaximum; }
  // Sets all three.
  void SetAutomatic(bool automatic);
  void SetAutomaticMinimum(bool automatic) { Change(state_.automaticMinimum, automatic); }
  void SetAutomaticMaximum(bool automatic) { Change(state_.automaticMaximum, automatic); }

  std::optional<AxisRange> Zoom() const { return state_.zoom; }
  void SetZoom(std::optional<AxisRange> zoom) { Change(state_.zoom, zoom); }

  // What an automatic end shows in any case, beside the points of the chart: those of the charts
  // that it stands with, so that they can be compared.
  std::optional<AxisRange> Company() const { return state_.company; }
  void SetCompany(std::optional<AxisRange> company) { Change(state_.company, company); }

  const std::string& Title() const { return state_.title; }
  void SetTitle(std::string_view title) { Change(state_.title, title); }
  // A picture of dates makes the axis one of time, in days; empty: numbers.
  const std::string& LabelFormat() const { return state_.labelFormat; }
  void SetLabelFormat(std::string_view picture) { Change(state_.labelFormat, picture); }
  // The right axis is hidden until a series uses it or somebody shows it.
  bool Visible() const { return state_.visible; }
  void SetVisible(bool visible) { Change(state_.visible, visible); }

 private:
  friend class Chart;

  struct State {
    double minimum = 0.0;
    double maximum = 1.0;
    bool automatic = true;
    bool automaticMinimum = true;
    bool automaticMaximum = true;
    bool visible = true;
    std::optional<AxisRange> zoom;
    std::optional<AxisRange> company;
    std::string title;
    std::string labelFormat;

    bool operator==(const State&) const = default;
  };

  template <class Field, class Value>
  void Change(Field& field, const Value& value) {
    if (field == value) return;
    field = value;
    ++changes_;
  }
  void SetEnd(double& end, double value);

  const Chart& chart_;
  std::uint64_t& changes_;
  AxisSide side_;
  State state_;
  State design_;
};

// A circle is drawn round the origin of the axes; its value is the radius.
enum class MarkerKind : std::uint8_t { HorizontalLine, HorizontalBand, VerticalLine, Circle };

struct MarkerDesign {
  MarkerKind kind = MarkerKind::HorizontalLine;
  Colour colour = kBlack;
  bool dashed = false;
  bool visible = true;

  bool operator==(const MarkerDesign&) const = default;
};

// A line, a band or a circle across the chart; a horizontal one is measured on the left axis.
class Marker {
 public:
  Marker(std::uint64_t& changes, MarkerDesign design);

  const MarkerDesign& Design() const { return state_.design; }
  double Value() const { return state_.range.low; }
  void SetValue(double value) { Set({{value, value}, state_.design}); }
  // The two ends of a band.
  AxisRange Band() const { return state_.range; }
  void SetBand(AxisRange band) { Set({band, state_.design}); }
  void SetVisible(bool visible);

 private:
  friend class Chart;

  struct State {
    AxisRange range{0.0, 0.0};
    MarkerDesign design;

    bool operator==(const State&) const = default;
  };

  void Set(const State& state);

  std::uint64_t& changes_;
  State state_;
  State sealed_;
};

// Which series the legend names. The lines of satellites say their numbers at their ends.
enum class Legend : std::uint8_t { None, WithPoints, All, AtLineEnds };

// Series and markers count from 0; an index that is not there raises OutOfRange. The text of the
// control is the title of the chart.
class Chart : public Control {
 public:
  Chart(Parent parent, std::string_view name, std::string_view title = {});

  // Loading the window empties the series and takes away those added since it was built.
  class fathomline::Series& AddSeries(SeriesDesign design);
  int SeriesCount() const { return static_cast<int>(series_.size()); }
  class fathomline::Series& Series(int index);
  const class fathomline::Series& Series(int index) const;

  Axis& Left() { return left_; }
  Axis& Right() { return right_; }
  Axis& Bottom() { return bottom_; }
  const Axis& Left() const { return left_; }
  const Axis& Right() const { return right_; }
  const Axis& Bottom() const { return bottom_; }
  // What an automatic axis shows at present. Curves out of sight count for the bottom axis alone,
  // as long as there are others beside them.
  AxisRange AutomaticRange(AxisSide side) const;

  Marker& AddMarker(MarkerDesign design);
  int ToolCount() const { return static_cast<int>(markers_.size()); }
  Marker& Tools(int index);
  const Marker& Tools(int index) const;

  Legend ShownLegend() const { return state_.legend; }
  void SetLegend(Legend legend) { Change(state_.legend, legend); }
  // A text behind the legend.
  const std::string& Note() const { return state_.note; }
  void SetNote(std::string_view note) { Change(state_.note, note); }
  // What stands in the chart as long as it has no points.
  const std::string& WhyEmpty() const { return state_.whyEmpty; }
  void SetWhyEmpty(std::string_view why) { Change(state_.whyEmpty, why); }
  bool Empty() const;
  // A unit is as long on the left axis as on the bottom one, whatever the user zooms to.
  bool EqualScales() const { return state_.equalScales; }
  void SetEqualScales(bool equal) { Change(state_.equalScales, equal); }

  // The points within the shown part of the bottom axis as comma-separated values: the time in UTC
  // or x, the title of the series, y. Null points are left out.
  void WriteCsv(std::ostream& out) const;

  // What the user does with the mouse. A range that is not given stays as it is. Each zoom and each
  // scroll is a step that can be undone; a gesture that goes on belongs to the step before.
  struct Ranges {
    std::optional<AxisRange> bottom;
    std::optional<AxisRange> left;
    std::optional<AxisRange> right;
  };
  enum class Gesture : std::uint8_t { New, GoesOn };
  void ClickAxis(AxisSide side);
  // Hides the curve of a series, or brings it back.
  void UserToggle(int series);
  void UserZoom(const Ranges& ranges, Gesture gesture = Gesture::New);
  void UserScroll(const Ranges& ranges, Gesture gesture = Gesture::New);
  // Goes back one step, or all of them.
  void UserUndoZoom();
  void UserShowAll();
  // A zoom lies over one of the axes.
  bool Held() const { return left_.Zoom() || right_.Zoom() || bottom_.Zoom(); }
  // Brings this chart to as many steps as another one of its window has, so that undoing leads both
  // back together.
  void MatchSteps(const Chart& other);

  std::function<void(AxisSide side)> onClickAxis;
  std::function<void()> onZoom;
  std::function<void()> onScroll;
  std::function<void()> onUndoZoom;

 protected:
  void Seal() override;
  void Reset() override;

 private:
  struct Look {
    Legend legend = Legend::All;
    std::string note;
    std::string whyEmpty;
    bool equalScales = false;

    bool operator==(const Look&) const = default;
  };

  // The zooms of the three axes before a step.
  struct Step {
    std::optional<AxisRange> left;
    std::optional<AxisRange> right;
    std::optional<AxisRange> bottom;
  };

  void Zoom(Ranges ranges, Gesture gesture, const std::function<void()>& handler);
  bool AnyHeldInWindow() const;
  Ranges EquallyScaled(const Ranges& ranges) const;
  void BeginStep() { steps_.push_back({left_.Zoom(), right_.Zoom(), bottom_.Zoom()}); }
  void UndoStep();

  Axis left_;
  Axis right_;
  Axis bottom_;
  std::deque<class fathomline::Series> series_;
  std::deque<Marker> markers_;
  Look state_;
  Look design_;
  std::vector<SeriesDesign> sealedSeries_;
  std::size_t sealedMarkers_ = 0;
  std::vector<Step> steps_;
};

}  // namespace fathomline
