// What stands where in the dialog, and which control runs which handler.
#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "base/format.h"
#include "base/numbers.h"
#include "setup/setup_dialog.h"
#include "views/definitions.h"

namespace fathomline {
namespace {

constexpr WindowPlace kPlace{1500, 900, 10500, 7500};
constexpr double kMostSingle{std::numeric_limits<float>::max()};
constexpr const char* kNoEffect = "Not yet implemented: has no effect.";
constexpr const char* kNotAnalysed = "Kept with the setup; the analysis does not use it.";
constexpr const char* kOutliers =
    "Degrees by which heading, pitch and roll of ATT may be off the reference. Without a tick the "
    "limit is 0.";
constexpr const char* kLatitudeForms =
    "As 59 30.5 S or -59 30.5; with seconds, where they are shown, as 59 30 15.5 S";
constexpr const char* kLongitudeForms =
    "As 10 20.5 W or -10 20.5; with seconds, where they are shown, as 10 20 15.5 W";

struct Steps {
  double first;
  double last;
  double step;
};

void AddSteps(Choices& combo, const Steps& steps, std::string_view picture) {
  const int count = static_cast<int>(std::lround((steps.last - steps.first) / steps.step));
  for (int i = 0; i <= count; ++i) combo.Add(Format(steps.first + i * steps.step, picture));
}

}  // namespace

std::deque<CheckBox> frmSetup::MakeSentenceBoxes(Frame& frame) {
  std::deque<CheckBox> boxes;
  const auto add = [&](const auto& sentence) {
    const std::string word = ToText(sentence.kType);
    boxes.emplace_back(frame, "chk" + word, word).SetToolTip(NameOfSentence(sentence.kType));
  };
  std::apply([&](const auto&... sentence) { (add(sentence), ...); }, kSentences);
  return boxes;
}

frmSetup::frmSetup(Desktop& desktop, Records& records, const Statistics& statistics,
                   const Clock& clock, Links& links, SetupSession& session)
    : Window(desktop, {.name = "frmSetup", .place = kPlace, .style = WindowStyle::Dialog}),
      records_(records),
      links_(links),
      session_(session),
      reference_(records, statistics, clock, desktop),
      apply_(records, desktop, session),
      limits_{{{chkOutliers, cmbOutliers, 0.0, "A outlier <> 0 has to be selected", "Outlier limit",
                kMostSingle},
               {chkHdop, cmbHdop, 0.0, "A hdop value <> 0 has to be selected", "Hdop limit",
                kMostSingle},
               {chkSvs, cmbSvs, 4.0, "No of svs > 3 has to be selected", "No of satellites limit",
                std::numeric_limits<std::int16_t>::max()}}},
      referenceBoxes_{{{ReferenceField::Name, txtRefName, "Name"},
                       {ReferenceField::Latitude, txtLat, "Latitude"},
                       {ReferenceField::Longitude, txtLon, "Longitude"},
                       {ReferenceField::Height, txtHgt, "Height"},
                       {ReferenceField::Heading, txtHdg, "Heading"},
                       {ReferenceField::Pitch, txtPitch, "Pitch"},
                       {ReferenceField::Roll, txtRoll, "Roll"}}} {
  FillFixedChoices();
  ConnectHandlers();
  SetContent(Layout::Column(
      {lblName,
       Layout::Pages(SSTab1, {GeneralPage(), MessagesPage(), ReferencePage(), LimitsPage(),
                              Layout::Column({lblAntennaOffset, Layout::Space()}), LinkPage()}),
       Layout::Row({Layout::Space(), cmdOk, cmdCancel})}));
}

void frmSetup::FillFixedChoices() {
  for (const SystemTypeWord& row : kSystemTypes) optType.Add(row.caption);
  for (const ReferenceOption& row : kReferenceOptions) optReference.Add(row.caption);
  AddSteps(cmbOutliers, {1.0, 10.0, 1.0}, "0");
  AddSteps(cmbOutliers, {20.0, 100.0, 10.0}, "0");
  AddSteps(cmbSvs, {4.0, 10.0, 1.0}, "0");
  AddSteps(cmbHdop, {1.5, 6.0, 0.5}, "0.0");
  cmbTimeZone.ShowChoice(0);
  for (Control* control : std::initializer_list<Control*>{&chkHDM, &chkHDG, &chkDBK, &chkDBS,
                                                          &chkLCD, &chkGLC, &cmbTimeZone}) {
    control->SetToolTip(kNoEffect);
  }
  for (Control* control :
       std::initializer_list<Control*>{&chkHdop, &cmbHdop, &chkSvs, &cmbSvs, &chkNoDiff}) {
    control->SetToolTip(kNotAnalysed);
  }
  txtLat.SetToolTip(kLatitudeForms);
  txtLon.SetToolTip(kLongitudeForms);
  chkOutliers.SetToolTip(kOutliers);
  cmbOutliers.SetToolTip(kOutliers);
}

void frmSetup::ConnectHandlers() {
  for (const SentenceType type : kSentenceBoxes) {
    SentenceBox(type).onClick = [this, type] { TickSentence(type); };
  }
  for (Limit& limit : limits_) {
    limit.box.onClick = [&limit] { limit.combo.SetEnabled(limit.box.Checked()); };
    limit.combo.onLeave = [this, &limit] { return LeaveLimit(limit); };
  }
  for (const ReferenceBox& row : referenceBoxes_) {
    row.box.onLeave = [this, &row] { return LeaveReference(row); };
  }
  optReference.onChoose = [this] { EnableReference(); };
  cmbRefPositions.onChoose = [this] { ChoosePosition(); };
  cmdCopyAvg.onClick = [this] { CopyAverage(); };
  cmdCopyPrimary.onClick = [this] {
    reference_.CopyPrimary();
    ShowReference();
  };
  optCom.onChoose = [this] { ShowLinkFrames(); };
  cmbComPort.onChoose = [this] { ChoosePort(); };
  cmbIP.onLeave = [this] { return LeaveAddress(); };
  for (TextBox* box : {&txtPort, &txtUDP_port}) {
    box->onLeave = [this, box] { return LeavePort(*box); };
  }
  cmdRefreshPorts.onClick = [this] { ScanPorts(ChosenPort()); };
  cmdComInfo.onClick = [this] { session_.ShowComportInfo(); };
  cmdSelectFile.onClick = [this] { SelectFile(); };
  cmdOk.onClick = [this] { Ok(); };
  cmdCancel.onClick = [this] { Close(); };
}

Layout frmSetup::GeneralPage() {
  return Layout::Column({chkEnabled, Layout::Form({{"&Name :", txtName}}),
                         Layout::Box(frameType, optType), chkSetTimeFromPC, Layout::Space()});
}

Layout frmSetup::MessagesPage() {
  const std::vector<Layout> boxes(sentenceBoxes_.begin(), sentenceBoxes_.end());
  return Layout::Column(
      {Layout::Box(frameMessages, Layout::Table(4, boxes)), chkTestCheckSum,
       Layout::Box(
           frameToBeImplemented,
           Layout::Column({Layout::Table(4, {chkHDM, chkHDG, chkDBK, chkDBS, chkLCD, chkGLC}),
                           Layout::Form({{"&Time zone :", cmbTimeZone}})})),
       Layout::Space()});
}

Layout frmSetup::ReferencePage() {
  return Layout::Column(
      {Layout::Box(frameReferenceUsed, optReference),
       Layout::Box(frameReference,
                   Layout::Column({Layout::Form({{"Po&sitions :", cmbRefPositions},
                                                 {"&Name :", txtRefName},
                                                 {"&Latitude :", txtLat},
                                                 {"Lon&gitude :", txtLon},
                                                 {"", lblCoordinateExample},
                                                 {"&Height (m) :", txtHgt},
                                                 {"Hea&ding (deg) :", txtHdg},
                                                 {"Pi&tch (deg) :", txtPitch},
                                                 {"&Roll (deg) :", txtRoll}}),
                                   Layout::Row({cmdCopyAvg, cmdCopyPrimary, Layout::Space()})})),
       Layout::Space()});
}

Layout frmSetup::LimitsPage() {
  return Layout::Column(
      {Layout::Box(frameLimits, Layout::Table(2, {chkOutliers, cmbOutliers, chkHdop, cmbHdop,
                                                  chkSvs, cmbSvs, chkNoDiff})),
       Layout::Space()});
}

Layout frmSetup::LinkPage() {
  return Layout::Column(
      {Layout::Box(frameLink, optCom),
       Layout::Box(
           frameCOM,
           Layout::Column({Layout::Form({{"Co&mport :", Layout::Row({cmbComPort, cmdRefreshPorts,
                                                                     cmdComInfo, Layout::Space()})},
                                         {"", lblComPortAdvice},
                                         {"&Baud rate :", cmbBaudRate},
                                         {"&Data bits :", cmbDataBits},
                                         {"&Parity :", cmbParity},
                                         {"&Stop bits :", cmbStopBits}}),
                           chkEmptyBuffer})),
       Layout::Box(frameTCPIP, Layout::Form({{"I&P address :", cmbIP}, {"Po&rt :", txtPort}})),
       Layout::Box(frameUDP, Layout::Form({{"Po&rt :", txtUDP_port}})),
       Layout::Box(frameLogfile,
                   Layout::Column({lblFileName, Layout::Row({cmdSelectFile, Layout::Space()})})),
       Layout::Space()});
}

}  // namespace fathomline
