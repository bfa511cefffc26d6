// The texts of AIS codes, of ITU-R M.1371 and of the equipment that sends alarms.
//
// A spelling here is what the user sees and is compared with elsewhere; it stays as it is.
#pragma once

#include "ais/code_table.h"

namespace fathomline {

// By navigation status; the last entry has no text.
inline constexpr CodeTable<17> NavStatusTable = {
    "Under way using engines",
    "At anchor",
    "Not under command",
    "Restricted manoeuvrability",
    "Constrained by her draught",
    "Moored",
    "Aground",
    "Engaged in fishing",
    "Under way sailing",
    "HSC (High Speed Craft)",
    "WIG (Wing in Ground)",
    "Power driven vessel towing astern",
    "Power driven vessel pushing ahead or towing alongside",
    "reserved",
    "AIS-SART Active",
    "AIS-SART Test mode",
};

// By a single bit.
inline constexpr CodeTable<2> PositionAccuracyTable = {"Low accuracy, >10 m",
                                                       "High accuracy, <10 m"};
inline constexpr CodeTable<2> AltitudeSensorTable = {"GNSS", "Barometric source"};
inline constexpr CodeTable<2> ClassBUnitTable = {"Class B SOTDMA Unit", "Class B CS Unit"};
inline constexpr CodeTable<2> ClassBDisplayTable = {"No display available",
                                                    "Integrated display (Displaying Msg 12 & 14)"};
inline constexpr CodeTable<2> ClassBDSCTable = {"No DSC function", "Equipped with DSC function"};
inline constexpr CodeTable<2> ClassBBandTable = {
    "Operating over the upper 525 kHz band of the marine band",
    "Operating over the whole marine band"};
inline constexpr CodeTable<2> ClassBMsg22Table = {"No freq management via Msg 22",
                                                  "Freq management via Msg 22"};
inline constexpr CodeTable<2> StationModeTable = {"Stn operating in autonomous & continous mode",
                                                  "Stn operating in assigned mode"};
inline constexpr CodeTable<2> CommStateTable = {"SOTDMA", "ITDMA"};
inline constexpr CodeTable<2> PositionStatusTable = {"Position is the current GNSS pos",
                                                     "Position is NOT the current GNSS pos"};
inline constexpr CodeTable<2> LongRangeTable = {"Class A stn stops transmission of Msg 27",
                                                "Request Class A stn to transmit Msg 27"};

// By the second digit of the ship type code.
inline constexpr CodeTable<10> CargoTable = {
    "Not specified",
    "Carrying DG,HS or MP IMO hazard or pollutant category X",
    "Carrying DG,HS or MP IMO hazard or pollutant category Y",
    "Carrying DG,HS or MP IMO hazard or pollutant category Z",
    "Carrying DG,HS or MP IMO hazard or pollutant category OS",
    "Reserved for future use",
    "Reserved for future use",
    "Reserved for future use",
    "Reserved for future use",
    "No additional information",
};

// By the type of the position fixing device.
inline constexpr CodeTable<17> EPFSTable = {
    "Undefined",
    "GPS",
    "Glonass",
    "GPS/Glonass",
    "Loran-C",
    "Chayka",
    "Integrated Navigation System",
    "Surveyed",
    "Galileo",
    "not used",
    "not used",
    "not used",
    "not used",
    "not used",
    "not used",
    "Internal GNSS",
    "not used",
};

// By the type of an aid to navigation.
inline constexpr CodeTable<32> AtoNTypeTable = {
    "Not specified",
    "Reference Point",
    "RACON",
    "Offshore Structure",
    "Emergency wreck Marking Buoy",
    "Light - Without sectors",
    "Ligth - With sectors",
    "Leading light front",
    "Leading Light Rear",
    "Beacon - Cardinal N",
    "Beacon - Cardinal E",
    "Beacon - Cardinal S",
    "Beacon - Cardinal W",
    "Beacon - Port hand",
    "Beacon - Starboard hand ",
    "Beacon - Preferred ch. port hand ",
    "Beacon - Preferred ch. stb hand ",
    "Beacon - Isolated danger",
    "Beacon - Safe water ",
    "Beacon - Special mark",
    "Cardinal mark N",
    "Cardinal mark E",
    "Cardinal mark S",
    "Cardinal mark W",
    "Port hand mark",
    "Starboard hand mark",
    "Preferred channel port hand",
    "Preferred channel stb hand",
    "Isolated danger",
    "Safe water",
    "Special mark",
    "Light vessel/LANBY/Rigs",
};

// By the status page of id 21.
inline constexpr CodeTable<8> AtoNPageTable = {
    "not used", "reserved", "reserved", "reserved",
    "reserved", "reserved", "reserved", "AtN Status",
};

// By the racon status of id 21.
inline constexpr CodeTable<4> RaconTable = {
    "No RACON installed",
    "RACON installed but not monitored",
    "RACON operational",
    "RACON Error",
};

// By the light status of id 21.
inline constexpr CodeTable<4> LightTable = {
    "No light or no monitoring",
    "Light ON",
    "Light OFF",
    " Light fail or at reduced range",
};

// By the health bit of id 21.
inline constexpr CodeTable<2> HealthTable = {
    "Good Health",
    "Alarm",
};

// By message id less one.
inline constexpr CodeTable<27> MessageNameTable = {
    "Class A vessel scheduled position report",
    "Class A vessel assigned position report",
    "Class A vessel special position report",
    "Base Station report",
    "Static and Voyage related data",
    "Addressed text or special message",
    "Acknowledgement of msg 6 or 12",
    "Broadcast text or special message",
    "SAR Aircraft position report",
    "UTC/Date inquiry",
    "UTC/Date response",
    "Addressed Safety Related Message",
    "Acknowledgement of msg 8 or 14",
    "Broadcast Safety Related Message",
    "Interrogation, request for specific msg",
    "Assignment mode command",
    "DGNSS Broadcast Message",
    "Standard Class B Position report",
    "Extended Class B Position report",
    "Data Link Management message",
    "Aids-to-Navigation report",
    "Channel Management",
    "Group Assignment Command",
    "Static Data Report",
    "Single Slot Binary Message",
    "Multiple Slot Binary Message",
    "Not defined",
};

// By alarm number less one.
inline constexpr CodeTable<40> AlarmTable = Expand<40>({
    {0, "AIS: Tx Malfunction"},
    {1, "AIS: Antenna VSWR exceeds limit"},
    {2, "AIS: Rx Channel A malfunction"},
    {3, "AIS: Rx Channel B malfunction"},
    {4, "AIS: Rx Channel 70 malfunction"},
    {5, "AIS: General failure"},
    {6, "AIS: UTC clock lost"},
    {7, "AIS: MKD connection lost"},
    {24, "AIS: External EPFS lost"},
    {25, "AIS: No sensor position in use"},
    {28, "AIS: No vald SOG Information"},
    {29, "AIS: No vald COG Information"},
    {31, "AIS: Heading lost/Invalid"},
    {34, "AIS: No vald ROT Information"},
    {36, "AIS: Frame synchronisation failure"},
    {37, "AIS: DGNSS input failed"},
    {38, "AIS: DSC Tx malfunction"},
    {39, "AIS: DSC antenna VSWR exceeds limit"},
});

// By the equipment code of a vessel-equipment application message.
inline constexpr CodeTable<27> VesselSystemTable = Expand<27>({
    {1, "AIS Class A"},
    {2, "ATA (Automatic Tracking Aid"},
    {3, "BNWAS (Bridge Nav Watch Alarm System"},
    {4, "ECDIS Back-up"},
    {5, "ECDIS Paper Chart"},
    {6, "Echo sounder"},
    {7, "Electronic Plotting Aid"},
    {8, "Emergency steering gear"},
    {9, "Navigation system (GPS, Loran-C, GLONASS)"},
    {10, "LRIT"},
    {12, "Magnetic compass"},
    {13, "NAVTEX"},
    {14, "Radar (ARPA)"},
    {15, "Radar (S-band)"},
    {16, "Radar (X-band)"},
    {17, "Radio HF"},
    {18, "Radio INMARSAT"},
    {19, "Radio MF"},
    {20, "Radio VHF"},
    {21, "Speed log (over ground)"},
    {22, "Speed log (through water)"},
    {23, "THD (Transmitting Hdg Device"},
    {24, "Track control system"},
    {25, "VDR/S-VDR"},
    {26, "reserved"},
});

// By ice class code.
inline constexpr CodeTable<16> IceClassTable = {
    "not classified",
    "IACS PC 1",
    "IACS PC 2",
    "IACS PC 3",
    "IACS PC 4",
    "IACS PC 5",
    "IACS PC 6/FSICR IA Super/RS Arc5",
    "IACS PC 7/FSICR IA/RS Arc4",
    "FSICR IB/RS Ice3",
    "FSICR IC/RS Ice2",
    "RS Ice1",
    "reserved",
    "reserved",
    "reserved",
    "reserved",
    "n/a (default)",
};

}  // namespace fathomline
