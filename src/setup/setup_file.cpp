#include "setup/setup_file.h"

#include <algorithm>
#include <array>

#include "base/fault.h"
#include "base/files.h"
#include "setup/setup_values.h"

namespace fathomline {
namespace {

// Ports that the format knew from its beginning; the others have a section of their own.
constexpr int kFirstComports = 10;

void Comports(SetupValues& values, Records& records, int first, int last) {
  for (int port = first; port <= last; ++port) {
    ComportSetup& row = records.Comport(port);
    values.Line(row.System, row.Baud, row.DataBits, row.Parity, row.StopBits);
  }
}

void FlagOfEachSystem(SetupValues& values, PerSystem<bool>& flags) {
  for (bool& flag : flags) values.Value(flag);
  values.EndLine();
}

void RecentAddresses(SetupValues& values, Records& records) {
  values.Line(records.IPListCount);
  for (int i = 0; i < records.IPListCount; ++i) {
    const auto index = static_cast<std::size_t>(i);
    if (index >= records.IPList.size()) Raise(FaultNumber::OutOfRange);
    values.Line(records.IPList[index]);
  }
}

void OpenWindows(SetupValues& values, Records& records) {
  constexpr std::array kStored = {WindowFlag::Numerics, WindowFlag::Statistics, WindowFlag::Skyplot,
                                  WindowFlag::ARPATargets, WindowFlag::AISTargets};
  for (SystemSetup& setup : records.SystemSetups) {
    for (const WindowFlag flag : kStored) values.Value(setup[flag]);
    values.ValueSavedAsFalse(setup[WindowFlag::NMEA]);
    values.EndLine();
  }
}

struct Section {
  std::string_view marker;
  void (*walk)(SetupValues& values, Records& records);
};

constexpr auto kSections = std::to_array<Section>({
    {"REM Mode", [](SetupValues& values, Records& records) { values.Line(records.Mode); }},
    {"REM Systems",
     [](SetupValues& values, Records& records) {
       for (CommSetup& row : records.CommSetups) {
         values.Line(row.Name, row.SystemType, row.ComPort, row.Enabled, row.OfflineFile);
       }
     }},
    {"REM Comports",
     [](SetupValues& values, Records& records) { Comports(values, records, 1, kFirstComports); }},
    {"REM Comports, extended to 16",
     [](SetupValues& values, Records& records) {
       Comports(values, records, kFirstComports + 1, kComports);
     }},
    {"REM TCP/IP",
     [](SetupValues& values, Records& records) {
       for (CommSetup& row : records.CommSetups) {
         values.Line(row.UseTCPIP, row.IPAddress, row.TCPPort);
       }
     }},
    {"REM IP List", RecentAddresses},
    {"REM Base data",
     [](SetupValues& values, Records& records) {
       values.Line(records.ElevationMask, records.BaseDataFlag);
     }},
    {"REM Reference positions & heading",
     [](SetupValues& values, Records& records) {
       for (ReferenceSetup& row : records.References) {
         values.Line(row.ReferenceUsed, row.ReferenceName, row.ReferenceLatitude,
                     row.ReferenceLongitude, row.ReferenceHeight, row.ReferenceHeading);
       }
     }},
    {"REM Reference pitch & roll",
     [](SetupValues& values, Records& records) {
       for (ReferenceSetup& row : records.References) {
         values.Line(row.ReferencePitch, row.ReferenceRoll);
       }
     }},
    {"REM Checksum Test",
     [](SetupValues& values, Records& records) { FlagOfEachSystem(values, records.ChecksumTest); }},
    {"REM Emptybuffer",
     [](SetupValues& values, Records& records) { FlagOfEachSystem(values, records.Emptybuffer); }},
    {"REM Set time from PC",
     [](SetupValues& values, Records& records) {
       FlagOfEachSystem(values, records.SetTimeFromPC);
     }},
    {"REM Not display dGPS timeserie",
     [](SetupValues& values, Records& records) {
       FlagOfEachSystem(values, records.NotDisplayDGPS);
     }},
    {"REM Visibleform", OpenWindows},
    {"REM NMEA Messages to analyse",
     [](SetupValues& values, Records& records) {
       for (std::size_t row = 0; row < kUsedMessageRows; ++row) {
         for (MessageList& column : records.MessagesToAnalyse) values.Value(column[row]);
         values.EndLine();
       }
     }},
    {"REM Session info",
     [](SetupValues& values, Records& records) { values.Line(records.SessionInfo); }},
    {"REM Visibleform SNR",
     [](SetupValues& values, Records& records) {
       for (SystemSetup& setup : records.SystemSetups)
         values.Line(setup[WindowFlag::StatisticsSNR]);
     }},
    {"REM Visible SNR Timeseries",
     [](SetupValues& values, Records& records) {
       for (VisibleSNRRow& row : records.VisibleSNR) {
         values.Line(row.Columns, row.Second);
         for (bool& shown : row.Shown) values.Line(shown);
       }
     }},
    {"REM UDP",
     [](SetupValues& values, Records& records) {
       for (CommSetup& row : records.CommSetups) values.Line(row.UseUDP, row.UDPPort);
     }},
    {"REM LatLon Format",
     [](SetupValues& values, Records& records) {
       values.Line(records.CoordinateFormatIsDMS, records.CoordinateDecimals);
     }},
});

}  // namespace

bool ReadSetup(std::string_view bytes, Records& records) {
  SetupReader reader(bytes);
  std::string marker;
  bool found = false;
  while (!reader.AtEnd()) {
    reader.Value(marker);
    const auto* const section =
        std::find_if(kSections.begin(), kSections.end(),
                     [&marker](const Section& row) { return row.marker == marker; });
    if (section == kSections.end()) continue;
    section->walk(reader, records);
    found = true;
  }
  return found;
}

std::string WriteSetup(Records& records) {
  SetupWriter writer;
  for (const Section& section : kSections) {
    writer.Marker(section.marker);
    section.walk(writer, records);
  }
  return writer.Bytes();
}

SetupRead ReadSetupFile(const std::string& path, Records& records, Dialogs& dialogs) {
  SetupRead result = SetupRead::Faulty;
  try {
    if (!ReadSetup(ReadWholeFile(path), records)) {
      Raise(FaultNumber::TypeMismatch, "There is no setup in " + path);
    }
    return SetupRead::Complete;
  } catch (const Fault& fault) {
    if (fault.Number() == static_cast<int>(FaultNumber::FileNotFound)) {
      result = SetupRead::NotFound;
      dialogs.Ask(
          {.text = "Setup file do not exist. Default data loaded", .icon = BoxIcon::Information});
    } else {
      dialogs.Ask({.text = fault.Description() + " - Error in Setup file. Default data loaded",
                   .icon = BoxIcon::Exclamation});
    }
  }
  records.SetDefaultSetup();
  return result;
}

void WriteSetupFile(const std::string& path, Records& records) {
  ReplaceFile(path, WriteSetup(records));
}

void KeepSetupFile(const std::string& path) {
  const std::string kept = path + ".bak";
  try {
    ReplaceFile(kept, ReadWholeFile(path));
  } catch (const Fault&) {
    // Where it may not be read, or there is no room for a copy, it can still be moved away.
    RenameFile(path, kept);
  }
}

}  // namespace fathomline
