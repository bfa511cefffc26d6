// The setup file: all settings of a session as a flat series of values behind marker lines.
//
// Sections are found by their markers, in any order; the later of two wins, and whatever stands
// outside a known section is passed over. A section that is missing leaves its values as they are.
#pragma once

#include <string>
#include <string_view>

#include "base/dialogs.h"
#include "records/records.h"

namespace fathomline {

// In the program folder.
inline constexpr std::string_view kSetupFileName = "Fathomline.ini";

enum class SetupRead { Complete, NotFound, Faulty };

// Fills the records from the file. A file that is not there, cannot be read or has no section of a
// setup is told in a box, and Records::SetDefaultSetup follows; what it leaves alone keeps the
// values read before the fault. Ports, windows and the Analyse flags are not touched.
SetupRead ReadSetupFile(const std::string& path, Records& records, Dialogs& dialogs);

// Replaces the file. Clears the monitor's window flag of every system, in the records as well.
// Raises the fault of the file, and OutOfRange for an IPListCount above the list.
void WriteSetupFile(const std::string& path, Records& records);

// Keeps a setup file as it is, with ".bak" behind its name, before anything writes it anew.
void KeepSetupFile(const std::string& path);

// The same without a file: from and to the bytes of one. Raises what SetupReader raises. False
// where there is no section.
bool ReadSetup(std::string_view bytes, Records& records);
std::string WriteSetup(Records& records);

}  // namespace fathomline
