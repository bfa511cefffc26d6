#include "charts/series_feeds.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "charts/chart_session.h"

namespace fathomline {
namespace {

// A fix of GGA with what the charts show of it.
std::string GGA(std::string_view time, int quality, int satellites, std::string_view age = "",
                std::string_view station = "", std::string_view hdop = "1.2") {
  std::string text = "$GPGGA,";
  text.append(time).append(",0000.0000,N,00000.1000,E,").append(std::to_string(quality));
  text.append(",").append(std::to_string(satellites)).append(",").append(hdop);
  return text.append(",12.5,M,0.0,M,").append(age).append(",").append(station).append("*00");
}

class FeedTest : public ChartSession {
 protected:
  Points Of(SentenceType type, int chart, int series) {
    return Values(SeriesOf(type, chart, series));
  }
};

TEST_F(FeedTest, PlotsAFixAtTheTimeOfItsSentence) {
  SetTime(0, 0, 0);
  Send(GGA("120000", 1, 9));
  Send("$GPGGA,120001,0000.0000,N,00000.3000,E,1,9,,12.5,M,0.0,M,,*00");
  const Chart& chart = charts.TimeSeriesOf(1, SentenceType::GGA).TChart(0);
  ASSERT_EQ(chart.Series(0).Count(), 2);
  EXPECT_NEAR(chart.Series(0).At(1).x, kDate.days + 43201.0 / 86400.0, 1e-9);
  // A tenth of a minute of longitude on the equator: 6378137 m times the angle in radians.
  EXPECT_NEAR(chart.Series(0).At(0).y, 185.5325F, 0.001F);
  EXPECT_EQ(Of(SentenceType::GGA, 1, 0), (Points{0.0F, 0.0F}));
  EXPECT_NEAR(*Of(SentenceType::GGA, 1, 1)[0], 185.5325F, 0.001F);
  EXPECT_EQ(Of(SentenceType::GGA, 1, 2), (Points{12.5F, 12.5F}));
  EXPECT_EQ(Of(SentenceType::GGA, 2, 1), Points{1.2F}) << "missing in the second one";
  // Mean and deviation of radii of 1 and 3 times 185.5325 m, as markers and as series.
  EXPECT_NEAR(chart.Tools(0).Value(), 371.065, 0.01);
  EXPECT_NEAR(chart.Tools(1).Band().low, 371.065 - 262.3825, 0.01);
  EXPECT_NEAR(chart.Tools(1).Band().high, 371.065 + 262.3825, 0.01);
  EXPECT_NEAR(chart.Series(1).At(1).y, 371.065F, 0.01F);
  EXPECT_EQ(chart.Series(2).At(0).y, 0.0F);
  EXPECT_NEAR(chart.Series(2).At(1).y, 262.3825F, 0.01F);
}

TEST_F(FeedTest, ColoursTheBarsOfSatellitesAndQuality) {
  constexpr Colour kOwn = kSeriesColour;
  const std::vector<Colour> qualities = {255,   255,      kOwn,     65280, 16711935,
                                         65535, 16776960, 16777215, 65535};
  const std::vector<Colour> counts = {255, 16711935, kOwn};
  for (int quality = 0; quality <= 9; ++quality) {
    Send(GGA("120000", quality, std::min(quality, 2) + 3));
  }
  const Series& bars = SeriesOf(SentenceType::GGA, 3, 0);
  const Series& satellites = SeriesOf(SentenceType::GGA, 2, 0);
  ASSERT_EQ(bars.Count(), 9) << "no bar above quality 8";
  for (int i = 0; i < bars.Count(); ++i) {
    EXPECT_EQ(bars.At(i).y, static_cast<float>(i));
    EXPECT_EQ(bars.At(i).colour, qualities.at(static_cast<std::size_t>(i))) << i;
    EXPECT_EQ(satellites.At(i).colour, counts.at(static_cast<std::size_t>(std::min(i, 2)))) << i;
  }
}

TEST_F(FeedTest, BreaksTheAgeBetweenPlainAndDifferentialFixesAndPlotsItWhereWanted) {
  frmTimeSeries& window = charts.TimeSeriesOf(1, SentenceType::GGA);
  Send(GGA("120000", 2, 9, "3.0", "5"));
  Send(GGA("120001", 5, 9, "4.0", "5"));
  Send(GGA("120002", 1, 9));
  Send(GGA("120003", 0, 0));
  Send(GGA("120004", 4, 9, "1.0", "5"));
  EXPECT_EQ(Of(SentenceType::GGA, 3, 1), (Points{{}, 3.0F, 4.0F, {}, {}, 1.0F}));
  window.chkAgeOff->Click();
  Send(GGA("120005", 1, 9, "4.0", "5"));
  EXPECT_EQ(Of(SentenceType::GGA, 3, 1).size(), 6U);
  EXPECT_EQ(Of(SentenceType::GGA, 3, 0).size(), 6U);
  window.chkAgeOff->Click();
  Send(GGA("120006", 1, 9, "5.0", "5"));
  EXPECT_EQ(Of(SentenceType::GGA, 3, 1), (Points{{}, 3.0F, 4.0F, {}, {}, 1.0F, {}, 5.0F}));
  window.chkDGPS->Click();
  Send(GGA("120007", 2, 9, "6.0", "5"));
  const std::vector<std::size_t> counts = {7, 8, 3};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Of(SentenceType::GGA, 3, i).size(), counts.at(static_cast<std::size_t>(i))) << i;
  }
}

TEST_F(FeedTest, WidensTheAxisOfTheStations) {
  const Axis& axis = charts.TimeSeriesOf(1, SentenceType::GGA).TChart(3).Right();
  Send(GGA("120000", 2, 9, "3.0", "120"));
  EXPECT_EQ(axis.Range(), (AxisRange{0.0, 121.0}));
  Send(GGA("120001", 2, 9, "3.0", "30"));
  EXPECT_EQ(axis.Range(), (AxisRange{0.0, 121.0}));
  Send(GGA("120002", 1, 9));
  EXPECT_EQ(axis.Range(), (AxisRange{0.0, 121.0})) << "no station, no number";
}

TEST_F(FeedTest, LetsTheTwoPositionSentencesShareTheirFilters) {
  charts.TimeSeriesOf(1, SentenceType::GGA).cmbFilter.UserChoose(2);
  charts.TimeSeriesOf(1, SentenceType::GNS).cmbFilter.UserChoose(2);
  Send(GGA("120000", 1, 9, "", "", "5.0"));
  Send("$GNGNS,120001,0000.0000,N,00000.1000,E,AA,9,1.5,12.5,0.0,,*00");
  EXPECT_EQ(Of(SentenceType::GNS, 2, 1), (Points{5.0F}));
  EXPECT_TRUE(Of(SentenceType::GGA, 2, 1).empty());
  EXPECT_EQ(Of(SentenceType::GNS, 3, 0).size(), 0U);
}

TEST_F(FeedTest, PlotsTheValuesOfTheOtherSentences) {
  SetTime(12, 0, 0);
  Send("$GPVTG,45.5,T,,M,7.5,N,13.9,K,A*00");
  Send("$PFEC,GPatt,10.0,-1.5,2.5*00");
  Send("$TIROT,-3.5,A*00");
  Send("$VWVHW,101.0,T,99.0,M,6.5,N,12.0,K*00");
  Send("$SDDBT,16.4,f,5.0,M,2.7,F*00");
  Send("$GPGST,120000,1.5,2.5,3.5,45.6,4.5,5.5,6.5*00");
  struct Case {
    SentenceType type;
    int chart;
    int series;
    float value;
  };
  for (const Case& one : std::vector<Case>{{SentenceType::VTG, 0, 0, 7.5F},
                                           {SentenceType::VTG, 0, 1, 45.5F},
                                           {SentenceType::ATT, 0, 0, 10.0F},
                                           {SentenceType::ATT, 1, 0, -1.5F},
                                           {SentenceType::ATT, 1, 1, 2.5F},
                                           {SentenceType::ROT, 0, 0, -3.5F},
                                           {SentenceType::VHW, 0, 0, 6.5F},
                                           {SentenceType::VHW, 0, 1, 101.0F},
                                           {SentenceType::VHW, 0, 2, 99.0F},
                                           {SentenceType::DBT, 0, 0, 5.0F},
                                           {SentenceType::GST, 0, 0, 1.5F},
                                           {SentenceType::GST, 1, 0, 4.5F},
                                           {SentenceType::GST, 1, 2, 6.5F},
                                           {SentenceType::GST, 2, 0, 2.5F},
                                           {SentenceType::GST, 2, 2, 46.0F}}) {
    EXPECT_EQ(Of(one.type, one.chart, one.series), Points{one.value})
        << ToText(one.type) << one.chart << one.series;
  }
}

TEST_F(FeedTest, TiesTheRightAxisOfTheHeadingToTheLeftOne) {
  records.References[1].ReferenceHeading = 100.0F;
  Send("$HEHDT,102.0,T*00");
  Send("$HEHDT,106.0,T*00");
  Send("$HEHDT,,T*00");
  const Chart& chart = charts.TimeSeriesOf(1, SentenceType::HDT).TChart(0);
  EXPECT_EQ(Values(chart.Series(0)), (Points{2.0F, 6.0F}));
  EXPECT_EQ(chart.Right().Range(), (AxisRange{102.0, 106.0}));
  EXPECT_EQ(chart.Tools(2).Value(), 4.0);
  EXPECT_NEAR(chart.Tools(1).Band().low, 4.0 - 2.828427, 1e-5);
  records.References[1].ReferenceUsed = kAverageOverTime;
  Send("$HEHDT,104.0,T*00");
  EXPECT_EQ(chart.Tools(2).Value(), 0.0);
  // The reference has followed the mean to 104: the deviations are 2, 6 and 0.
  EXPECT_NEAR(chart.Tools(1).Band().high, 3.0550505, 1e-5);
}

TEST_F(FeedTest, BreaksTheLinesOfSatellitesThatLeaveTheSolution) {
  Send("$GPGSA,A,3,05,99,101,,,,,,,,,,2.0,1.0,1.7*00");
  Send("$GPGSA,M,2,07,,,,,,,,,,,,2.1,1.1,1.8*00");
  Send("$GPGSA,A,3,05,152,-4,,,,,,,,,,2.0,1.0,1.7*00");
  EXPECT_EQ(Of(SentenceType::GSA, 1, 5), (Points{5.0F, {}, 5.0F}));
  EXPECT_EQ(Of(SentenceType::GSA, 1, 99), (Points{99.0F, {}}));
  EXPECT_EQ(Of(SentenceType::GSA, 1, 101), (Points{101.0F})) << "no break above 99";
  EXPECT_EQ(Of(SentenceType::GSA, 1, 7), (Points{7.0F, {}}));
  EXPECT_EQ(Of(SentenceType::GSA, 0, 2), (Points{1.7F, 1.8F, 1.7F}));
  const Series& fix = SeriesOf(SentenceType::GSA, 0, 3);
  EXPECT_EQ(Values(fix), (Points{3.0F, 2.0F, 3.0F}));
  EXPECT_EQ(fix.ShownColour(), 0);
  Send("$GPGSA,M,3,05,,,,,,,,,,,,2.0,1.0,1.7*00");
  EXPECT_EQ(fix.ShownColour(), 65535);
}

TEST_F(FeedTest, PlotsTheSatellitesOncePerGroupAsTheSentencesBeforeHaveLeftThem) {
  charts.OpenSkyplot(1);
  Send("$GPGSV,2,1,05,03,40,120,35,04,00,130,36,05,41,140,37,06,42,150,38*00");
  EXPECT_EQ(SeriesOf(SentenceType::GSV, 0, 3).Count(), 0);
  Send("$GPGSV,2,2,05,07,50,160,39*00");
  EXPECT_EQ(Of(SentenceType::GSV, 0, 3), Points{40.0F});
  EXPECT_EQ(Of(SentenceType::GSV, 1, 3), Points{120.0F});
  EXPECT_EQ(Of(SentenceType::GSV, 2, 3), Points{35.0F});
  EXPECT_TRUE(Of(SentenceType::GSV, 0, 4).empty()) << "on the horizon";
  EXPECT_TRUE(Of(SentenceType::GSV, 0, 7).empty()) << "taken by the tracking behind the charts";
  EXPECT_EQ(Of(SentenceType::GSV, 2, 0), Points{5.0F});
}

TEST_F(FeedTest, FeedsHiddenWindowsButNoSentenceThatIsNotAnalysed) {
  EXPECT_FALSE(charts.TimeSeriesOf(1, SentenceType::DBT).Visible());
  SendDepth(4.0F);
  charts.RaiseBreak(1);
  SendDepth(5.0F);
  SendDepth(6.0F);
  records.CommSetups[1].AnalyseDBT = false;
  SendDepth(7.0F);
  EXPECT_EQ(Of(SentenceType::DBT, 0, 0), (Points{4.0F, {}, 5.0F, 6.0F}));
}

}  // namespace
}  // namespace fathomline
