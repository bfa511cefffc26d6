// The dialog within the whole program, up to figures.
#include <gtest/gtest.h>
#include <string>

#include "setup/setup_desk.h"
#include "support/sentences.h"
#include "support/session.h"

namespace fathomline {
namespace {

// 0.001 minutes north of 59 30 N, 10 30 E; 2.5 metres above 10.
constexpr const char* kFix = "GPGGA,030405,5930.001,N,01030.000,E,1,08,1.0,12.5,M,0.0,M,,";

class SetupInSession : public testing::Test {
 protected:
  SetupInSession() {
    session.face.ExpectBox("");
    EXPECT_TRUE(session.Start());
    for (int port = 1; port <= kSerialPorts; ++port) {
      session.links.MSComm1(port).info.present = port == 6;
    }
  }

  frmSetup& Dialog() { return session.program->session.setupDialog; }
  void OpenDialog() {
    session.mainWindow().mnuSetupPrimarySystem.Click();
    ASSERT_TRUE(Dialog().Visible());
  }
  void Ok() {
    session.face.ExpectBox(kSure, Answer::Yes);
    Dialog().cmdOk.Click();
    EXPECT_FALSE(Dialog().Loaded());
  }
  // What the position figures hold of the fixes so far: 0 radius, 1 north, 2 east, 3 height.
  template <auto Member>
  const SingleStat& Figure() {
    return session.program->engine.statistics[1].Of<GGARecord, Member>().Stat;
  }
  // A fix arrives on the link, and is the only one in the figures.
  template <class Link>
  void ExpectFigures(Link& link) {
    link.Arrive(Line());
    session.Deliver();
    EXPECT_EQ(Figure<&Deviations::dRad>().Count, 1);
  }
  static std::string Line() { return Sentence(kFix) + "\r\n"; }

  Session session;
};

// By the flat reduction, 0.001 minutes to the north are 1.8475 metres at that latitude.
TEST_F(SetupInSession, DeviationsAreFromTheReferenceChosen) {
  session.Prepare([](Records& records) {
    records.CommSetups[1].UseUDP = true;
    records.CommSetups[1].UDPPort = 1000;
    records.MessagesToAnalyse[1][0] = "GGA";
  });
  ASSERT_TRUE(session.Start());
  const auto expectDeviations = [this](float north, float height) {
    Ok();
    ExpectFigures(session.links.WinsockUDP(1));
    EXPECT_NEAR(Figure<&Deviations::dN>().Mean, north, 0.0005F);
    EXPECT_NEAR(Figure<&Deviations::dE>().Mean, 0.0F, 0.0005F);
    EXPECT_NEAR(Figure<&Deviations::dHgt>().Mean, height, 0.0001F);
  };
  struct Typed {
    bool isDMS;
    const char* name;
    const char* latitude;
    const char* longitude;
  };
  for (const Typed& typed : {Typed{false, "in minutes", "59 30,0 N", "10 30,0"},
                             Typed{true, "in seconds", "59 30 0,0", "10 30"}}) {
    session.records().CoordinateFormatIsDMS = typed.isDMS;
    OpenDialog();
    Dialog().optReference.UserChoose(1);
    Dialog().txtRefName.UserText(typed.name);
    Dialog().txtLat.UserText(typed.latitude);
    Dialog().txtLon.UserText(typed.longitude);
    Dialog().txtHgt.UserText("10,0");
    expectDeviations(1.8475F, 2.5F);
  }
  OpenDialog();
  EXPECT_EQ(Dialog().cmbRefPositions.Count(), 2);
  Dialog().cmdCopyAvg.Click();
  EXPECT_EQ(Dialog().txtHgt.Text(), "12.500");
  expectDeviations(0.0F, 0.0F);
  OpenDialog();
  Dialog().cmbRefPositions.UserChoose(0);
  expectDeviations(1.8475F, 2.5F);
  // A port that another program has taken since.
  OpenDialog();
  Dialog().txtName.UserText("Quay");
  session.links.WinsockUDP(1).refusal = "In use";
  session.face.ExpectBox(kSure, Answer::Yes);
  session.face.ExpectBox("UDP port 1000 not opened. Select another port number!");
  session.face.ExpectBox("In use. UDP Port 1000 not available! System 1 -Quay disabled");
  Dialog().cmdOk.Click();
  EXPECT_EQ(session.mainWindow().mnuSetupPrimarySystem.Text(), "&Primary System         - Quay");
}

}  // namespace
}  // namespace fathomline
