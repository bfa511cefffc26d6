// The records that the whole program works on: per system how it is connected, which of its
// windows are open and its latest sentences; and the state of the session.
//
// Everything runs on one thread, so nothing here is locked.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>

#include "base/colour.h"
#include "base/datetime.h"
#include "base/fault.h"
#include "base/per_system.h"
#include "base/serial_ports.h"
#include "decoding/sentence_records.h"
#include "decoding/sentence_type.h"

namespace fathomline {

inline constexpr int kComports = kSerialPorts;
inline constexpr float kOutlierLimitAtStart = 15.0F;

// How a system is connected and which sentences it analyses.
struct CommSetup {
  bool Enabled = false;
  std::string Name;
  std::string SystemType;
  std::int16_t ComPort = 0;  // 1 to 16; 0 when the system is not on a serial port
  bool UseTCPIP = false;
  std::string IPAddress;
  std::int32_t TCPPort = 0;
  bool UseUDP = false;
  std::int32_t UDPPort = 0;
  std::string OfflineFile;
  bool Spare = false;
  // Derived from MessagesToAnalyse by SetMessageFlags, never edited.
  bool AnalyseGGA = false;
  bool AnalyseGNS = false;
  bool AnalyseGLL = false;
  bool AnalyseRMC = false;
  bool AnalyseVTG = false;
  bool AnalyseGSA = false;
  bool AnalyseGSV = false;
  bool AnalyseZDA = false;
  bool AnalyseHDT = false;
  bool AnalyseATT = false;
  bool AnalyseROT = false;
  bool AnalyseVHW = false;
  bool AnalyseDBT = false;
  bool AnalyseTTM = false;
  bool AnalyseVDM = false;
  bool AnalyseGST = false;

  // Whether sentences of the type are analysed. VDO shares the flag of VDM; false for a type that
  // has no flag.
  bool Analyses(SentenceType type) const;
  bool AnalysesAny(std::span<const SentenceType> types) const;
};

// Positions of the window flags of a system.
enum class WindowFlag : std::int16_t {
  Numerics = 0,
  Statistics = 2,
  StatisticsSNR = 3,
  NMEA = 4,
  Scatter = 5,
  Skyplot = 6,
  TimeSeriesGGA = 7,
  TimeSeriesGNS = 8,
  TimeSeriesGLL = 9,
  TimeSeriesRMC = 10,
  TimeSeriesVTG = 11,
  TimeSeriesGSA = 12,
  TimeSeriesGSV = 13,
  FirstSatellite = 14,  // of the satellite entry n: FirstSatellite + n
  TimeSeriesHDT = 164,
  TimeSeriesATT = 165,
  TimeSeriesROT = 166,
  TimeSeriesVHW = 167,
  TimeSeriesDBT = 168,
  ARPATargets = 169,
  AISTargets = 170,
  TimeSeriesSNR = 171,
  TimeSeriesGST = 172,
};
inline constexpr std::size_t kWindowFlags = 173;

// One flag for each window that can be open for a system: set when it is opened, cleared when it
// is closed, read at each sentence to decide what to feed.
class SystemSetup {
 public:
  bool& operator[](WindowFlag flag) { return flags_[Index(flag)]; }
  bool operator[](WindowFlag flag) const { return flags_[Index(flag)]; }

 private:
  static std::size_t Index(WindowFlag flag) {
    const auto index = static_cast<std::size_t>(flag);
    if (index >= kWindowFlags) Raise(FaultNumber::OutOfRange);
    return index;
  }

  std::array<bool, kWindowFlags> flags_{};
};

// The latest sentence of a type as it was received, its tag block aside, and what it decoded to.
template <class RecordType>
struct Message {
  std::string Text;
  RecordType Record;
};

struct SystemMessages {
  Message<GGARecord> GGA;
  Message<GNSRecord> GNS;
  Message<GLLRecord> GLL;
  Message<RMCRecord> RMC;
  Message<VTGRecord> VTG;
  Message<ZDARecord> ZDA;
  Message<HDTRecord> HDT;
  Message<ATTRecord> ATT;
  Message<ROTRecord> ROT;
  Message<VHWRecord> VHW;
  Message<DBTRecord> DBT;
  Message<GSARecord> GSA;
  Message<GSVRecord> GSV;
  Message<TTMRecord> TTM;
  Message<VDMRecord> VDM;
  Message<GSTRecord> GST;
};

// What tells a sentence in a line: its letters at a place, counted from 1. The talker in front of
// them is not looked at.
struct SentenceMark {
  std::size_t place = 0;  // 0: no further mark
  std::string_view letters;
};
using SentenceMarks = std::array<SentenceMark, 2>;

// What is known of a sentence everywhere: whether a system analyses it, where its latest one is
// kept, its full name, and how it is recognised.
template <class RecordType>
struct SentenceRow {
  using Record = RecordType;
  static constexpr SentenceType kType = kTypeOf<Record>;
  bool CommSetup::*analysed;
  Message<Record> SystemMessages::*message;
  std::string_view name;  // in full, with what it tells
  SentenceMarks marks = {{{4, Record::kForm.type}}};
};
template <class Record>
SentenceRow(bool CommSetup::*, Message<Record> SystemMessages::*, const char*)
    -> SentenceRow<Record>;
template <class Record>
SentenceRow(bool CommSetup::*, Message<Record> SystemMessages::*, const char*, SentenceMarks)
    -> SentenceRow<Record>;

// All sentences, in the order in which they are offered and looked for. What is done for every
// sentence walks this table; a further one begins here.
inline constexpr std::tuple kSentences{
    SentenceRow{&CommSetup::AnalyseGGA, &SystemMessages::GGA,
                "Global Positioning System fix data: position, height and quality"},
    SentenceRow{&CommSetup::AnalyseGNS, &SystemMessages::GNS,
                "GNSS fix data: position and height from several satellite systems"},
    SentenceRow{&CommSetup::AnalyseGLL, &SystemMessages::GLL,
                "Geographic position: latitude and longitude"},
    SentenceRow{&CommSetup::AnalyseRMC, &SystemMessages::RMC,
                "Recommended minimum GNSS data: position, speed and course, date and time"},
    SentenceRow{&CommSetup::AnalyseVTG, &SystemMessages::VTG,
                "Course over ground and ground speed"},
    SentenceRow{&CommSetup::AnalyseGSA, &SystemMessages::GSA,
                "GNSS DOP and active satellites: the satellites used, dilution of precision"},
    SentenceRow{&CommSetup::AnalyseGST, &SystemMessages::GST,
                "GNSS pseudorange error statistics: the receiver's own figures of its errors"},
    SentenceRow{&CommSetup::AnalyseGSV,
                &SystemMessages::GSV,
                "GNSS satellites in view",
                {{{4, "GSV"}, {5, "GSV"}}}},
    SentenceRow{&CommSetup::AnalyseZDA, &SystemMessages::ZDA, "Time and date"},
    SentenceRow{&CommSetup::AnalyseHDT, &SystemMessages::HDT, "Heading, true"},
    SentenceRow{&CommSetup::AnalyseATT,
                &SystemMessages::ATT,
                "Attitude: heading, pitch and roll ($PFEC,GPatt)",
                {{{9, "att"}}}},
    SentenceRow{&CommSetup::AnalyseROT, &SystemMessages::ROT, "Rate of turn"},
    SentenceRow{&CommSetup::AnalyseVHW, &SystemMessages::VHW, "Water speed and heading"},
    SentenceRow{&CommSetup::AnalyseDBT, &SystemMessages::DBT, "Depth below transducer"},
    SentenceRow{&CommSetup::AnalyseTTM, &SystemMessages::TTM,
                "Tracked target message: radar targets"},
    SentenceRow{&CommSetup::AnalyseVDM,
                &SystemMessages::VDM,
                "AIS VHF data-link messages (VDM and VDO)",
                {{{4, "VDM"}, {4, "VDO"}}}}};

template <class Record>
inline constexpr const SentenceRow<Record>& kSentenceOf = std::get<SentenceRow<Record>>(kSentences);

// Calls visit(sentence) for the row of a type; false where there is none.
template <class Visitor>
constexpr bool VisitSentence(SentenceType type, Visitor&& visit) {
  const auto look = [&](const auto& sentence) {
    if (sentence.kType != type) return false;
    visit(sentence);
    return true;
  };
  return std::apply([&](const auto&... sentence) { return (look(sentence) || ...); }, kSentences);
}

struct AnalyseFlag {
  SentenceType type;
  bool CommSetup::*flag;
};

// The flags of all sentences, in their order.
inline constexpr auto kAnalyseFlags = std::apply(
    [](const auto&... sentence) {
      return std::array{AnalyseFlag{sentence.kType, sentence.analysed}...};
    },
    kSentences);

// The flag of a type; VDO shares that of VDM. None for a type that cannot be analysed.
constexpr const AnalyseFlag* FindAnalyseFlag(SentenceType type) {
  if (type == SentenceType::VDO) type = SentenceType::VDM;
  const auto* const found = std::find_if(kAnalyseFlags.begin(), kAnalyseFlags.end(),
                                         [type](const AnalyseFlag& f) { return f.type == type; });
  return found == kAnalyseFlags.end() ? nullptr : found;
}

// One of the serial ports COM1 to COM16.
struct ComportSetup {
  std::int16_t System = 0;  // that owns the port
  bool Present = false;
  std::string Status;  // "free", "current" or "busy"
  std::int32_t Baud = 4800;
  std::int16_t DataBits = 8;
  std::string Parity = "none";
  std::int16_t StopBits = 1;
};

// What the deviations of a system are measured against. Angles of the position in radians, height
// in metres, the others in degrees.
struct ReferenceSetup {
  std::int16_t ReferenceUsed = 0;  // one of the constants below
  std::string ReferenceName;
  double ReferenceLatitude = 0.0;
  double ReferenceLongitude = 0.0;
  float ReferenceHeight = 0.0F;
  float ReferenceHeading = 0.0F;
  float ReferencePitch = 0.0F;
  float ReferenceRoll = 0.0F;
};
inline constexpr std::int16_t kFirstSample = 0;
inline constexpr std::int16_t kAverageOverTime = 1;
inline constexpr std::int16_t kTruePosition = 2;

// Which satellites of one constellation show in its window of SNR time series.
struct VisibleSNRRow {
  std::int16_t Columns = 4;
  std::int16_t Second = 0;  // kept as read
  std::array<bool, 32> Shown;
  VisibleSNRRow() { Shown.fill(true); }
};
inline constexpr int kSNRConstellations = 5;

// The sentence types that a system is to analyse; an empty entry ends the list. Rows 1 to 10 are
// used and stored, counted from 0 here.
using MessageList = std::array<std::string, 12>;
inline constexpr int kUsedMessageRows = 10;

inline constexpr std::string_view kOnline = "ONLINE";
inline constexpr std::string_view kOffline = "OFFLINE";

struct Records {
  PerSystem<CommSetup> CommSetups;
  PerSystem<SystemSetup> SystemSetups;
  PerSystem<SystemMessages> Messages;
  std::array<ComportSetup, kComports> Comports;

  // Setup values.
  std::string Mode{kOnline};
  std::string ProgramFolder;  // with its trailing separator
  std::string SessionInfo;
  PerSystem<bool> ChecksumTest;
  PerSystem<bool> Emptybuffer;
  PerSystem<bool> SetTimeFromPC;
  PerSystem<bool> NotDisplayDGPS;
  PerSystem<MessageList> MessagesToAnalyse;
  PerSystem<ReferenceSetup> References;
  std::int16_t IPListCount = 0;
  std::array<std::string, 10> IPList;
  std::array<VisibleSNRRow, kSNRConstellations> VisibleSNR;
  std::int16_t ElevationMask = 0;  // degrees, 0 to 89
  std::int16_t BaseDataFlag = 0;   // stored with the mask; set by each applied setup, read by none
  bool CoordinateFormatIsDMS = false;
  std::int16_t CoordinateDecimals = 0;
  // Of the setup dialog. Only the first has a reader, for the three angles of ATT, in degrees; 0
  // there is a limit, not a switch.
  float OutlierLimit = kOutlierLimitAtStart;
  float HdopLimit = 0.0F;
  std::int16_t SatelliteLimit = 0;
  bool RejectNonDifferential = false;

  // State of the session, in no file.
  std::int32_t SentenceCount = 0;
  PerSystem<std::int32_t> ChecksumErrors;
  PerSystem<std::int32_t> IgnoredMessages;
  PerSystem<DateTime> MessageTime;       // UTC, of the latest sentence
  PerSystem<DateTime> MessageDate;       // its date part
  PerSystem<DateTime> LastSentenceTime;  // MessageTime after the sentence before
  std::int16_t MonitorSystem = 0;
  bool OnlinePaused = false;
  bool OfflineRunning = false;
  bool OfflineStep = false;
  bool OfflinePaused = false;
  bool OfflineStopped = false;
  DateTime OfflineStartTime;  // local
  DateTime OfflineEndTime;    // local
  bool LoggingOn = false;
  PerSystem<std::int16_t> LogFileNumber;
  PerSystem<std::string> LogFileName;
  bool ReloadWindows = false;
  // The setup was made for a recording, not by its user: nothing saves it unasked.
  bool SetupIsPassing = false;
  bool Closing = false;
  std::int16_t ErrorCount = 0;

  ComportSetup& Comport(int port) { return Comports.at(ComportIndex(port)); }

  bool Offline() const { return Mode == kOffline; }
  // Paused with nothing to hold the source back: sentences go to the live views only.
  bool PausedOnline() const { return OnlinePaused && Mode == kOnline; }

  // Puts the defaults into CommSetups, ChecksumTest and Mode, and into nothing else: UseUDP,
  // UDPPort, AnalyseTTM, AnalyseVDM and everything outside keep what they hold.
  void SetDefaultSetup();

  // A setup that says nothing of the decimals of degrees and minutes has 0; it gets the usual ones.
  void UseDefaultDecimals();

  // Derives the Analyse flags of a system from its column of MessagesToAnalyse.
  void SetMessageFlags(int system);

  // What the names of its files say of a system: "Prim-", or "Sec1-" and so on, and its name.
  std::string FilePartOf(int system) const;

 private:
  static std::size_t ComportIndex(int port) {
    if (port < 1 || port > kComports) Raise(FaultNumber::OutOfRange);
    return static_cast<std::size_t>(port - 1);
  }
};

// Blue, green, red and a yellow that can be seen on white. Raises OutOfRange for a number that is
// no system's.
Colour SystemColour(int system);

// "Primary System", or "Secondary System 1" and so on.
std::string SystemTitle(int system);

}  // namespace fathomline
