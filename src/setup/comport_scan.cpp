#include "setup/comport_scan.h"

#include "base/fault.h"
#include "base/numbers.h"

namespace fathomline {
namespace {

constexpr std::string_view kPortUnknown = "none";
constexpr std::string_view kScanFailed = "err ";

bool HasPort(const CommSetup& setup, int port) {
  return !setup.UseTCPIP && !setup.UseUDP && setup.ComPort == port;
}

bool HeldByAnother(const Records& records, int port, int system) {
  for (int other = 1; other <= kSystems; ++other) {
    const CommSetup& setup = records.CommSetups[other];
    if (other != system && setup.Enabled && HasPort(setup, port)) return true;
  }
  return false;
}

std::size_t IndexOf(int port) {
  if (port < 1 || port > kComports) Raise(FaultNumber::OutOfRange);
  return static_cast<std::size_t>(port - 1);
}

}  // namespace

const SerialPortInfo& ComportScan::Info(int port) const {
  return infos_[IndexOf(port)];
}

void ComportScan::Run(Records& records, Links& links, int system) {
  for (int port = 1; port <= kComports; ++port) {
    ComportSetup& row = records.Comport(port);
    const std::size_t index = IndexOf(port);
    refused_[index] = false;
    ResumeNext(
        [&] {
          const SerialPortInfo info = links.Probe(port);
          infos_[index] = info;
          row.Present = info.present;
          if (HasPort(records.CommSetups[system], port)) {
            row.Status = kPortCurrent;
          } else if (HeldByAnother(records, port, system)) {
            row.Status = kPortBusy;
          } else {
            row.Status = info.busy ? kPortBusy : kPortFree;
            refused_[index] = info.busy && !links.MSComm1(port).PortOpen();
          }
        },
        [&](const Fault&) {
          if (row.Status.empty()) row.Status = kPortUnknown;
          if (!row.Status.starts_with(kScanFailed)) row.Status.insert(0, kScanFailed);
        });
  }
}

std::string ComportScan::EntryText(const Records& records, int port) const {
  const std::string& status = records.Comports[IndexOf(port)].Status;
  std::string text = "COM" + PlainText(port) + " - ";
  text += status.empty() ? kPortUnknown : std::string_view(status);
  const SerialPortInfo& info = Info(port);
  if (!info.device.empty()) text += "   " + info.device;
  if (!info.description.empty()) text += " (" + info.description + ")";
  return text;
}

std::string ComportScan::Advice(int port) const {
  if (!refused_[IndexOf(port)]) return {};
  const SerialPortInfo& info = Info(port);
  return "The operating system refuses " + (info.device.empty() ? "this port" : info.device) +
         ". Either another program uses it,\n"
         "or you may not use it. In that case join the group dialout and log in again :\n"
         "sudo usermod -aG dialout $USER";
}

}  // namespace fathomline
