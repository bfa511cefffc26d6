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

TEST_F(FeedTest, MovesTheMarkersOfTheRadius) {
  Send(GGA("120000", 1, 9));
  Send("$GPGGA,120001,0000.0000,N,00000.3000,E,1,9,,12.5,M,0.0,M,,*00");
  const Chart& chart = charts.TimeSeriesOf(1, SentenceType::GGA).TChart(0);
  // Mean and deviation of radii of a tenth and three tenths of a minute of longitude on the
  // equator: 6378137 m times the angle in radians.
  EXPECT_NEAR(chart.Tools(0).Value(), 371.065, 0.01);
  EXPECT_NEAR(chart.Tools(1).Band().low, 371.065 - 262.3825, 0.01);
  EXPECT_NEAR(chart.Tools(1).Band().high, 371.065 + 262.3825, 0.01);
}

TEST_F(FeedTest, PlotsAgeAndDifferentialDataWhereTheyAreWanted) {
  frmTimeSeries& window = charts.TimeSeriesOf(1, SentenceType::GGA);
  Send(GGA("120000", 2, 9, "3.0", "5"));
  window.chkAgeOff->Click();
  Send(GGA("120001", 1, 9, "4.0", "5"));
  window.chkAgeOff->Click();
  Send(GGA("120002", 1, 9, "5.0", "5"));
  EXPECT_EQ(Of(SentenceType::GGA, 3, 1), (Points{{}, 3.0F, {}, 5.0F})) << "the break has waited";
  window.chkDGPS->Click();
  Send(GGA("120003", 2, 9, "6.0", "5"));
  EXPECT_EQ(Of(SentenceType::GGA, 3, 0).size(), 3U);
  EXPECT_EQ(Of(SentenceType::GGA, 3, 1).size(), 4U);
  EXPECT_EQ(Of(SentenceType::GGA, 3, 2).size(), 2U);
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
  Send("$GNGNS,120001,0000.0000,N,00000.1000,E,DD,9,1.5,12.5,0.0,2.0,5*00");
  EXPECT_EQ(Of(SentenceType::GNS, 2, 1), (Points{5.0F}));
  EXPECT_TRUE(Of(SentenceType::GGA, 2, 1).empty());
  EXPECT_EQ(Of(SentenceType::GNS, 3, 0).size(), 0U);
  Send(GGA("120002", 2, 9, "3.0", "5"));
  Send("$GNGNS,120003,0000.0000,N,00000.1000,E,DD,9,1.5,12.5,0.0,4.0,5*00");
  EXPECT_EQ(Of(SentenceType::GNS, 3, 1), Points{4.0F}) << "the age is each one's own";
}

TEST_F(FeedTest, StartsAfreshAndLetsGoWhatLiesMoreThanADayAway) {
  charts.OpenTimeSeries(1);
  SetTime(12, 0, 0);
  Send("$GPGSV,1,1,01,03,40,120,35*00");
  SendDepth(4.0F);
  records.MessageTime[1] = {kDate.days + 1.6};
  Send("$GPGSV,1,1,01,05,40,120,35*00");
  SendDepth(5.0F);
  records.MessageTime[1] = {kDate.days + 1.2};
  SendDepth(6.0F);
  EXPECT_TRUE(Of(SentenceType::GSV, 0, 3).empty()) << "a satellite that is fed no more";
  EXPECT_EQ(Of(SentenceType::DBT, 0, 0), (Points{5.0F, 6.0F}));
  records.MessageTime[1] = {kDate.days + 0.5};
  SendDepth(7.0F);
  EXPECT_EQ(Of(SentenceType::DBT, 0, 0), (Points{6.0F, 7.0F})) << "the one behind it too";
  const std::string fix = GGA("120000", 2, 9, "3.0", "5");
  Send(fix);
  Send("$GPGGA,120000,0000.0000,N,00000.9000,E,2,9,1.2,12.5,M,0.0,M,3.0,5*00");
  Send(fix);
  charts.StartSeriesAfresh(1);
  EXPECT_TRUE(Of(SentenceType::DBT, 0, 0).empty());
  EXPECT_TRUE(Of(SentenceType::GSV, 0, 5).empty());
  EXPECT_EQ(charts.TimeSeriesOf(1, SentenceType::GGA).TChart(3).Right().Range(),
            (AxisRange{0.0, 1.0}));
  Send(fix);
  EXPECT_TRUE(Of(SentenceType::GGA, 3, 2).empty()) << "the run of the station has ended";
  ASSERT_EQ(Of(SentenceType::GGA, 0, 1).size(), 1U);
  EXPECT_EQ(Of(SentenceType::GGA, 0, 1), Of(SentenceType::GGA, 0, 0)) << "the mean begins anew";
}

TEST_F(FeedTest, TellsTheModeOfAFixByTheColourOfItsType) {
  const Series& fix = SeriesOf(SentenceType::GSA, 0, 3);
  Send("$GPGSA,A,3,05,,,,,,,,,,,,2.0,1.0,1.7*00");
  EXPECT_EQ(fix.ShownColour(), 0);
  Send("$GPGSA,M,3,05,00,,,,,,,,,,,2.0,1.0,1.7*00");
  EXPECT_EQ(fix.ShownColour(), 65535);
  EXPECT_EQ(Of(SentenceType::GSA, 1, 0), Points{0.0F});
  EXPECT_EQ(Of(SentenceType::GSA, 1, 5), (Points{5.0F, 5.0F}));
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

TEST_F(FeedTest, PlotsSatellitesWhileTheSkyplotIsOpen) {
  const std::string group = "$GPGSV,1,1,01,09,40,120,35*00";
  Send(group);
  EXPECT_TRUE(Of(SentenceType::GSV, 0, 9).empty());
  charts.OpenTimeSeries(1);
  EXPECT_TRUE(charts.SkyplotOf(1).Visible());
  Send(group);
  EXPECT_EQ(Of(SentenceType::GSV, 0, 9), Points{40.0F});
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
